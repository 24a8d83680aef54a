#include "privacy/PermissionStore.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <nlohmann/json.hpp>

#include "privacy/PermissionFile.h"

namespace morla::privacy {
namespace {

using nlohmann::json;
using Service = PermissionQuestion::Service;

constexpr Service kServices[] = {Service::automation, Service::screenRecording, Service::accessibility};

/// Ours has three levels. Far deeper ones are nobody's decisions, and writing them again would end on the stack.
constexpr int kDeepestNesting = 64;

/// How long a decision may wait for another writer. The user's answer is stored on the main thread, and a writer that
/// has been stopped must not stop that as well.
constexpr std::chrono::seconds kPatience{1};

char const* keyOf(Service service) {
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

char const* textOf(Permission permission) {
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

/// Whatever is not one of the two decisions is none.
Permission permissionFrom(json const& value) {
  if (value == "allow") return Permission::allow;
  if (value == "deny") return Permission::deny;
  return Permission::undecided;
}

/// Null when there is no such member.
json const& member(json const& object, std::string const& key) {
  static json const kNone;
  auto const found = object.is_object() ? object.find(key) : object.end();
  return found == object.end() ? kNone : *found;
}

struct Document {
  json object = json::object();
  bool isWhole = true;  ///< false when a part of the text could not be understood and is missing here
};

/// Takes out what should be an object and is none; false when there was such a thing.
bool keepObjects(json& members, auto const& isMeant) {
  bool isWhole = true;
  for (auto each = members.begin(); each != members.end();) {
    bool const isWrong = isMeant(each.key()) && !each->is_object();
    isWhole &= !isWrong;
    each = isWrong ? members.erase(each) : std::next(each);
  }
  return isWhole;
}

bool keepExpectedShape(json& object) {
  auto const isService = [](std::string const& key) {
    return std::ranges::any_of(kServices, [&](Service service) { return key == keyOf(service); });
  };
  bool isWhole = keepObjects(object, isService);
  auto const automation = object.find(keyOf(Service::automation));
  if (automation != object.end()) isWhole &= keepObjects(*automation, [](std::string const&) { return true; });
  return isWhole;
}

Document parse(std::string const& text) {
  bool isTooDeep = false;
  auto const noteDepth = [&isTooDeep](int depth, json::parse_event_t, json&) {
    isTooDeep |= depth > kDeepestNesting;
    return true;
  };
  json parsed = json::parse(text, noteDepth, /*allow_exceptions=*/false);
  if (isTooDeep || !parsed.is_object()) return {json::object(), false};
  bool const isWhole = keepExpectedShape(parsed);
  return {std::move(parsed), isWhole};
}

json& objectAt(json& parent, std::string const& key) {
  json& child = parent[key];
  if (!child.is_object()) child = json::object();
  return child;
}

std::string because(std::string const& what, int error) {
  return what + ": " + std::strerror(error);
}

}  // namespace

PermissionStore PermissionStore::ofUser() {
  char const* const dataHome = std::getenv("XDG_DATA_HOME");
  char const* const home = std::getenv("HOME");
  std::string const folder = dataHome != nullptr && *dataHome == '/'
                                 ? std::string(dataHome)
                                 : std::string(home == nullptr ? "" : home) + "/.local/share";
  return PermissionStore(folder + "/privacy/permissions.json");
}

Permission PermissionStore::get(PermissionQuestion const& question) const {
  auto const file = PermissionFile::read(path_);
  if (!file.text) return Permission::undecided;
  auto const document = parse(*file.text);
  json const& ofClient = member(member(document.object, keyOf(question.service)), question.client);
  return permissionFrom(question.service == Service::automation ? member(ofClient, question.target) : ofClient);
}

PermissionStore::Contents PermissionStore::read() const {
  Contents contents;
  auto const file = PermissionFile::read(path_);
  if (file.error != 0) contents.problem = because(path_ + " cannot be read", file.error);
  if (!file.text) return contents;
  auto const document = parse(*file.text);
  if (!document.isWhole) contents.problem = path_ + " is damaged";
  for (auto const service : kServices) {
    auto const& ofService = member(document.object, keyOf(service));
    for (auto const& [client, decision] : ofService.items()) {
      if (service != Service::automation) {
        contents.decisions.push_back({{service, client, {}}, permissionFrom(decision)});
        continue;
      }
      for (auto const& [target, decided] : decision.items()) {
        contents.decisions.push_back({{service, client, target}, permissionFrom(decided)});
      }
    }
  }
  return contents;
}

std::optional<std::string> PermissionStore::set(PermissionQuestion const& question, Permission permission) const {
  PermissionFile const file(path_, kPatience);
  if (file.error() == EWOULDBLOCK) return path_ + ".lock is held by another program";
  if (file.error() != 0) return because(path_ + " cannot be written", file.error());
  auto const before = file.read();
  if (before.error != 0) return because(path_ + " cannot be read and is left alone", before.error);

  auto document = before.text ? parse(*before.text) : Document();
  if (!document.isWhole) {
    if (int const error = file.keepAside(); error != 0) return because(path_ + " is damaged; no copy of it", error);
  }
  json& ofService = objectAt(document.object, keyOf(question.service));
  if (question.service == Service::automation) {
    objectAt(ofService, question.client)[question.target] = textOf(permission);
  } else {
    ofService[question.client] = textOf(permission);
  }
  auto const text = document.object.dump(2, ' ', false, json::error_handler_t::replace) + '\n';
  if (int const error = file.replace(text); error != 0) return because(path_ + " cannot be written", error);
  return std::nullopt;
}

}  // namespace morla::privacy
