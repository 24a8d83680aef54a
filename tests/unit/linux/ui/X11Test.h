#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>
#include <cmath>
#include <memory>
#include <string>

#include "platform/linux/ui/LinuxUi.h"
#include "unit/linux/ui/DesktopClient.h"
#include "unit/linux/ui/LoopRunner.h"
#include "unit/linux/ui/PrivateDesktop.h"

namespace morla::linux {

/// The desktop of this test program; there from the start of the first test on.
[[nodiscard]] PrivateDesktop& testDesktop();
[[nodiscard]] std::string const& testWindowManager();

/// Tests on a real X server beside another client of it. They run at several scales, so they speak of points and of
/// pixels where they mean the one or the other.
class X11Test : public testing::Test {
 protected:
  void SetUp() override {
    client_.movePointer({5, PrivateDesktop::kMonitorHeight - 5});
    std::string failure;
    ui_ = LinuxUi::open(failure);
    ASSERT_NE(ui_, nullptr) << failure;
  }

  [[nodiscard]] double scale() const { return ui_->screens().scale(); }
  [[nodiscard]] double screenHeight() const { return PrivateDesktop::kMonitorHeight / scale(); }
  [[nodiscard]] PixelPoint pixels(BottomLeftPoint point) const {
    return {static_cast<int>(std::lround(point.x * scale())),
            static_cast<int>(std::lround((screenHeight() - point.y) * scale()))};
  }
  [[nodiscard]] PixelRect pixelRect(BottomLeftRect const& rect) const {
    auto const corner = pixels(BottomLeftPoint{rect.origin.x, rect.origin.y + rect.size.height});
    return {corner.x, corner.y, static_cast<int>(std::lround(rect.size.width * scale())),
            static_cast<int>(std::lround(rect.size.height * scale()))};
  }
  [[nodiscard]] static BottomLeftPoint centreOf(BottomLeftRect const& rect) {
    return {rect.origin.x + rect.size.width / 2, rect.origin.y + rect.size.height / 2};
  }

  /// Everything that is due by now has happened on our side, and the server has heard of it.
  void settle() {
    bool isDone = false;
    ui_->mainLoop().post([&] { isDone = true; });
    ASSERT_TRUE(runUntilSeen([&] { return isDone; }));
  }

  DesktopClient client_;
  std::unique_ptr<LinuxUi> ui_;
};

/// A panel as the mirror's round button is: black, with a screen in white.
[[nodiscard]] view::Node makeRoundButton();
[[nodiscard]] view::PanelSpec roundButtonSpec();

struct NeverKey : view::PanelBehaviour {
  [[nodiscard]] bool canBecomeKey() const override { return false; }
  [[nodiscard]] bool canBecomeMain() const override { return false; }
};

/// Tests with such a panel, which is not shown yet.
class RoundButtonTest : public X11Test {
 protected:
  void SetUp() override {
    X11Test::SetUp();
    if (HasFatalFailure()) return;
    panel_ = ui_->panels().makePanel(roundButtonSpec(), behaviour_);
    panel_->setContentSize({40, 40});
    panel_->setContent(makeRoundButton());
  }

  [[nodiscard]] XWindowId window() { return client_.find("FloatingButtonPanel"); }

  void showAt(BottomLeftPoint origin) {
    panel_->setFrameOrigin(origin);
    panel_->orderFrontRegardless();
    settle();
  }

  NeverKey behaviour_;
  std::unique_ptr<platform::Panel> panel_;
};

/// What a person sees of the desktop.
[[nodiscard]] QImage pictureOf(PixelRect const& area);

}  // namespace morla::linux
