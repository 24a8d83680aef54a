#include "base/NotificationCenter.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "RecordedTrace.h"

namespace morla {
namespace {

constexpr NotificationName kShutter{"shutterReleased"};
constexpr NotificationName kBattery{"batteryLow"};

using Calls = std::vector<std::string>;

TEST(NotificationCenter, DeliversInOrderOfRegistrationBeforePostReturns) {
  NotificationCenter center;
  Calls calls;
  auto const first = center.addObserver(kShutter, [&](Notification const&) { calls.emplace_back("first"); });
  auto const second = center.addObserver(kShutter, [&](Notification const&) { calls.emplace_back("second"); });
  calls.emplace_back("before");
  center.post(kShutter);
  calls.emplace_back("after");
  EXPECT_EQ(calls, (Calls{"before", "first", "second", "after"}));
}

TEST(NotificationCenter, DeliversToTheObserversOfTheNameAlone) {
  NotificationCenter center;
  Calls calls;
  auto const note = [&](Notification const& notification) { calls.emplace_back(notification.name.text()); };
  auto const shutter = center.addObserver(kShutter, note);
  auto const battery = center.addObserver(kBattery, note);
  center.post(kBattery);
  EXPECT_EQ(calls, (Calls{"batteryLow"}));
}

TEST(NotificationCenter, PostsIntoTheVoidWhenNobodyObserves) {
  NotificationCenter center;
  int delivered = 0;
  center.addObserver(kShutter, [&](Notification const&) { ++delivered; }).end();
  center.post(kShutter);
  center.post(kBattery);
  EXPECT_EQ(delivered, 0);
}

TEST(NotificationCenter, CarriesTheUserInfo) {
  NotificationCenter center;
  UserInfo received;
  auto const observation =
      center.addObserver(kShutter, [&](Notification const& notification) { received = notification.userInfo; });
  UserInfo const sent{
      {"isTethered", true}, {"count", std::int64_t{3}}, {"aperture", 5.6}, {"camera", std::string("Boîtier n° 1")}};
  center.post(kShutter, sent);
  EXPECT_EQ(received, sent);
}

TEST(NotificationCenter, GivesEachObserverTheSameUserInfo) {
  NotificationCenter center;
  std::vector<UserInfo> received;
  auto const note = [&](Notification const& notification) { received.push_back(notification.userInfo); };
  auto const first = center.addObserver(kShutter, note);
  auto const second = center.addObserver(kShutter, note);
  center.post(kShutter, {{"count", std::int64_t{3}}});
  ASSERT_EQ(received.size(), 2U);
  EXPECT_EQ(received[0], received[1]);
  EXPECT_EQ(received[0].size(), 1U);
}

TEST(NotificationCenter, DoesNotDeliverToAnObserverThatEndedDuringTheDelivery) {
  NotificationCenter center;
  Calls calls;
  Subscription later;
  auto const ender = center.addObserver(kShutter, [&](Notification const&) {
    calls.emplace_back("ender");
    later.end();
  });
  later = center.addObserver(kShutter, [&](Notification const&) { calls.emplace_back("later"); });
  center.post(kShutter);
  EXPECT_EQ(calls, (Calls{"ender"}));
}

TEST(NotificationCenter, DeliversToAnObserverAddedDuringTheDeliveryOnlyNextTime) {
  NotificationCenter center;
  Calls calls;
  std::vector<Subscription> added;
  auto const adder = center.addObserver(kShutter, [&](Notification const&) {
    if (!added.empty()) return;
    added.push_back(center.addObserver(kShutter, [&](Notification const&) { calls.emplace_back("added"); }));
  });
  center.post(kShutter);
  EXPECT_EQ(calls, Calls{});
  center.post(kShutter);
  EXPECT_EQ(calls, (Calls{"added"}));
}

TEST(NotificationCenter, DeliversANotificationPostedDuringADeliveryAtOnce) {
  NotificationCenter center;
  Calls calls;
  auto const poster = center.addObserver(kShutter, [&](Notification const&) {
    calls.emplace_back("poster");
    center.post(kBattery);
  });
  auto const battery = center.addObserver(kBattery, [&](Notification const&) { calls.emplace_back("battery"); });
  auto const last = center.addObserver(kShutter, [&](Notification const&) { calls.emplace_back("last"); });
  center.post(kShutter);
  EXPECT_EQ(calls, (Calls{"poster", "battery", "last"}));
}

TEST(NotificationCenter, MayBeDestroyedByAnObserver) {
  auto center = std::make_unique<NotificationCenter>();
  Calls calls;
  auto const destroyer = center->addObserver(kShutter, [&](Notification const& notification) {
    center.reset();
    calls.emplace_back(notification.name.text());
  });
  center->post(kShutter);
  EXPECT_EQ(calls, (Calls{"shutterReleased"}));
}

TEST(NotificationCenter, TracesAPostBeforeItsDelivery) {
  RecordedTrace recorded;
  NotificationCenter center;
  std::size_t linesAtDelivery = 0;
  auto const observation =
      center.addObserver(kShutter, [&](Notification const&) { linesAtDelivery = recorded.lines.size(); });
  center.post(kShutter, {{"count", std::int64_t{3}}, {"camera", std::string("Boîtier")}, {"isTethered", false}});
  EXPECT_EQ(linesAtDelivery, 1U);
  EXPECT_EQ(
      recorded.lines,
      (std::vector<std::string>{
          R"({"t":0,"notification":"shutterReleased","userInfo":{"camera":"Boîtier","count":3,"isTethered":false}})"}));
}

}  // namespace
}  // namespace morla
