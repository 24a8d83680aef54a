#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "view/View.h"

namespace morla::view {
namespace {

TEST(Dump, IsOneNodeALineIndentedByItsDepth) {
  auto const tree = node(VStack{{node(HStack{{node(Text{"a"}), node(Spacer{})}}), node(Divider{})}});
  EXPECT_EQ(dump(tree),
            "VStack\n"
            "  HStack\n"
            "    Text \"a\"\n"
            "    Spacer\n"
            "  Divider\n");
}

TEST(Dump, LeavesDefaultsOutAndNamesEverythingElse) {
  struct Row {
    Node tree;
    std::string expected;
  };
  auto const kRed = Paint{SystemColour::red};
  for (auto const& [tree, expected] : {
           Row{node(HStack{{}, 12, VerticalAlignment::top}), "HStack top spacing=12\n"},
           Row{node(VStack{{}, 4, HorizontalAlignment::leading}), "VStack leading spacing=4\n"},
           Row{node(ZStack{}), "ZStack\n"},
           Row{node(Text{"x", {14, Weight::bold}, {kWhite, 0.5}, HorizontalAlignment::centre}),
               "Text \"x\" centre font=14 bold paint=white*0.5\n"},
           Row{node(Text{"x", {13, Weight::medium}}), "Text \"x\" font=13 medium\n"},
           Row{node(Symbol{"doc.fill", {28}, {Colour{0.5, 0.25, 0, 1}}}),
               "Symbol \"doc.fill\" font=28 paint=rgba(0.5, 0.25, 0, 1)\n"},
           Row{node(Disc{}), "Disc\n"},
           Row{node(Disc{10, kRed}), "Disc diameter=10 fill=red\n"},
           Row{node(Button{"OK"}), "Button \"OK\"\n"},
           Row{node(Button{"OK", ButtonStyle::prominent}), "Button \"OK\" prominent\n"},
           Row{node(Toggle{true}), "Toggle on\n"},
           Row{node(Toggle{}), "Toggle off\n"},
           Row{node(Picker{{"a", "b"}, 1, ""}), "Picker\n  option \"a\"\n  option \"b\" selected\n"},
           Row{node(Picker{{"a"}, std::nullopt, "z"}), "Picker without selection unlisted=\"z\"\n  option \"a\"\n"},
           Row{node(TextField{"t", "p", {11}}), "TextField \"t\" placeholder=\"p\" font=11\n"},
           Row{node(Spinner{}), "Spinner\n"},
           Row{node(Spinner{12}), "Spinner diameter=12\n"},
           Row{node(Canvas{{{4, 5}, {FillOval{{{0, 0}, {4, 5}}, kBlack}}}}),
               "Canvas 4x5\n  fill oval (0, 0) 4x5 black\n"},
           Row{node(Spacer{}).labelled("l").padded({1, 2, 3, 4}), "Spacer label=\"l\" padding=1,2,3,4\n"},
           Row{node(Spacer{}).framed({1, 2, 3, 4, true, true}),
               "Spacer width=1 height=2 minWidth=3 minHeight=4 fillsWidth fillsHeight\n"},
           Row{node(Spacer{}).on({14, Corners::continuous, kRed}), "Spacer radius=14 continuous background=red\n"},
           Row{node(Spacer{}).on({}), "Spacer radius=0 background=primary\n"},
           Row{node(Spacer{}).enabled(false).hidden(true).explained("t").keyed("k"),
               "Spacer disabled hidden tooltip=\"t\" key=\"k\"\n"},
       }) {
    EXPECT_EQ(dump(tree), expected);
  }
}

TEST(Dump, EverySystemColourHasItsName) {
  struct Row {
    SystemColour colour;
    std::string name;
  };
  for (auto const& [colour, name] : {
           Row{SystemColour::secondary, "secondary"},
           Row{SystemColour::tertiary, "tertiary"},
           Row{SystemColour::accent, "accent"},
           Row{SystemColour::red, "red"},
           Row{SystemColour::orange, "orange"},
           Row{SystemColour::green, "green"},
           Row{SystemColour::grey, "grey"},
           Row{SystemColour::windowBackground, "windowBackground"},
           Row{SystemColour::controlBackground, "controlBackground"},
           Row{SystemColour::separator, "separator"},
       }) {
    EXPECT_EQ(dump(node(Disc{8, {colour}})), "Disc fill=" + name + "\n");
  }
}

TEST(Dump, EscapesWhatWouldBreakALineOrShowAsNothing) {
  struct Row {
    std::string text;
    std::string quoted;
  };
  for (auto const& [text, quoted] : {
           Row{"", "\"\""},
           Row{"é → 📷", "\"é → 📷\""},
           Row{"a\nb", R"("a\nb")"},
           Row{R"(say "\")", R"("say \"\\\"")"},
           Row{std::string("\t\0\x7f", 3), R"("\u{9}\u{0}\u{7f}")"},
           Row{"\u0085\u2028", R"("\u{85}\u{2028}")"},
           Row{"\u202Ex", R"("\u{202e}x")"},
           Row{"\xff\xc3", R"("\xff\xc3")"},
       }) {
    EXPECT_EQ(dump(node(Text{text})), "Text " + quoted + "\n");
  }
}

/// A tree in which every kind of node and every modifier occurs.
Node rich() {
  return node(VStack{{node(HStack{{node(Text{"t"}), node(Spacer{}), node(Symbol{"s"})}}).padded(Edges::all(3)),
                      node(ZStack{{node(Disc{}), node(Canvas{{{1, 1}, {FillOval{}}}})}}).on({4, Corners::circular, {}}),
                      node(Button{"b", ButtonStyle::bordered, [] {}}).explained("x"), node(Toggle{true, [](bool) {}}),
                      node(Picker{{"1", "2"}, 0, "", [](std::size_t) {}}).labelled("p"),
                      node(TextField{"f", "h", {}, [](std::string const&) {}, [] {}}), node(Divider{}),
                      node(Spinner{})}})
      .framed({.minWidth = 10});
}

TEST(Comparison, TreesThatAreBuiltAlikeAreEqualWhateverTheirActions) {
  EXPECT_EQ(rich(), rich());
  EXPECT_EQ(node(Button{"b", {}, [] {}}), node(Button{"b"}));
}

TEST(Comparison, EachChangeAnywhereMakesATreeAnother) {
  using Children = std::vector<Node>;
  auto const child = [](Node& tree, std::size_t index) -> Node& {
    return std::get<VStack>(tree.content).children[index];
  };
  auto const leaf = [child](Node& tree, std::size_t index, std::size_t inner) -> Node& {
    auto& content = child(tree, index).content;
    if (auto* row = std::get_if<HStack>(&content)) return row->children[inner];
    return std::get<ZStack>(content).children[inner];
  };
  std::vector<std::function<void(Node&)>> const changes{
      [&](Node& t) { std::get<VStack>(t.content).spacing = 1; },
      [&](Node& t) { std::get<VStack>(t.content).alignment = HorizontalAlignment::trailing; },
      [&](Node& t) { std::get<VStack>(t.content).children.pop_back(); },
      [&](Node& t) {
        Children& children = std::get<VStack>(t.content).children;
        std::swap(children[0], children[1]);
      },
      [&](Node& t) { t.frame.minWidth = 11; },
      [&](Node& t) { t.frame.fillsHeight = true; },
      [&](Node& t) { t.accessibilityLabel = "l"; },
      [&](Node& t) { t.key = "k"; },
      [&](Node& t) { t.isHidden = true; },
      [&](Node& t) { child(t, 0).padding.bottom = 4; },
      [&](Node& t) { std::get<HStack>(child(t, 0).content).alignment = VerticalAlignment::bottom; },
      [&](Node& t) { std::get<Text>(leaf(t, 0, 0).content).text = "T"; },
      [&](Node& t) { std::get<Text>(leaf(t, 0, 0).content).font.weight = Weight::bold; },
      [&](Node& t) { std::get<Text>(leaf(t, 0, 0).content).paint.opacity = 0.5; },
      [&](Node& t) { std::get<Symbol>(leaf(t, 0, 2).content).name = "S"; },
      [&](Node& t) { child(t, 1).background->radius = 5; },
      [&](Node& t) { child(t, 1).background.reset(); },
      [&](Node& t) { std::get<Disc>(leaf(t, 1, 0).content).fill = {SystemColour::red}; },
      [&](Node& t) { std::get<Canvas>(leaf(t, 1, 1).content).drawing.steps.clear(); },
      [&](Node& t) { std::get<Button>(child(t, 2).content).style = ButtonStyle::prominent; },
      [&](Node& t) { child(t, 2).tooltip = "y"; },
      [&](Node& t) { std::get<Toggle>(child(t, 3).content).isOn = false; },
      [&](Node& t) { child(t, 3).isEnabled = false; },
      [&](Node& t) { std::get<Picker>(child(t, 4).content).options[1] = "3"; },
      [&](Node& t) { std::get<Picker>(child(t, 4).content).selection = 1; },
      [&](Node& t) { std::get<Picker>(child(t, 4).content).unlisted = "u"; },
      [&](Node& t) { std::get<TextField>(child(t, 5).content).placeholder = ""; },
      [&](Node& t) { child(t, 6).content = Spacer{}; },
      [&](Node& t) { std::get<Spinner>(child(t, 7).content).diameter = 8; },
  };
  for (std::size_t i = 0; i < changes.size(); ++i) {
    auto changed = rich();
    changes[i](changed);
    EXPECT_NE(changed, rich()) << "change " << i;
    EXPECT_NE(dump(changed), dump(rich())) << "change " << i;
  }
}

TEST(Action, RunsWhatItWasGivenAndNothingWhenEmpty) {
  std::string got;
  Action<std::string> const action = [&got](std::string const& text) { got = text; };
  EXPECT_TRUE(static_cast<bool>(action));
  action("x");
  EXPECT_EQ(got, "x");
  Action<std::string> const none;
  EXPECT_FALSE(static_cast<bool>(none));
  none("y");
  EXPECT_EQ(got, "x");
}

}  // namespace
}  // namespace morla::view
