#include "base/Lifetime.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace morla {
namespace {

/// Hands out closures that may outlive it.
class Owner {
 public:
  explicit Owner(std::vector<std::string>& calls) : calls_(calls) {}
  ~Owner() {
    if (beforeEnd) beforeEnd();
  }
  Owner(Owner const&) = delete;
  Owner& operator=(Owner const&) = delete;

  std::function<void(std::string)> closure() {
    return life_.weak([this](std::string text) { calls_.push_back(name_ + " hears " + text); });
  }
  [[nodiscard]] Lifetime::Reference reference() const { return life_.reference(); }

  std::function<void()> beforeEnd;

 private:
  std::vector<std::string>& calls_;
  std::string name_ = "owner";
  Lifetime life_;
};

TEST(Lifetime, CallsAWeakClosureWhileTheOwnerLives) {
  std::vector<std::string> calls;
  Owner owner(calls);
  auto const closure = owner.closure();
  closure("one");
  closure("two");
  EXPECT_EQ(calls, (std::vector<std::string>{"owner hears one", "owner hears two"}));
}

TEST(Lifetime, DoesNothingInAWeakClosureAfterTheOwnersEnd) {
  std::vector<std::string> calls;
  auto owner = std::make_unique<Owner>(calls);
  auto const closure = owner->closure();
  owner.reset();
  closure("one");
  EXPECT_TRUE(calls.empty());
}

TEST(Lifetime, EndsForCopiesOfAClosureAlike) {
  std::vector<std::string> calls;
  auto owner = std::make_unique<Owner>(calls);
  auto const closure = owner->closure();
  auto const copy = closure;
  copy("one");
  owner.reset();
  copy("two");
  EXPECT_EQ(calls, (std::vector<std::string>{"owner hears one"}));
}

TEST(Lifetime, IsNotProlongedByItsClosuresOrReferences) {
  auto life = std::make_unique<Lifetime>();
  auto const reference = life->reference();
  auto const closure = life->weak([] {});
  EXPECT_TRUE(static_cast<bool>(reference));
  life.reset();
  EXPECT_FALSE(static_cast<bool>(reference));
}

TEST(Lifetime, LastsThroughTheBodyOfItsOwnersDestructor) {
  std::vector<std::string> calls;
  auto owner = std::make_unique<Owner>(calls);
  auto const reference = owner->reference();
  std::optional<bool> aliveAtEnd;
  owner->beforeEnd = [&] { aliveAtEnd = static_cast<bool>(reference); };
  owner.reset();
  EXPECT_EQ(aliveAtEnd, std::optional(true));
  EXPECT_FALSE(static_cast<bool>(reference));
}

TEST(Lifetime, LetsAWeakClosureEndItsOwner) {
  auto life = std::make_unique<Lifetime>();
  int calls = 0;
  auto closure = life->weak([&] {
    life.reset();
    ++calls;
  });
  closure();
  closure();
  EXPECT_EQ(calls, 1);
}

TEST(Lifetime, PassesArgumentsThroughWithoutCopies) {
  Lifetime const life;
  std::unique_ptr<int> received;
  auto closure = life.weak([&](std::unique_ptr<int> value) { received = std::move(value); });
  closure(std::make_unique<int>(7));
  ASSERT_NE(received, nullptr);
  EXPECT_EQ(*received, 7);

  int number = 1;
  auto increment = life.weak([](int& value) { ++value; });
  increment(number);
  EXPECT_EQ(number, 2);
}

TEST(Lifetime, OfOneOwnerSaysNothingAboutAnother) {
  auto first = std::make_unique<Lifetime>();
  Lifetime const second;
  auto const reference = second.reference();
  first.reset();
  EXPECT_TRUE(static_cast<bool>(reference));
}

}  // namespace
}  // namespace morla
