#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/Geometry.h"

namespace morla::platform {

/// One row of a menu. Held by its menu; others keep it weakly and may tick it.
struct MenuItem {
  std::string title;
  std::function<void()> action;
  std::string keyEquivalent;
  bool isTicked = false;
};

struct Menu {
  std::vector<std::shared_ptr<MenuItem>> items;
};

class MenuHost {
 public:
  virtual ~MenuHost() = default;
  /// Main thread. Shows `menu` with its top-left corner at `at`, no row under the pointer chosen, without activating
  /// this program, and returns; the chosen row's action runs on a later turn of the loop. An open menu of ours is
  /// closed first.
  virtual void popUp(Menu const& menu, BottomLeftPoint at) = 0;
};

}  // namespace morla::platform
