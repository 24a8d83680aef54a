#include "platform/macos/DrawingPainter.h"

#include "platform/macos/Rects.h"

namespace morla::macos {
namespace {

NSColor* colour(view::Colour const& of) {
  return [NSColor colorWithSRGBRed:of.red green:of.green blue:of.blue alpha:of.alpha];
}

class Pen {
 public:
  explicit Pen(NSPoint origin) : origin_(origin) {}

  void operator()(view::FillOval const& step) const {
    [colour(step.colour) setFill];
    [[NSBezierPath bezierPathWithOvalInRect:placed(step.bounds)] fill];
  }

  void operator()(view::FillRoundedRect const& step) const {
    [colour(step.colour) setFill];
    [roundedRect(step.bounds, step.radius) fill];
  }

  void operator()(view::StrokeRoundedRect const& step) const {
    stroke(roundedRect(step.bounds, step.radius), step.lineWidth, step.colour);
  }

  void operator()(view::StrokeLine const& step) const {
    NSBezierPath* const path = [NSBezierPath bezierPath];
    [path moveToPoint:placed(step.from)];
    [path lineToPoint:placed(step.to)];
    stroke(path, step.lineWidth, step.colour);
  }

 private:
  [[nodiscard]] NSPoint placed(BottomLeftPoint point) const {
    return NSMakePoint(origin_.x + point.x, origin_.y + point.y);
  }
  [[nodiscard]] NSRect placed(BottomLeftRect rect) const {
    auto const origin = placed(rect.origin);
    return NSMakeRect(origin.x, origin.y, rect.size.width, rect.size.height);
  }
  [[nodiscard]] NSBezierPath* roundedRect(BottomLeftRect bounds, double radius) const {
    return [NSBezierPath bezierPathWithRoundedRect:placed(bounds) xRadius:radius yRadius:radius];
  }
  static void stroke(NSBezierPath* path, double lineWidth, view::Colour const& with) {
    [colour(with) setStroke];
    path.lineWidth = lineWidth;
    [path stroke];
  }

  NSPoint origin_;
};

}  // namespace

void draw(view::Drawing const& drawing, NSPoint origin) {
  for (auto const& step : drawing.steps) std::visit(Pen(origin), step);
}

NSImage* makeImage(view::Drawing drawing) {
  return [NSImage imageWithSize:nsSize(drawing.size)
                        flipped:NO
                 drawingHandler:^BOOL(NSRect bounds) {
                   draw(drawing, bounds.origin);
                   return YES;
                 }];
}

}  // namespace morla::macos
