#include <QApplication>
#include <QPixmap>
#include <QSystemTrayIcon>
#include <QTimer>
#include <cstdio>

/// The least that a program of this toolkit with an icon in the tray can do: what MORLA's start and memory are measured
/// against. Says `ready` once the icon has been shown and the loop has turned, and stays until it is ended.
int main(int argc, char** argv) {
  QApplication const application(argc, argv);
  QPixmap picture(22, 22);
  picture.fill(Qt::black);
  QSystemTrayIcon icon{QIcon(picture)};
  icon.show();
  QTimer::singleShot(0, [] {
    std::puts("ready");
    std::fflush(stdout);
  });
  return QApplication::exec();
}
