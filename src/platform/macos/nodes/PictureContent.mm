#include <optional>

#include "platform/macos/Rects.h"
#include "platform/macos/nodes/Look.h"
#include "platform/macos/nodes/NodeContent.h"
#include "platform/macos/nodes/Views.h"

// What is only looked at.

namespace morla::macos {
namespace {

/// Neither stretched nor squeezed.
void keepSize(NSView* view) {
  for (auto const orientation : {NSLayoutConstraintOrientationHorizontal, NSLayoutConstraintOrientationVertical}) {
    [view setContentHuggingPriority:kKeep forOrientation:orientation];
    [view setContentCompressionResistancePriority:kKeep forOrientation:orientation];
  }
}

/// A square of this side.
class Square {
 public:
  explicit Square(NSView* view)
      : width_([view.widthAnchor constraintEqualToConstant:0]),
        height_([view.heightAnchor constraintEqualToConstant:0]) {
    width_.priority = kFixed;
    height_.priority = kFixed;
    [NSLayoutConstraint activateConstraints:@[ width_, height_ ]];
  }
  void setSide(double side) {
    width_.constant = side;
    height_.constant = side;
  }

 private:
  NSLayoutConstraint* width_;
  NSLayoutConstraint* height_;
};

class SpacerContent final : public ContentOf<view::Spacer> {
 public:
  SpacerContent() : view_([[NSView alloc] initWithFrame:nsRect({})]) {
    for (auto const axis : {Axis::horizontal, Axis::vertical}) {
      withPriority(kSpacerHug, [extentOf(view_, axis) constraintEqualToConstant:0]).active = YES;
    }
  }
  [[nodiscard]] NSView* view() const override { return view_; }
  [[nodiscard]] bool fills(Axis) const override { return true; }

 private:
  void show(view::Spacer const&, Surroundings const&) override {}
  NSView* view_;
};

class DividerContent final : public ContentOf<view::Divider> {
 public:
  explicit DividerContent(std::optional<Axis> stackAxis) : view_([[MORLAShapeView alloc] initWithFrame:nsRect({})]) {
    view_.fill = [NSColor separatorColor];
    auto const along = stackAxis.value_or(Axis::vertical);
    withPriority(kFixed, [extentOf(view_, along) constraintEqualToConstant:1]).active = YES;
  }
  [[nodiscard]] NSView* view() const override { return view_; }
  [[nodiscard]] bool fills(Axis) const override { return true; }

 private:
  void show(view::Divider const&, Surroundings const&) override {}
  MORLAShapeView* view_;
};

class TextContent final : public ContentOf<view::Text> {
 public:
  TextContent() : label_([NSTextField labelWithString:@""]) {
    label_.usesSingleLineMode = NO;
    label_.maximumNumberOfLines = 0;
    label_.lineBreakMode = NSLineBreakByTruncatingTail;
    [label_ setContentCompressionResistancePriority:kKeepText forOrientation:NSLayoutConstraintOrientationHorizontal];
    [label_ setContentCompressionResistancePriority:kKeep forOrientation:NSLayoutConstraintOrientationVertical];
    [label_ setContentHuggingPriority:kKeep forOrientation:NSLayoutConstraintOrientationVertical];
  }
  [[nodiscard]] NSView* view() const override { return label_; }
  // In a wider place the lines go where the alignment says; in a higher one they stand in the middle.
  [[nodiscard]] bool fills(Axis axis) const override { return axis == Axis::horizontal; }

 private:
  void show(view::Text const& text, Surroundings const&) override {
    if (!differs(shown_, std::optional(text))) return;
    label_.stringValue = shownText(text.text);
    label_.font = font(text.font);
    label_.textColor = colour(text.paint);
    label_.alphaValue = text.paint.opacity;
    label_.alignment = nativeAlignment(text.alignment);
  }

  static NSTextAlignment nativeAlignment(view::HorizontalAlignment alignment) {
    switch (alignment) {
      case view::HorizontalAlignment::leading:
        return NSTextAlignmentNatural;
      case view::HorizontalAlignment::centre:
        return NSTextAlignmentCenter;
      case view::HorizontalAlignment::trailing:
        return NSTextAlignmentRight;
    }
    return NSTextAlignmentNatural;
  }

  NSTextField* label_;
  std::optional<view::Text> shown_;
};

class SymbolContent final : public ContentOf<view::Symbol> {
 public:
  SymbolContent() : image_([[NSImageView alloc] initWithFrame:nsRect({})]) { keepSize(image_); }
  [[nodiscard]] NSView* view() const override { return image_; }
  [[nodiscard]] NSAccessibilityRole _Nullable labelledRole() const override { return NSAccessibilityImageRole; }

