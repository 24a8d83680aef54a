#pragma once

#include <string>

namespace morla::captureone {

/// How the application answers where pictures are captured to. Versions of it have differed.
enum class CaptureForm { hfs, posix, file, missing };

/// The capture folder as it was set: a POSIX path, an HFS path, or any text at all.
struct CaptureFolder {
  std::string text;
  CaptureForm form = CaptureForm::file;

  friend bool operator==(CaptureFolder const&, CaptureFolder const&) = default;
};

/// The text that `form` answers, empty for none. What has been set in the same notation, or in none, comes back byte
/// for byte; from the other notation it is rewritten, an HFS path of a folder with a colon at its end.
[[nodiscard]] std::string answerOf(CaptureFolder const& folder);

/// A path in either notation as a POSIX path without a slash at its end.
[[nodiscard]] std::string posixFolder(std::string const& path);

}  // namespace morla::captureone
