#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "base/Geometry.h"
#include "view/Drawing.h"
#include "view/Style.h"

namespace morla::view {

struct Node;

// Whether two trees describe the same is decided by the stacks' and the node's comparisons in View.cpp; they are no
// defaulted ones, since the recursion through the variant makes clang 19 crash on those.

/// What a control does. Two actions always count as equal: in equal trees the same control does the same, and the
/// action of the tree that was set last is the one that runs. Main thread.
template <typename... Arguments>
class Action {
 public:
  Action() = default;
  template <typename Function>
  Action(Function run) : run_(std::move(run)) {}  // NOLINT(google-explicit-constructor): written as a lambda

  void operator()(Arguments... arguments) const {
    if (run_) run_(arguments...);
  }
  [[nodiscard]] explicit operator bool() const { return static_cast<bool>(run_); }
  friend bool operator==(Action const&, Action const&) { return true; }

 private:
  std::function<void(Arguments...)> run_;
};

// What an expression may leave out has an initialiser; g++ warns about any other member that is not given.

enum class HorizontalAlignment { leading, centre, trailing };
enum class VerticalAlignment { top, centre, bottom };

/// Children side by side, `spacing` points apart.
struct HStack {
  std::vector<Node> children;
  double spacing = 8;
  VerticalAlignment alignment = VerticalAlignment::centre;
  friend bool operator==(HStack const&, HStack const&);
};

/// Children below each other, `spacing` points apart.
struct VStack {
  std::vector<Node> children;
  double spacing = 8;
  HorizontalAlignment alignment = HorizontalAlignment::centre;
  friend bool operator==(VStack const&, VStack const&);
};

/// Children on top of each other, the first at the back, each centred.
struct ZStack {
  std::vector<Node> children;
  friend bool operator==(ZStack const&, ZStack const&);
};

/// Takes what its stack has to spare.
struct Spacer {
  friend bool operator==(Spacer const&, Spacer const&) = default;
};

/// A line across its stack, one point thick.
struct Divider {
  friend bool operator==(Divider const&, Divider const&) = default;
};

/// Lines end where the text says so and nowhere else; one that is too long for its place ends in an ellipsis. Control
/// characters show as nothing.
struct Text {
  std::string text;  ///< UTF-8; whatever is not shows as replacement characters
  Font font = {};
  Paint paint = {};
  HorizontalAlignment alignment = HorizontalAlignment::leading;  ///< of the lines to each other
  friend bool operator==(Text const&, Text const&) = default;
};

/// A picture from the system's set.
struct Symbol {
  std::string name;  ///< as the system's set calls it ("doc.fill"); an unknown one shows as nothing
  Font font = {};    ///< as large and heavy as a letter of this font
  Paint paint = {};
  friend bool operator==(Symbol const&, Symbol const&) = default;
};

/// A drawing at its own size.
struct Canvas {
  Drawing drawing;
  friend bool operator==(Canvas const&, Canvas const&) = default;
};

/// A disc, for indicators.
struct Disc {
  double diameter = 8;
  Paint fill = {};
  friend bool operator==(Disc const&, Disc const&) = default;
};

enum class ButtonStyle {
  bordered,
  prominent,  ///< filled with the accent colour; its text is white
};

struct Button {
  std::string title;
  ButtonStyle style = ButtonStyle::bordered;
  Action<> action = {};
  friend bool operator==(Button const&, Button const&) = default;
};

/// An on/off switch. The tree says what it shows: after the user has turned it, the next tree is expected to follow,
/// and where it does not the switch goes back.
struct Toggle {
  bool isOn = false;
  Action<bool> action = {};
  friend bool operator==(Toggle const&, Toggle const&) = default;
};

/// A menu of choices of which one is current; as with `Toggle`, the tree says which.
struct Picker {
  std::vector<std::string> options;
  /// None when the current value is not among the options; the closed picker then shows `unlisted`.
  std::optional<std::size_t> selection = std::nullopt;
  std::string unlisted = {};
  Action<std::size_t> action = {};  ///< with the index of the option that was chosen
  friend bool operator==(Picker const&, Picker const&) = default;
};

/// One line that can be edited. A tree that says the same as the field leaves cursor and selection alone.
struct TextField {
  std::string text;
  std::string placeholder = {};
  Font font = {};
  Action<std::string> action = {};  ///< with the whole text, on every edit
  Action<> onSubmit = {};           ///< on Return
  friend bool operator==(TextField const&, TextField const&) = default;
};

/// Something under way whose end is not known.
struct Spinner {
  double diameter = 16;
  friend bool operator==(Spinner const&, Spinner const&) = default;
};

/// A smallest and a fixed size in points, padding included; what is not given is what the content needs.
struct Frame {
  std::optional<double> width = std::nullopt;
  std::optional<double> height = std::nullopt;
  std::optional<double> minWidth = std::nullopt;
  std::optional<double> minHeight = std::nullopt;
  bool fillsWidth = false;   ///< as wide as the parent allows; a fixed width wins
  bool fillsHeight = false;  ///< as high as the parent allows; a fixed height wins
  friend bool operator==(Frame const&, Frame const&) = default;
};

/// One node of a view, which is a function from state to such a tree. A renderer walks the tree and makes or updates
/// native widgets; it takes no decision of the product.
///
/// From the inside out: the content, the padding round it, the frame (the size of both together), the background behind
/// all of it.
struct Node {
  using Content = std::variant<HStack, VStack, ZStack, Spacer, Divider, Text, Symbol, Canvas, Disc, Button, Toggle,
                               Picker, TextField, Spinner>;

  Content content;
  /// What a screen reader says; empty for what says it itself (a text, a button's title) and for decoration.
  std::string accessibilityLabel;
  Edges padding;
  Frame frame;
  std::optional<RoundedRect> background;
  /// A control that is not enabled is shown faintly and takes no clicks; so are the controls inside a node.
  bool isEnabled = true;
  /// Takes its place and shows nothing.
  bool isHidden = false;
  std::string tooltip;
  /// Tells children of one stack apart where they come and go; unique in its stack, or empty.
  std::string key;

  // Modifiers, for writing trees as expressions.
  [[nodiscard]] Node labelled(std::string text) && { return with(&Node::accessibilityLabel, std::move(text)); }
  [[nodiscard]] Node padded(Edges edges) && { return with(&Node::padding, edges); }
  [[nodiscard]] Node framed(Frame size) && { return with(&Node::frame, size); }
  [[nodiscard]] Node on(RoundedRect shape) && { return with(&Node::background, std::optional(shape)); }
  [[nodiscard]] Node enabled(bool value) && { return with(&Node::isEnabled, value); }
  [[nodiscard]] Node hidden(bool value) && { return with(&Node::isHidden, value); }
  [[nodiscard]] Node explained(std::string text) && { return with(&Node::tooltip, std::move(text)); }
  [[nodiscard]] Node keyed(std::string name) && { return with(&Node::key, std::move(name)); }

  friend bool operator==(Node const&, Node const&);

 private:
  template <typename T>
  Node with(T Node::* member, T value) {
    this->*member = std::move(value);
    return std::move(*this);
  }
};

/// A node of this content without modifiers.
[[nodiscard]] inline Node node(Node::Content content) {
  Node made;
  made.content = std::move(content);
  return made;
}

/// The tree as text, one node a line, indented by two blanks a level: what golden files hold. What has its default
/// value is left out.
[[nodiscard]] std::string dump(Node const& root);

}  // namespace morla::view
