#pragma once

#include <functional>
#include <memory>

#include "base/Geometry.h"
#include "base/Subscription.h"
#include "view/PanelSpec.h"
#include "view/View.h"

namespace morla::platform {

/// A floating window of ours. Main thread. Hidden until it is ordered to the front; never takes the focus by being
/// shown.
class Panel {
 public:
  virtual ~Panel() = default;

  /// The size of the content; the frame's origin stays.
  virtual void setContentSize(Size size) = 0;
  /// Shows the tree, filling the content's place: updates the native controls in place, so that an open menu stays open
  /// and a field keeps its cursor. A tree that equals the one before touches none of them.
  virtual void setContent(view::Node content) = 0;

  /// As it was asked for, also while the panel is shown elsewhere because that place is on no display.
  [[nodiscard]] virtual BottomLeftRect frame() const = 0;
  virtual void setFrame(BottomLeftRect frame) = 0;
  virtual void setFrameOrigin(BottomLeftPoint origin) = 0;
  /// In the middle of the main display.
  virtual void centre() = 0;

  [[nodiscard]] virtual bool isVisible() const = 0;
  /// Shows the panel in front of the others of its level, without activating this program.
  virtual void orderFrontRegardless() = 0;
  virtual void orderOut() = 0;
  /// What the panel's close button does: tells whoever observes `onWillClose`, then hides the panel, which can be shown
  /// again.
  virtual void close() = 0;
  [[nodiscard]] virtual Subscription onWillClose(std::function<void()> observer) = 0;

  /// Calls `observer` after the panel moved, by the user or by us; at most once a turn of the loop.
  [[nodiscard]] virtual Subscription onDidMove(std::function<void()> observer) = 0;
};

class PanelHost {
 public:
  virtual ~PanelHost() = default;
  /// Main thread. `behaviour` outlives the panel.
  [[nodiscard]] virtual std::unique_ptr<Panel> makePanel(view::PanelSpec const& spec,
                                                         view::PanelBehaviour& behaviour) = 0;
  /// Main thread. The size that the tree needs to show everything in full.
  [[nodiscard]] virtual Size fittingSize(view::Node const& content) = 0;
};

}  // namespace morla::platform
