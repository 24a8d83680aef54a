#pragma once

#include "base/MainLoop.h"
#include "platform/linux/ui/Compositor.h"
#include "platform/linux/ui/PanelStack.h"
#include "platform/linux/ui/Screens.h"
#include "platform/linux/ui/XClient.h"

namespace morla::linux {

/// What every panel leans on; all of it outlives them.
struct PanelServices {
  MainLoop& loop;
  Screens& screens;
  XClient& client;
  Compositor& compositor;
  PanelStack& stack;
};

}  // namespace morla::linux
