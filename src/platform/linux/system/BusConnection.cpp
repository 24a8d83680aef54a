#include "platform/linux/system/BusConnection.h"

#include <poll.h>
#include <systemd/sd-bus.h>

#include <QObject>
#include <QSocketNotifier>
#include <algorithm>
#include <cstring>

#include "base/Log.h"

namespace morla::linux {
namespace {

/// The clock of sd-bus's timeouts, in microseconds.
std::uint64_t monotonicMicroseconds() {
  using std::chrono::duration_cast;
  auto const now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint64_t>(duration_cast<std::chrono::microseconds>(now).count());
}

}  // namespace

void BusSlotDeleter::operator()(sd_bus_slot* slot) const {
  sd_bus_slot_unref(slot);
}

BusOrFailure openSessionBus() {
  sd_bus* bus = nullptr;
  int const result = sd_bus_open_user(&bus);
  if (result < 0) return {nullptr, std::string("there is no session bus (") + std::strerror(-result) + ")"};
  return {Bus(bus), {}};
}

BusConnection::BusConnection(Bus bus, MainLoop& loop) : bus_(std::move(bus)), loop_(loop) {
  int const descriptor = sd_bus_get_fd(bus_.get());
  if (descriptor < 0) {
    isOpen_ = false;
    return;
  }
  readable_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
  writable_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Write);
  writable_->setEnabled(false);
  for (auto* notifier : {readable_.get(), writable_.get()}) {
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [this] { serve(); });
  }
  update();
}

BusConnection::~BusConnection() = default;

void BusConnection::serve() {
  // A callback that waits for the bus itself must not have others served under its feet.
  if (isServing_ || !isOpen_) return;
  isServing_ = true;
  int result = 1;
  while (result > 0) result = sd_bus_process(bus_.get(), nullptr);
  isServing_ = false;
  if (result < 0) {
    lose(-result);
  } else {
    update();
  }
}

void BusConnection::lose(int error) {
  isOpen_ = false;
  readable_.reset();
  writable_.reset();
  timeout_.end();
  log("Bus", std::string("the session bus has gone: ") + std::strerror(error));
}

void BusConnection::update() {
  if (!isOpen_ || isServing_) return;
  int const events = sd_bus_get_events(bus_.get());
  std::uint64_t at = UINT64_MAX;
  if (events < 0 || sd_bus_get_timeout(bus_.get(), &at) < 0) {
    lose(ENOTCONN);
    return;
  }
  writable_->setEnabled((events & POLLOUT) != 0);
  if (at == timeoutAt_ && (timeout_.isActive() || at == UINT64_MAX)) return;
  timeoutAt_ = at;
  timeout_.end();
  if (at == UINT64_MAX) return;
  std::uint64_t const now = monotonicMicroseconds();
  auto const wait = std::chrono::microseconds(static_cast<std::int64_t>(at > now ? at - now : 0));
  timeout_ = loop_.after(wait, life_.weak([this] {
    timeout_.end();
    serve();
  }));
}

void BusConnection::serveUntil(std::function<bool()> const& isDone, std::chrono::steady_clock::time_point deadline) {
  if (isServing_) return;
  while (isOpen_ && !isDone()) {
    serve();
    auto const left = deadline - std::chrono::steady_clock::now();
    if (!isOpen_ || isDone() || left <= left.zero()) break;
    auto const microseconds = std::chrono::duration_cast<std::chrono::microseconds>(left).count();
    (void)sd_bus_wait(bus_.get(), static_cast<std::uint64_t>(std::max<std::int64_t>(microseconds, 1)));
  }
}

}  // namespace morla::linux
