#include "captureone/window/Texts.h"

#include <QLocale>
#include <QStringList>

namespace morla::captureone::texts {
namespace {

QString number(std::size_t count) {
  return QLocale(QLocale::French).toString(static_cast<qulonglong>(count));
}

/// "2048 px", or nothing for a length that no person would write.
QString length(double value, MeasurementUnit unit) {
  auto const text = QLocale(QLocale::French).toString(value, 'g', 6);
  switch (unit) {
    case MeasurementUnit::pixels:
      return text + QStringLiteral(" px");
    case MeasurementUnit::inches:
      return text + QStringLiteral(" po");
    case MeasurementUnit::millimeters:
      return text + QStringLiteral(" mm");
    case MeasurementUnit::centimeters:
      return text + QStringLiteral(" cm");
    case MeasurementUnit::percent:
      return text + QStringLiteral(" %");
  }
  return text;
}

QString scaling(Recipe const& recipe) {
  auto const first = length(recipe.primaryValue, recipe.unit);
  switch (recipe.scaling) {
    case ScalingMethod::fixed:
      return length(recipe.primaryValue, MeasurementUnit::percent);
    case ScalingMethod::width:
      return QStringLiteral("largeur ") + first;
    case ScalingMethod::height:
      return QStringLiteral("hauteur ") + first;
    case ScalingMethod::boundingDimensions:
    case ScalingMethod::widthByHeight:
      return first + QStringLiteral(" × ") + length(recipe.secondaryValue, recipe.unit);
    case ScalingMethod::longEdge:
      return QStringLiteral("max. ") + first;
    case ScalingMethod::shortEdge:
      return QStringLiteral("min. ") + first;
  }
  return {};
}

QString fileFormat(Recipe const& recipe) {
  switch (recipe.format) {
    case FileFormat::jpeg:
      return QStringLiteral("JPEG ") + QString::number(recipe.jpegQuality);
    case FileFormat::jpegQuickProof:
      return QStringLiteral("JPEG épreuve");
    case FileFormat::tiff:
      return QStringLiteral("TIFF %1 bits").arg(recipe.bits);
    case FileFormat::png:
      return QStringLiteral("PNG %1 bits").arg(recipe.bits);
  }
  return {};
}

}  // namespace

QString selection(SelectionCount const& count) {
  if (count.shown == 0) return QStringLiteral("Aucune image");
  auto text = number(count.selected) + QStringLiteral(" sur ") + number(count.shown) +
              (count.selected > 1 ? QStringLiteral(" sélectionnées") : QStringLiteral(" sélectionnée"));
  if (count.elsewhere > 0) text += QStringLiteral(", ") + number(count.elsewhere) + QStringLiteral(" ailleurs");
  return text;
}

QString variant(Gallery const& gallery, Variant const& variant) {
  auto name = QString::fromStdString(variant.image.name);
  auto const images = gallery.imageCount();
  if (images > 0 && variant.place >= images) name += QStringLiteral(" · %1").arg(variant.place / images + 1);
  return name;
}

QString format(Recipe const& recipe) {
  return fileFormat(recipe) + QStringLiteral(" · ") + scaling(recipe);
}

QString destination(Recipe const& recipe) {
  QString folder;
  switch (recipe.rootFolder) {
    case RootFolder::outputLocation:
      folder = QStringLiteral("Sortie");
      break;
    case RootFolder::imageFolder:
      folder = QStringLiteral("Dossier de l’image");
      break;
    case RootFolder::customLocation:
      folder = recipe.rootLocation.empty() ? QStringLiteral("Sortie") : QString::fromStdString(recipe.rootLocation);
      break;
  }
  if (recipe.subFolder.empty()) return folder;
  return folder + QStringLiteral("/") + QString::fromStdString(recipe.subFolder);
}

QString progress(ProcessingQueue const& queue) {
  auto const done = queue.done();
  auto const all = done + queue.length();
  if (all == 0) return QStringLiteral("Aucun fichier à écrire");
  if (queue.length() == 0) {
    return all == 1 ? QStringLiteral("1 fichier traité") : number(all) + QStringLiteral(" fichiers traités");
  }
  auto const text = number(done) + QStringLiteral(" sur ") + number(all) +
                    (all == 1 ? QStringLiteral(" fichier") : QStringLiteral(" fichiers"));
  return queue.stall() == ProcessingQueue::Stall::on ? text + QStringLiteral(", à l’arrêt") : text;
}

QString captureFolder(Document const& document) {
  if (document.captures.form == CaptureForm::missing) return QStringLiteral("Aucun (« missing value »)");
  auto const answer = QString::fromStdString(answerOf(document.captures));
  return answer.isEmpty() ? QStringLiteral("Aucun") : answer;
}

}  // namespace morla::captureone::texts
