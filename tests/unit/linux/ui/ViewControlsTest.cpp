#include <QAbstractEventDispatcher>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTextDocument>
#include <cstdlib>
#include <memory>

#include "platform/linux/ui/views/Colours.h"
#include "platform/linux/ui/views/PickerControl.h"
#include "platform/linux/ui/views/SpinnerWidget.h"
#include "platform/linux/ui/views/TextWidget.h"
#include "unit/linux/ui/ViewTest.h"

namespace morla::linux {
namespace {

using testing::ElementsAre;
using view::node;
using view::Node;

using ViewControlsTest = ViewTest;

Node text(std::string value) {
  return node(view::Text{std::move(value), {}, {}, {}});
}
Node button(std::string title, view::Action<> action = {}) {
  return node(view::Button{std::move(title), view::ButtonStyle::bordered, std::move(action)});
}
Node toggle(bool isOn, view::Action<bool> action = {}) {
  return node(view::Toggle{isOn, std::move(action)});
}
Node picker(std::vector<std::string> options, std::optional<std::size_t> selection,
            view::Action<std::size_t> action = {}) {
  return node(view::Picker{std::move(options), selection, "?", std::move(action)});
}
Node field(std::string value, view::Action<std::string> action = {}, view::Action<> onSubmit = {}) {
  return node(view::TextField{std::move(value), "Nom du dossier", {}, std::move(action), std::move(onSubmit)});
}
Node column(std::vector<Node> children) {
  return node(view::VStack{std::move(children)});
}

TEST_F(ViewControlsTest, TouchNoWidgetWhenTheTreeSaysTheSame) {
  auto const tree = [] {
    return column({text("ISO"), button("Réessayer"), toggle(true), picker({"—", "400"}, 1), field("a")});
  };
  show(tree());
  auto const before = view_.changes();
  auto const widgets = view_.findChildren<QWidget*>();
  show(tree());
  EXPECT_EQ(view_.changes(), before);
  EXPECT_EQ(view_.findChildren<QWidget*>(), widgets);
}

TEST_F(ViewControlsTest, UpdateTheChangedWidgetAlone) {
  show(column({text("un"), text("deux"), button("trois")}));
  auto const before = view_.changes();
  auto const widgets = all<TextWidget>();
  show(column({text("un"), text("zwei"), button("trois")}));
  EXPECT_EQ(view_.changes(), before + 1);
  EXPECT_EQ(all<TextWidget>(), widgets);
  EXPECT_EQ(widgets[1]->spoken(), "zwei");
}

TEST_F(ViewControlsTest, StayWithTheirKeysWhenNeighboursComeAndGo) {
  show(column({text("a").keyed("a"), text("b").keyed("b")}));
  auto const before = all<TextWidget>();
  show(column({text("c").keyed("c"), text("b").keyed("b"), text("a").keyed("a")}));
  auto const after = all<TextWidget>();
  ASSERT_EQ(after.size(), 3U);
  EXPECT_THAT(after, testing::IsSupersetOf(before));
  EXPECT_EQ(before[0]->spoken(), "a");
  EXPECT_LT(before[1]->y(), before[0]->y());
}

TEST_F(ViewControlsTest, AreMatchedByPositionAndKindWithoutKeys) {
  show(column({text("a"), button("b")}));
  auto* const label = &the<TextWidget>();
  auto* const pushed = &the<QPushButton>();
  show(column({text("c"), toggle(true), button("b")}));
  EXPECT_EQ(&the<TextWidget>(), label);
  EXPECT_NE(&the<QPushButton>(), pushed) << "a switch stands at its position now";
}

TEST_F(ViewControlsTest, RunTheActionOfTheTreeThatWasSetLast) {
  std::vector<std::string> runs;
  show(button("Réessayer", [&] { runs.emplace_back("first"); }));
  show(button("Réessayer", [&] { runs.emplace_back("second"); }));
  the<QPushButton>().click();
  EXPECT_THAT(runs, ElementsAre("second"));
}

TEST_F(ViewControlsTest, MayBeReplacedByTheirOwnAction) {
  show(column({button("Autoriser", [this] { view_.setTree(text("Permission refusée")); })}));
  the<QPushButton>().click();
  EXPECT_TRUE(all<QPushButton>().empty());
  EXPECT_EQ(the<TextWidget>().spoken(), "Permission refusée");
}

TEST_F(ViewControlsTest, ASwitchGoesBackWhereTheTreeDoesNotFollow) {
  std::vector<bool> asked;
  show(toggle(false, [&](bool isOn) { asked.push_back(isOn); }));
  the<QCheckBox>().click();
  EXPECT_TRUE(the<QCheckBox>().isChecked());
  settle();
  EXPECT_FALSE(the<QCheckBox>().isChecked());
  EXPECT_THAT(asked, ElementsAre(true));
}

TEST_F(ViewControlsTest, ASwitchStaysWhereTheNextTreeFollows) {
  std::vector<bool> states;
  show(toggle(false, [&](bool isOn) { loop_.post([this, isOn] { view_.setTree(toggle(isOn)); }); }));
  QObject::connect(&the<QCheckBox>(), &QCheckBox::toggled, &view_, [&](bool isOn) { states.push_back(isOn); });
  the<QCheckBox>().click();
  settle();
  EXPECT_THAT(states, ElementsAre(true)) << "and never flickers";
}

TEST_F(ViewControlsTest, ASwitchThatAppearsStandsWhereTheTreeSays) {
  show(column({text("Vérification...")}));
  show(column({toggle(true)}));
  auto const picture = the<QCheckBox>().grab().toImage();
  auto const knob = picture.pixelColor(picture.width() * 3 / 4, picture.height() / 2);
  EXPECT_GT(knob.lightness(), 240) << "at its right end, not on the way there";
}

TEST_F(ViewControlsTest, ASwitchTellsNobodyWhenTheTreeTurnsIt) {
  int asked = 0;
  show(toggle(false, [&](bool) { ++asked; }));
  show(toggle(true, [&](bool) { ++asked; }));
  EXPECT_TRUE(the<QCheckBox>().isChecked());
  EXPECT_EQ(asked, 0);
}

TEST_F(ViewControlsTest, APickerShowsTheSelectionOrWhatIsUnlisted) {
  show(picker({"—", "400"}, 1));
  EXPECT_EQ(the<PickerControl>().value(), "400");
  show(picker({"—", "400"}, std::nullopt));
  EXPECT_EQ(the<PickerControl>().value(), "?");
}

TEST_F(ViewControlsTest, APickerAsksForWhatWasChosenAndGoesBackWhereTheTreeDoesNotFollow) {
  std::vector<std::size_t> asked;
  show(picker({"—", "400", "800"}, 1, [&](std::size_t option) { asked.push_back(option); }));
  auto& control = the<PickerControl>();
  control.list().actions()[2]->trigger();
  EXPECT_EQ(control.value(), "800");
  settle();
  EXPECT_EQ(control.value(), "400");
  EXPECT_TRUE(control.list().actions()[1]->isChecked());
  EXPECT_FALSE(control.list().actions()[2]->isChecked());
  EXPECT_THAT(asked, ElementsAre(2U));
}

TEST_F(ViewControlsTest, AnOpenPickerStaysOpenWhenItsListAndOthersChange) {
  show(column({text("a"), picker({"—", "400"}, 1)}));
  auto& control = the<PickerControl>();
  control.click();
  ASSERT_TRUE(control.list().isVisible());
  show(column({text("b"), picker({"—", "200", "400"}, 2)}));
  EXPECT_TRUE(control.list().isVisible());
  EXPECT_EQ(control.list().actions().size(), 3);
  EXPECT_EQ(control.list().actions()[1]->text(), "200");
  show(column({text("b"), picker({"—"}, 0)}));
  EXPECT_TRUE(control.list().isVisible());
  EXPECT_EQ(control.list().actions().size(), 1);
}

TEST_F(ViewControlsTest, APickerOfFiveHundredOptionsFitsOnTheScreenInOneColumn) {
  std::vector<std::string> options;
  for (int i = 0; i < 500; ++i) options.push_back("1/" + std::to_string(8000 - i));
  show(picker(options, 250));
  auto& control = the<PickerControl>();
  control.click();
  ASSERT_TRUE(control.list().isVisible());
  auto const screen = control.list().screen()->geometry();
  EXPECT_GE(control.list().geometry().top(), screen.top());
  EXPECT_LE(control.list().geometry().bottom(), screen.bottom());
  auto const rows = control.list().actions();
  EXPECT_EQ(control.list().actionGeometry(rows.first()).x(), control.list().actionGeometry(rows.last()).x());
  EXPECT_TRUE(control.list().rect().intersects(control.list().actionGeometry(rows[250]))) << "the current one is seen";
}

TEST_F(ViewControlsTest, APickerThatIsNotEnabledOpensNothing) {
  show(picker({"—", "400"}, 1).enabled(false));
  the<PickerControl>().click();
  EXPECT_FALSE(the<PickerControl>().list().isVisible());
}

TEST_F(ViewControlsTest, AreNotEnabledInsideWhatIsNotEnabled) {
  show(column({button("Créer")}).enabled(false));
  EXPECT_FALSE(the<QPushButton>().isEnabled());
  show(column({button("Créer")}));
  EXPECT_TRUE(the<QPushButton>().isEnabled());
}

TEST_F(ViewControlsTest, AFieldKeepsCursorAndSelection) {
  show(column({text("a"), field("Dossier")}));
  auto& edit = the<QLineEdit>();
  edit.setSelection(2, 3);
  show(column({text("b"), field("Dossier")}));
  EXPECT_EQ(edit.selectionStart(), 2);
  EXPECT_EQ(edit.selectedText(), "ssi");
}

TEST_F(ViewControlsTest, AFieldTellsEveryEditAndReturn) {
  std::vector<std::string> texts;
  int submitted = 0;
  auto const tree = [&](std::string value) {
    return field(std::move(value), [&](std::string now) { texts.push_back(std::move(now)); }, [&] { ++submitted; });
  };
  show(tree("a"));
  auto& edit = the<QLineEdit>();
  QKeyEvent press(QEvent::KeyPress, Qt::Key_C, Qt::NoModifier, "c");
  QApplication::sendEvent(&edit, &press);
  EXPECT_THAT(texts, ElementsAre("ac"));
  settle();
  EXPECT_EQ(edit.text(), "a") << "the tree did not follow";
  QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
  QApplication::sendEvent(&edit, &enter);
  EXPECT_EQ(submitted, 1);
}

TEST_F(ViewControlsTest, ASpinnerWakesNobodyWhileItCannotBeSeen) {
  show(node(view::Spinner{}));
  auto& spinner = the<SpinnerWidget>();
  auto const timers = [&] { return QAbstractEventDispatcher::instance()->registeredTimers(&spinner).size(); };
  EXPECT_EQ(timers(), 1);
  show(node(view::Spinner{}).hidden(true));
  EXPECT_EQ(timers(), 0);
  show(node(view::Spinner{}));
  EXPECT_EQ(timers(), 1);
  view_.hide();
  EXPECT_EQ(timers(), 0);
}

TEST_F(ViewControlsTest, FollowTheAppearanceOfTheDesktop) {
  auto const original = QApplication::palette();
  show(
      node(view::Spacer{}).on(view::RoundedRect{0, view::Corners::circular, {view::SystemColour::windowBackground, 1}}),
      QSize(10, 10));
  QApplication::setPalette(standardPalette(false));
  settle();
  EXPECT_EQ(imageOf(view_).pixelColor(5, 5), QColor(0xEC, 0xEC, 0xEC));
  QApplication::setPalette(standardPalette(true));
  settle();
  EXPECT_EQ(imageOf(view_).pixelColor(5, 5), QColor(0x1E, 0x1E, 0x1E));
  QApplication::setPalette(original);
  settle();
}

/// How many pixels are plainly of another colour.
int pixelsThatDiffer(QImage const& a, QImage const& b) {
  int count = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      auto const before = a.pixelColor(x, y);
      auto const after = b.pixelColor(x, y);
      int const difference = std::abs(before.red() - after.red()) + std::abs(before.green() - after.green()) +
                             std::abs(before.blue() - after.blue());
      if (difference > 60) ++count;
    }
  }
  return count;
}

