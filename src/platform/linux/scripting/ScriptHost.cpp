#include "platform/linux/scripting/ScriptHost.h"

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <thread>

#include "platform/linux/scripting/Shell.h"

namespace morla::linux {

using applescript::AppleEvent;
using applescript::ApplicationInformation;
using applescript::ApplicationReference;
using applescript::Dictionary;
using applescript::EventError;
using applescript::EventReply;
using applescript::ShellResult;

std::optional<ApplicationInformation> ScriptHost::locate(ApplicationReference const& reference) {
  return services_.finder.locate(reference, owners_);
}

bool ScriptHost::isRunning(ApplicationReference const& reference) {
  return services_.finder.isRunning(reference);
}

std::shared_ptr<Dictionary const> ScriptHost::dictionary(ApplicationInformation const& application) {
  auto const answer = services_.events.dictionary(application.identifier, owners_);
  if (answer.dictionary) return answer.dictionary;
  auto const bundle = services_.finder.installed().identifiedBy(application.identifier);
  auto const table = bundle ? Bundles::dictionaryOf(*bundle) : std::nullopt;
  if (!table) return nullptr;
  auto parsed = applescript::parseDictionary(*table);
  if (!parsed.dictionary) return nullptr;
  return std::make_shared<Dictionary const>(std::move(*parsed.dictionary));
}

std::optional<EventError> ScriptHost::enterTell(ApplicationInformation const& application) {
  answered_.erase(application.identifier);
  return services_.gate.check(application);
}

EventReply ScriptHost::send(ApplicationInformation const& application, AppleEvent const& event) {
  if (auto refusal = services_.gate.check(application)) return std::move(*refusal);
  using Launching = scriptingbus::AppleEventClient::Launching;
  auto const launching = answered_.contains(application.identifier) ? Launching::never : Launching::asNeeded;
  auto reply = services_.events.send(application.identifier, event, launching, owners_);
  // An error of its own is an answer as well.
  auto const* const error = std::get_if<EventError>(&reply);
  if (error == nullptr || error->number != applescript::errors::kApplicationNotRunning) {
    answered_.insert(application.identifier);
  }
  return reply;
}

ShellResult ScriptHost::runShell(std::string const& command) {
  return linux::runShell(command);
}

void ScriptHost::log(std::string const& line) {
  if (log_) log_(line);
}

applescript::Host::FileKind ScriptHost::fileKindAt(std::string const& posixPath) {
  std::error_code error;
  auto const status = std::filesystem::status(posixPath, error);
  if (error || !std::filesystem::exists(status)) return FileKind::none;
  return std::filesystem::is_directory(status) ? FileKind::folder : FileKind::file;
}

applescript::Host::LocalTime ScriptHost::now() {
  std::time_t const moment = std::time(nullptr);
  std::tm local{};
  if (::localtime_r(&moment, &local) == nullptr) return {moment, 0};
  return {moment + local.tm_gmtoff, local.tm_gmtoff};
}

void ScriptHost::wait(std::chrono::milliseconds duration) {
  std::this_thread::sleep_for(duration);
}

applescript::HostFiles* ScriptHost::files() {
  return &files_;
}

std::optional<std::string> ScriptHost::environmentVariable(std::string const& name) {
  char const* value = std::getenv(name.c_str());  // NOLINT(concurrency-mt-unsafe): nothing here changes the environment
  if (value == nullptr) return std::nullopt;
  return value;
}

std::string ScriptHost::homeFolder() {
  char const* home = std::getenv("HOME");  // NOLINT(concurrency-mt-unsafe): nothing here changes the environment
  return home == nullptr ? "/" : home;
}

}  // namespace morla::linux
