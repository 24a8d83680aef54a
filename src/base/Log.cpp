#include "base/Log.h"

#include <cstdio>
#include <string>

#include "base/MainThread.h"
#include "base/Trace.h"

namespace morla {
namespace {

/// One line stays one line: control characters of foreign text are shown, not obeyed.
std::string escaped(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (char const c : text) {
    switch (c) {
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      default:
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
          out += '?';
        } else {
          out += c;
        }
    }
  }
  return out;
}

}  // namespace

void logVerbatim(std::string_view line) {
  assertIsMainThread();
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fputc('\n', stdout);
  std::fflush(stdout);
  if (auto* trace = Trace::active()) trace->line({{"log", Json(line)}});
}

void log(std::string_view component, std::string_view message) {
  logVerbatim("[" + std::string(component) + "] " + escaped(message));
}

}  // namespace morla
