#include "platform/fake/FakePlatform.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace morla::fake {
namespace {

TEST(FakeWorkspace, TellsOfAnActivationOnlyWhenTheApplicationDiffers) {
  FakePlatform platform;
  int told = 0;
  auto const subscription = platform.workspace.onActivated([&told] { ++told; });
  platform.workspace.userActivates(platform::RunningApplication{7, "Notes", "com.example.notes"});
  platform.workspace.userActivates(platform::RunningApplication{7, "Notes", "com.example.notes"});
  EXPECT_EQ(told, 1);
  platform.workspace.activateSelf();
  EXPECT_EQ(told, 2);
  EXPECT_EQ(platform.workspace.frontmostApplication(), FakePlatform::self());
}

TEST(FakeWorkspace, ActivatingAnApplicationThatHasEndedChangesNothing) {
  FakePlatform platform;
  platform.workspace.activate(platform::RunningApplication{7, "Notes", "com.example.notes"});
  EXPECT_EQ(platform.workspace.frontmostApplication(), std::nullopt);
}

TEST(FakePanel, TellsOfManyMovesInOneTurnOnce) {
  FakePlatform platform;
  struct Behaviour : view::PanelBehaviour {
    bool canBecomeKey() const override { return false; }
    bool canBecomeMain() const override { return false; }
  } behaviour;
  auto const panel = platform.panels.makePanel({}, behaviour);
  int moves = 0;
  auto const subscription = panel->onDidMove([&moves] { ++moves; });
  panel->setFrameOrigin({1, 1});
  panel->setFrameOrigin({2, 2});
  platform.loop.runReady();
  EXPECT_EQ(moves, 1);
  panel->setFrameOrigin({2, 2});
  platform.loop.runReady();
  EXPECT_EQ(moves, 1);
}

/// A panel with one control of each kind, whose clicks are noted.
struct PanelWorld {
  struct Behaviour : view::PanelBehaviour {
    explicit Behaviour(std::vector<std::string>& notes) : notes_(notes) {}
    bool canBecomeKey() const override { return true; }
    bool canBecomeMain() const override { return false; }
    void sendEvent(view::PanelEvent event, std::function<void()> const& passOn) override {
      notes_.push_back("event " + std::to_string(static_cast<int>(event)));
      passOn();
    }
    std::vector<std::string>& notes_;
  };

  std::vector<std::string> notes;
  Behaviour behaviour{notes};
  FakePlatform platform;
  std::unique_ptr<platform::Panel> owner = platform.panels.makePanel(spec(), behaviour);
  FakePanel& panel = platform.panels.panel("Panneau");

