#pragma once

#include <QRectF>

class QAbstractButton;
class QPainter;
class QPalette;
class QWidget;

namespace morla::linux {

// What the controls have in common: sizes in points, and how they are painted.

inline constexpr int kControlHeight = 26;
inline constexpr double kControlRadius = 6;
inline constexpr double kFaint = 0.4;  ///< how much is left of a control that is not enabled

/// A press that lands on the control is the control's alone, also while it is not enabled; the keyboard reaches it
/// only by the tabulator.
void makeControl(QWidget& control);

/// The body of a bordered control: background, a hairline, and what hovering and pressing add.
void paintControlBody(QPainter& painter, QRectF const& area, QAbstractButton const& control);
enum class Filling { neutral, accent };

/// Round a control that was reached by the keyboard: of the accent colour, or white where the control is filled with
/// it.
void paintFocusRing(QPainter& painter, QRectF const& area, double radius, QWidget const& control, Filling filling);

}  // namespace morla::linux
