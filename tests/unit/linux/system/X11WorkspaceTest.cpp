#include "platform/linux/system/X11Workspace.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>

#include "PrivateDesktop.h"

namespace morla::linux {
namespace {

using platform::RunningApplication;
using testing::ElementsAre;

TEST_P(ManagedDesktopTest, NobodyIsFrontmostOnAnEmptyDesktop) {
  EXPECT_EQ(openWorkspace().frontmostApplication(), std::nullopt);
}

TEST_P(ManagedDesktopTest, TheApplicationOfTheActiveWindowIsFrontmostFromTheStart) {
  TestApp editor;
  openActive(editor, "editor");
  openWorkspace();
  EXPECT_EQ(workspace_->frontmostApplication(),
            (RunningApplication{editor.processIdentifier(), "editor", std::nullopt}));
}

TEST_P(ManagedDesktopTest, ActivatingAnApplicationBringsItToTheFrontAndTellsOnce) {
  TestApp first;
  TestApp second;
  auto const firstWindow = openActive(first, "first");
  openActive(second, "second");
  openWorkspace();
  ASSERT_EQ(frontName(), "second");
  workspace_->activate(*running(first.processIdentifier()));
  EXPECT_TRUE(getsKeyboard(firstWindow));
  EXPECT_TRUE(becomesFrontmost("first"));
  loop_.runDue();
  EXPECT_EQ(activations_, 1);
  EXPECT_EQ(stacking().back(), firstWindow);
}

TEST_P(ManagedDesktopTest, AnotherWindowOfTheSameApplicationIsNoNewActivation) {
  TestApp editor;
  openActive(editor, "editor");
  openWorkspace();
  openActive(editor, "editor");
  loop_.runDue();
  EXPECT_EQ(frontName(), "editor");
  EXPECT_EQ(activations_, 0);
}

TEST_P(ManagedDesktopTest, APanelThatTakesTheKeyboardLeavesTheFrontAlone) {
  TestApp editor;
  openActive(editor, "editor");
  openWorkspace();
  focusPanel();
  ASSERT_TRUE(loop_.runUntil([&] { return activeWindow() == XCB_WINDOW_NONE; }));
  loop_.runDue();
  EXPECT_EQ(frontName(), "editor");
  EXPECT_EQ(activations_, 0);
}

TEST_P(ManagedDesktopTest, TheFrontmostApplicationOnlyGetsTheKeyboardBackAndNothingIsRaised) {
  TestApp editor;
  TestApp above;
  auto const lower = openActive(editor, "editor");
  auto const upper = openActive(above, "above");
  openWorkspace();
  focus(lower);
  ASSERT_TRUE(becomesFrontmost("editor"));
  ASSERT_TRUE(getsKeyboard(lower));
  // On the way there is a moment without an active window, which is not the one waited for below.
  ASSERT_TRUE(loop_.runUntil([&] { return activeWindow() == lower; }));
  focusPanel();
  ASSERT_TRUE(loop_.runUntil([&] { return activeWindow() == XCB_WINDOW_NONE; }));
  auto const before = stacking();
  ASSERT_EQ(before.back(), upper) << "the focused window lies under another";

  workspace_->activate(*workspace_->frontmostApplication());
  EXPECT_TRUE(getsKeyboard(lower));
  EXPECT_TRUE(loop_.runUntil([&] { return activeWindow() == lower; }));
  EXPECT_EQ(stacking(), before);
}

TEST_P(ManagedDesktopTest, WhoHasTheKeyboardWhileWeAreFrontmostIsFrontmostAgainAndNothingIsMoved) {
  TestApp editor;
  TestApp above;
  auto const lower = openActive(editor, "editor");
  auto const upper = openActive(above, "above");
  openWorkspace();
  focus(lower);
  ASSERT_TRUE(becomesFrontmost("editor"));
  ASSERT_TRUE(getsKeyboard(lower));
  ASSERT_EQ(stacking().back(), upper) << "the focused window lies under another";
  workspace_->activateSelf();
  ASSERT_EQ(frontName(), "MORLA");
  workspace_->activate(*running(editor.processIdentifier()));
  EXPECT_EQ(frontName(), "editor");
  // Had the window manager been asked for it, it would raise the lower window before it opens this one.
  TestApp later;
  openActive(later, "later");
  auto const order = stacking();
  EXPECT_LT(std::ranges::find(order, lower), std::ranges::find(order, upper));
}

TEST_P(ManagedDesktopTest, TheKeyboardGoesBackToTheWindowThatHadItLast) {
  TestApp editor;
  auto const first = openActive(editor, "editor");
  auto const second = openActive(editor, "editor");
  openWorkspace();
  focus(first);
  ASSERT_TRUE(loop_.runUntil([&] { return activeWindow() == first; }));
  ASSERT_TRUE(getsKeyboard(first));
  ASSERT_EQ(stacking().back(), second);
  focusPanel();
  ASSERT_TRUE(loop_.runUntil([&] { return activeWindow() == XCB_WINDOW_NONE; }));
  workspace_->activate(*workspace_->frontmostApplication());
  EXPECT_TRUE(getsKeyboard(first));
}

TEST_P(ManagedDesktopTest, WeAreFrontmostFromOurActivationUntilAnotherWindowGetsTheFocus) {
  TestApp editor;
  auto const window = openActive(editor, "editor");
  openWorkspace();
  workspace_->activateSelf();
  EXPECT_EQ(workspace_->frontmostApplication(), (RunningApplication{getpid(), "MORLA", "app.morla.MORLA"}));
  EXPECT_EQ(activations_, 0) << "observers are told on a later turn";
  loop_.runDue();
  EXPECT_EQ(activations_, 1);
  focusPanel();
  ASSERT_TRUE(loop_.runUntil([&] { return activeWindow() == XCB_WINDOW_NONE; }));
  EXPECT_EQ(frontName(), "MORLA");
  focus(window);
  EXPECT_TRUE(becomesFrontmost("editor"));
  loop_.runDue();
  EXPECT_EQ(activations_, 2);
}

TEST_P(ManagedDesktopTest, OurActivationIsToldEachTimeAndThatOfOthersIsNot) {
  TestApp editor;
  openActive(editor, "editor");
  openWorkspace();
  auto const application = *workspace_->frontmostApplication();
  int told = 0;
  auto const observer = workspace_->onSelfActivated([&told] { ++told; });
  workspace_->activateSelf();
  workspace_->activateSelf();
  EXPECT_EQ(told, 2);
  workspace_->activate(application);
  EXPECT_EQ(told, 2);
}

TEST_P(ManagedDesktopTest, AnApplicationThatKeptTheKeyboardTakesTheFrontBackFromUsWhenAsked) {
  TestApp editor;
  openActive(editor, "editor");
  openWorkspace();
  auto const application = *workspace_->frontmostApplication();
  workspace_->activateSelf();
  loop_.runDue();
  workspace_->activate(application);
  EXPECT_TRUE(becomesFrontmost("editor"));
  loop_.runDue();
  EXPECT_EQ(activations_, 2);
}

TEST_P(ManagedDesktopTest, AnApplicationThatEndsIsFrontmostNoLongerAndCannotBeActivated) {
  TestApp editor;
  openActive(editor, "editor");
  openWorkspace();
  auto const application = *workspace_->frontmostApplication();
  editor.finish();
  workspace_->activate(application);
  EXPECT_TRUE(becomesFrontmost("none"));
  EXPECT_EQ(activations_, 1);
  EXPECT_FALSE(running(application.processIdentifier).has_value());
  workspace_->activate(application);
  EXPECT_EQ(frontName(), "none");
}

TEST_P(ManagedDesktopTest, AnApplicationThatReplacesItsOnlyWindowKeepsTheFront) {
  TestApp editor;
  auto const splash = openActive(editor, "editor");
  openWorkspace();
  editor.closeWindow(splash);
  auto const window = openActive(editor, "editor");
  ASSERT_TRUE(loop_.runUntil([&] { return activeWindow() == window; }));
  EXPECT_EQ(frontName(), "editor");
  EXPECT_EQ(activations_, 0);
}

TEST_P(ManagedDesktopTest, AWindowThatNamesNoProcessIsKnownByItsClass) {
  TestApp old;
  TestApp editor;
  auto const window = openActive(old, "oldtimer", "no-pid");
  openActive(editor, "editor");
  openWorkspace();
  auto const application = running(0);
  EXPECT_EQ(application, (RunningApplication{0, "oldtimer", std::nullopt}));
  workspace_->activate(*application);
  EXPECT_TRUE(getsKeyboard(window));
  EXPECT_TRUE(becomesFrontmost("oldtimer"));
}

TEST_P(ManagedDesktopTest, ADesktopFileGivesAWindowItsIdentity) {
  privateBus_.dataHome().write(
      "applications/com.captureone.captureone16.desktop",
      "[Desktop Entry]\nType=Application\nName=Capture One\nName[fr]=Capture One FR\nStartupWMClass=captureone\n");
  TestApp captureOne;
  openActive(captureOne, "captureone");
  openWorkspace();
  EXPECT_EQ(running(captureOne.processIdentifier()),
            (RunningApplication{captureOne.processIdentifier(), "Capture One FR", "com.captureone.captureone16"}));
}

TEST_P(ManagedDesktopTest, RunningApplicationsComeInOrderOfStartWithUsAmongThem) {
  TestApp first;
  TestApp second;
  TestApp third;
  openActive(third, "third");
  second.own("com.example.second", "Second");
  openActive(first, "first");
  openActive(first, "first");
  openWorkspace();
  EXPECT_THAT(workspace_->runningApplications(),
              ElementsAre(RunningApplication{getpid(), "MORLA", "app.morla.MORLA"},
                          RunningApplication{first.processIdentifier(), "first", std::nullopt},
                          RunningApplication{second.processIdentifier(), "Second", "com.example.second"},
                          RunningApplication{third.processIdentifier(), "third", std::nullopt}));
}

TEST_P(ManagedDesktopTest, AScriptableApplicationWithAWindowIsListedOnceUnderItsBusName) {
  TestApp captureOne;
  captureOne.own("com.captureone.captureone16", "Capture One");
  openActive(captureOne, "whatever");
  openWorkspace();
  RunningApplication const expected{captureOne.processIdentifier(), "Capture One", "com.captureone.captureone16"};
  EXPECT_THAT(workspace_->runningApplications(), testing::SizeIs(2));
  EXPECT_EQ(running(captureOne.processIdentifier()), expected);
  EXPECT_EQ(workspace_->frontmostApplication(), expected);
}

TEST_P(ManagedDesktopTest, ASilentOwnerOfANameHoldsUpNothingAndCountsByItsWindow) {
  privateBus_.dataHome().write("applications/com.captureone.captureone16.desktop",
                               "[Desktop Entry]\nType=Application\nName=Capture One\nStartupWMClass=captureone\n");
  TestApp hung;
  hung.ownSilently("com.example.hung");
  openActive(hung, "captureone");
  auto const before = std::chrono::steady_clock::now();
  openWorkspace();
  EXPECT_EQ(running(hung.processIdentifier()),
            (RunningApplication{hung.processIdentifier(), "Capture One", "com.captureone.captureone16"}));
  auto const waited = std::chrono::steady_clock::now() - before;
  EXPECT_GE(waited, X11Workspace::kFirstEnumerationLimit) << "it might have answered in time";
  EXPECT_LT(waited, std::chrono::seconds(5));
  // Later calls wait for nothing, and a late answer counts.
  hung.speak("Awake");
  EXPECT_TRUE(loop_.runUntil([&] {
    return running(hung.processIdentifier()) ==
           RunningApplication{hung.processIdentifier(), "Awake", "com.example.hung"};
  }));
}

TEST_P(ManagedDesktopTest, AnApplicationThatDoesNotAnswerYetRunsUnderTheNameThatTheDesktopKnows) {
  privateBus_.dataHome().write("applications/com.captureone.captureone16.desktop",
                               "[Desktop Entry]\nType=Application\nName=Capture One\n");
  TestApp starting;
  starting.ownSilently("com.captureone.captureone16");
  openWorkspace();
  EXPECT_EQ(running(starting.processIdentifier()),
            (RunningApplication{starting.processIdentifier(), "Capture One", "com.captureone.captureone16"}));
  starting.speak("Capture-One-23");
  EXPECT_TRUE(loop_.runUntil([&] {
    return running(starting.processIdentifier()) ==
           RunningApplication{starting.processIdentifier(), "Capture-One-23", "com.captureone.captureone16"};
  }));
}

TEST_P(ManagedDesktopTest, AnApplicationThatNobodyKnowsIsListedOnceItAnswers) {
  TestApp starting;
  starting.ownSilently("com.example.starting");
  openWorkspace();
  EXPECT_EQ(running(starting.processIdentifier()), std::nullopt);
  starting.speak("Awake");
  EXPECT_TRUE(loop_.runUntil([&] { return running(starting.processIdentifier()).has_value(); }));
}

using Command = std::vector<std::string>;
INSTANTIATE_TEST_SUITE_P(WindowManagers, ManagedDesktopTest,
                         testing::Values(Command{"openbox", "--sm-disable"}, Command{"xfwm4", "--compositor=off"}),
                         [](auto const& manager) { return manager.param[0]; });

TEST_F(DesktopTest, ScriptableApplicationsComeAndGoWithTheirNames) {
  openWorkspace();
  EXPECT_THAT(workspace_->runningApplications(), testing::SizeIs(1));
  TestApp captureOne;
  captureOne.own("com.captureone.captureone16", "Capture One");
  EXPECT_TRUE(loop_.runUntil([&] { return running(captureOne.processIdentifier()).has_value(); }));
  captureOne.finish();
  EXPECT_TRUE(loop_.runUntil([&] { return workspace_->runningApplications().size() == 1; }));
}

TEST_F(DesktopTest, WithoutAWindowManagerTheFocusDecidesAndActivationRaises) {
  TestApp first;
  TestApp second;
  auto const firstWindow = first.openWindow("first");
  auto const secondWindow = second.openWindow("second");
  openWorkspace();
  EXPECT_EQ(frontName(), "none");
  focus(firstWindow);
  EXPECT_TRUE(becomesFrontmost("first"));
  workspace_->activate(*running(second.processIdentifier()));
  EXPECT_TRUE(getsKeyboard(secondWindow));
  EXPECT_TRUE(becomesFrontmost("second"));
  EXPECT_EQ(activations_, 2);
}

TEST_F(DesktopTest, AWindowManagerMayStartAndEndAtAnyTime) {
  openWorkspace();
  TestApp editor;
  editor.openWindow("editor");
  EXPECT_TRUE(loop_.runUntil([&] { return running(editor.processIdentifier()).has_value(); }));
  startManager();
  TestApp second;
  second.openWindow("second");
  EXPECT_TRUE(becomesFrontmost("second"));
  manager_->killNow();
  TestApp third;
  third.openWindow("third");
  EXPECT_TRUE(loop_.runUntil([&] { return running(third.processIdentifier()).has_value(); }));
}

TEST_F(DesktopTest, AnAddressIsOpenedByTheApplicationOfItsScheme) {
  auto const fifo = home_ / "opened";
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  FileDescriptor const opened(open(fifo.c_str(), O_RDWR | O_CLOEXEC));
  privateBus_.dataHome().write(
      "applications/settings.desktop",
      "[Desktop Entry]\nType=Application\nName=Settings\nMimeType=x-scheme-handler/x-settings;\n"
      "Exec=sh -c \"printf %%s \\\\\"\\\\$0\\\\\" > '" +
          fifo.string() + "'\" %u\n");
  openWorkspace();
  EXPECT_TRUE(workspace_->openUrl("X-Settings:page?a b&c"));
  pollfd waiting{opened.get(), POLLIN, 0};
  ASSERT_EQ(poll(&waiting, 1, 10'000), 1) << "nothing was started";
  std::array<char, 100> buffer{};
  auto const count = read(opened.get(), buffer.data(), buffer.size());
  EXPECT_EQ(std::string(buffer.data(), static_cast<std::size_t>(count)), "X-Settings:page?a b&c");
}

TEST_F(DesktopTest, AnAddressThatNobodyOpensIsRefused) {
  privateBus_.dataHome().write("applications/broken.desktop",
                               "[Desktop Entry]\nType=Application\nName=Broken\nMimeType=x-scheme-handler/broken;\n"
                               "Exec=/nonexistent/program %u\n");
  openWorkspace();
  for (auto const* url : {"unknown:x", "broken:x", "no address", "", ":", "1a:b"}) {
    EXPECT_FALSE(workspace_->openUrl(url)) << url;
  }
}

TEST_F(DesktopTest, ABundleIsReadByTheGivenReader) {
  openWorkspace();
  ASSERT_TRUE(workspace_->bundleAt("/Applications/A.app").has_value());
  EXPECT_EQ(workspace_->bundleAt("/Applications/A.app")->identifier, "a.identifier");
  EXPECT_FALSE(workspace_->bundleAt("/Applications/B.app").has_value());
}

}  // namespace
}  // namespace morla::linux
