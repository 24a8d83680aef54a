#include "platform/linux/ui/views/Lettering.h"

#include <QFontMetricsF>
#include <QStringList>
#include <algorithm>
#include <cmath>

namespace morla::linux {
namespace {

QFont::Weight weightOf(view::Weight weight) {
  switch (weight) {
    case view::Weight::regular:
      return QFont::Normal;
    case view::Weight::medium:
      return QFont::Medium;
    case view::Weight::semibold:
      return QFont::DemiBold;
    case view::Weight::bold:
      return QFont::Bold;
  }
  return QFont::Normal;
}

/// Widgets end here, and what lies beyond is not seen anyway.
constexpr double kWidest = 1'000'000;

}  // namespace

QFont toQt(view::Font const& font) {
  QFont made;
  made.setFamilies(QStringList{"Inter"} + made.families());
  made.setPixelSize(std::max(1, static_cast<int>(std::lround(font.size))));
  made.setWeight(weightOf(font.weight));
  made.setHintingPreference(QFont::PreferVerticalHinting);
  return made;
}

QString printable(std::string const& utf8) {
  auto text = QString::fromStdString(utf8);
  text.removeIf([](QChar c) {
    return c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
  });
  return text;
}

std::vector<QString> printableLines(std::string const& utf8) {
  std::vector<QString> lines;
  std::string::size_type start = 0;
  while (true) {
    auto const end = utf8.find('\n', start);
    lines.push_back(printable(utf8.substr(start, end == std::string::npos ? end : end - start)));
    if (end == std::string::npos) return lines;
    start = end + 1;
  }
}

QString fitted(QString const& line, QFont const& font, double width) {
  QFontMetricsF const metrics(font);
  return metrics.horizontalAdvance(line) <= width ? line : metrics.elidedText(line, Qt::ElideRight, width);
}

int widthOf(QString const& line, QFont const& font) {
  return static_cast<int>(std::ceil(std::min(QFontMetricsF(font).horizontalAdvance(line), kWidest)));
}

}  // namespace morla::linux
