#include "captureone/window/RecipePanel.h"

#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "captureone/window/RecipeList.h"
#include "captureone/window/RowDelegate.h"
#include "captureone/window/Section.h"
#include "captureone/window/Style.h"

namespace morla::captureone {
namespace {

constexpr int kRowHeight = 52;
constexpr int kMostRows = 4;  ///< seen at once
constexpr int kTextLeft = 30;
constexpr int kLine = 15;

class Delegate final : public RowDelegate {
 public:
  explicit Delegate(QObject* parent) : RowDelegate(kRowHeight, parent) {}

  bool editorEvent(QEvent* event, QAbstractItemModel* model, QStyleOptionViewItem const& option,
                   QModelIndex const& index) override {
    bool toggles = false;
    if (event->type() == QEvent::MouseButtonRelease) {
      auto const* mouse = static_cast<QMouseEvent*>(event);
      toggles = mouse->button() == Qt::LeftButton && isOnBox(mouse->position().toPoint(), option.rect);
    } else if (event->type() == QEvent::KeyPress) {
      toggles = static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space;
    } else if (event->type() == QEvent::MouseButtonDblClick) {
      // Two quick clicks on the box are two clicks, and no wish to rename.
      return isOnBox(static_cast<QMouseEvent*>(event)->position().toPoint(), option.rect);
    }
    if (!toggles) return false;
    bool const isOn = index.data(Qt::CheckStateRole).value<Qt::CheckState>() == Qt::Checked;
    return model->setData(index, isOn ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
  }

  void updateEditorGeometry(QWidget* editor, QStyleOptionViewItem const& option, QModelIndex const&) const override {
    editor->setGeometry(nameIn(option.rect).adjusted(-8, -4, 0, 2));
  }

 private:
  void paintRow(QPainter& painter, QStyleOptionViewItem const& option, QModelIndex const& index) const override {
    bool const isSelected = option.state.testFlag(QStyle::State_Selected);
    if (isSelected || option.state.testFlag(QStyle::State_MouseOver)) {
      painter.setPen(Qt::NoPen);
      painter.setBrush(isSelected ? QColor(0x45, 0x45, 0x48) : QColor(0x38, 0x38, 0x38));
      painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 1, -0.5, -1), 6, 6);
    }
    paintBox(painter, boxIn(option.rect), index.data(Qt::CheckStateRole).value<Qt::CheckState>() == Qt::Checked);
    auto font = option.font;
    font.setPixelSize(13);
    paintLine(painter, nameIn(option.rect), font, QColor(0xE4, 0xE4, 0xE4), index.data().toString());
    font.setPixelSize(11);
    auto small = nameIn(option.rect).translated(0, kLine + 2);
    paintLine(painter, small, font, QColor(0xA8, 0xA8, 0xA8), index.data(RecipeList::FormatRole).toString());
    small.translate(0, kLine - 1);
    paintLine(painter, small, font, QColor(0xA8, 0xA8, 0xA8),
              QStringLiteral("→ ") + index.data(RecipeList::DestinationRole).toString());
  }

  static QRect boxIn(QRect const& row) { return {row.left() + 7, row.top() + 8, 15, 15}; }
  static QRect nameIn(QRect const& row) {
    return {row.left() + kTextLeft, row.top() + 5, row.width() - kTextLeft - 6, kLine + 3};
  }
  static bool isOnBox(QPoint place, QRect const& row) { return place.x() < row.left() + kTextLeft - 2; }

  static void paintBox(QPainter& painter, QRectF const& box, bool isChecked) {
    painter.setPen(QPen(isChecked ? QColor(0x0A, 0x84, 0xFF) : QColor(0x6E, 0x6E, 0x6E), 1));
    painter.setBrush(isChecked ? QColor(0x0A, 0x84, 0xFF) : QColor(0x22, 0x22, 0x22));
    painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    if (!isChecked) return;
    painter.setPen(QPen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QPointF const corner = box.topLeft();
    painter.drawPolyline(
        QPolygonF({corner + QPointF(3.8, 7.8), corner + QPointF(6.5, 10.6), corner + QPointF(11.3, 4.8)}));
  }

  static void paintLine(QPainter& painter, QRect const& place, QFont const& font, QColor const& colour,
                        QString const& text) {
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     QFontMetrics(font).elidedText(text, Qt::ElideMiddle, place.width()));
  }
};

}  // namespace

RecipePanel::RecipePanel(Model& model, QWidget* parent) : QWidget(parent), model_(model) {
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  auto* section = new Section(QStringLiteral("Recettes"), Section::Kind::fixed, this);
  rows->addWidget(section);
  add_ = makeButton(QStringLiteral("+"), QStringLiteral("Ajouter une recette"));
  connect(add_, &QPushButton::clicked, this, [this] { addRecipe(); });
  remove_ = makeButton(QStringLiteral("−"), QStringLiteral("Supprimer la recette"));
  connect(remove_, &QPushButton::clicked, this, [this] { removeRecipe(); });
  section->addToHeading(add_);
  section->addToHeading(remove_);
  view_ = style::named(new QListView(section), QStringLiteral("Recettes"));
  view_->setObjectName(QStringLiteral("recipes"));
  list_ = new RecipeList(model_.documents(), view_);
  view_->setModel(list_);
  view_->setItemDelegate(new Delegate(view_));
  view_->setUniformItemSizes(true);
  view_->setMouseTracking(true);
  view_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
  view_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  view_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this] { remove_->setEnabled(view_->selectionModel()->hasSelection()); });
  section->addWide(view_);
  rows->addWidget(style::separator(this));
}

QPushButton* RecipePanel::makeButton(QString const& text, QString const& name) {
  auto* button = style::named(new QPushButton(text, this), name);
  button->setObjectName(QStringLiteral("small"));
  button->setToolTip(name);
  return button;
}

void RecipePanel::addRecipe() {
  auto const* current = model_.documents().current();
  if (current == nullptr) return;
  model_.documents().change(current->id, [](Document& document) {
    auto const& recipes = document.recipes;
    auto number = recipes.all().size() + 1;
    while (recipes.findNamed("Recette " + std::to_string(number)) != nullptr) ++number;
    document.recipes.add("Recette " + std::to_string(number));
    return true;
  });
  view_->setCurrentIndex(list_->index(list_->rowCount() - 1));
}

void RecipePanel::removeRecipe() {
  auto const* current = model_.documents().current();
  if (current == nullptr) return;
  int const row = view_->currentIndex().row();
  auto const handle = list_->handleOf(row);
  model_.documents().change(current->id, [&](Document& document) { return document.recipes.remove(handle); });
  if (list_->rowCount() > 0) view_->setCurrentIndex(list_->index(std::clamp(row, 0, list_->rowCount() - 1)));
}

void RecipePanel::refresh() {
  setVisible(model_.documents().current() != nullptr);
  list_->refresh();
  int const rows = std::clamp(list_->rowCount(), 1, kMostRows);
  view_->setFixedHeight(rows * kRowHeight);
  remove_->setEnabled(view_->selectionModel()->hasSelection());
}

}  // namespace morla::captureone
