#pragma once

#include <memory>
#include <string>

#include "base/Lifetime.h"
#include "base/ObserverList.h"
#include "platform/Panel.h"
#include "platform/linux/ui/PanelServices.h"
#include "platform/linux/ui/PanelWindow.h"

class QWindow;

namespace morla::linux {

class QtPanel : public platform::Panel {
 public:
  QtPanel(PanelServices const& services, view::PanelSpec const& spec, view::PanelBehaviour& behaviour);
  ~QtPanel() override;

  void setContentSize(Size size) override;
  void setContent(view::Node content) override;
  [[nodiscard]] BottomLeftRect frame() const override { return frame_; }
  void setFrame(BottomLeftRect frame) override;
  void setFrameOrigin(BottomLeftPoint origin) override;
  void centre() override;
  [[nodiscard]] bool isVisible() const override { return isVisible_; }
  void orderFrontRegardless() override;
  void orderOut() override;
  void close() override;
  [[nodiscard]] Subscription onWillClose(std::function<void()> observer) override;
  [[nodiscard]] Subscription onDidMove(std::function<void()> observer) override;

  [[nodiscard]] QWindow const* window() const { return window_->windowHandle(); }

 private:
  /// Shows the frame where it can be seen; the frame itself stays as it was asked for.
  void place();
  void beginDrag(GlobalPoint pointer);
  void drag(GlobalPoint pointer);
  void announceMove();
  void trace(char const* event) const;

  PanelServices services_;
  view::PanelSpec spec_;
  /// May live on for the rest of its own event.
  std::unique_ptr<PanelWindow, PanelWindowRetiring> window_;
  BottomLeftRect frame_;
  GlobalRect shownAt_;
  /// From the shown window's top-left corner to the pointer, while the left button is down.
  GlobalPoint grip_;
  bool isVisible_ = false;
  bool isMoveAnnounced_ = false;
  ObserverList<> didMove_;
  ObserverList<> willClose_;
  Subscription screensDidChange_;
  Lifetime life_;
};

}  // namespace morla::linux
