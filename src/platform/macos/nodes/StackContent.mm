#include <algorithm>
#include <vector>

#include "platform/macos/Rects.h"
#include "platform/macos/nodes/NodeContent.h"
#include "platform/macos/nodes/RenderedNode.h"

namespace morla::macos {
namespace {

NSLayoutAttribute nativeAlignment(view::HorizontalAlignment alignment) {
  switch (alignment) {
    case view::HorizontalAlignment::leading:
      return NSLayoutAttributeLeading;
    case view::HorizontalAlignment::centre:
      return NSLayoutAttributeCenterX;
    case view::HorizontalAlignment::trailing:
      return NSLayoutAttributeTrailing;
  }
  return NSLayoutAttributeCenterX;
}

NSLayoutAttribute nativeAlignment(view::VerticalAlignment alignment) {
  switch (alignment) {
    case view::VerticalAlignment::top:
      return NSLayoutAttributeTop;
    case view::VerticalAlignment::centre:
      return NSLayoutAttributeCenterY;
    case view::VerticalAlignment::bottom:
      return NSLayoutAttributeBottom;
  }
  return NSLayoutAttributeCenterY;
}

template <typename Stack>
constexpr Axis kAxisOf = Axis::horizontal;
template <>
constexpr Axis kAxisOf<view::VStack> = Axis::vertical;

Surroundings inside(Surroundings surroundings, std::optional<Axis> stackAxis) {
  surroundings.stackAxis = stackAxis;
  ++surroundings.depth;
  return surroundings;
}

/// The native stack gets `views`, in this order; those that stay are not taken out in between.
void setArrangedSubviews(NSStackView* stack, NSArray<NSView*>* views) {
  for (NSView* gone in stack.arrangedSubviews) {
    if (![views containsObject:gone]) [gone removeFromSuperview];
  }
  for (NSUInteger i = 0; i < views.count; ++i) {
    NSArray<NSView*>* const now = stack.arrangedSubviews;
    if (i >= now.count || now[i] != views[i]) [stack insertArrangedSubview:views[i] atIndex:static_cast<NSInteger>(i)];
  }
}

/// HStack and VStack.
template <typename Stack>
class StackContent final : public ContentOf<Stack> {
 public:
  StackContent() : stack_([[NSStackView alloc] initWithFrame:nsRect({})]) {
    stack_.orientation = kAxis == Axis::horizontal ? NSUserInterfaceLayoutOrientationHorizontal
                                                   : NSUserInterfaceLayoutOrientationVertical;
    stack_.distribution = NSStackViewDistributionFill;
  }

  [[nodiscard]] NSView* view() const override { return stack_; }
  [[nodiscard]] bool fills(Axis axis) const override {
    return axis == Axis::horizontal ? stretchesHorizontally_ : stretchesVertically_;
  }
  void setHugging(Axis axis, NSLayoutPriority priority) override {
    [stack_ setHuggingPriority:priority forOrientation:orientationOf(axis)];
  }
  [[nodiscard]] Clicks clicks() const override { return Clicks::children; }
  [[nodiscard]] NSAccessibilityRole _Nullable labelledRole() const override { return NSAccessibilityGroupRole; }

 private:
  static constexpr Axis kAxis = kAxisOf<Stack>;

  /// What of its stack a child wants beyond its own size.
  struct Wish {
    bool isSpacer = false;
    bool fillsAcross = false;
    friend bool operator==(Wish const&, Wish const&) = default;
  };

  void show(Stack const& stack, Surroundings const& surroundings) override {
    if (differs(spacing_, std::optional(stack.spacing))) stack_.spacing = stack.spacing;
    if (differs(alignment_, std::optional(stack.alignment))) stack_.alignment = nativeAlignment(stack.alignment);
    bool const areOthers = children_.update(stack.children, inside(surroundings, kAxis));
    NSArray<NSView*>* const views = children_.views();
    if (areOthers) setArrangedSubviews(stack_, views);
    std::vector<Wish> wishes;
    for (auto const& child : stack.children) wishes.push_back(wishOf(child));
    if (differs(wishes_, wishes) || areOthers) grant(views);
    stretchesHorizontally_ = stretches(stack, Axis::horizontal);
    stretchesVertically_ = stretches(stack, Axis::vertical);
  }

