#pragma once

namespace morla {

/// A visitor made of one function for each alternative of a std::variant.
template <typename... Functions>
struct Overloaded : Functions... {
  using Functions::operator()...;
};

}  // namespace morla
