#include "ServerThread.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <future>
#include <stdexcept>
#include <utility>

namespace morla::scriptingbus::testing {

static void serve(ScriptingServer& server, int stop) {
  while (server.process()) {
    pollfd watched[] = {{server.fileDescriptor(), POLLIN, 0}, {stop, POLLIN, 0}};
    ::poll(watched, 2, -1);
    if (watched[1].revents != 0) return;
  }
}

ServerThread::ServerThread(ServedApplication application, ScriptingServer::Handler handler)
    : stop_(::eventfd(0, EFD_CLOEXEC)) {
  std::promise<std::string> opened;
  auto failure = opened.get_future();
  thread_ = std::thread([this, &opened, application = std::move(application), handler = std::move(handler)] {
    auto const [server, why] = ScriptingServer::open(application, handler);
    int const stop = stop_;
    opened.set_value(why);
    if (server != nullptr) serve(*server, stop);
  });
  if (std::string const why = failure.get(); !why.empty()) {
    thread_.join();
    ::close(stop_);
    throw std::runtime_error(why);
  }
}

ServerThread::~ServerThread() {
  ::eventfd_write(stop_, 1);
  thread_.join();
  ::close(stop_);
}

}  // namespace morla::scriptingbus::testing
