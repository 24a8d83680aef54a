#include "applescript/RunState.h"

#include <utility>

#include "applescript/ScriptError.h"

namespace morla::applescript {

[[noreturn]] static void raiseLimit(std::int64_t number, char const* message) {
  ScriptError error;
  error.number = number;
  error.brief = message;
  error.isFinal = true;
  throw error;
}

void RunState::spend(std::uint64_t count) {
  steps_ += count;
  if (heap.liveBytes() + Text::liveBytes() > limits.memoryBytes) {
    raiseLimit(errors::kOutOfMemory, "Out of memory.");
  }
  if (steps_ > limits.steps) raiseLimit(errors::kTooManySteps, "The script takes too many steps.");
}

ListReference RunState::makeList(std::vector<Datum> items) {
  if (items.size() > limits.listItems) raise(errors::kValueTooLarge, "The list is too large.");
  spend(items.size());
  return heap.makeList(std::move(items));
}

Datum RunState::makeText(std::string text) {
  if (text.size() > limits.textBytes) raise(errors::kValueTooLarge, "The text is too large.");
  return text;
}

Datum RunState::append(Text const& text, std::string_view more) {
  if (text.size() + more.size() > limits.textBytes) raise(errors::kValueTooLarge, "The text is too large.");
  return text.appended(more);
}

}  // namespace morla::applescript
