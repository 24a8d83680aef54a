#include "platform/linux/system/LinuxOwnBundle.h"

#include "platform/linux/system/Version.h"

namespace morla::linux {

std::string LinuxOwnBundle::shortVersion() const {
  return kShortVersion;
}

}  // namespace morla::linux
