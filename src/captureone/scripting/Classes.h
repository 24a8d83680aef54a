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
inline constexpr applescript::Code kCollection{"COcl"};
inline constexpr applescript::Code kImage{"COim"};
inline constexpr applescript::Code kVariant{"cvar"};
inline constexpr applescript::Code kRecipe{"COrp"};
inline constexpr applescript::Code kJob{"CQjb"};
inline constexpr applescript::Code kExamined{"exmn"};  ///< the object that a test is about
inline constexpr applescript::Code kClass{"pcls"};
inline constexpr applescript::Code kName{"pnam"};
inline constexpr applescript::Code kId{"ID"};
inline constexpr applescript::Code kCameraOfDocument{"COco"};
}  // namespace codes

/// Every class that the model has. They refer to the model, which must outlive them.
[[nodiscard]] std::vector<std::unique_ptr<ServedClass>> makeServedClasses(Model& model, ApplicationIdentity identity);

[[nodiscard]] std::unique_ptr<ServedClass> makeApplicationClass(Model& model, ApplicationIdentity identity);
[[nodiscard]] std::unique_ptr<ServedClass> makeDocumentClass(Model& model);
[[nodiscard]] std::unique_ptr<ServedClass> makeCameraClass(Model& model);
[[nodiscard]] std::unique_ptr<ServedClass> makeCollectionClass(Model& model);
[[nodiscard]] std::unique_ptr<ServedClass> makeImageClass(Model& model);
[[nodiscard]] std::unique_ptr<ServedClass> makeVariantClass(Model& model);
[[nodiscard]] std::unique_ptr<ServedClass> makeRecipeClass(Model& model);
[[nodiscard]] std::unique_ptr<ServedClass> makeJobClass(Model& model);

/// How an object is named inside its document.
[[nodiscard]] applescript::Value specifierIn(applescript::Value container, applescript::Code wanted,
                                             applescript::KeyForm form, applescript::Value selector);
[[nodiscard]] applescript::Value documentSpecifier(std::string const& id);

}  // namespace morla::captureone
