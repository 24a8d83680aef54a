#pragma once

#import <AppKit/AppKit.h>

#include <optional>
#include <string>

#include "base/Lifetime.h"
#include "base/MainLoop.h"
#include "base/ObserverList.h"
#include "platform/Panel.h"
#include "platform/macos/NodeView.h"
#include "platform/macos/Observation.h"

NS_ASSUME_NONNULL_BEGIN

/// The one native class of all panels; what their classes decide for themselves, it asks the behaviour.
@interface MORLAPanel : NSPanel
/// The panel that this window is; null once that has ended.
@property(nonatomic, nullable) morla::platform::Panel* owner;
- (instancetype)initWithSpec:(morla::view::PanelSpec const&)spec
                   behaviour:(morla::view::PanelBehaviour&)behaviour NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backingStoreType
                              defer:(BOOL)flag NS_UNAVAILABLE;
@end

namespace morla::macos {

class AppKitPanel final : public platform::Panel {
 public:
  AppKitPanel(view::PanelSpec const& spec, view::PanelBehaviour& behaviour, MainLoop& loop);
  ~AppKitPanel() override;

  void setContentSize(Size size) override;
  void setContent(view::Node content) override;
  [[nodiscard]] BottomLeftRect frame() const override;
  void setFrameOrigin(BottomLeftPoint origin) override;
  [[nodiscard]] bool isVisible() const override;
  void orderFrontRegardless() override;
  void orderOut() override;
  [[nodiscard]] Subscription onDidMove(std::function<void()> observer) override;

 private:
  void announceMove();
  void trace(char const* event) const;

  std::string name_;
  MainLoop& loop_;
  MORLAPanel* window_;
  MORLANodeView* content_;
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

 private:
  MainLoop& loop_;
};

}  // namespace morla::macos

NS_ASSUME_NONNULL_END
