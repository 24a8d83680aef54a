#pragma once

#include <QColor>
#include <QString>

#include "captureone/model/Cameras.h"

namespace morla::captureone {

/// The selected body in one line, as a person would say it.
struct CameraState {
  QString readout;  ///< its values, "—" where there are none
  QString sentence;
  QColor colour;
};
[[nodiscard]] CameraState describe(Cameras const& cameras);

}  // namespace morla::captureone
