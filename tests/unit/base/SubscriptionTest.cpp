#include "base/Subscription.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>
#include <utility>

namespace morla {
namespace {

static_assert(!std::is_copy_constructible_v<Subscription>, "two copies would end the same thing twice");

TEST(Subscription, EndsWhenItGoesOutOfScope) {
  int ended = 0;
  {
    Subscription const subscription([&] { ++ended; });
    EXPECT_TRUE(subscription.isActive());
    EXPECT_EQ(ended, 0);
  }
  EXPECT_EQ(ended, 1);
}

TEST(Subscription, EndsOnceHoweverOftenItIsEnded) {
  int ended = 0;
  {
    Subscription subscription([&] { ++ended; });
    subscription.end();
    EXPECT_FALSE(subscription.isActive());
    EXPECT_EQ(ended, 1);
    subscription.end();
  }
  EXPECT_EQ(ended, 1);
}

TEST(Subscription, EndsNothingWhenEmpty) {
  Subscription subscription;
  EXPECT_FALSE(subscription.isActive());
  subscription.end();
  EXPECT_FALSE(subscription.isActive());
}

TEST(Subscription, HandsItsEndOverWhenMoved) {
  int ended = 0;
  Subscription target;
  {
    Subscription source([&] { ++ended; });
    Subscription middle(std::move(source));
    EXPECT_FALSE(source.isActive());
    target = std::move(middle);
  }
  EXPECT_EQ(ended, 0);
  EXPECT_TRUE(target.isActive());
  target.end();
  EXPECT_EQ(ended, 1);
}

TEST(Subscription, EndsItsOldMatterWhenANewOneIsAssigned) {
  int endedOld = 0;
  int endedNew = 0;
  Subscription subscription([&] { ++endedOld; });
  subscription = Subscription([&] { ++endedNew; });
  EXPECT_EQ(endedOld, 1);
  EXPECT_EQ(endedNew, 0);
  subscription = Subscription();
  EXPECT_EQ(endedOld, 1);
  EXPECT_EQ(endedNew, 1);
}

TEST(Subscription, SurvivesBeingAssignedToItself) {
  int ended = 0;
  Subscription subscription([&] { ++ended; });
  auto& same = subscription;
  subscription = std::move(same);
  EXPECT_EQ(ended, 0);
  EXPECT_TRUE(subscription.isActive());
}

TEST(Subscription, MayBeDestroyedByItsOwnEnd) {
  int ended = 0;
  auto subscription = std::make_unique<Subscription>();
  *subscription = Subscription([&] {
    ++ended;
    subscription.reset();
  });
  subscription->end();
  EXPECT_EQ(ended, 1);
  EXPECT_EQ(subscription, nullptr);
}

}  // namespace
}  // namespace morla
