#include <gmock/gmock.h>

#include <QApplication>

#include "captureone/window/Style.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleMock(&argc, argv);
  QApplication const application(argc, argv);
  morla::captureone::style::apply(*qApp);
  return RUN_ALL_TESTS();
}
