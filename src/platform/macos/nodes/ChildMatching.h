#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "view/View.h"

namespace morla::macos {

/// What tells the children of one stack apart.
struct ChildIdentity {
  std::string key;   ///< empty: none
  std::size_t kind;  ///< of content
  friend bool operator==(ChildIdentity const&, ChildIdentity const&) = default;
};

[[nodiscard]] std::vector<ChildIdentity> identitiesOf(std::vector<view::Node> const& children);

/// For each child of `next` the index of the child of `previous` whose native view it takes over, if any; each is taken
/// over once at most. One with a key takes over the one with the same key, if that is of the same kind. Of those
/// without a key, the first of each kind takes over the first of that kind, the second the second, and so on.
[[nodiscard]] std::vector<std::optional<std::size_t>> matchChildren(std::vector<ChildIdentity> const& previous,
                                                                    std::vector<ChildIdentity> const& next);

}  // namespace morla::macos
