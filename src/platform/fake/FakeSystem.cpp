#include "platform/fake/FakeSystem.h"

#include <cstdio>
#include <cstdlib>

namespace morla::fake {

void failLoudly(std::string const& message) {
  std::fprintf(stderr, "a fake was asked for what its test did not set up: %s\n", message.c_str());
  std::abort();
}

platform::ScriptReply FakeScriptRunner::execute(std::string const& source) {
  if (!answer_) failLoudly("the reply to a script:\n" + source);
  sources.push_back(source);
  return answer_(source);
}

std::optional<platform::DefaultsValue> FakeUserDefaults::value(std::string_view key) const {
  auto const found = values.find(key);
  return found == values.end() ? std::nullopt : std::optional(found->second);
}

void FakeUserDefaults::store(std::vector<platform::DefaultsEntry> const& entries) {
  for (auto const& [key, value] : entries) {
    values.insert_or_assign(key, value);
    writes.emplace_back(key, value);
  }
}

std::optional<std::vector<std::string>> FakeFiles::visibleEntries(std::string const& folder) const {
  auto const found = folders.find(folder);
  if (found == folders.end()) return std::nullopt;
  auto visible = found->second;
  std::erase_if(visible, [](std::string const& name) { return name.starts_with('.'); });
  return visible;
}

void FakeApplication::setActivationPolicy(platform::ActivationPolicy policy) {
  journal_.add("application.setActivationPolicy " + std::to_string(static_cast<int>(policy)));
}

int FakeApplication::run() {
  journal_.add("application.run");
  return 0;
}

void FakeApplication::terminate() {
  isTerminated = true;
}

void FakeApplication::onActionRequest(std::function<platform::ActionOutcome(std::string_view)> handler) {
  handler_ = std::move(handler);
}

}  // namespace morla::fake
