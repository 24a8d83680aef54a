#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "WatchedCamera.h"
#include "camerawatch/AlertViews.h"
#include "camerawatch/AlerteWindow.h"
#include "platform/linux/ui/QtMainLoop.h"
#include "platform/linux/ui/views/ContentView.h"

/// Shows the ISO alert and the alert settings on real widgets.
///
///     bench_refreshes ROUNDS REFRESHES
///
/// writes `touched N`, how many widgets ROUNDS of the poll that find nothing new have made, changed or removed; then
/// `kilobytes N`, the resident memory, eleven times: after REFRESHES to warm up and after each tenth of REFRESHES more,
/// every one of them with another value and painted.
namespace {

using namespace morla;

constexpr int kTenths = 10;
/// How many different values come round and round.
constexpr int kValues = 50;

struct Windows {
  explicit Windows(MainLoop& loop) : banner(loop), settings(loop) {
    banner.resize(300, 80);
    settings.resize(300, 300);
    banner.show();
    settings.show();
  }

  linux::ContentView banner;
  linux::ContentView settings;

  [[nodiscard]] std::size_t changes() const { return banner.changes() + settings.changes(); }
};

void countTouchedWidgets(MainLoop& loop, int rounds) {
  bench::WatchedCamera camera;
  auto& platform = camera.platform();
  camerawatch::AlerteWindowController controller({platform.loop, platform.workspace, platform.panels},
                                                 camera.monitor());
  controller.showSettings();
  platform.loop.advance(Duration::zero());
  Windows windows(loop);
  std::size_t before = 0;
  for (int round = 0; round <= rounds; ++round) {
    camera.round("100");
    windows.banner.setTree(*platform.panels.panel("isoAlert").content());
    windows.settings.setTree(*platform.panels.panel("AlertePanel").content());
    QCoreApplication::processEvents();
    if (round == 0) before = windows.changes();
  }
  std::printf("touched %zu\n", windows.changes() - before);
}

long residentKilobytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmRSS:")) return std::strtol(line.c_str() + 6, nullptr, 10);
  }
  return 0;
}

std::vector<std::pair<view::Node, view::Node>> differentTrees() {
  bench::WatchedCamera camera;
  std::vector<std::pair<view::Node, view::Node>> trees;
  for (int value = 0; value < kValues; ++value) {
    auto const text = std::to_string(100 + value);
    camera.monitor().setIsoExpectedValue(text);
    trees.emplace_back(camerawatch::ISOAlertView(text, "400"), camera.describeSettings());
  }
  return trees;
}

void watchMemory(MainLoop& loop, int refreshes) {
  auto const trees = differentTrees();
  Windows windows(loop);
  std::size_t next = 0;
  auto const refresh = [&](int count) {
    for (int i = 0; i < count; ++i) {
      auto const& [banner, settings] = trees[next++ % trees.size()];
      windows.banner.setTree(banner);
      windows.settings.setTree(settings);
      QCoreApplication::processEvents();
    }
    std::printf("kilobytes %ld\n", residentKilobytes());
  };
  refresh(refreshes);
  for (int tenth = 0; tenth < kTenths; ++tenth) refresh(refreshes / kTenths);
}

}  // namespace

int main(int argc, char** argv) {
  QApplication const application(argc, argv);
  if (argc != 3) {
    std::fputs("usage: bench_refreshes ROUNDS REFRESHES\n", stderr);
    return 2;
  }
  linux::QtMainLoop loop;
  countTouchedWidgets(loop, std::atoi(argv[1]));
  watchMemory(loop, std::atoi(argv[2]));
  return 0;
}
