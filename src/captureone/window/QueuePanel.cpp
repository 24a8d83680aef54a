#include "captureone/window/QueuePanel.h"

#include <QDoubleSpinBox>
#include <QListView>
#include <QPainter>
#include <QProgressBar>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

#include "captureone/window/JobList.h"
#include "captureone/window/RowDelegate.h"
#include "captureone/window/Section.h"
#include "captureone/window/Texts.h"

namespace morla::captureone {
namespace {

constexpr int kRowHeight = 24;

class Delegate final : public RowDelegate {
 public:
  explicit Delegate(QObject* parent) : RowDelegate(kRowHeight, parent) {}

 private:
  void paintRow(QPainter& painter, QStyleOptionViewItem const& option, QModelIndex const& index) const override {
    auto const state = static_cast<JobList::State>(index.data(JobList::StateRole).toInt());
    QPointF const dot(option.rect.left() + 12.0, option.rect.top() + kRowHeight / 2.0);
    QColor const colour = state == JobList::State::failed   ? QColor(0xFF, 0x9F, 0x0A)
                          : state == JobList::State::inWork ? QColor(0x0A, 0x84, 0xFF)
                                                            : QColor(0x8E, 0x8E, 0x93);
    painter.setPen(QPen(colour, 1.5));
    painter.setBrush(state == JobList::State::waiting ? QBrush(Qt::NoBrush) : QBrush(colour));
    painter.drawEllipse(dot, 3.5, 3.5);
    auto font = option.font;
    font.setPixelSize(11);
    painter.setFont(font);
    QFontMetrics const metrics(font);
    QRect const text = option.rect.adjusted(24, 0, -8, 0);
    auto const name = index.data().toString();
    int const nameWidth = std::min(metrics.horizontalAdvance(name) + 1, text.width() * 3 / 5);
    painter.setPen(QColor(0xE4, 0xE4, 0xE4));
    painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     metrics.elidedText(name, Qt::ElideMiddle, nameWidth));
    painter.setPen(QColor(0xA8, 0xA8, 0xA8));
    QRect const rest = text.adjusted(nameWidth + 8, 0, 0, 0);
    auto const recipe =
        state == JobList::State::failed ? QStringLiteral("échec") : index.data(JobList::RecipeRole).toString();
    painter.drawText(rest, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine,
                     metrics.elidedText(recipe, Qt::ElideRight, rest.width()));
  }
};

}  // namespace

QueuePanel::QueuePanel(Model& model, QWidget* parent) : QWidget(parent), model_(model) {
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  auto* section = new Section(QStringLiteral("File de traitement"), Section::Kind::fixed, this);
  rows->addWidget(section);
  progress_ = style::label({}, style::Tone::primary, section);
  section->addWide(progress_);
  bar_ = style::named(new QProgressBar(section), QStringLiteral("Avancement du traitement"));
  bar_->setTextVisible(false);
  section->addWide(bar_);
  view_ = makeList(section);
  section->addWide(view_);

  delay_ = style::named(new QDoubleSpinBox(section), QStringLiteral("Attente par fichier"));
  delay_->setRange(0, ProcessingQueue::kLongestDelay.count());
  delay_->setDecimals(3);
  delay_->setSingleStep(0.1);
  delay_->setSuffix(QStringLiteral(" s"));
  delay_->setKeyboardTracking(false);
  style::leaveWheelToTheColumn(delay_);
  // It would be as wide as a day is in seconds.
  delay_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  connect(delay_, &QDoubleSpinBox::valueChanged, this,
          [this](double seconds) { model_.queue().setDelay(ProcessingQueue::Seconds(seconds)); });
  section->addRow(QStringLiteral("Attente"), delay_);
  stall_ = new style::Switch(QStringLiteral("Traitement à l’arrêt"), section);
  connect(stall_, &QCheckBox::toggled, this,
          [this](bool is) { model_.queue().setStall(is ? ProcessingQueue::Stall::on : ProcessingQueue::Stall::off); });
  section->addRow(QStringLiteral("À l’arrêt"), stall_);
}

QListView* QueuePanel::makeList(QWidget* parent) {
  auto* view = style::named(new QListView(parent), QStringLiteral("File de traitement"));
  view->setObjectName(QStringLiteral("jobs"));
  list_ = new JobList(model_, view);
  view->setModel(list_);
  view->setItemDelegate(new Delegate(view));
  view->setUniformItemSizes(true);
  view->setSelectionMode(QAbstractItemView::NoSelection);
  view->setFocusPolicy(Qt::TabFocus);
  view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  view->setMinimumHeight(3 * kRowHeight + 8);
  view->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  return view;
}

void QueuePanel::refresh() {
  auto const& queue = model_.queue();
  list_->refresh();
  progress_->setText(texts::progress(queue));
  auto const all = static_cast<int>(queue.done() + queue.length());
  bar_->setRange(0, std::max(1, all));
  bar_->setValue(static_cast<int>(queue.done()));
  QSignalBlocker const quietDelay(delay_);
  QSignalBlocker const quietStall(stall_);
  delay_->setValue(queue.delay().count());
  stall_->setChecked(queue.stall() == ProcessingQueue::Stall::on);
}

}  // namespace morla::captureone