  static Wish wishOf(view::Node const& child) {
    return {std::holds_alternative<view::Spacer>(child.content),
            std::holds_alternative<view::Divider>(child.content) || stretches(child, across(kAxis))};
  }

  void grant(NSArray<NSView*>* views) {
    NSMutableArray<NSLayoutConstraint*>* const list = [NSMutableArray array];
    NSView* firstSpacer = nil;
    for (std::size_t i = 0; i < wishes_.size(); ++i) {
      NSView* const child = views[i];
      if (wishes_[i].fillsAcross) {
        [list addObject:withPriority(kFill, [extentOf(child, across(kAxis))
                                                constraintEqualToAnchor:extentOf(stack_, across(kAxis))])];
      }
      if (!wishes_[i].isSpacer) continue;
      // Several spacers share what there is.
      if (firstSpacer == nil) {
        firstSpacer = child;
      } else {
        [list addObject:withPriority(kFill,
                                     [extentOf(child, kAxis) constraintEqualToAnchor:extentOf(firstSpacer, kAxis)])];
      }
    }
    constraints_.replace(list);
  }

  NSStackView* stack_;
  ChildNodes children_;
  std::optional<double> spacing_;
  std::optional<decltype(Stack::alignment)> alignment_;
  std::vector<Wish> wishes_;
  bool stretchesHorizontally_ = false;
  bool stretchesVertically_ = false;
  ConstraintSet constraints_;
};

class ZStackContent final : public ContentOf<view::ZStack> {
 public:
  ZStackContent() : layers_([[NSView alloc] initWithFrame:nsRect({})]) {}

  [[nodiscard]] NSView* view() const override { return layers_; }
  [[nodiscard]] bool fills(Axis) const override { return true; }
  void setHugging(Axis axis, NSLayoutPriority priority) override {
    (axis == Axis::horizontal ? hugHorizontally_ : hugVertically_) = priority;
    arrange();
  }
  [[nodiscard]] Clicks clicks() const override { return Clicks::children; }
  // Layers make one picture.
  [[nodiscard]] NSAccessibilityRole _Nullable labelledRole() const override { return NSAccessibilityImageRole; }

 private:
  struct Wish {
    bool fillsWidth = false;
    bool fillsHeight = false;
    friend bool operator==(Wish const&, Wish const&) = default;
  };

  void show(view::ZStack const& stack, Surroundings const& surroundings) override {
    bool const areOthers = children_.update(stack.children, inside(surroundings, std::nullopt));
    if (areOthers) layers_.subviews = children_.views();
    std::vector<Wish> wishes;
    for (auto const& child : stack.children) {
      wishes.push_back({stretches(child, Axis::horizontal), stretches(child, Axis::vertical)});
    }
    if (differs(wishes_, wishes) || areOthers) arrange();
  }

  void arrange() {
    NSArray<NSView*>* const views = children_.views();
    NSMutableArray<NSLayoutConstraint*>* const list = [NSMutableArray array];
    for (std::size_t i = 0; i < wishes_.size(); ++i) {
      centre(list, horizontalSpan(views[i]), horizontalSpan(layers_), 0, 0,
             wishes_[i].fillsWidth ? kFill : hugHorizontally_);
      centre(list, verticalSpan(views[i]), verticalSpan(layers_), 0, 0,
             wishes_[i].fillsHeight ? kFill : hugVertically_);
    }
    constraints_.replace(list);
  }

  NSView* layers_;
  ChildNodes children_;
  std::vector<Wish> wishes_;
  NSLayoutPriority hugHorizontally_ = kHug;
  NSLayoutPriority hugVertically_ = kHug;
  ConstraintSet constraints_;
};

}  // namespace

std::unique_ptr<NodeContent> makeContentOf(view::HStack const&, Surroundings const&) {
  return std::make_unique<StackContent<view::HStack>>();
}

std::unique_ptr<NodeContent> makeContentOf(view::VStack const&, Surroundings const&) {
  return std::make_unique<StackContent<view::VStack>>();
}

std::unique_ptr<NodeContent> makeContentOf(view::ZStack const&, Surroundings const&) {
  return std::make_unique<ZStackContent>();
}

}  // namespace morla::macos
