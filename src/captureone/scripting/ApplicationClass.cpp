#include <utility>

#include "captureone/scripting/Classes.h"

namespace morla::captureone {
namespace {

using applescript::Code;
using applescript::Value;

class ApplicationClass final : public ServedClass {
 public:
  ApplicationClass(Model& model, ApplicationIdentity identity) : model_(model), identity_(std::move(identity)) {}

  Code code() const override { return codes::kApplication; }
  bool exists(ObjectReference const&) const override { return true; }
  Value specifier(ObjectReference const&) const override { return {}; }

  Reading read(ObjectReference const&, Code property) const override {
    if (property == codes::kName) return Value(identity_.name);
    if (property == Code("vers")) return Value(identity_.version);
    if (property == Code("pisf")) return Value(model_.isFrontmost());
    if (property == Code("Cudo")) {
      auto const* current = model_.documents().current();
      if (current == nullptr) return failures::cannotGet({});
      return Content(ObjectReference{codes::kDocument, current->id, {}});
    }
    return failures::notSimulated("such property of the application");
  }

  Failure write(ObjectReference const&, Code property, Content const& content) override {
    auto const* document = std::get_if<ObjectReference>(&content);
    if (property != Code("Cudo")) return failures::notSimulated("such property of the application");
    if (document == nullptr || !model_.documents().makeCurrent(document->id)) return failures::cannotSet({});
    return {};
  }

  std::optional<std::vector<ObjectReference>> elements(ObjectReference const&, Code wanted) const override {
    if (wanted != codes::kDocument) return {};
    std::vector<ObjectReference> documents;
    for (auto const& each : model_.documents().all()) documents.push_back({codes::kDocument, each.id, {}});
    return documents;
  }

 private:
  Model& model_;
  ApplicationIdentity identity_;
};

}  // namespace

std::unique_ptr<ServedClass> makeApplicationClass(Model& model, ApplicationIdentity identity) {
  return std::make_unique<ApplicationClass>(model, std::move(identity));
}

std::vector<std::unique_ptr<ServedClass>> makeServedClasses(Model& model, ApplicationIdentity identity) {
  std::vector<std::unique_ptr<ServedClass>> classes;
  classes.push_back(makeApplicationClass(model, std::move(identity)));
  classes.push_back(makeDocumentClass(model));
  classes.push_back(makeCameraClass(model));
  return classes;
}

}  // namespace morla::captureone
