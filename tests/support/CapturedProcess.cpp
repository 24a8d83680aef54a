#include "support/CapturedProcess.h"

#include <array>
#include <utility>

namespace morla::support {
namespace {

std::string readAll(FileDescriptor const& from) {
  std::string all;
  std::array<char, 4096> part{};
  for (;;) {
    auto const count = read(from.get(), part.data(), part.size());
    if (count <= 0) return all;
    all.append(part.data(), static_cast<std::size_t>(count));
  }
}

std::future<std::string> readInBackground(FileDescriptor from) {
  return std::async(std::launch::async, [from = std::move(from)] { return readAll(from); });
}

}  // namespace

CapturedProcess::CapturedProcess(std::vector<std::string> arguments) {
  auto output = makePipe();
  auto errors = makePipe();
  process_ = ChildProcess(std::move(arguments), {-1, output.writeEnd.get(), errors.writeEnd.get(), -1});
  output_ = readInBackground(std::move(output.readEnd));
  errors_ = readInBackground(std::move(errors.readEnd));
}

Finished CapturedProcess::finish() {
  int const status = process_.wait();
  return {status, output_.get(), errors_.get()};
}

}  // namespace morla::support
