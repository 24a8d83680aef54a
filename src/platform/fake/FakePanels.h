#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/MainLoop.h"
#include "base/ObserverList.h"
#include "platform/Events.h"
#include "platform/Menu.h"
#include "platform/Panel.h"
#include "platform/StatusItem.h"
#include "platform/fake/Journal.h"

namespace morla::fake {

class FakePanel : public platform::Panel {
 public:
  FakePanel(MainLoop& loop, Journal& journal, view::PanelSpec spec, view::PanelBehaviour& behaviour);

  void setContentSize(Size size) override;
  void setContent(view::Node content) override;
  BottomLeftRect frame() const override { return frame_; }
  void setFrameOrigin(BottomLeftPoint origin) override;
  bool isVisible() const override { return isVisible_; }
  void orderFrontRegardless() override;
  void orderOut() override;
  Subscription onDidMove(std::function<void()> observer) override { return didMove_.add(std::move(observer)); }

  [[nodiscard]] view::PanelSpec const& spec() const { return spec_; }
  [[nodiscard]] view::PanelBehaviour const& behaviour() const { return behaviour_; }
  [[nodiscard]] std::optional<view::Node> const& content() const { return content_; }

 private:
  MainLoop& loop_;
  Journal& journal_;
  view::PanelSpec spec_;
  view::PanelBehaviour& behaviour_;
  BottomLeftRect frame_;
  bool isVisible_ = false;
  bool isMoveDue_ = false;
  std::optional<view::Node> content_;
  std::shared_ptr<FakePanel*> self_ = std::make_shared<FakePanel*>(this);
  ObserverList<> didMove_;
};

class FakePanelHost : public platform::PanelHost {
 public:
  FakePanelHost(MainLoop& loop, Journal& journal) : loop_(loop), journal_(journal) {}
  std::unique_ptr<platform::Panel> makePanel(view::PanelSpec const& spec, view::PanelBehaviour& behaviour) override;

  /// Every panel made, in order; a test looks only at those whose owner still lives.
  std::vector<FakePanel*> panels;

 private:
  MainLoop& loop_;
  Journal& journal_;
};

class FakeStatusBar : public platform::StatusBar {
 public:
  class Button : public platform::StatusItemButton {
   public:
    void setImage(view::Drawing const& drawing) override { image = drawing; }
    void setAction(std::function<void(StatusItemButton&)> action) override { action_ = std::move(action); }
    std::optional<BottomLeftRect> frameOnScreen() const override { return BottomLeftRect{{1800, 1056}, {24, 24}}; }
    void click() { action_(*this); }

    std::optional<view::Drawing> image;

   private:
    std::function<void(StatusItemButton&)> action_;
  };

  explicit FakeStatusBar(Journal& journal) : journal_(journal) {}
  std::unique_ptr<platform::StatusItem> makeStatusItem(double length) override;

  Button button;
  bool givesButton = true;

 private:
  Journal& journal_;
};

class FakeMenuHost : public platform::MenuHost {
 public:
  struct Shown {
    platform::Menu menu;
    BottomLeftPoint at;
  };
  void popUp(platform::Menu const& menu, BottomLeftPoint at) override { shown.push_back({menu, at}); }
  std::vector<Shown> shown;
};

class FakeEventMonitors : public platform::EventMonitors {
 public:
  explicit FakeEventMonitors(Journal& journal) : journal_(journal) {}
  Subscription addLocalMonitor(platform::EventMask mask, Handler handler) override;

  /// Sends an event past every monitor that wants its kind: consumed as soon as one says so.
  platform::MonitorDecision send(platform::MouseEvent const& event);

 private:
  struct Monitor {
    platform::EventMask mask;
    Handler handler;
  };
  Journal& journal_;
  std::vector<std::shared_ptr<Monitor>> monitors_;
};

class FakePointer : public platform::Pointer {
 public:
  BottomLeftPoint location() const override { return at; }
  BottomLeftPoint at;
};

}  // namespace morla::fake
