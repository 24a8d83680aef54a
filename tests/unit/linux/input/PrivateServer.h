#pragma once

#include <string>

#include "support/EnvironmentVariable.h"
#include "support/ReportingProcess.h"

namespace morla::linux {

/// A virtual X server of this test program's own, with the American layout.
class PrivateServer {
 private:
  support::ReportingProcess server_{
      {"Xvfb", "-displayfd", "{report}", "-screen", "0", "640x480x24", "-noreset", "-nolisten", "tcp"}};
  std::string const display_ = ":" + server_.readReport().value_or("none");
  support::EnvironmentVariable variable_{"DISPLAY", display_};
};

}  // namespace morla::linux
