#pragma once

#import <AppKit/AppKit.h>

#include "base/Geometry.h"
#include "base/MainLoop.h"
#include "platform/macos/nodes/RenderedNode.h"
#include "platform/macos/nodes/Views.h"
#include "view/View.h"

NS_ASSUME_NONNULL_BEGIN

namespace morla::macos {

/// A whole tree as the content of a window. Main thread.
class RenderedTree {
 public:
  explicit RenderedTree(MainLoop& loop);
  /// The tree fills it; it is never made larger by the tree.
  [[nodiscard]] NSView* view() const { return frame_; }
  void show(view::Node const& tree);

 private:
  MainLoop& loop_;
  RenderedNode root_;
  MORLAPlaceView* frame_;
};

/// The size that the tree needs to show everything in full.
[[nodiscard]] Size fittingSize(view::Node const& tree, MainLoop& loop);

}  // namespace morla::macos

NS_ASSUME_NONNULL_END
