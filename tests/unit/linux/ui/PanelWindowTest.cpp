#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>

#include "unit/linux/ui/X11Test.h"

namespace morla::linux {
namespace {

using testing::ElementsAre;
using view::node;
using view::PanelEvent;

/// A behaviour that remembers what it was shown.
struct Listening : view::PanelBehaviour {
  explicit Listening(bool canBeKey) : canBeKey_(canBeKey) {}
  [[nodiscard]] bool canBecomeKey() const override { return canBeKey_; }
  [[nodiscard]] bool canBecomeMain() const override { return false; }
  void sendEvent(PanelEvent event, std::function<void()> const& passOn) override {
    events.push_back(event);
    if (doesPassOn) passOn();
    log.push_back("after");
  }

  std::vector<PanelEvent> events;
  std::vector<std::string> log;
  bool doesPassOn = true;

 private:
  bool canBeKey_;
};

view::PanelSpec windowSpec(bool isFullSize) {
  view::PanelSpec spec;
  spec.name = "AlertePanel";
  spec.title = "Alertes";
  spec.styleMask = {view::kTitled.bits | view::kClosable.bits | view::kNonactivatingPanel.bits};
  if (isFullSize) spec.styleMask.bits |= view::kFullSizeContentView.bits;
  spec.hasTransparentTitleBar = isFullSize;
  spec.isMovableByBackground = isFullSize;
  spec.level = view::Level::floating;
  spec.contentRect = {{100, 100}, {240, 120}};
  return spec;
}

class PanelWindowTest : public X11Test {
 protected:
  std::unique_ptr<platform::Panel> open(view::PanelSpec const& spec, view::PanelBehaviour& behaviour,
                                        view::Node const& content) {
    auto panel = ui_->panels().makePanel(spec, behaviour);
    panel->setContent(content);
    panel->orderFrontRegardless();
    settle();
    return panel;
  }
  XWindowId window() { return client_.find("Alertes"); }

