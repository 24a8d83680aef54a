#include "platform/macos/nodes/ChildMatching.h"

#include <gmock/gmock.h>

namespace morla::macos {
namespace {

using testing::ElementsAre;
using testing::Optional;

constexpr auto kNone = std::nullopt;
constexpr std::size_t kText = 5;
constexpr std::size_t kToggle = 10;

TEST(ChildMatching, LeavesEveryChildItsViewWhereNothingCameOrWent) {
  std::vector<ChildIdentity> const children{{"", kText}, {"camera", kText}, {"", kToggle}};
  EXPECT_THAT(matchChildren(children, children), ElementsAre(Optional(0U), Optional(1U), Optional(2U)));
}

TEST(ChildMatching, FindsAChildByItsKeyWhereverItStands) {
  EXPECT_THAT(matchChildren({{"a", kText}, {"b", kText}}, {{"b", kText}, {"a", kText}}),
              ElementsAre(Optional(1U), Optional(0U)));
}

TEST(ChildMatching, GivesAKeyThatIsNewAViewOfItsOwn) {
  EXPECT_THAT(matchChildren({{"a", kText}}, {{"b", kText}, {"a", kText}}), ElementsAre(kNone, Optional(0U)));
}

TEST(ChildMatching, GivesTheSameKeyOfAnotherKindAViewOfItsOwn) {
  EXPECT_THAT(matchChildren({{"a", kText}}, {{"a", kToggle}}), ElementsAre(kNone));
}

TEST(ChildMatching, KeepsASwitchWhenATextComesBeforeIt) {
  EXPECT_THAT(matchChildren({{"", kText}, {"", kToggle}}, {{"", kText}, {"", kText}, {"", kToggle}}),
              ElementsAre(Optional(0U), kNone, Optional(1U)));
}

TEST(ChildMatching, GivesChildrenWithoutAKeyTheViewsOfTheirKindInOrder) {
  EXPECT_THAT(matchChildren({{"", kText}, {"", kText}, {"", kText}}, {{"", kText}, {"", kText}}),
              ElementsAre(Optional(0U), Optional(1U)));
}

TEST(ChildMatching, TakesNoViewOverTwiceAlsoWhereAKeyIsThereTwice) {
  EXPECT_THAT(matchChildren({{"a", kText}}, {{"a", kText}, {"a", kText}}), ElementsAre(Optional(0U), kNone));
}

TEST(ChildMatching, DoesNotGiveAKeyedChildTheViewOfOneWithoutKey) {
  EXPECT_THAT(matchChildren({{"", kText}}, {{"a", kText}}), ElementsAre(kNone));
  EXPECT_THAT(matchChildren({{"a", kText}}, {{"", kText}}), ElementsAre(kNone));
}

TEST(ChildMatching, TellsKindsApartByTheContent) {
  auto const identities = identitiesOf(
      {view::node(view::Text{"a", {}, {}}).keyed("k"), view::node(view::Toggle{}), view::node(view::Text{})});
  ASSERT_EQ(identities.size(), 3U);
  EXPECT_EQ(identities[0].key, "k");
  EXPECT_EQ(identities[0].kind, identities[2].kind);
  EXPECT_NE(identities[0].kind, identities[1].kind);
}

}  // namespace
}  // namespace morla::macos
