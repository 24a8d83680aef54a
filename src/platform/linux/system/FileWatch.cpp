#include "platform/linux/system/FileWatch.h"

#include <QDir>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <memory>
#include <utility>

#include "base/MainThread.h"

namespace morla::linux {

Subscription watchFile(std::string const& path, std::function<void()> changed) {
  assertIsMainThread();
  auto const file = QString::fromStdString(path);
  auto const folder = QFileInfo(file).path();
  QDir().mkpath(folder);
  // The observer may end the watch, in the middle of the watcher's own signal.
  std::shared_ptr<QFileSystemWatcher> const watcher(new QFileSystemWatcher, [](auto* ended) { ended->deleteLater(); });
  auto const report = [watcher = watcher.get(), file, changed = std::move(changed)] {
    // A file that was replaced is another file, and is no longer watched.
    if (!watcher->files().contains(file) && QFile::exists(file)) watcher->addPath(file);
    changed();
  };
  QObject::connect(watcher.get(), &QFileSystemWatcher::directoryChanged, watcher.get(), report);
  QObject::connect(watcher.get(), &QFileSystemWatcher::fileChanged, watcher.get(), report);
  // The folder tells of a new file in the place of the old one, and of the first.
  watcher->addPath(folder);
  if (QFile::exists(file)) watcher->addPath(file);
  return Subscription([watcher] { watcher->disconnect(); });
}

}  // namespace morla::linux