 private:
  void show(view::Symbol const& symbol, Surroundings const&) override {
    if (!differs(shown_, std::optional(symbol))) return;
    image_.image = [NSImage imageWithSystemSymbolName:shownText(symbol.name) accessibilityDescription:nil];
    image_.symbolConfiguration =
        [NSImageSymbolConfiguration configurationWithPointSize:symbol.font.size
                                                        weight:nativeWeight(symbol.font.weight)];
    image_.contentTintColor = colour(symbol.paint);
    image_.alphaValue = symbol.paint.opacity;
  }

  NSImageView* image_;
  std::optional<view::Symbol> shown_;
};

class CanvasContent final : public ContentOf<view::Canvas> {
 public:
  CanvasContent() : canvas_([[MORLACanvasView alloc] initWithFrame:nsRect({})]) { keepSize(canvas_); }
  [[nodiscard]] NSView* view() const override { return canvas_; }
  [[nodiscard]] NSAccessibilityRole _Nullable labelledRole() const override { return NSAccessibilityImageRole; }

 private:
  void show(view::Canvas const& canvas, Surroundings const&) override {
    if (differs(shown_, std::optional(canvas))) [canvas_ showDrawing:canvas.drawing];
  }

  MORLACanvasView* canvas_;
  std::optional<view::Canvas> shown_;
};

class DiscContent final : public ContentOf<view::Disc> {
 public:
  DiscContent() : shape_([[MORLAShapeView alloc] initWithFrame:nsRect({})]), size_(shape_) {}
  [[nodiscard]] NSView* view() const override { return shape_; }
  [[nodiscard]] NSAccessibilityRole _Nullable labelledRole() const override { return NSAccessibilityImageRole; }

 private:
  void show(view::Disc const& disc, Surroundings const&) override {
    if (!differs(shown_, std::optional(disc))) return;
    size_.setSide(disc.diameter);
    shape_.radius = disc.diameter / 2;
    shape_.fill = colour(disc.fill);
    shape_.alphaValue = disc.fill.opacity;
  }

  MORLAShapeView* shape_;
  Square size_;
  std::optional<view::Disc> shown_;
};

class SpinnerContent final : public ContentOf<view::Spinner> {
 public:
  SpinnerContent() : spinner_([[NSProgressIndicator alloc] initWithFrame:nsRect({})]), size_(spinner_) {
    spinner_.style = NSProgressIndicatorStyleSpinning;
    spinner_.indeterminate = YES;
  }
  [[nodiscard]] NSView* view() const override { return spinner_; }

 private:
  void show(view::Spinner const& spinner, Surroundings const&) override {
    if (!differs(shown_, std::optional(spinner))) return;
    spinner_.controlSize = sizeFor(spinner.diameter);
    size_.setSide(spinner.diameter);
    [spinner_ startAnimation:nil];
  }

  /// The system draws spinners of 10, 16 and 32 points: the largest that is not cut off.
  static NSControlSize sizeFor(double diameter) {
    if (diameter < 16) return NSControlSizeMini;
    return diameter < 32 ? NSControlSizeSmall : NSControlSizeRegular;
  }

  NSProgressIndicator* spinner_;
  Square size_;
  std::optional<view::Spinner> shown_;
};

}  // namespace

std::unique_ptr<NodeContent> makeContentOf(view::Spacer const&, Surroundings const&) {
  return std::make_unique<SpacerContent>();
}

std::unique_ptr<NodeContent> makeContentOf(view::Divider const&, Surroundings const& surroundings) {
  return std::make_unique<DividerContent>(surroundings.stackAxis);
}

std::unique_ptr<NodeContent> makeContentOf(view::Text const&, Surroundings const&) {
  return std::make_unique<TextContent>();
}

std::unique_ptr<NodeContent> makeContentOf(view::Symbol const&, Surroundings const&) {
  return std::make_unique<SymbolContent>();
}

std::unique_ptr<NodeContent> makeContentOf(view::Canvas const&, Surroundings const&) {
  return std::make_unique<CanvasContent>();
}

std::unique_ptr<NodeContent> makeContentOf(view::Disc const&, Surroundings const&) {
  return std::make_unique<DiscContent>();
}

std::unique_ptr<NodeContent> makeContentOf(view::Spinner const&, Surroundings const&) {
  return std::make_unique<SpinnerContent>();
}

}  // namespace morla::macos
