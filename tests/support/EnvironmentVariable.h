#pragma once

#include <optional>
#include <string>

namespace morla::support {

/// Sets a variable of this process's environment, and puts the old value back when it goes.
class EnvironmentVariable {
 public:
  EnvironmentVariable(std::string name, std::string const& value);
  ~EnvironmentVariable();
  EnvironmentVariable(EnvironmentVariable const&) = delete;
  EnvironmentVariable& operator=(EnvironmentVariable const&) = delete;

 private:
  std::string name_;
  std::optional<std::string> before_;
};

}  // namespace morla::support
