#include "support/PrivateBus.h"

#include <filesystem>
#include <stdexcept>
#include <vector>

namespace morla::support {
namespace {

std::vector<std::string> daemonCommand(TemporaryFolder const& folder, TemporaryFolder const& dataHome) {
  auto const services = dataHome / "dbus-1/services";
  std::filesystem::create_directories(services);
  folder.write("bus.conf",
               "<busconfig><type>session</type><listen>unix:dir=" + folder.path().string() +
                   "</listen><auth>EXTERNAL</auth><servicedir>" + services.string() +
                   "</servicedir><policy context=\"default\"><allow send_destination=\"*\" "
                   "eavesdrop=\"true\"/><allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>");
  return {"dbus-daemon", "--config-file=" + (folder / "bus.conf").string(), "--nofork", "--nopidfile",
          "--print-address={report}"};
}

std::string addressOf(ReportingProcess& daemon) {
  auto const address = daemon.readReport();
  if (!address) throw std::runtime_error("dbus-daemon did not start");
  return *address;
}

}  // namespace

PrivateBus::PrivateBus()
    : dataHomeVariable_("XDG_DATA_HOME", dataHome_.path()),
      daemon_(daemonCommand(folder_, dataHome_)),
      addressVariable_("DBUS_SESSION_BUS_ADDRESS", addressOf(daemon_)) {}

void PrivateBus::installService(std::string const& busName, std::string const& command) const {
  dataHome_.write("dbus-1/services/" + busName + ".service",
                  "[D-BUS Service]\nName=" + busName + "\nExec=" + command + "\n");
}

}  // namespace morla::support
