#include "platform/macos/nodes/ChildMatching.h"

#include <algorithm>

namespace morla::macos {

std::vector<ChildIdentity> identitiesOf(std::vector<view::Node> const& children) {
  std::vector<ChildIdentity> identities;
  identities.reserve(children.size());
  for (auto const& child : children) identities.push_back({child.key, child.content.index()});
  return identities;
}

std::vector<std::optional<std::size_t>> matchChildren(std::vector<ChildIdentity> const& previous,
                                                      std::vector<ChildIdentity> const& next) {
  std::vector<bool> isTaken(previous.size(), false);
  std::vector<std::optional<std::size_t>> matches;
  matches.reserve(next.size());
  for (auto const& identity : next) {
    // The first that is the same and left: so those without a key go in order.
    std::size_t index = 0;
    while (index < previous.size() && (isTaken[index] || previous[index] != identity)) ++index;
    if (index == previous.size()) {
      matches.emplace_back();
      continue;
    }
    isTaken[index] = true;
    matches.emplace_back(index);
  }
  return matches;
}

}  // namespace morla::macos
