#include "base/Cancellation.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace morla {
namespace {

TEST(Cancellation, ReachesEveryTokenOfTheSource) {
  CancellationSource source;
  auto const token = source.token();
  auto const copy = token;
  EXPECT_FALSE(token.isCancelled());
  source.cancel();
  EXPECT_TRUE(token.isCancelled());
  EXPECT_TRUE(copy.isCancelled());
  EXPECT_TRUE(source.token().isCancelled());
}

TEST(Cancellation, ReachesNoTokenOfAnotherSource) {
  CancellationSource source;
  CancellationSource const other;
  source.cancel();
  EXPECT_FALSE(other.token().isCancelled());
}

TEST(Cancellation, CallsEachObserverOnceInOrder) {
  CancellationSource source;
  auto token = source.token();
  std::vector<std::string> calls;
  auto const first = token.onCancel([&] { calls.emplace_back("first"); });
  auto const second = token.onCancel([&] { calls.emplace_back("second"); });
  source.cancel();
  source.cancel();
  EXPECT_EQ(calls, (std::vector<std::string>{"first", "second"}));
}

TEST(Cancellation, IsAlreadySetWhenItsObserversAreCalled) {
  CancellationSource source;
  auto token = source.token();
  std::optional<bool> seen;
  auto const observation = token.onCancel([&] { seen = token.isCancelled(); });
  source.cancel();
  EXPECT_EQ(seen, std::optional(true));
}

TEST(Cancellation, DoesNotCallAnObserverThatEnded) {
  CancellationSource source;
  auto token = source.token();
  int calls = 0;
  token.onCancel([&] { ++calls; }).end();
  source.cancel();
  EXPECT_EQ(calls, 0);
}

TEST(Cancellation, DoesNotCallAnObserverThatCameTooLate) {
  CancellationSource source;
  auto token = source.token();
  int calls = 0;
  std::optional<Subscription> addedDuringTheCall;
  auto const adder = token.onCancel([&] { addedDuringTheCall = token.onCancel([&] { ++calls; }); });
  source.cancel();
  EXPECT_TRUE(addedDuringTheCall.has_value());
  auto const addedAfterwards = token.onCancel([&] { ++calls; });
  source.cancel();
  EXPECT_EQ(calls, 0);
}

TEST(Cancellation, DoesNotFollowFromTheEndOfTheSource) {
  std::optional<CancellationSource> source(std::in_place);
  auto token = source->token();
  int calls = 0;
  auto const observation = token.onCancel([&] { ++calls; });
  source.reset();
  EXPECT_FALSE(token.isCancelled());
  EXPECT_EQ(calls, 0);
}

TEST(Cancellation, ReachesAllObserversWhenOneDestroysTheSource) {
  auto source = std::make_unique<CancellationSource>();
  int calls = 0;
  // The observations hold no token, so the source is all that keeps the state.
  auto const destroyer = source->token().onCancel([&] {
    ++calls;
    source.reset();
  });
  auto const other = source->token().onCancel([&] { ++calls; });
  source->cancel();
  EXPECT_EQ(source, nullptr);
  EXPECT_EQ(calls, 2);
}

}  // namespace
}  // namespace morla
