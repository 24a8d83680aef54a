#include "captureone/model/CaptureFolder.h"

#include "applescript/Coercion.h"

namespace morla::captureone {
namespace {

bool isPosix(std::string const& text) {
  return text.starts_with('/');
}

bool isHfs(std::string const& text) {
  return !isPosix(text) && text.find(':') != std::string::npos;
}

}  // namespace

std::string posixFolder(std::string const& path) {
  std::string posix = isHfs(path) ? applescript::posixPath(path) : path;
  while (posix.size() > 1 && posix.ends_with('/')) posix.pop_back();
  return posix;
}

std::string answerOf(CaptureFolder const& folder) {
  switch (folder.form) {
    case CaptureForm::hfs: {
      if (!isPosix(folder.text)) return folder.text;
      auto const path = posixFolder(folder.text);
      return applescript::hfsPath(path == "/" ? path : path + "/");
    }
    case CaptureForm::posix:
    case CaptureForm::file:
      return isHfs(folder.text) ? posixFolder(folder.text) : folder.text;
    case CaptureForm::missing:
      return {};
  }
  return {};
}

}  // namespace morla::captureone
