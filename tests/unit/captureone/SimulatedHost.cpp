#include "SimulatedHost.h"

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <utility>

namespace morla::captureone {

namespace {

constexpr char kTemporary[] = "/private/tmp/";

std::string replaced(std::string text, std::string const& from, std::string const& to) {
  for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

}  // namespace

std::string part(std::string const& name) {
  std::ifstream stream(MORLA_SOURCE_DIR "/scripts/" + name + ".applescript", std::ios::binary);
  return std::string{std::istreambuf_iterator<char>(stream), {}};
}

std::string SimulatedHost::mapped(std::string text) const {
  return replaced(std::move(text), kTemporary, folder_.path().string() + "/");
}

std::string SimulatedHost::mappedBack(std::string text) const {
  return replaced(std::move(text), folder_.path().string() + "/", kTemporary);
}

applescript::ShellResult SimulatedHost::runShell(std::string const& command) {
  applescript::ShellResult result;
  auto* pipe = ::popen(mapped(command).c_str(), "r");
  if (pipe == nullptr) return {1, "", "no shell"};
  std::array<char, 4096> buffer{};
  while (auto const count = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
    result.output.append(buffer.data(), count);
  }
  int const status = ::pclose(pipe);
  result.output = mappedBack(std::move(result.output));
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 1;
  return result;
}

applescript::Host::FileKind SimulatedHost::fileKindAt(std::string const& posixPath) {
  std::error_code ignored;
  auto const status = std::filesystem::status(mapped(posixPath), ignored);
  if (std::filesystem::is_directory(status)) return FileKind::folder;
  return std::filesystem::exists(status) ? FileKind::file : FileKind::none;
}

}  // namespace morla::captureone
