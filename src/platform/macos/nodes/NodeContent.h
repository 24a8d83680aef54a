#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <variant>

#include "base/MainLoop.h"
#include "platform/macos/nodes/Layout.h"
#include "view/View.h"

NS_ASSUME_NONNULL_BEGIN

namespace morla::macos {

/// What a node has from those round it.
struct Surroundings {
  MainLoop& loop;
  bool isEnabled = true;
  /// Of the stack in which the node stands; none in a ZStack and for the root.
  std::optional<Axis> stackAxis;
  int depth = 0;
};

/// What of a view receives clicks; the rest of them goes to what is behind, where it may drag the panel.
enum class Clicks {
  none,      ///< a picture
  children,  ///< a stack
  all,       ///< a control
};

/// A node's content as one native view, which stays while the content changes within its kind. Main thread.
class NodeContent {
 public:
  virtual ~NodeContent() = default;
  [[nodiscard]] virtual NSView* view() const = 0;
  /// `content` is of the kind that this was made for. Touches the native view where something differs only.
  virtual void update(view::Node::Content const& content, Surroundings const& surroundings) = 0;

  /// Whether the view is as large as the place it has, or stands in the middle of that at its own size.
  [[nodiscard]] virtual bool fills(Axis /*axis*/) const { return false; }
  /// How firmly the view is no larger than it needs.
  virtual void setHugging(Axis axis, NSLayoutPriority priority) {
    if (fills(axis)) [view() setContentHuggingPriority:priority forOrientation:orientationOf(axis)];
  }
  [[nodiscard]] virtual Clicks clicks() const { return Clicks::none; }
  /// What it is to a screen reader when it has a label; nil for what speaks for itself also without one.
  [[nodiscard]] virtual NSAccessibilityRole _Nullable labelledRole() const { return nil; }
};

template <typename T>
class ContentOf : public NodeContent {
 public:
  void update(view::Node::Content const& content, Surroundings const& surroundings) final {
    show(std::get<T>(content), surroundings);
  }

 private:
  virtual void show(T const& content, Surroundings const& surroundings) = 0;
};

[[nodiscard]] std::unique_ptr<NodeContent> makeContent(view::Node::Content const& content,
                                                       Surroundings const& surroundings);

// One function for each kind; `makeContent` chooses.
[[nodiscard]] std::unique_ptr<NodeContent> makeContentOf(view::HStack const&, Surroundings const&);
[[nodiscard]] std::unique_ptr<NodeContent> makeContentOf(view::VStack const&, Surroundings const&);
[[nodiscard]] std::unique_ptr<NodeContent> makeContentOf(view::ZStack const&, Surroundings const&);
[[nodiscard]] std::unique_ptr<NodeContent> makeContentOf(view::Spacer const&, Surroundings const&);
[[nodiscard]] std::unique_ptr<NodeContent> makeContentOf(view::Divider const&, Surroundings const&);
[[nodiscard]] std::unique_ptr<NodeContent> makeContentOf(view::Text const&, Surroundings const&);
[[nodiscard]] std::unique_ptr<NodeContent> makeContentOf(view::Symbol const&, Surroundings const&);
[[nodiscard]] std::unique_ptr<NodeContent> makeContentOf(view::Canvas const&, Surroundings const&);
[[nodiscard]] std::unique_ptr<NodeContent> makeContentOf(view::Disc const&, Surroundings const&);
[[nodiscard]] std::unique_ptr<NodeContent> makeContentOf(view::Button const&, Surroundings const&);
[[nodiscard]] std::unique_ptr<NodeContent> makeContentOf(view::Toggle const&, Surroundings const&);
[[nodiscard]] std::unique_ptr<NodeContent> makeContentOf(view::Picker const&, Surroundings const&);
[[nodiscard]] std::unique_ptr<NodeContent> makeContentOf(view::TextField const&, Surroundings const&);
[[nodiscard]] std::unique_ptr<NodeContent> makeContentOf(view::Spinner const&, Surroundings const&);

inline std::unique_ptr<NodeContent> makeContent(view::Node::Content const& content, Surroundings const& surroundings) {
  return std::visit([&](auto const& kind) { return makeContentOf(kind, surroundings); }, content);
}

/// Assigns and says whether that changed anything.
template <typename T>
[[nodiscard]] bool differs(T& shown, T const& next) {
  if (shown == next) return false;
  shown = next;
  return true;
}

/// Keeps something that a tree shows no more until a later turn, since it may be what is running just now.
template <typename T>
void retire(MainLoop& loop, std::unique_ptr<T> gone) {
  loop.post([kept = std::shared_ptr<T>(std::move(gone))] {});
}

/// What the user does to a control is a wish. `action` tells it to whoever made the tree; when the trees that this
/// brings about are there, `putBack` makes the control show what they say. The caller may have ended when `action` is
/// over.
inline void carryOut(MainLoop& loop, std::function<void()> const& action, std::function<void()> putBack) {
  action();
  // A new tree is made a turn after the change that asks for it, and the change may have taken a turn of its own.
  loop.post([&loop, putBack = std::move(putBack)]() mutable { loop.post(std::move(putBack)); });
}

}  // namespace morla::macos

NS_ASSUME_NONNULL_END
