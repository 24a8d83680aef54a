#include "StatusRound.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "applescript/Interpreter.h"
#include "camerawatch/ScriptTexts.h"
#include "captureone/EmbeddedDictionary.h"

namespace morla::bench {

using namespace applescript;

std::string statusScript() {
  return "tell application id \"" + captureone::ApplicationIdentity().busName + "\"" +
         std::string(camerawatch::scripts::kStatus);
}

CaptureOneInProcess::CaptureOneInProcess()
    : objects_(model_, identity_, captureone::kDictionary, {[] {}}),
      dictionary_(std::make_shared<Dictionary const>(*parseDictionary(captureone::kDictionary).dictionary)) {}

std::optional<ApplicationInformation> CaptureOneInProcess::locate(ApplicationReference const&) {
  return ApplicationInformation{identity_.name, identity_.busName};
}

bool CaptureOneInProcess::isRunning(ApplicationReference const&) {
  return true;
}

std::shared_ptr<Dictionary const> CaptureOneInProcess::dictionary(ApplicationInformation const&) {
  return dictionary_;
}

std::optional<EventError> CaptureOneInProcess::enterTell(ApplicationInformation const&) {
  return std::nullopt;
}

EventReply CaptureOneInProcess::send(ApplicationInformation const&, AppleEvent const& event) {
  if (record != nullptr) record->push_back(event);
  return objects_.handle(event);
}

ShellResult CaptureOneInProcess::runShell(std::string const&) {
  return {};
}

Host::LocalTime CaptureOneInProcess::now() {
  return {};
}

void CaptureOneInProcess::wait(std::chrono::milliseconds) {}

std::string CaptureOneInProcess::homeFolder() {
  return "/";
}

Host::FileKind CaptureOneInProcess::fileKindAt(std::string const&) {
  return FileKind::none;
}

std::vector<AppleEvent> eventsOfARound() {
  CaptureOneInProcess host;
  std::vector<AppleEvent> events;
  host.record = &events;
  TextItemDelimiters delimiters{""};
  auto const outcome = run(statusScript(), host, delimiters);
  auto const text = outcome.result ? stringValue(*outcome.result) : std::nullopt;
  if (!text || text->find("||") == std::string::npos) {
    std::fprintf(stderr, "the status script does not answer: %s\n",
                 outcome.failure ? outcome.failure->message.c_str() : text.value_or("no text").c_str());
    std::exit(EXIT_FAILURE);
  }
  return events;
}

}  // namespace morla::bench
