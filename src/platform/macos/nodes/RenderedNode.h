#pragma once

#import <AppKit/AppKit.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/macos/nodes/ChildMatching.h"
#include "platform/macos/nodes/NodeContent.h"
#include "platform/macos/nodes/Views.h"
#include "view/View.h"

NS_ASSUME_NONNULL_BEGIN

namespace morla::macos {

/// A node as native views: a place with padding, frame and background, and the content in it. Main thread.
class RenderedNode {
 public:
  RenderedNode();

  [[nodiscard]] NSView* view() const { return place_; }
  /// Touches the views of what differs from the node before and no others; the actions are the new node's from now on.
  void update(view::Node const& node, Surroundings const& surroundings);

 private:
  /// What the constraints depend on.
  struct Arrangement {
    view::Edges padding;
    view::Frame frame;
    bool stretchesHorizontally = false;
    bool stretchesVertically = false;
    bool fillsHorizontally = false;
    bool fillsVertically = false;
    friend bool operator==(Arrangement const&, Arrangement const&) = default;
  };

  void replaceContent(view::Node::Content const& content, Surroundings const& surroundings);
  void describe(std::string const& label);
  void setBackground(std::optional<view::RoundedRect> const& background);
  void arrange(view::Node const& node, Surroundings const& surroundings);

  MORLAPlaceView* place_;
  MORLAShapeView* _Nullable shape_ = nil;
  std::optional<std::size_t> kind_;
  std::unique_ptr<NodeContent> content_;
  std::string label_;
  std::string tooltip_;
  bool isHidden_ = false;
  std::optional<view::RoundedRect> background_;
  std::optional<Arrangement> arrangement_;
  ConstraintSet constraints_;
};

/// The children of one stack. Main thread.
class ChildNodes {
 public:
  /// Whether other views than before, or the same in another order, are the children's now.
  [[nodiscard]] bool update(std::vector<view::Node> const& children, Surroundings const& surroundings);
  [[nodiscard]] NSArray<NSView*>* views() const;

 private:
  std::vector<ChildIdentity> identities_;
  std::vector<std::unique_ptr<RenderedNode>> nodes_;
};

}  // namespace morla::macos

NS_ASSUME_NONNULL_END