TEST_F(ViewControlsTest, ShowTheKeyboardAlsoWhereTheyAreFilled) {
  view_.activateWindow();
  ASSERT_TRUE(runUntil([&] { return view_.isActiveWindow(); }));
  for (auto const& tree : {button("OK"), node(view::Button{"OK", view::ButtonStyle::prominent}), toggle(false),
                           toggle(true), picker({"—", "400"}, 1)}) {
    show(column({text("ISO")}));
    show(column({tree}));
    auto& control = the<QAbstractButton>();
    auto const without = imageOf(view_);
    control.setFocus(Qt::TabFocusReason);
    EXPECT_GT(pixelsThatDiffer(without, imageOf(view_)), 60) << dump(tree);
    control.clearFocus();
  }
}

TEST_F(ViewControlsTest, ExplainThemselvesInPlainWords) {
  for (std::string const words : {"Nom & dossier", "<b>ISO</b> \"400\"", "un\ndeux"}) {
    show(button("Réessayer").explained(words));
    auto const tip = the<QPushButton>().parentWidget()->toolTip();
    QTextDocument shown;
    if (Qt::mightBeRichText(tip)) {
      shown.setHtml(tip);
    } else {
      shown.setPlainText(tip);
    }
    EXPECT_EQ(shown.toPlainText().toStdString(), words);
  }
  show(button("Réessayer"));
  EXPECT_TRUE(the<QPushButton>().parentWidget()->toolTip().isEmpty());
}

