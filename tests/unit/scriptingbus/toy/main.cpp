// A scriptable application for the tests: `toy_library [BUS-NAME]`, until its bus goes.
#include <poll.h>
#include <unistd.h>

#include <iostream>
#include <string>
#include <vector>

#include "scriptingbus/ScriptingServer.h"
#include "toy/ToyLibrary.h"

using namespace morla;
using namespace morla::applescript;

int main(int argc, char** argv) {
  scriptingbus::testing::ToyLibrary library;
  std::vector<scriptingbus::ScriptingServer::Answer> neverGiven;
  auto const handler = [&](AppleEvent const& event, scriptingbus::ScriptingServer::Answer const& answer) {
    if (event.eventId == "die "_code) ::_exit(0);
    if (event.eventId == "hush"_code) {
      neverGiven.push_back(answer);
      return;
    }
    answer(library.handle(event));
  };
  auto const [server, failure] = scriptingbus::ScriptingServer::open(
      {argc > 1 ? argv[1] : "com.example.toy", "Toy Library", "1.0", library.dictionary()}, handler);
  if (server == nullptr) {
    std::cerr << failure << '\n';
    return 1;
  }
  while (server->process()) {
    pollfd watched{server->fileDescriptor(), POLLIN, 0};
    ::poll(&watched, 1, -1);
  }
  return 0;
}