  static view::PanelSpec spec() {
    view::PanelSpec spec;
    spec.name = "Panneau";
    spec.contentRect = {{0, 0}, {100, 50}};
    return spec;
  }
  view::Node controls(bool isEnabled = true) {
    using namespace view;
    return node(
               HStack{{node(Text{"Titre"}), node(Button{"Bouton", {}, [this] { notes.emplace_back("press"); }}),
                       node(Toggle{true, [this](bool on) { notes.emplace_back(on ? "on" : "off"); }}).labelled("Titre"),
                       node(Picker{{"a", "b"}, 0, "", [this](std::size_t i) { notes.push_back(std::to_string(i)); }})
                           .labelled("Choix")}})
        .enabled(isEnabled);
  }
};

TEST(FakePanel, LetsItsUserWorkTheControlsThroughThePanelsOwnHandlingOfClicks) {
  PanelWorld world;
  world.panel.setContent(world.controls());
  world.panel.press("Bouton");
  world.panel.turn("Titre");
  world.panel.choose("Choix", "b");
  world.panel.send(view::PanelEvent::rightMouseDown);
  EXPECT_EQ(world.notes, (std::vector<std::string>{"event 0", "event 1", "press", "event 0", "event 1", "off",
                                                   "event 0", "1", "event 2"}));
}

TEST(FakePanelDeathTest, EndsTheTestWhereAUserCouldDoNothing) {
  PanelWorld world;
  EXPECT_DEATH(world.panel.press("Bouton"), "not there");
  world.panel.setContent(world.controls());
  EXPECT_DEATH(world.panel.press("Titre"), "not there") << "a text and a switch are no buttons";
  EXPECT_DEATH(world.panel.choose("Choix", "c"), "not there");
  world.panel.setContent(world.controls(false));
  EXPECT_DEATH(world.panel.turn("Titre"), "disabled");
  world.panel.setContent(world.controls().hidden(true));
  EXPECT_DEATH(world.panel.press("Bouton"), "hidden");
  EXPECT_DEATH((void)world.platform.panels.panel("Autre"), "not there");
}

TEST(FakePanel, MayEndWhileItIsBeingClosed) {
  FakePlatform platform;
  struct Behaviour : view::PanelBehaviour {
    bool canBecomeKey() const override { return false; }
    bool canBecomeMain() const override { return false; }
  } behaviour;
  auto panel = platform.panels.makePanel({}, behaviour);
  int closings = 0;
  auto const subscription = panel->onWillClose([&] {
    ++closings;
    panel.reset();
  });
  panel->close();
  EXPECT_EQ(closings, 1);
  EXPECT_TRUE(platform.panels.panels.empty());
}

TEST(FakePanel, FindsAControlBeforeATextOfTheSameName) {
  PanelWorld world;
  EXPECT_EQ(world.panel.find("Titre"), nullptr);
  world.panel.setContent(world.controls());
  EXPECT_TRUE(std::holds_alternative<view::Text>(world.panel.find("Titre")->content));
  EXPECT_TRUE(std::holds_alternative<view::Toggle>(world.panel.findControl("Titre")->content));
  EXPECT_EQ(world.panel.findControl("Autre"), nullptr);
}

TEST(FakePanel, CountsTheContentsThatDiffer) {
  PanelWorld world;
  EXPECT_EQ(world.panel.contentChanges(), 0);
  world.panel.setContent(world.controls());
  world.panel.setContent(world.controls());
  EXPECT_EQ(world.panel.contentChanges(), 1);
  world.panel.setContent(world.controls(false));
  EXPECT_EQ(world.panel.contentChanges(), 2);
}

TEST(FakePanel, TellsOfItsClosingWhileItIsStillOnTheScreen) {
  PanelWorld world;
  world.panel.orderFrontRegardless();
  bool wasVisible = false;
  auto const subscription = world.panel.onWillClose([&] { wasVisible = world.panel.isVisible(); });
  world.panel.close();
  EXPECT_TRUE(wasVisible);
  EXPECT_FALSE(world.panel.isVisible());
  world.panel.orderFrontRegardless();
  EXPECT_TRUE(world.panel.isVisible()) << "a closed panel can be shown again";
}

TEST(FakePanel, IsPlacedResizedAndCentred) {
  PanelWorld world;
  int moves = 0;
  auto const subscription = world.panel.onDidMove([&moves] { ++moves; });
  world.panel.setFrame({{0, 0}, {200, 80}});
  world.platform.loop.runReady();
  EXPECT_EQ(moves, 0) << "a resize is no move";
  world.panel.setFrame({{1, 2}, {200, 80}});
  EXPECT_EQ(world.panel.frame(), (BottomLeftRect{{1, 2}, {200, 80}}));
  world.panel.centre();
  EXPECT_EQ(world.panel.frame(), (BottomLeftRect{{860, 500}, {200, 80}}));
  world.platform.loop.runReady();
  EXPECT_EQ(moves, 1);
}

TEST(FakePanelHost, KnowsThePanelsThatLive) {
  PanelWorld world;
  EXPECT_EQ(world.platform.panels.find("Panneau"), &world.panel);
  auto const second = world.platform.panels.makePanel(PanelWorld::spec(), world.behaviour);
  EXPECT_EQ(world.platform.panels.find("Panneau"), second.get());
  world.owner.reset();
  EXPECT_EQ(world.platform.panels.panels.size(), 1u);
}

TEST(FakePanelHost, ATreeWithMoreNodesIsHigherAndAFixedWidthIsKept) {
  PanelWorld world;
  auto const one = world.platform.panels.fittingSize(view::node(view::Spacer{}));
  auto const many = world.platform.panels.fittingSize(world.controls().framed({.width = 320}));
  EXPECT_GT(many.height, one.height);
  EXPECT_EQ(many.width, 320);
}

TEST(FakeEventMonitors, ConsumedEventsReachNoFurtherMonitor) {
  FakePlatform platform;
  int seen = 0;
  auto const first = platform.eventMonitors.addLocalMonitor(
      platform::kLeftMouseDown, [](auto const&) { return platform::MonitorDecision::consume; });
  auto const second =
      platform.eventMonitors.addLocalMonitor(platform::kLeftMouseDown | platform::kLeftMouseUp, [&seen](auto const&) {
        ++seen;
        return platform::MonitorDecision::pass;
      });
  EXPECT_EQ(platform.eventMonitors.send({platform::MouseEventKind::leftDown, nullptr, {}}),
            platform::MonitorDecision::consume);
  EXPECT_EQ(seen, 0);
  EXPECT_EQ(platform.eventMonitors.send({platform::MouseEventKind::leftUp, nullptr, {}}),
            platform::MonitorDecision::pass);
  EXPECT_EQ(seen, 1);
}

TEST(FakeScriptRunnerDeathTest, ScriptWithoutAPreparedReplyEndsTheTest) {
  FakePlatform platform;
  EXPECT_DEATH((void)platform.scripts.execute("return 1"), "did not set up");
}

}  // namespace
}  // namespace morla::fake
