#pragma once

#include <memory>
#include <string>
#include <vector>

#include "captureone/model/Model.h"
#include "captureone/scripting/ServedClass.h"

namespace morla::captureone {

/// What the application says of itself.
struct ApplicationIdentity {
  std::string busName = "com.captureone.captureone16";
  std::string name = "Capture One";
  std::string version = "16.4.2";
};

namespace codes {
inline constexpr applescript::Code kApplication{"capp"};
inline constexpr applescript::Code kDocument{"docu"};
inline constexpr applescript::Code kCamera{"CObj"};
inline constexpr applescript::Code kName{"pnam"};
inline constexpr applescript::Code kId{"ID"};
inline constexpr applescript::Code kCameraOfDocument{"COco"};
}  // namespace codes

/// Every class that the model has. They refer to the model, which must outlive them.
[[nodiscard]] std::vector<std::unique_ptr<ServedClass>> makeServedClasses(Model& model, ApplicationIdentity identity);

[[nodiscard]] std::unique_ptr<ServedClass> makeApplicationClass(Model& model, ApplicationIdentity identity);
[[nodiscard]] std::unique_ptr<ServedClass> makeDocumentClass(Model& model);
[[nodiscard]] std::unique_ptr<ServedClass> makeCameraClass(Model& model);

}  // namespace morla::captureone
