#include <array>
#include <utility>

#include "captureone/scripting/Classes.h"
#include "captureone/scripting/FileValues.h"

namespace morla::captureone {
namespace {

using applescript::Code;
using applescript::Enumerator;
using applescript::FileUrl;
using applescript::List;
using applescript::Value;

constexpr Code kKind{"COdk"};
constexpr Code kPath{"ipth"};
constexpr Code kFolder{"COdf"};
constexpr Code kCaptures{"COcf"};
constexpr Code kOutput{"COof"};
constexpr Code kSelects{"COsf"};
constexpr Code kTrash{"COtf"};
constexpr Code kCurrentCollection{"Cuco"};
constexpr Code kCurrentRecipe{"Cure"};
constexpr Code kCameraIdentifiers{"CAid"};
constexpr Code kCaptureCounter{"COCc"};
constexpr Code kCaptureNameFormat{"COCF"};
constexpr Code kCaptureName{"COCn"};
constexpr Code kLastCapturedFile{"COCp"};
constexpr Code kProcesses{"COQP"};

struct FolderCode {
  Code code;
  std::string Document::* path;
};
constexpr std::array kFolders{FolderCode{kOutput, &Document::output}, FolderCode{kSelects, &Document::selects},
                              FolderCode{kTrash, &Document::trash}};
struct TextCode {
  Code code;
  std::string Document::* text;
};
constexpr std::array kTexts{TextCode{kCaptureNameFormat, &Document::captureNameFormat},
                            TextCode{kCaptureName, &Document::captureName}};

Value capturesValue(CaptureFolder const& captures) {
  switch (captures.form) {
    case CaptureForm::file:
      return fileValue(answerOf(captures));
    case CaptureForm::missing:
      return Value::missing();
    case CaptureForm::hfs:
    case CaptureForm::posix:
      break;
  }
  return answerOf(captures);
}

class DocumentClass final : public ServedClass {
 public:
  explicit DocumentClass(Model& model) : model_(model) {}

  Code code() const override { return codes::kDocument; }
  bool exists(ObjectReference const& object) const override { return model_.documents().find(object.id) != nullptr; }
  Value specifier(ObjectReference const& object) const override { return documentSpecifier(object.id); }
  Reading read(ObjectReference const& object, Code property) const override;
  Failure write(ObjectReference const& object, Code property, Content const& content) override;
  std::optional<std::vector<ObjectReference>> elements(ObjectReference const& object, Code wanted) const override;
  std::optional<ObjectReference> elementWithId(ObjectReference const& object, Code wanted,
                                               std::string const& id) const override;
  std::variant<ObjectReference, applescript::EventError> make(ObjectReference const& object, Code wanted,
                                                              std::string name) override;

 private:
  [[nodiscard]] Reading readObject(Document const& document, Code property) const;
  [[nodiscard]] bool assign(Document& document, Code property, Content const& content) const;

