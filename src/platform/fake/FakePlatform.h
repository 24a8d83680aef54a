#pragma once

#include "platform/Platform.h"
#include "platform/fake/FakeKeys.h"
#include "platform/fake/FakeMainLoop.h"
#include "platform/fake/FakePanels.h"
#include "platform/fake/FakeSystem.h"
#include "platform/fake/FakeWorkspace.h"
#include "platform/fake/Journal.h"

namespace morla::fake {

/// A whole platform in memory, with virtual time. Each role's readable state is in its own fake.
struct FakePlatform {
  /// This program, as the fake desktop lists it.
  static platform::RunningApplication self() { return {1, "MORLA", "app.morla.MORLA"}; }

  Journal journal;
  FakeMainLoop loop;
  FakeBackgroundWork background{loop};
  FakeScriptRunner scripts;
  FakeFiles files;
  FakeOwnBundle ownBundle;
  FakeApplication application{journal};
  FakeWorkspace workspace{journal, self()};
  FakePanelHost panels{loop, journal};
  FakeStatusBar statusBar{journal};
  FakeMenuHost menus;
  FakeEventMonitors eventMonitors{journal};
  FakePointer pointer;
  FakeUserDefaults defaults;
  FakeEventTaps eventTaps{journal};
  FakeKeyMonitors keyMonitors;

  [[nodiscard]] platform::Platform platform() {
    return {loop,      background, scripts,       files,   ownBundle, application, workspace,  panels,
            statusBar, menus,      eventMonitors, pointer, defaults,  eventTaps,   keyMonitors};
  }
};

}  // namespace morla::fake