TEST_F(ViewControlsTest, HaveNamesAndRolesForScreenReaders) {
  show(column({text("Autorisation requise"), button("Réessayer & co"), toggle(true).labelled("Format"),
               picker({"—", "400"}, 1).labelled("ISO"), field("a").labelled("Nom")}));
  auto const nameAndRole = [](QWidget& widget) {
    auto* const interface = QAccessible::queryAccessibleInterface(&widget);
    return std::pair(interface->text(QAccessible::Name).toStdString(), interface->role());
  };
  EXPECT_EQ(nameAndRole(the<TextWidget>()), std::pair(std::string("Autorisation requise"), QAccessible::StaticText));
  EXPECT_EQ(nameAndRole(the<QPushButton>()), std::pair(std::string("Réessayer & co"), QAccessible::Button));
  EXPECT_EQ(nameAndRole(the<QCheckBox>()), std::pair(std::string("Format"), QAccessible::CheckBox));
  EXPECT_EQ(nameAndRole(the<PickerControl>()), std::pair(std::string("ISO"), QAccessible::ComboBox));
  EXPECT_EQ(nameAndRole(the<QLineEdit>()), std::pair(std::string("Nom"), QAccessible::EditableText));
  auto* const combo = QAccessible::queryAccessibleInterface(&the<PickerControl>());
  EXPECT_EQ(combo->text(QAccessible::Description), "400");
}

TEST_F(ViewControlsTest, AScreenReaderTurnsASwitch) {
  std::vector<bool> asked;
  show(toggle(false, [&](bool isOn) { asked.push_back(isOn); }).labelled("ISO"));
  auto* const actions = QAccessible::queryAccessibleInterface(&the<QCheckBox>())->actionInterface();
  actions->doAction(actions->actionNames().at(0));
  EXPECT_THAT(asked, ElementsAre(true));
  settle();
  EXPECT_FALSE(the<QCheckBox>().isChecked()) << "the tree did not follow";
}

TEST_F(ViewControlsTest, AScreenReaderChoosesFromAPicker) {
  std::vector<std::size_t> asked;
  show(picker({"—", "400"}, 0, [&](std::size_t option) { asked.push_back(option); }).labelled("ISO"));
  auto* const combo = QAccessible::queryAccessibleInterface(&the<PickerControl>());
  ASSERT_EQ(combo->childCount(), 1);
  auto* const row = combo->child(0)->child(1);
  ASSERT_NE(row, nullptr);
  EXPECT_EQ(row->text(QAccessible::Name), "400");
  row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_THAT(asked, ElementsAre(1U));
}

}  // namespace
}  // namespace morla::linux