  Model& model_;
};

/// The properties that hold another object.
Reading DocumentClass::readObject(Document const& document, Code property) const {
  if (property == kCurrentCollection) {
    return Content(ObjectReference{codes::kCollection, document.gallery.currentCollection().id, document.id});
  }
  if (property == kCurrentRecipe) {
    auto const* recipe = document.recipes.find(document.currentRecipe);
    if (recipe == nullptr) return Value::missing();
    return Content(ObjectReference{codes::kRecipe, recipe->handle, document.id});
  }
  if (property == codes::kCameraOfDocument) {
    auto const* camera = model_.cameras().current();
    if (camera == nullptr) return Value::missing();
    return Content(ObjectReference{codes::kCamera, camera->identifier, document.id});
  }
  return failures::notSimulated("such property of a document", documentSpecifier(document.id));
}

Reading DocumentClass::read(ObjectReference const& object, Code property) const {
  auto const* document = model_.documents().find(object.id);
  if (document == nullptr) return failures::cannotGet(specifier(object));
  if (property == codes::kName) return Value(document->name);
  if (property == codes::kId) return Value(document->id);
  if (property == kKind) {
    return Value(Enumerator{document->kind == DocumentKind::session ? Code("COsd") : Code("COct")});
  }
  if (property == kPath) return Value(document->folder);
  if (property == kFolder) return fileValue(document->folder);
  if (property == kCaptures) return capturesValue(document->captures);
  for (auto const& each : kFolders) {
    if (property == each.code) return fileValue(document->*each.path);
  }
  for (auto const& each : kTexts) {
    if (property == each.code) return Value(document->*each.text);
  }
  if (property == kCaptureCounter) return Value(document->captureCounter);
  if (property == kLastCapturedFile) return Value::missing();
  if (property == kProcesses) return Value(document->processes);
  if (property == kCameraIdentifiers) {
    List identifiers;
    for (auto const& each : model_.cameras().all()) identifiers.emplace_back(each.identifier);
    return Value(std::move(identifiers));
  }
  return readObject(*document, property);
}

/// Content of the right type goes in; false when the value is none that the property can have.
bool DocumentClass::assign(Document& document, Code property, Content const& content) const {
  if (auto const* other = std::get_if<ObjectReference>(&content)) {
    if (other->document != document.id) return false;
    if (property == kCurrentCollection) {
      document.gallery.setCurrentCollection(other->id);
    } else {
      document.currentRecipe = other->id;
    }
    return true;
  }
  auto const& value = std::get<Value>(content);
  if (property == kCaptureCounter) {
    auto const counter = *value.as<std::int64_t>();
    if (counter < 0) return false;
    document.captureCounter = counter;
    return true;
  }
  if (property == kProcesses) {
    document.processes = *value.as<bool>();
    return true;
  }
  for (auto const& each : kTexts) {
    if (property == each.code) document.*each.text = *value.as<std::string>();
  }
  auto const path = pathText(content);
  if (property == kCaptures && path) {
    // A text stays as it is, whatever it is.
    document.captures.text = value.as<std::string>() == nullptr ? posixFolder(*path) : *path;
  }
  for (auto const& each : kFolders) {
    if (property != each.code) continue;
    if (path->empty()) return false;
    document.*each.path = posixFolder(*path);
  }
  return true;
}

Failure DocumentClass::write(ObjectReference const& object, Code property, Content const& content) {
  if (!exists(object)) return failures::cannotGet(specifier(object));
  bool const isFolder = property == kCaptures || property == kOutput || property == kSelects || property == kTrash;
  if (isFolder && !pathText(content)) return notTextOrFile(content);
  bool isAssigned = false;
  model_.documents().change(object.id, [&](Document& document) {
    isAssigned = assign(document, property, content);
    return isAssigned;
  });
  return isAssigned ? Failure() : failures::cannotSet(specifier(object));
}

std::optional<std::vector<ObjectReference>> DocumentClass::elements(ObjectReference const& object, Code wanted) const {
  auto const* document = model_.documents().find(object.id);
  std::vector<ObjectReference> found;
  if (document == nullptr) return found;
  auto const add = [&](std::string id) { found.push_back({wanted, std::move(id), document->id}); };
  auto const& gallery = document->gallery;
  if (wanted == codes::kCollection) {
    for (auto const& each : gallery.collections()) add(each.id);
  } else if (wanted == codes::kVariant) {
    for (std::size_t place = 0; place < gallery.size(); ++place) add(gallery.at(place).id);
  } else if (wanted == codes::kImage) {
    for (std::size_t place = 0; place < gallery.imageCount(); ++place) add(gallery.imageAt(place).id);
  } else if (wanted == codes::kRecipe) {
    for (auto const& each : document->recipes.all()) add(each.handle);
  } else if (wanted == codes::kJob) {
    for (auto const& each : model_.queue().jobs()) {
      if (each.document == document->id) add(each.id);
    }
  } else {
    return {};
  }
  return found;
}

std::optional<ObjectReference> DocumentClass::elementWithId(ObjectReference const& object, Code wanted,
                                                            std::string const& id) const {
  auto const* document = model_.documents().find(object.id);
  if (document == nullptr) return {};
  ObjectReference found{wanted, id, document->id};
  if (wanted == codes::kVariant) return document->gallery.placeOf(id) ? std::optional(std::move(found)) : std::nullopt;
  if (wanted == codes::kImage) {
    return document->gallery.imagePlaceOf(id) ? std::optional(std::move(found)) : std::nullopt;
  }
  return ServedClass::elementWithId(object, wanted, id);
}

std::variant<ObjectReference, applescript::EventError> DocumentClass::make(ObjectReference const& object, Code wanted,
                                                                           std::string name) {
  if (wanted != codes::kRecipe || !exists(object)) return failures::cannotMake(specifier(object));
  std::string handle;
  model_.documents().change(object.id, [&](Document& document) {
    handle = document.recipes.add(name.empty() ? "Recette sans titre" : std::move(name)).handle;
    return true;
  });
  return ObjectReference{codes::kRecipe, handle, object.id};
}

}  // namespace

std::unique_ptr<ServedClass> makeDocumentClass(Model& model) {
  return std::make_unique<DocumentClass>(model);
}

}  // namespace morla::captureone
