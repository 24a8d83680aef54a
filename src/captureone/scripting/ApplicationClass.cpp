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
    // From front to back, as scripts expect of any application.
    std::vector<ObjectReference> documents;
    auto const* front = model_.documents().current();
    if (front != nullptr) documents.push_back({codes::kDocument, front->id, {}});
    for (auto const& each : model_.documents().all()) {
      if (&each != front) documents.push_back({codes::kDocument, each.id, {}});
    }
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

Value specifierIn(Value container, Code wanted, applescript::KeyForm form, Value selector) {
  return std::make_shared<applescript::Specifier const>(
      applescript::Specifier{wanted, form, std::move(selector), std::move(container)});
}

Value documentSpecifier(std::string const& id) {
  return specifierIn({}, codes::kDocument, applescript::KeyForm::id, id);
}

std::vector<std::unique_ptr<ServedClass>> makeServedClasses(Model& model, ApplicationIdentity identity) {
  std::vector<std::unique_ptr<ServedClass>> classes;
  classes.push_back(makeApplicationClass(model, std::move(identity)));
  classes.push_back(makeDocumentClass(model));
  classes.push_back(makeCameraClass(model));
  classes.push_back(makeCollectionClass(model));
  classes.push_back(makeImageClass(model));
  classes.push_back(makeVariantClass(model));
  classes.push_back(makeRecipeClass(model));
  classes.push_back(makeJobClass(model));
  return classes;
}

}  // namespace morla::captureone
