#include "platform/linux/ui/MenuStyle.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionMenuItem>

#include "platform/linux/ui/views/Colours.h"
#include "platform/linux/ui/views/Lettering.h"

namespace morla::linux {
namespace {

// In points, on a rhythm of eight.
constexpr int kRowHeight = 24;
constexpr int kPanelMargin = 5;
/// How near a menu comes to the screen's edges.
constexpr int kScreenMargin = 4;
constexpr int kTickColumn = 22;
constexpr int kRightPadding = 16;
constexpr int kShortcutGap = 24;
constexpr double kPanelRadius = 8;
constexpr double kRowRadius = 6;

struct Colours {
  QColor panel;
  QColor hairline;
  QColor text;
  QColor faintText;
  QColor accent;
};

Colours coloursOf(QPalette const& palette, Corners corners) {
  using view::SystemColour;
  // Only what is blended can be seen through.
  double const opacity = corners == Corners::round ? 0.95 : 1;
  return {faded(toQt(SystemColour::windowBackground, palette), opacity), toQt(SystemColour::separator, palette),
          toQt(SystemColour::primary, palette), toQt(SystemColour::secondary, palette),
          toQt(SystemColour::accent, palette)};
}

void drawTick(QPainter& painter, QRectF const& column, QColor const& colour) {
  QPointF const middle = column.center();
  QPainterPath tick;
  tick.moveTo(middle + QPointF(-3.5, 0.5));
  tick.lineTo(middle + QPointF(-1, 3));
  tick.lineTo(middle + QPointF(3.5, -3.5));
  painter.strokePath(tick, QPen(colour, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

void drawRow(QPainter& painter, QStyleOptionMenuItem const& row, Colours const& colours) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(MenuStyle::font());
  bool const isChosen = row.state.testFlag(QStyle::State_Selected);
  if (isChosen) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours.accent);
    painter.drawRoundedRect(row.rect, kRowRadius, kRowRadius);
  }
  QColor const text = isChosen ? QColor(Qt::white) : colours.text;
  if (row.checked) {
    drawTick(painter, QRectF(row.rect.x(), row.rect.y(), kTickColumn, row.rect.height()), text);
  }
  auto const parts = row.text.split('\t');
  QRect const area = row.rect.adjusted(kTickColumn, 0, -kRightPadding, 0);
  painter.setPen(text);
  painter.drawText(area, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextShowMnemonic | Qt::TextSingleLine, parts.first());
  if (parts.size() > 1) {
    painter.setPen(isChosen ? text : colours.faintText);
    painter.drawText(area, Qt::AlignVCenter | Qt::AlignRight | Qt::TextSingleLine, parts.last());
  }
  painter.restore();
}

}  // namespace

MenuStyle::MenuStyle(Corners corners) : QProxyStyle("Fusion"), corners_(corners) {}

void MenuStyle::drawControl(ControlElement element, QStyleOption const* option, QPainter* painter,
                            QWidget const* widget) const {
  if (element == CE_MenuEmptyArea) return;
  auto const* row = qstyleoption_cast<QStyleOptionMenuItem const*>(option);
  if (element != CE_MenuItem || row == nullptr) {
    QProxyStyle::drawControl(element, option, painter, widget);
    return;
  }
  drawRow(*painter, *row, coloursOf(row->palette, corners_));
}

void MenuStyle::drawPrimitive(PrimitiveElement element, QStyleOption const* option, QPainter* painter,
                              QWidget const* widget) const {
  if (element == PE_FrameMenu) return;
  if (element != PE_PanelMenu) {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    return;
  }
  auto const colours = coloursOf(option->palette, corners_);
  double const radius = corners_ == Corners::round ? kPanelRadius : 0;
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setBrush(colours.panel);
  painter->setPen(QPen(colours.hairline, 1));
  painter->drawRoundedRect(QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
  painter->restore();
}

int MenuStyle::pixelMetric(PixelMetric metric, QStyleOption const* option, QWidget const* widget) const {
  switch (metric) {
    case PM_MenuPanelWidth:
      return 0;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
      return kPanelMargin;
    case PM_MenuDesktopFrameWidth:
      return kScreenMargin;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int MenuStyle::styleHint(StyleHint hint, QStyleOption const* option, QWidget const* widget,
                         QStyleHintReturn* answer) const {
  // Else a long menu has columns, as many as it needs, also beyond the screen's edge.
  if (hint == SH_Menu_Scrollable) return 1;
  return QProxyStyle::styleHint(hint, option, widget, answer);
}

QSize MenuStyle::sizeFromContents(ContentsType type, QStyleOption const* option, QSize const& size,
                                  QWidget const* widget) const {
  auto const* row = qstyleoption_cast<QStyleOptionMenuItem const*>(option);
  if (type != CT_MenuItem || row == nullptr) return QProxyStyle::sizeFromContents(type, option, size, widget);
  QFontMetrics const metrics(font());
  auto const parts = row->text.split('\t');
  int width = kTickColumn + metrics.size(Qt::TextShowMnemonic, parts.first()).width() + kRightPadding;
  if (parts.size() > 1) width += kShortcutGap + metrics.horizontalAdvance(parts.last());
  return {width, kRowHeight};
}

QFont MenuStyle::font() {
  return toQt(view::Font{});
}

}  // namespace morla::linux
