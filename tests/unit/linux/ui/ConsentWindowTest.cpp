#include "platform/linux/ui/ConsentWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPalette>
#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/ui/views/Colours.h"

namespace morla::linux {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;

class ConsentWindowTest : public testing::Test {
 protected:
  ConsentWindowTest() { window_.present(); }

  QAbstractButton* button(QString const& name) {
    for (auto* each : window_.findChildren<QAbstractButton*>()) {
      if (each->text() == name) return each;
    }
    ADD_FAILURE() << "no button " << name.toStdString();
    return nullptr;
  }
  void press(int key) {
    auto* const receiver = window_.focusWidget() != nullptr ? window_.focusWidget() : &window_;
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(receiver, &down);
    QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier);
    QApplication::sendEvent(receiver, &up);
  }

  std::vector<std::optional<Consent>> answers_;
  ConsentWindow window_{"Capture One", [this](std::optional<Consent> consent) { answers_.push_back(consent); }};
};

TEST_F(ConsentWindowTest, AsksAboutTheApplicationByItsName) {
  std::vector<std::string> texts;
  for (auto* label : window_.findChildren<QLabel*>()) texts.push_back(label->text().toStdString());
  EXPECT_THAT(texts, Contains("MORLA souhaite contrôler « Capture One »"));
  EXPECT_EQ(window_.accessibleName(), "MORLA souhaite contrôler « Capture One »");
}

TEST_F(ConsentWindowTest, GivesTheAnswerOfEachButtonOnce) {
  button("OK")->click();
  button("Refuser")->click();
  EXPECT_THAT(answers_, ElementsAre(Consent::allow));
}

TEST_F(ConsentWindowTest, RefusesByItsButton) {
  button("Refuser")->click();
  EXPECT_THAT(answers_, ElementsAre(Consent::refuse));
}

TEST_F(ConsentWindowTest, IsClosedByEscapeWithoutAnAnswer) {
  press(Qt::Key_Escape);
  EXPECT_THAT(answers_, ElementsAre(std::nullopt));
  EXPECT_FALSE(window_.isVisible());
}

TEST_F(ConsentWindowTest, IsClosedByItsFrameWithoutAnAnswer) {
  window_.close();
  EXPECT_THAT(answers_, ElementsAre(std::nullopt));
}

TEST_F(ConsentWindowTest, TakesNoKeyThatWasMeantForAnotherWindow) {
  for (int const key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_O, Qt::Key_R}) press(key);
  EXPECT_TRUE(answers_.empty());
}

TEST_F(ConsentWindowTest, IsAnsweredByReturnAndSpaceOnAButton) {
  button("OK")->setFocus(Qt::TabFocusReason);
  press(Qt::Key_Return);
  EXPECT_THAT(answers_, ElementsAre(Consent::allow));
}

TEST_F(ConsentWindowTest, EscapeOnAButtonClosesItToo) {
  button("OK")->setFocus(Qt::TabFocusReason);
  press(Qt::Key_Escape);
  EXPECT_THAT(answers_, ElementsAre(std::nullopt));
}

TEST_F(ConsentWindowTest, TellsNobodyWhenItIsWithdrawn) {
  window_.withdraw();
  window_.close();
  EXPECT_TRUE(answers_.empty());
  EXPECT_FALSE(window_.isVisible());
}

TEST(AskForConsent, CanBeTakenBackFromWithinTheAnswer) {
  Subscription shown;
  int answers = 0;
  shown = askForConsent("Capture One", [&](std::optional<Consent>) {
    ++answers;
    shown.end();
  });
  auto const windows = QApplication::topLevelWidgets();
  auto const window =
      std::ranges::find_if(windows, [](QWidget* each) { return each->windowTitle() == "Autorisation"; });
  ASSERT_NE(window, windows.end());
  (*window)->close();
  EXPECT_EQ(answers, 1);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

double luminance(QColor const& colour) {
  auto const linear = [](int value) {
    double const part = value / 255.0;
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.red()) + 0.7152 * linear(colour.green()) + 0.0722 * linear(colour.blue());
}

QColor over(QColor const& below, QColor const& above) {
  auto const mix = [&](int a, int b) { return a + (b - a) * above.alpha() / 255; };
  return {mix(below.red(), above.red()), mix(below.green(), above.green()), mix(below.blue(), above.blue())};
}

/// As the guidelines for accessible contents define it, from 1 to 21.
double contrast(QColor const& below, QColor const& text) {
  double const a = luminance(below);
  double const b = luminance(over(below, text));
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

TEST(ConsentWindow, CanBeReadInLightAndDark) {
  using view::SystemColour;
  for (bool const isDark : {false, true}) {
    auto const palette = standardPalette(isDark);
    auto const colour = [&](SystemColour kind) { return toQt(kind, palette); };
    EXPECT_EQ(colour(SystemColour::windowBackground).lightness() < 128, isDark);
    EXPECT_GE(contrast(colour(SystemColour::windowBackground), colour(SystemColour::primary)), 4.5);
    EXPECT_GE(contrast(colour(SystemColour::windowBackground), colour(SystemColour::secondary)), 4.5);
    EXPECT_GE(contrast(colour(SystemColour::controlBackground), colour(SystemColour::primary)), 4.5);
    // The system's own accent, under a word of medium weight.
    EXPECT_GE(contrast(colour(SystemColour::accent), Qt::white), 3);
  }
}

}  // namespace
}  // namespace morla::linux
