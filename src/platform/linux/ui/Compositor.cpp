#include "platform/linux/ui/Compositor.h"

#include <utility>

namespace morla::linux {
namespace {

constexpr char const* kCompositorSelection = "_NET_WM_CM_S";

}  // namespace

Compositor::Compositor(XServer& server)
    : server_(server),
      ownerDidChange_(server.onSelectionOwnerDidChange(kCompositorSelection,
                                                       [this] {
                                                         bool const isRunning =
                                                             server_.hasSelectionOwner(kCompositorSelection);
                                                         if (std::exchange(isRunning_, isRunning) != isRunning)
                                                           didChange_.call();
                                                       })),
      isRunning_(server.hasSelectionOwner(kCompositorSelection)) {}

}  // namespace morla::linux
