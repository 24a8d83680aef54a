#include "view/LiveView.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Published.h"
#include "platform/fake/FakeMainLoop.h"

namespace morla::view {
namespace {

/// A view of two values.
struct World {
  fake::FakeMainLoop loop;
  Published<std::string> name{"name"};
  Published<bool> isOn{"isOn"};
  int descriptions = 0;
  std::vector<Node> shown;
  std::optional<LiveView> live;

  World() {
    live.emplace(
        loop, describe(), [this] { return describe(); }, [this](Node node) { shown.push_back(std::move(node)); });
    live->reads(name);
    live->reads(isOn);
    descriptions = 0;
  }
  Node describe() {
    ++descriptions;
    return node(Text{name.get() + (isOn.get() ? " on" : " off")});
  }
};

TEST(LiveView, DescribesOnTheNextTurnWhenTheAnnouncedValueIsStored) {
  World world;
  world.name.set("a");
  EXPECT_EQ(world.descriptions, 0) << "inside the announcement";
  world.loop.runReady();
  ASSERT_EQ(world.shown.size(), 1u);
  EXPECT_EQ(world.shown[0], node(Text{"a off"}));
}

TEST(LiveView, ManyAnnouncementsInOneTurnAreOneDescription) {
  World world;
  for (int i = 0; i < 10'000; ++i) world.name.set(std::to_string(i));
  world.isOn.set(true);
  world.loop.runReady();
  EXPECT_EQ(world.descriptions, 1);
  ASSERT_EQ(world.shown.size(), 1u);
  EXPECT_EQ(world.shown[0], node(Text{"9999 on"}));
}

TEST(LiveView, AnEqualDescriptionIsNotShownAgain) {
  World world;
  world.name.set("");
  world.loop.runReady();
  EXPECT_EQ(world.descriptions, 1);
  EXPECT_TRUE(world.shown.empty());
  world.name.set("a");
  world.loop.runReady();
  world.name.set("a");
  world.loop.runReady();
  EXPECT_EQ(world.shown.size(), 1u);
}

TEST(LiveView, WithoutAnAnnouncementNothingIsDescribed) {
  World world;
  world.loop.runReady();
  EXPECT_EQ(world.descriptions, 0);
}

TEST(LiveView, WhatIsAnnouncedWhileShowingLeadsToAnotherDescription) {
  fake::FakeMainLoop loop;
  Published<int> value{"value"};
  std::vector<std::string> shown;
  auto const describe = [&value] { return node(Text{std::to_string(value.get())}); };
  LiveView live(loop, describe(), describe, [&](Node tree) {
    shown.push_back(std::get<Text>(tree.content).text);
    if (value.get() < 3) value.set(value.get() + 1);
  });
  live.reads(value);
  value.set(1);
  loop.runReady();
  EXPECT_EQ(shown, (std::vector<std::string>{"1", "2", "3"}));
}

TEST(LiveView, ShowsNothingAfterItsEnd) {
  World world;
  world.name.set("a");
  world.live.reset();
  world.name.set("b");
  world.loop.runReady();
  EXPECT_EQ(world.descriptions, 0);
  EXPECT_TRUE(world.shown.empty());
}

TEST(LiveView, MayBeEndedByWhatItShows) {
  fake::FakeMainLoop loop;
  Published<int> value{"value"};
  std::optional<LiveView> live;
  int shown = 0;
  live.emplace(
      loop, node(Spacer{}), [] { return node(Divider{}); },
      [&](Node) {
        live.reset();
        ++shown;
      });
  live->reads(value);
  value.set(1);
  loop.runReady();
  value.set(2);
  loop.runReady();
  EXPECT_EQ(shown, 1);
}

TEST(LiveView, KeepsOneTreeHoweverOftenItIsDescribed) {
  fake::FakeMainLoop loop;
  Published<int> value{"value"};
  auto const token = std::make_shared<int>();
  Node onShow;
  auto const describe = [&] { return node(Button{std::to_string(value.get()), {}, [token] { ++*token; }}); };
  LiveView live(loop, describe(), describe, [&](Node tree) { onShow = std::move(tree); });
  live.reads(value);
  value.set(1);
  loop.runReady();
  auto const references = token.use_count();
  for (int i = 0; i < 10'000; ++i) {
    value.set(i);
    loop.runReady();
  }
  EXPECT_EQ(token.use_count(), references);
}

}  // namespace
}  // namespace morla::view
