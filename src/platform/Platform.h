#pragma once

#include "base/BackgroundWork.h"
#include "base/MainLoop.h"
#include "platform/Application.h"
#include "platform/Events.h"
#include "platform/Files.h"
#include "platform/KeyEvents.h"
#include "platform/Menu.h"
#include "platform/Panel.h"
#include "platform/ScriptRunner.h"
#include "platform/StatusItem.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"

namespace morla::platform {

/// Every role that a back end fills. Seen by the Environment only; everyone else gets the roles that it needs.
struct Platform {
  MainLoop& mainLoop;
  BackgroundWork& background;
  ScriptRunner& scripts;
  Files& files;
  OwnBundle& ownBundle;
  Application& application;
  Workspace& workspace;
  PanelHost& panels;
  StatusBar& statusBar;
  MenuHost& menus;
  EventMonitors& eventMonitors;
  Pointer& pointer;
  UserDefaults& defaults;
  EventTaps& eventTaps;
  KeyMonitors& keyMonitors;
};

}  // namespace morla::platform
