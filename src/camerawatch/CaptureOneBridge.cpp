#include "camerawatch/CaptureOneBridge.h"

#include <algorithm>
#include <string_view>

#include "base/unicode/Unicode.h"

namespace morla::camerawatch {
namespace {

struct FileName {
  std::string stem;
  std::string extension;  ///< without its dot
};

FileName splitFileName(std::string const& name) {
  auto const dot = name.rfind('.');
  // A leading dot marks a hidden file, not an extension.
  if (dot == std::string::npos || dot == 0) return {name, ""};
  return {name.substr(0, dot), name.substr(dot + 1)};
}

std::string lastComponent(std::string const& path) {
  return path.substr(path.rfind('/') + 1);
}

bool isCaptureOneBundleName(std::string const& name) {
  auto const [stem, extension] = splitFileName(name);
  return unicode::lowercased(extension) == "app" && unicode::lowercased(stem).starts_with("capture one");
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

/// Takes the run of digits at the start of `text`, without leading zeros.
std::string_view takeNumber(std::string_view& text) {
  std::size_t length = 0;
  while (length < text.size() && isDigit(text[length])) ++length;
  auto number = text.substr(0, length);
  text.remove_prefix(length);
  number.remove_prefix(std::min(number.find_first_not_of('0'), number.size()));
  return number;
}

int sign(std::strong_ordering order) {
  return order < 0 ? -1 : order > 0 ? 1 : 0;
}

}  // namespace

int compareNumerically(std::string_view a, std::string_view b) {
  while (!a.empty() && !b.empty()) {
    if (isDigit(a[0]) && isDigit(b[0])) {
      auto const x = takeNumber(a);
      auto const y = takeNumber(b);
      // Of two numbers without leading zeros the longer one is greater; no length overflows anything.
      if (x.size() != y.size()) return x.size() < y.size() ? -1 : 1;
      if (x != y) return sign(x <=> y);
    } else {
      if (a[0] != b[0]) return a[0] < b[0] ? -1 : 1;
      a.remove_prefix(1);
      b.remove_prefix(1);
    }
  }
  return sign(a.size() <=> b.size());
}

std::optional<platform::RunningApplication> CaptureOneBridge::captureOneRunningApp() const {
  return CaptureOneFocus(workspace_).captureOneRunningApp();
}

std::vector<CaptureOneAppInfo> CaptureOneBridge::installedCaptureOneApps() const {
  std::vector<CaptureOneAppInfo> found;
  for (auto const& folder : {std::string("/Applications"), files_.homeFolder() + "/Applications"}) {
    auto const entries = files_.visibleEntries(folder);
    if (!entries) continue;
    for (auto const& name : *entries) {
      if (!isCaptureOneBundleName(name)) continue;
      if (auto info = captureOneAppInfo(folder + "/" + name)) found.push_back(std::move(*info));
    }
  }
  return found;
}

std::optional<CaptureOneAppInfo> CaptureOneBridge::captureOneAppInfo(std::string const& url) const {
  auto const bundle = workspace_.bundleAt(url);
  if (!bundle || !bundle->identifier || bundle->identifier->empty()) return std::nullopt;
  return CaptureOneAppInfo{url, *bundle->identifier, bundle->shortVersion,
                           bundle->name ? *bundle->name : splitFileName(lastComponent(url)).stem};
}

std::optional<CaptureOneAppInfo> CaptureOneBridge::preferredCaptureOneApp() const {
  auto installed = installedCaptureOneApps();
  if (installed.empty()) return std::nullopt;
  auto const exact = std::ranges::find_if(installed, [](CaptureOneAppInfo const& info) {
    return unicode::lowercased(lastComponent(info.url)) == "capture one.app";
  });
  if (exact != installed.end()) return *exact;
  // Of equal versions the first one counts.
  auto const highest = std::ranges::max_element(installed, [](CaptureOneAppInfo const& a, CaptureOneAppInfo const& b) {
    return compareNumerically(a.version.value_or("0"), b.version.value_or("0")) < 0;
  });
  return *highest;
}

std::string CaptureOneBridge::appleScriptTarget() const {
  auto const byIdentifier = [](std::string const& identifier) { return "application id \"" + identifier + "\""; };
  if (auto const running = captureOneRunningApp(); running && running->bundleIdentifier) {
    if (!running->bundleIdentifier->empty()) return byIdentifier(*running->bundleIdentifier);
  }
  if (auto const preferred = preferredCaptureOneApp()) return byIdentifier(preferred->bundleId);
  return "application \"Capture One\"";
}

}  // namespace morla::camerawatch
