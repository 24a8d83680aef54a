#include "privacy/PermissionStore.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

namespace morla::privacy {

using nlohmann::json;
using Service = PermissionQuestion::Service;

static char const* keyOf(Service service) {
  switch (service) {
    case Service::automation:
      return "automation";
    case Service::screenRecording:
      return "screenRecording";
    case Service::accessibility:
      return "accessibility";
  }
  return "";
}

static char const* textOf(Permission permission) {
  switch (permission) {
    case Permission::undecided:
      return "undecided";
    case Permission::allow:
      return "allow";
    case Permission::deny:
      return "deny";
  }
  return "";
}

/// Null when there is no such member.
static json const& member(json const& object, std::string const& key) {
  static json const kNone;
  auto const found = object.is_object() ? object.find(key) : object.end();
  return found == object.end() ? kNone : *found;
}

static json readFile(std::string const& path) {
  std::ifstream file(path, std::ios::binary);
  json document = json::parse(file, nullptr, /*allow_exceptions=*/false);
  return document.is_object() ? document : json::object();
}

PermissionStore PermissionStore::ofUser() {
  char const* const dataHome = std::getenv("XDG_DATA_HOME");
  char const* const home = std::getenv("HOME");
  std::string const folder = dataHome != nullptr && *dataHome == '/'
                                 ? std::string(dataHome)
                                 : std::string(home == nullptr ? "" : home) + "/.local/share";
  return PermissionStore(folder + "/privacy/permissions.json");
}

Permission PermissionStore::get(PermissionQuestion const& question) const {
  json const document = readFile(path_);
  json const& ofClient = member(member(document, keyOf(question.service)), question.client);
  json const& decision = question.service == Service::automation ? member(ofClient, question.target) : ofClient;
  if (decision == "allow") return Permission::allow;
  if (decision == "deny") return Permission::deny;
  return Permission::undecided;
}

namespace {

/// One writer at a time, among all programs.
class FileLock {
 public:
  explicit FileLock(std::string const& path) : descriptor_(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
    if (descriptor_ < 0) return;
    int result = 0;
    do {
      result = ::flock(descriptor_, LOCK_EX);
    } while (result != 0 && errno == EINTR);
    isHeld_ = result == 0;
  }
  FileLock(FileLock const&) = delete;
  FileLock& operator=(FileLock const&) = delete;
  ~FileLock() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }
  [[nodiscard]] bool isHeld() const { return isHeld_; }

 private:
  int descriptor_;
  bool isHeld_ = false;
};

}  // namespace

static json& objectAt(json& parent, std::string const& key) {
  json& child = parent[key];
  if (!child.is_object()) child = json::object();
  return child;
}

bool PermissionStore::set(PermissionQuestion const& question, Permission permission) const {
  std::error_code error;
  std::filesystem::create_directories(std::filesystem::path(path_).parent_path(), error);
  FileLock const lock(path_ + ".lock");
  if (!lock.isHeld()) return false;

  json document = readFile(path_);
  json& ofService = objectAt(document, keyOf(question.service));
  if (question.service == Service::automation) {
    objectAt(ofService, question.client)[question.target] = textOf(permission);
  } else {
    ofService[question.client] = textOf(permission);
  }
  std::string const temporary = path_ + ".new";
  {
    std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
    file << document.dump(2, ' ', false, json::error_handler_t::replace) << '\n';
    if (!file.flush()) return false;
  }
  return std::rename(temporary.c_str(), path_.c_str()) == 0;
}

}  // namespace morla::privacy
