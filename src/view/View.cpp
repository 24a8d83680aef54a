#include "view/View.h"

namespace morla::view {

bool operator==(HStack const& a, HStack const& b) {
  return a.spacing == b.spacing && a.alignment == b.alignment && a.children == b.children;
}

bool operator==(VStack const& a, VStack const& b) {
  return a.spacing == b.spacing && a.alignment == b.alignment && a.children == b.children;
}

bool operator==(ZStack const& a, ZStack const& b) {
  return a.children == b.children;
}

bool operator==(Node const& a, Node const& b) {
  return a.accessibilityLabel == b.accessibilityLabel && a.padding == b.padding && a.frame == b.frame &&
         a.background == b.background && a.isEnabled == b.isEnabled && a.isHidden == b.isHidden &&
         a.tooltip == b.tooltip && a.key == b.key && a.content == b.content;
}

}  // namespace morla::view