  /// A button in the middle of the content, 100 x 26 points.
  view::Node button(std::function<void()> action) {
    view::Frame frame;
    frame.width = 100;
    return node(
        view::HStack{{node(view::Button{"Réessayer", view::ButtonStyle::bordered, std::move(action)}).framed(frame)}});
  }
};

TEST_F(PanelWindowTest, ATitleBarStandsAboveTheContent) {
  NeverKey behaviour;
  auto const panel = ui_->panels().makePanel(windowSpec(false), behaviour);
  EXPECT_EQ(panel->frame(), (BottomLeftRect{{100, 100}, {240, 148}}));
  panel->setContentSize({200, 50});
  EXPECT_EQ(panel->frame(), (BottomLeftRect{{100, 100}, {200, 78}}));
}

TEST_F(PanelWindowTest, AFullSizeContentTakesThePlaceOfTheTitleBar) {
  NeverKey behaviour;
  auto const panel = ui_->panels().makePanel(windowSpec(true), behaviour);
  EXPECT_EQ(panel->frame(), (BottomLeftRect{{100, 100}, {240, 120}}));
}

TEST_F(PanelWindowTest, StandsInTheExactMiddleOfTheMainDisplay) {
  NeverKey behaviour;
  auto const panel = ui_->panels().makePanel(windowSpec(true), behaviour);
  panel->centre();
  double const width = PrivateDesktop::kMonitorWidth / scale();
  EXPECT_EQ(panel->frame(), (BottomLeftRect{{(width - 240) / 2, (screenHeight() - 120) / 2}, {240, 120}}));
}

TEST_F(PanelWindowTest, TakesAFrame) {
  NeverKey behaviour;
  auto const panel = open(windowSpec(true), behaviour, button([] {}));
  panel->setFrame({{50, 60}, {300, 200}});
  EXPECT_EQ(panel->frame(), (BottomLeftRect{{50, 60}, {300, 200}}));
  EXPECT_TRUE(runUntilSeen([&] { return client_.frame(window()) == pixelRect(BottomLeftRect{{50, 60}, {300, 200}}); }));
}

TEST_F(PanelWindowTest, ShowsItsBehaviourAClickBeforeTheControlHasIt) {
  Listening behaviour(true);
  auto const panel = open(windowSpec(true), behaviour, button([&] { behaviour.log.push_back("action"); }));
  client_.click(pixels({220, 160}), 1);
  ASSERT_TRUE(runUntilSeen([&] { return behaviour.log.size() == 3; }));
  EXPECT_THAT(behaviour.events, ElementsAre(PanelEvent::leftMouseDown, PanelEvent::leftMouseUp));
  EXPECT_THAT(behaviour.log, ElementsAre("after", "action", "after"));
}

TEST_F(PanelWindowTest, AClickThatIsNotPassedOnReachesNoControl) {
  Listening behaviour(true);
  behaviour.doesPassOn = false;
  bool isPressed = false;
  auto const panel = open(windowSpec(true), behaviour, button([&] { isPressed = true; }));
  client_.click(pixels({220, 160}), 1);
  ASSERT_TRUE(runUntilSeen([&] { return behaviour.events.size() == 2; }));
  settle();
  EXPECT_FALSE(isPressed);
}

TEST_F(PanelWindowTest, TakesTheKeyboardOnAClickAndGivesItBackWhenItGoes) {
  auto const other = client_.openWindow("Other", DesktopClient::Form::normal, {600, 100, 300, 200});
  Listening behaviour(true);
  auto const panel = open(windowSpec(true), behaviour, button([] {}));
  EXPECT_EQ(client_.focus(), other) << "not by being shown";
  client_.click(pixels({300, 120}), 1);
  EXPECT_TRUE(runUntilSeen([&] { return behaviour.events.size() == 2 && client_.focus() == window(); }));
  panel->orderOut();
  EXPECT_TRUE(runUntilSeen([&] { return client_.focus() == other; }));
  client_.closeWindow(other);
}

TEST_F(PanelWindowTest, GivesTheKeyboardBackWhenItIsDestroyed) {
  auto const other = client_.openWindow("Other", DesktopClient::Form::normal, {600, 100, 300, 200});
  Listening behaviour(true);
  auto panel = open(windowSpec(true), behaviour, button([] {}));
  client_.click(pixels({300, 120}), 1);
  ASSERT_TRUE(runUntilSeen([&] { return behaviour.events.size() == 2 && client_.focus() == window(); }));
  panel.reset();
  EXPECT_TRUE(runUntilSeen([&] { return client_.focus() == other; }));
  client_.closeWindow(other);
}

TEST_F(PanelWindowTest, NeverTakesTheKeyboardWhereItsBehaviourRefuses) {
  auto const other = client_.openWindow("Other", DesktopClient::Form::normal, {600, 100, 300, 200});
  Listening behaviour(false);
  auto const panel = open(windowSpec(true), behaviour, button([] {}));
  client_.click(pixels({220, 160}), 1);
  ASSERT_TRUE(runUntilSeen([&] { return behaviour.events.size() == 2; }));
  settle();
  EXPECT_EQ(client_.focus(), other);
  client_.closeWindow(other);
}

TEST_F(PanelWindowTest, ItsCloseButtonTellsAndHidesIt) {
  Listening behaviour(true);
  auto const panel = open(windowSpec(true), behaviour, button([] {}));
  bool wasVisible = false;
  auto const closing = panel->onWillClose([&] { wasVisible = panel->isVisible(); });
  client_.click(pixels({114, 206}), 1);
  ASSERT_TRUE(runUntilSeen([&] { return !panel->isVisible(); }));
  EXPECT_TRUE(wasVisible) << "told before it went";
  panel->orderFrontRegardless();
  EXPECT_TRUE(client_.isShown(window()));
}

TEST_F(PanelWindowTest, EscapeClosesItWhileItHasTheKeyboard) {
  Listening behaviour(true);
  auto const panel = open(windowSpec(true), behaviour, button([] {}));
  client_.click(pixels({300, 120}), 1);
  ASSERT_TRUE(runUntilSeen([&] { return QApplication::activeWindow() != nullptr; }));
  client_.typeEscape();
  EXPECT_TRUE(runUntilSeen([&] { return !panel->isVisible(); }));
}

TEST_F(PanelWindowTest, MayBeDestroyedByItsOwnAction) {
  Listening behaviour(true);
  std::unique_ptr<platform::Panel> panel;
  panel = open(windowSpec(true), behaviour, button([&] { panel.reset(); }));
  client_.click(pixels({220, 160}), 1);
  EXPECT_TRUE(runUntilSeen([&] { return panel == nullptr; }));
  settle();
}

TEST_F(PanelWindowTest, IsDraggedByItsBackgroundButNotByItsControls) {
  NeverKey behaviour;
  auto const panel = open(windowSpec(true), behaviour, button([] {}));
  auto const drag = [&](BottomLeftPoint from) {
    client_.movePointer(pixels(from));
    client_.press(1);
    client_.movePointer(pixels({from.x + 30, from.y + 20}));
    client_.release(1);
    client_.movePointer({5, 5});
  };
  drag({220, 160});
  drag({300, 120});
  EXPECT_TRUE(runUntilSeen([&] { return panel->frame().origin == BottomLeftPoint{130, 120}; }));
}

TEST_F(PanelWindowTest, IsDraggedByItsTitleBarAlone) {
  NeverKey behaviour;
  auto const panel = open(windowSpec(false), behaviour, button([] {}));
  auto const drag = [&](BottomLeftPoint from) {
    client_.movePointer(pixels(from));
    client_.press(1);
    client_.movePointer(pixels({from.x + 30, from.y + 20}));
    client_.release(1);
    client_.movePointer({5, 5});
  };
  drag({300, 110});
  drag({300, 234});
  EXPECT_TRUE(runUntilSeen([&] { return panel->frame().origin == BottomLeftPoint{130, 120}; }));
}

TEST_F(PanelWindowTest, ItsListOpensOnAPressWithoutMovingTheFocusAndEndsTheClickWhenItGoes) {
  auto const other = client_.openWindow("Other", DesktopClient::Form::normal, {600, 100, 300, 200});
  Listening behaviour(false);
  std::vector<std::size_t> chosen;
  view::Picker picker{{"—", "400"}, 0, "", [&](std::size_t option) { chosen.push_back(option); }};
  auto const panel = open(windowSpec(true), behaviour, node(view::HStack{{node(picker)}}));
  client_.click(pixels({220, 160}), 1);
  ASSERT_TRUE(runUntilSeen([] { return QApplication::activePopupWidget() != nullptr; }));
  auto* const list = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(list, nullptr);
  ASSERT_TRUE(runUntilSeen([&] { return client_.isShown(list->winId()); }));
  EXPECT_EQ(client_.focus(), other);
  auto const centre = list->mapToGlobal(list->actionGeometry(list->actions().at(1)).center());
  client_.click({static_cast<int>(centre.x() * scale()), static_cast<int>(centre.y() * scale())}, 1);
  EXPECT_THAT(behaviour.events, ElementsAre(PanelEvent::leftMouseDown)) << "the release belongs to the list";
  ASSERT_TRUE(runUntilSeen([&] { return !chosen.empty(); }));
  EXPECT_THAT(chosen, ElementsAre(1U));
  EXPECT_THAT(behaviour.events, ElementsAre(PanelEvent::leftMouseDown, PanelEvent::leftMouseUp));
  client_.closeWindow(other);
}

TEST_F(PanelWindowTest, IsCalledByItsTitle) {
  NeverKey behaviour;
  auto const panel = open(windowSpec(true), behaviour, button([] {}));
  QStringList names;
  for (auto* const widget : QApplication::topLevelWidgets()) {
    if (auto* const interface = QAccessible::queryAccessibleInterface(widget)) {
      names << interface->text(QAccessible::Name);
    }
  }
  EXPECT_TRUE(names.contains("Alertes")) << names.join(", ").toStdString();
}

TEST_F(PanelWindowTest, SaysWhatATreeNeedsWithoutShowingAnything) {
  auto const windows = QApplication::topLevelWidgets().size();
  EXPECT_EQ(ui_->panels().fittingSize(button([] {})), (Size{100, 26}));
  EXPECT_EQ(QApplication::topLevelWidgets().size(), windows);
}

}  // namespace
}  // namespace morla::linux
