#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/MainLoop.h"
#include "base/ObserverList.h"
#include "platform/Events.h"
#include "platform/Menu.h"
#include "platform/Panel.h"
#include "platform/StatusItem.h"
#include "platform/fake/Journal.h"

namespace morla::fake {

/// A panel that shows nothing, and what a test does with it in the user's place. An action of the user that a real
/// panel would not let through (no such control, a disabled or hidden one) ends the test. Its entries in the journal
/// begin with the name in its specification, or "panel".
class FakePanel : public platform::Panel {
 public:
  FakePanel(MainLoop& loop, Journal& journal, view::PanelSpec spec, view::PanelBehaviour& behaviour,
            std::vector<FakePanel*>& livePanels);
  ~FakePanel() override;
  FakePanel(FakePanel const&) = delete;
  FakePanel& operator=(FakePanel const&) = delete;

  void setContentSize(Size size) override;
  void setContent(view::Node content) override;
  BottomLeftRect frame() const override { return frame_; }
  void setFrame(BottomLeftRect frame) override;
  void setFrameOrigin(BottomLeftPoint origin) override;
  void centre() override;
  bool isVisible() const override { return isVisible_; }
  void orderFrontRegardless() override;
  void orderOut() override;
  void close() override;
  Subscription onWillClose(std::function<void()> observer) override { return willClose_.add(std::move(observer)); }
  Subscription onDidMove(std::function<void()> observer) override { return didMove_.add(std::move(observer)); }

  [[nodiscard]] view::PanelSpec const& spec() const { return spec_; }
  [[nodiscard]] view::PanelBehaviour const& behaviour() const { return behaviour_; }
  [[nodiscard]] std::optional<view::Node> const& content() const { return content_; }
  /// How often the content became another one: what would have touched a widget.
  [[nodiscard]] int contentChanges() const { return contentChanges_; }

  /// The node of the content whose accessibility label, title or text is `name`, or null.
  [[nodiscard]] view::Node const* find(std::string_view name) const;
  /// As above, of the nodes that a user can work.
  [[nodiscard]] view::Node const* findControl(std::string_view name) const;

  /// The user clicks a button.
  void press(std::string_view title);
  /// The user clicks a switch.
  void turn(std::string_view label);
  /// The user opens a picker with the button down and releases it on an option; the release is the menu's own.
  void choose(std::string_view label, std::string_view option);
  /// The user drags the panel by its background.
  void dragTo(BottomLeftPoint origin) { moveTo(origin); }
  /// An event where there is no control.
  void send(view::PanelEvent event) {
    behaviour_.sendEvent(event, [] {});
  }

 private:
  void moveTo(BottomLeftPoint origin);
  void note(std::string const& entry);

  MainLoop& loop_;
  Journal& journal_;
  view::PanelSpec spec_;
  view::PanelBehaviour& behaviour_;
  std::vector<FakePanel*>& livePanels_;
  BottomLeftRect frame_;
  bool isVisible_ = false;
  bool isMoveDue_ = false;
  std::optional<view::Node> content_;
  int contentChanges_ = 0;
  std::shared_ptr<FakePanel*> self_ = std::make_shared<FakePanel*>(this);
  ObserverList<> willClose_;
  ObserverList<> didMove_;
};

class FakePanelHost : public platform::PanelHost {
 public:
  /// The frame of the only display.
  static constexpr BottomLeftRect kDisplay{{0, 0}, {1920, 1080}};

  FakePanelHost(MainLoop& loop, Journal& journal) : loop_(loop), journal_(journal) {}
  std::unique_ptr<platform::Panel> makePanel(view::PanelSpec const& spec, view::PanelBehaviour& behaviour) override;
  /// The fixed width of the tree, else 100; 10 points of height for each of its nodes and the root's padding.
  Size fittingSize(view::Node const& content) override;

  /// The panel of this name that was made last and still lives, or null.
  [[nodiscard]] FakePanel* find(std::string_view name) const;
  /// As above; ends the test when there is none.
  [[nodiscard]] FakePanel& panel(std::string_view name) const;

  /// Every living panel, in order of making.
  std::vector<FakePanel*> panels;
  int measurements = 0;  ///< how often a fitting size was asked for

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
