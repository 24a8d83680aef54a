#include <algorithm>
#include <array>

#include "captureone/scripting/Classes.h"

namespace morla::captureone {
namespace {

using applescript::Code;
using applescript::KeyForm;
using applescript::TypeCode;
using applescript::Value;

struct SettingCodes {
  CameraSetting setting;
  Code value;
  Code available;
};
constexpr std::array kSettingCodes{
    SettingCodes{CameraSetting::format, Code("CCfm"), Code("CCAf")},
    SettingCodes{CameraSetting::iso, Code("CCis"), Code("CCAi")},
    SettingCodes{CameraSetting::aperture, Code("CCap"), Code("CCAp")},
    SettingCodes{CameraSetting::shutterSpeed, Code("CCsh"), Code("CCAs")},
};

/// In the dictionary for all bodies, but no body of the simulator has them: missing value, as with any body that lacks
/// a property.
constexpr std::array kUnsupported{Code("CCwb"), Code("CCpr"), Code("CCev")};

/// A body whose link has gone is an object that has vanished; one that is off keeps its name and offers nothing.
class CameraClass final : public ServedClass {
 public:
  explicit CameraClass(Model& model) : model_(model) {}

  Code code() const override { return codes::kCamera; }

  bool exists(ObjectReference const& object) const override {
    auto const* camera = model_.cameras().find(object.id);
    return camera != nullptr && camera->link == CameraLink::connected;
  }

  Value specifier(ObjectReference const& object) const override {
    return specifierIn(documentSpecifier(object.document), Code("prop"), KeyForm::property,
                       TypeCode{codes::kCameraOfDocument});
  }

  Reading read(ObjectReference const& object, Code property) const override {
    if (!exists(object)) return failures::cannotGet(specifier(object));
    auto const& camera = *model_.cameras().find(object.id);
    if (property == codes::kName) return Value(camera.name);
    if (property == Code("CCid")) return Value(camera.identifier);
    bool const isOn = camera.power == CameraPower::on;
    for (auto const& each : kSettingCodes) {
      auto const& state = camera.setting(each.setting);
      if (property == each.value) return Value(isOn ? state.value : std::string());
      if (property == each.available) return Value(isOn ? state.available : std::string());
    }
    if (std::ranges::find(kUnsupported, property) != kUnsupported.end()) return Value::missing();
    return failures::notSimulated("such property of a camera", specifier(object));
  }

  Failure write(ObjectReference const& object, Code property, Content const& content) override {
    if (!exists(object)) return failures::cannotGet(specifier(object));
    auto const* value = std::get_if<Value>(&content);
    auto const* text = value == nullptr ? nullptr : value->as<std::string>();
    for (auto const& each : kSettingCodes) {
      if (property != each.value) continue;
      if (text == nullptr || !model_.cameras().dial(object.id, each.setting, *text)) {
        return failures::cannotSet(specifier(object));
      }
      return {};
    }
    return failures::cannotSet(specifier(object));
  }

  std::optional<std::vector<ObjectReference>> elements(ObjectReference const&, Code) const override { return {}; }

 private:
  Model& model_;
};

}  // namespace

std::unique_ptr<ServedClass> makeCameraClass(Model& model) {
  return std::make_unique<CameraClass>(model);
}

}  // namespace morla::captureone
