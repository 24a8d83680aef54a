// Loaded into a program under test before everything else (LD_PRELOAD). Its clocks run ahead of the system's by what
// stands in the file that SHIFTED_CLOCK names: two 64-bit numbers of seconds, for the wall clock and for the clock that
// only goes forward. Whoever writes there makes time jump.
#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>

namespace {

struct Shift {
  std::atomic<std::int64_t> wall;
  std::atomic<std::int64_t> forward;
};

Shift const& shift() {
  static Shift const none{};
  static Shift const* const mapped = [] {
    char const* const path = std::getenv("SHIFTED_CLOCK");
    int const file = path == nullptr ? -1 : open(path, O_RDONLY | O_CLOEXEC);
    if (file < 0) return &none;
    void* const memory = mmap(nullptr, sizeof(Shift), PROT_READ, MAP_SHARED, file, 0);
    close(file);
    return memory == MAP_FAILED ? &none : static_cast<Shift const*>(memory);
  }();
  return *mapped;
}

std::int64_t nanoseconds(timespec const& time) {
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

std::int64_t now() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return nanoseconds(time);
}

/// In nanoseconds. The kernel knows nothing of the shift: no wait of its own is longer, so that a jump is seen soon.
constexpr std::int64_t kLongestWait = 20'000'000;
/// The kernel's own set of signals has 64 bits.
constexpr unsigned long kSignalSetBytes = 8;

}  // namespace

extern "C" {

int clock_gettime(clockid_t clock, timespec* result) noexcept {
  long const status = syscall(SYS_clock_gettime, clock, result);
  if (status != 0) return -1;
  bool const isWall = clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE;
  bool const isForward = clock == CLOCK_MONOTONIC || clock == CLOCK_MONOTONIC_COARSE || clock == CLOCK_MONOTONIC_RAW ||
                         clock == CLOCK_BOOTTIME;
  if (isWall) result->tv_sec += shift().wall;
  if (isForward) result->tv_sec += shift().forward;
  return 0;
}

int gettimeofday(timeval* result, void*) noexcept {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  *result = {now.tv_sec, now.tv_nsec / 1000};
  return 0;
}

time_t time(time_t* result) noexcept {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  if (result != nullptr) *result = now.tv_sec;
  return now.tv_sec;
}

/// Waits for as long as its own clock says.
int ppoll(pollfd* files, nfds_t count, timespec const* limit, sigset_t const* mask) {
  std::int64_t const end = limit == nullptr ? INT64_MAX : now() + nanoseconds(*limit);
  for (;;) {
    std::int64_t const left = limit == nullptr ? INT64_MAX : end - now();
    timespec wait{0, static_cast<long>(std::clamp<std::int64_t>(left, 0, kLongestWait))};
    auto const ready = static_cast<int>(syscall(SYS_ppoll, files, count, &wait, mask, kSignalSetBytes));
    if (ready != 0 || left <= kLongestWait) return ready;
  }
}

int poll(pollfd* files, nfds_t count, int milliseconds) {
  timespec const limit{milliseconds / 1000, milliseconds % 1000 * 1'000'000};
  return ppoll(files, count, milliseconds < 0 ? nullptr : &limit, nullptr);
}

}  // extern "C"
