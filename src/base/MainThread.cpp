#include "base/MainThread.h"

#include <cstdio>
#include <cstdlib>
#include <thread>

namespace morla {
namespace {

std::thread::id const kMainThread = std::this_thread::get_id();

}  // namespace

bool isMainThread() noexcept {
  return std::this_thread::get_id() == kMainThread;
}

void assertIsMainThread(std::source_location where) noexcept {
  if (isMainThread()) return;
  std::fprintf(stderr, "%s:%u: %s must be called on the main thread\n", where.file_name(), where.line(),
               where.function_name());
  std::abort();
}

}  // namespace morla
