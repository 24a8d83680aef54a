#pragma once

#include <QFileSystemWatcher>
#include <QString>
#include <functional>
#include <string>

namespace morla::captureone {

/// Calls `changed` after the store of permissions was written by anybody. Its folder is made if need be. Main thread.
class PermissionWatch {
 public:
  PermissionWatch(std::string const& path, std::function<void()> changed);

 private:
  void watchFile();

  QString path_;
  QFileSystemWatcher watcher_;
};

}  // namespace morla::captureone
