#pragma once

#include <source_location>

namespace morla {

/// True on the thread that loaded the program, which is the main thread of every back end. Any thread.
[[nodiscard]] bool isMainThread() noexcept;

/// Ends the program with a line on standard error when called on any thread but the main one: state that two threads
/// touch is a programming error, and going on would corrupt it silently.
void assertIsMainThread(std::source_location where = std::source_location::current()) noexcept;

}  // namespace morla
