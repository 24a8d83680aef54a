#pragma once

#include <unistd.h>

#include <cstdio>
#include <functional>
#include <ostream>
#include <string>

namespace morla::linux {

/// What a command of the program said and how it ended.
struct Captured {
  int status = 0;
  std::string output;
  std::string errors;
  friend bool operator==(Captured const&, Captured const&) = default;
  friend std::ostream& operator<<(std::ostream& out, Captured const& captured) {
    return out << "status " << captured.status << "\noutput: " << captured.output << "\nerrors: " << captured.errors;
  }
};

/// Takes a stream's output into a file of its own while it lives.
class CapturedStream {
 public:
  explicit CapturedStream(FILE* stream) : stream_(stream), file_(std::tmpfile()) {
    std::fflush(stream_);
    saved_ = dup(fileno(stream_));
    dup2(fileno(file_), fileno(stream_));
  }
  ~CapturedStream() { std::fclose(file_); }
  CapturedStream(CapturedStream const&) = delete;
  CapturedStream& operator=(CapturedStream const&) = delete;

  /// Gives the stream back.
  std::string end() {
    std::fflush(stream_);
    dup2(saved_, fileno(stream_));
    close(saved_);
    std::string text;
    std::rewind(file_);
    for (int c = std::fgetc(file_); c != EOF; c = std::fgetc(file_)) text += static_cast<char>(c);
    return text;
  }

 private:
  FILE* stream_;
  FILE* file_;
  int saved_ = -1;
};

inline Captured capture(std::function<int()> const& command) {
  CapturedStream output(stdout);
  CapturedStream errors(stderr);
  Captured result;
  result.status = command();
  result.errors = errors.end();
  result.output = output.end();
  return result;
}

}  // namespace morla::linux
