#include "base/ObserverList.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace morla {
namespace {

using Calls = std::vector<std::string>;

TEST(ObserverList, CallsInOrderOfRegistration) {
  ObserverList<int> list;
  Calls calls;
  auto const first = list.add([&](int value) { calls.push_back("first " + std::to_string(value)); });
  auto const second = list.add([&](int value) { calls.push_back("second " + std::to_string(value)); });
  auto const third = list.add([&](int value) { calls.push_back("third " + std::to_string(value)); });
  list.call(7);
  EXPECT_EQ(calls, (Calls{"first 7", "second 7", "third 7"}));
}

TEST(ObserverList, KeepsTheOrderOfTheOthersWhenOneEnds) {
  ObserverList<> list;
  Calls calls;
  auto const first = list.add([&] { calls.emplace_back("first"); });
  auto second = list.add([&] { calls.emplace_back("second"); });
  auto const third = list.add([&] { calls.emplace_back("third"); });
  second.end();
  EXPECT_EQ(list.size(), 2U);
  list.call();
  EXPECT_EQ(calls, (Calls{"first", "third"}));
}

TEST(ObserverList, GivesEveryObserverTheSameArgument) {
  ObserverList<std::string> list;
  Calls calls;
  auto const taker = list.add([&](std::string text) { calls.push_back(std::move(text)); });
  auto const other = list.add([&](std::string const& text) { calls.push_back(text); });
  list.call("a text too long to be kept inside of the string object itself");
  ASSERT_EQ(calls.size(), 2U);
  EXPECT_EQ(calls[0], calls[1]);
}

TEST(ObserverList, DoesNotCallAnObserverThatWasRemovedDuringTheCall) {
  ObserverList<> list;
  Calls calls;
  Subscription later;
  auto const remover = list.add([&] {
    calls.emplace_back("remover");
    later.end();
  });
  later = list.add([&] { calls.emplace_back("later"); });
  auto const last = list.add([&] { calls.emplace_back("last"); });
  list.call();
  EXPECT_EQ(calls, (Calls{"remover", "last"}));
}

TEST(ObserverList, CallsTheOthersWhenAnEarlierOneIsRemovedDuringTheCall) {
  ObserverList<> list;
  Calls calls;
  auto earlier = list.add([&] { calls.emplace_back("earlier"); });
  auto const remover = list.add([&] {
    calls.emplace_back("remover");
    earlier.end();
  });
  auto const last = list.add([&] { calls.emplace_back("last"); });
  list.call();
  list.call();
  EXPECT_EQ(calls, (Calls{"earlier", "remover", "last", "remover", "last"}));
}

TEST(ObserverList, LetsAnObserverRemoveItselfAndGoOnWithWhatItHolds) {
  ObserverList<> list;
  Calls calls;
  Subscription own;
  own = list.add([&own, &calls, held = std::string("held by the closure, and long enough for the heap")] {
    own.end();
    calls.push_back(held);
  });
  list.call();
  list.call();
  EXPECT_EQ(calls, (Calls{"held by the closure, and long enough for the heap"}));
  EXPECT_EQ(list.size(), 0U);
}

TEST(ObserverList, CallsAnObserverThatWasAddedDuringTheCallOnlyNextTime) {
  ObserverList<> list;
  Calls calls;
  std::vector<Subscription> added;
  auto const adder = list.add([&] {
    calls.emplace_back("adder");
    if (added.empty()) added.push_back(list.add([&] { calls.emplace_back("added"); }));
  });
  list.call();
  EXPECT_EQ(calls, (Calls{"adder"}));
  list.call();
  EXPECT_EQ(calls, (Calls{"adder", "adder", "added"}));
}

TEST(ObserverList, AllowsNestedCalls) {
  ObserverList<int> list;
  Calls calls;
  auto const nesting = list.add([&](int depth) {
    calls.push_back("nesting " + std::to_string(depth));
    if (depth < 2) list.call(depth + 1);
  });
  auto const other = list.add([&](int depth) { calls.push_back("other " + std::to_string(depth)); });
  list.call(0);
  EXPECT_EQ(calls, (Calls{"nesting 0", "nesting 1", "nesting 2", "other 2", "other 1", "other 0"}));
}

TEST(ObserverList, ForgetsInTheOuterCallWhatTheInnerOneRemoved) {
  ObserverList<int> list;
  Calls calls;
  Subscription last;
  auto const nesting = list.add([&](int depth) {
    if (depth == 0) list.call(1);
  });
  auto const remover = list.add([&](int depth) {
    calls.push_back("remover " + std::to_string(depth));
    if (depth == 1) last.end();
  });
  last = list.add([&](int depth) { calls.push_back("last " + std::to_string(depth)); });
  list.call(0);
  EXPECT_EQ(calls, (Calls{"remover 1", "remover 0"}));
}

TEST(ObserverList, MayBeDestroyedDuringACallWhichGoesOnToItsEnd) {
  auto list = std::make_unique<ObserverList<>>();
  Calls calls;
  auto const destroyer = list->add([&] {
    calls.emplace_back("destroyer");
    list.reset();
  });
  auto const last = list->add([&] { calls.emplace_back("last"); });
  list->call();
  EXPECT_EQ(list, nullptr);
  EXPECT_EQ(calls, (Calls{"destroyer", "last"}));
}

TEST(ObserverList, DoesNotCallWhatEndedAfterTheListWasDestroyedDuringTheCall) {
  auto list = std::make_unique<ObserverList<>>();
  Calls calls;
  Subscription last;
  auto const destroyer = list->add([&] {
    list.reset();
    last.end();
  });
  last = list->add([&] { calls.emplace_back("last"); });
  list->call();
  EXPECT_EQ(calls, Calls{});
}

TEST(ObserverList, MayEndBeforeItsSubscriptions) {
  auto list = std::make_unique<ObserverList<>>();
  auto subscription = list->add([] {});
  list.reset();
  EXPECT_TRUE(subscription.isActive());
  subscription.end();
  EXPECT_FALSE(subscription.isActive());
}

TEST(ObserverList, ReleasesWhatAnObserverHoldsWhenItEnds) {
  ObserverList<> list;
  auto held = std::make_shared<int>(1);
  auto subscription = list.add([held] {});
  EXPECT_EQ(held.use_count(), 2);
  subscription.end();
  EXPECT_EQ(held.use_count(), 1);
}

TEST(ObserverList, LetsTheReleaseOfAnObserverEndAnother) {
  ObserverList<> list;
  Calls calls;
  auto other = std::make_shared<Subscription>(list.add([&] { calls.emplace_back("other"); }));
  auto holder = list.add([other = std::move(other)] {});
  holder.end();
  list.call();
  EXPECT_EQ(list.size(), 0U);
  EXPECT_EQ(calls, Calls{});
}

}  // namespace
}  // namespace morla
