#include "captureone/permissions/PermissionWatch.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <utility>

namespace morla::captureone {

PermissionWatch::PermissionWatch(std::string const& path, std::function<void()> changed)
    : path_(QString::fromStdString(path)) {
  auto const review = [this, changed = std::move(changed)] {
    watchFile();
    changed();
  };
  QObject::connect(&watcher_, &QFileSystemWatcher::fileChanged, &watcher_, review);
  QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, &watcher_, review);
  auto const folder = QFileInfo(path_).path();
  QDir().mkpath(folder);
  watcher_.addPath(folder);
  watchFile();
}

void PermissionWatch::watchFile() {
  // A file that was replaced is another file, and is no longer watched.
  if (!watcher_.files().contains(path_) && QFile::exists(path_)) watcher_.addPath(path_);
}

}  // namespace morla::captureone
