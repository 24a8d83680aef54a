#pragma once

#import <AppKit/AppKit.h>

#include <optional>
#include <string>

#include "base/Lifetime.h"
#include "base/MainLoop.h"
#include "base/ObserverList.h"
#include "platform/Panel.h"
#include "platform/macos/Observation.h"
#include "platform/macos/PanelWindow.h"
#include "platform/macos/nodes/RenderedTree.h"

NS_ASSUME_NONNULL_BEGIN

namespace morla::macos {

class AppKitPanel final : public platform::Panel {
 public:
  AppKitPanel(view::PanelSpec const& spec, view::PanelBehaviour& behaviour, MainLoop& loop);
  ~AppKitPanel() override;

  void setContentSize(Size size) override;
  void setContent(view::Node content) override;
  [[nodiscard]] BottomLeftRect frame() const override;
  void setFrame(BottomLeftRect frame) override;
  void setFrameOrigin(BottomLeftPoint origin) override;
  void centre() override;
  [[nodiscard]] bool isVisible() const override;
  void orderFrontRegardless() override;
  void orderOut() override;
  void close() override;
  [[nodiscard]] Subscription onWillClose(std::function<void()> observer) override;
  [[nodiscard]] Subscription onDidMove(std::function<void()> observer) override;

 private:
  void announceClose();
  void announceMove();
  void trace(char const* event) const;

  std::string name_;
  MainLoop& loop_;
  RenderedTree content_;
  MORLAPanel* window_;
  ObserverList<> closing_;
  ObserverList<> moved_;
  bool isMoveAnnounced_ = false;
  Observation didMove_;
  Lifetime life_;
};

class AppKitPanelHost final : public platform::PanelHost {
 public:
  explicit AppKitPanelHost(MainLoop& loop) : loop_(loop) {}
  [[nodiscard]] std::unique_ptr<platform::Panel> makePanel(view::PanelSpec const& spec,
                                                           view::PanelBehaviour& behaviour) override;
  [[nodiscard]] Size fittingSize(view::Node const& content) override;

 private:
  MainLoop& loop_;
};

}  // namespace morla::macos

NS_ASSUME_NONNULL_END
