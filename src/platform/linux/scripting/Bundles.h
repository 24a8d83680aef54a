#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Workspace.h"

namespace morla::linux {

/// An application that is installed as a bundle: a folder NAME.app that holds Contents/Info.plist.
struct InstalledBundle {
  std::string path;
  std::string name;        ///< CFBundleName, else the file's name
  std::string identifier;  ///< never empty
};

/// The installed application bundles. Reads the disk at every question, as bundles come and go while we run. Any
/// thread.
class Bundles {
 public:
  /// Of two bundles that fit, the one in the earlier folder counts.
  explicit Bundles(std::vector<std::string> folders) : folders_(std::move(folders)) {}
  /// /Applications, then ~/Applications.
  [[nodiscard]] static Bundles installed();

  /// By CFBundleName or the file's name, with or without ".app", ignoring case.
  [[nodiscard]] std::optional<InstalledBundle> named(std::string const& name) const;
  /// Ignoring case.
  [[nodiscard]] std::optional<InstalledBundle> identifiedBy(std::string const& identifier) const;

  /// The bundle's own copy of its dictionary, verbatim; nothing when it has none.
  [[nodiscard]] static std::optional<std::string> dictionaryOf(InstalledBundle const& bundle);

 private:
  std::vector<std::string> folders_;
};

}  // namespace morla::linux
