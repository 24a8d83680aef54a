#include "platform/Environment.h"

#include <cstdio>
#include <cstdlib>

#include "base/MainThread.h"

namespace morla::platform {
namespace {

Environment* activeEnvironment = nullptr;

}  // namespace

Environment::Environment(Platform platform) : platform_(platform), previous_(activeEnvironment) {
  assertIsMainThread();
  activeEnvironment = this;
}

Environment::~Environment() {
  while (!objects_.empty()) objects_.pop_back();
  activeEnvironment = previous_;
}

Environment& Environment::active() {
  assertIsMainThread();
  if (activeEnvironment == nullptr) {
    std::fputs("a shared object was asked for outside an Environment\n", stderr);
    std::abort();
  }
  return *activeEnvironment;
}

}  // namespace morla::platform
