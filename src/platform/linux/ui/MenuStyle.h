#pragma once

#include <QProxyStyle>

namespace morla::linux {

enum class Corners { square, round };

/// How our menus look: a calm panel with rows that are easy to hit, in the desktop's light or dark palette. Round
/// corners need somebody who blends them with what is behind.
class MenuStyle : public QProxyStyle {
 public:
  explicit MenuStyle(Corners corners);

  void drawControl(ControlElement element, QStyleOption const* option, QPainter* painter,
                   QWidget const* widget) const override;
  void drawPrimitive(PrimitiveElement element, QStyleOption const* option, QPainter* painter,
                     QWidget const* widget) const override;
  [[nodiscard]] int pixelMetric(PixelMetric metric, QStyleOption const* option, QWidget const* widget) const override;
  [[nodiscard]] int styleHint(StyleHint hint, QStyleOption const* option, QWidget const* widget,
                              QStyleHintReturn* answer) const override;
  [[nodiscard]] QSize sizeFromContents(ContentsType type, QStyleOption const* option, QSize const& size,
                                       QWidget const* widget) const override;
  [[nodiscard]] static QFont font();

 private:
  Corners corners_;
};

}  // namespace morla::linux
