#include "captureone/window/CameraState.h"

#include <QStringList>

namespace morla::captureone {
namespace {

QColor const kGreen(0x30, 0xD1, 0x58);
QColor const kOrange(0xFF, 0x9F, 0x0A);
QColor const kGrey(0x8E, 0x8E, 0x93);

}  // namespace

CameraState describe(Cameras const& cameras) {
  QString const nothing = QStringLiteral("—");
  auto const* camera = cameras.current();
  if (camera == nullptr) return {nothing, QStringLiteral("Aucun boîtier branché"), kGrey};
  auto const name = QString::fromStdString(camera->name);
  if (camera->link != CameraLink::connected) return {nothing, name + QStringLiteral(" : déconnecté"), kOrange};
  if (camera->power != CameraPower::on) return {nothing, name + QStringLiteral(" : éteint"), kOrange};
  auto const value = [camera](CameraSetting which) { return QString::fromStdString(camera->setting(which).value); };
  QStringList const values{value(CameraSetting::shutterSpeed), value(CameraSetting::aperture),
                           QStringLiteral("ISO ") + value(CameraSetting::iso), value(CameraSetting::format)};
  return {values.join(QStringLiteral("   ")), name + QStringLiteral(" : prêt"), kGreen};
}

}  // namespace morla::captureone
