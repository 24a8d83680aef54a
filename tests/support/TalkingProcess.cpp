#include "support/TalkingProcess.h"

#include <signal.h>

#include <utility>

namespace morla::support {

TalkingProcess::TalkingProcess(std::vector<std::string> arguments) {
  signal(SIGPIPE, SIG_IGN);
  auto input = makePipe();
  auto output = makePipe();
  process_ = ChildProcess(std::move(arguments), {input.readEnd.get(), output.writeEnd.get(), -1, -1});
  input_ = std::move(input.writeEnd);
  output_ = LineReader(std::move(output.readEnd));
}

void TalkingProcess::writeLine(std::string const& line) const {
  auto const text = line + '\n';
  if (write(input_.get(), text.data(), text.size()) < 0) return;  // it has ended, which its missing answer shows
}

std::optional<std::string> TalkingProcess::readUntil(std::string const& prefix) {
  while (auto line = output_.next()) {
    if (line->starts_with(prefix)) return line->substr(prefix.size());
  }
  return std::nullopt;
}

void TalkingProcess::finish() {
  input_ = FileDescriptor();
  process_.wait();
}

}  // namespace morla::support
