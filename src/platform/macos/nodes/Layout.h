#pragma once

#import <AppKit/AppKit.h>

#include "platform/macos/nodes/Stretching.h"

NS_ASSUME_NONNULL_BEGIN

/// How the views of a tree stand in each other: Auto Layout, in a fixed ladder of priorities.
namespace morla::macos {

// From the strongest. What a window wants for its own size is 500 (AppKit's NSLayoutPriorityWindowSizeStayPut): below
// it, so no tree ever changes its panel's size.
inline constexpr NSLayoutPriority kFixed = 999;     ///< a frame that the tree gives
inline constexpr NSLayoutPriority kRoot = 499;      ///< the tree fills its panel
inline constexpr NSLayoutPriority kKeep = 490;      ///< what a control needs to be seen in full
inline constexpr NSLayoutPriority kFill = 480;      ///< what stretches across its stack
inline constexpr NSLayoutPriority kHug = 260;       ///< a view is no larger than it needs
inline constexpr NSLayoutPriority kKeepText = 250;  ///< a text in full; in a place that is too narrow it yields first
inline constexpr NSLayoutPriority kHugPlace = 200;  ///< a place is no larger than its content; see `hugging`
inline constexpr NSLayoutPriority kStretch = 10;    ///< what stretches gives way to all of these
inline constexpr NSLayoutPriority kSpacerHug = 1;   ///< and a spacer even to that

/// How firmly the place of a node that does not stretch is held to its content's size, `depth` levels below the root:
/// the outer ones yield first, so that what a panel has too much of is round its content and not within it.
[[nodiscard]] inline NSLayoutPriority hugging(int depth) {
  constexpr int kDeepest = 49;
  return kHugPlace + static_cast<NSLayoutPriority>(depth < kDeepest ? depth : kDeepest);
}

/// A view's two ends, middle and extent along one axis.
template <typename Anchor>
struct Span {
  Anchor* _Nonnull begin;
  Anchor* _Nonnull end;
  Anchor* _Nonnull centre;
  NSLayoutDimension* extent;
};

[[nodiscard]] inline Span<NSLayoutXAxisAnchor> horizontalSpan(NSView* view) {
  return {view.leadingAnchor, view.trailingAnchor, view.centerXAnchor, view.widthAnchor};
}
[[nodiscard]] inline Span<NSLayoutYAxisAnchor> verticalSpan(NSView* view) {
  return {view.topAnchor, view.bottomAnchor, view.centerYAnchor, view.heightAnchor};
}
[[nodiscard]] inline NSLayoutDimension* extentOf(NSView* view, Axis axis) {
  return axis == Axis::horizontal ? view.widthAnchor : view.heightAnchor;
}

[[nodiscard]] inline NSLayoutConstraintOrientation orientationOf(Axis axis) {
  return axis == Axis::horizontal ? NSLayoutConstraintOrientationHorizontal : NSLayoutConstraintOrientationVertical;
}
[[nodiscard]] inline Axis across(Axis axis) {
  return axis == Axis::horizontal ? Axis::vertical : Axis::horizontal;
}

[[nodiscard]] inline NSLayoutConstraint* withPriority(NSLayoutPriority priority, NSLayoutConstraint* constraint) {
  constraint.priority = priority;
  return constraint;
}

/// Fills `outer` with `inner` but for the margins.
template <typename Anchor>
void fill(NSMutableArray<NSLayoutConstraint*>* list, Span<Anchor> inner, Span<Anchor> outer, double before,
          double after) {
  [list addObject:[inner.begin constraintEqualToAnchor:outer.begin constant:before]];
  [list addObject:[outer.end constraintEqualToAnchor:inner.end constant:after]];
}

/// Puts `inner` into the middle of what the margins leave of `outer`, which is as large as that needs, and `hug` says
/// how firmly no larger.
template <typename Anchor>
void centre(NSMutableArray<NSLayoutConstraint*>* list, Span<Anchor> inner, Span<Anchor> outer, double before,
            double after, NSLayoutPriority hug) {
  [list addObject:[inner.centre constraintEqualToAnchor:outer.centre constant:(before - after) / 2]];
  [list addObject:withPriority(kKeep, [outer.extent constraintGreaterThanOrEqualToAnchor:inner.extent
                                                                                constant:before + after])];
  [list addObject:withPriority(hug, [outer.extent constraintEqualToAnchor:inner.extent constant:before + after])];
}

/// Constraints that stand and fall together.
class ConstraintSet {
 public:
  ConstraintSet() = default;
  ~ConstraintSet() { [NSLayoutConstraint deactivateConstraints:active_]; }
  ConstraintSet(ConstraintSet const&) = delete;
  ConstraintSet& operator=(ConstraintSet const&) = delete;

  void replace(NSArray<NSLayoutConstraint*>* constraints) {
    [NSLayoutConstraint deactivateConstraints:active_];
    active_ = constraints;
    [NSLayoutConstraint activateConstraints:active_];
  }

 private:
  NSArray<NSLayoutConstraint*>* active_ = [NSArray array];
};

}  // namespace morla::macos

NS_ASSUME_NONNULL_END
