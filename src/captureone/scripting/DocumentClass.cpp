#include "captureone/scripting/Classes.h"

namespace morla::captureone {
namespace {

using applescript::Code;
using applescript::Enumerator;
using applescript::KeyForm;
using applescript::Specifier;
using applescript::Value;

class DocumentClass final : public ServedClass {
 public:
  explicit DocumentClass(Model& model) : model_(model) {}

  Code code() const override { return codes::kDocument; }

  bool exists(ObjectReference const& object) const override { return model_.documents().find(object.id) != nullptr; }

  Value specifier(ObjectReference const& object) const override {
    return std::make_shared<Specifier const>(Specifier{codes::kDocument, KeyForm::id, object.id, {}});
  }

  Reading read(ObjectReference const& object, Code property) const override {
    auto const* document = model_.documents().find(object.id);
    if (document == nullptr) return failures::cannotGet(specifier(object));
    if (property == codes::kName) return Value(document->name);
    if (property == codes::kId) return Value(document->id);
    if (property == Code("COdk")) {
      return Value(Enumerator{document->kind == DocumentKind::session ? Code("COsd") : Code("COct")});
    }
    if (property == codes::kCameraOfDocument) {
      auto const* camera = model_.cameras().current();
      if (camera == nullptr) return Value::missing();
      return Content(ObjectReference{codes::kCamera, camera->identifier, object.id});
    }
    return failures::notSimulated("such property of a document", specifier(object));
  }

  Failure write(ObjectReference const& object, Code, Content const&) override {
    return failures::notSimulated("such property of a document", specifier(object));
  }

  std::optional<std::vector<ObjectReference>> elements(ObjectReference const&, Code) const override { return {}; }

 private:
  Model& model_;
};

}  // namespace

std::unique_ptr<ServedClass> makeDocumentClass(Model& model) {
  return std::make_unique<DocumentClass>(model);
}

}  // namespace morla::captureone
