#include <utility>

#include "captureone/scripting/Classes.h"
#include "captureone/scripting/FileValues.h"

namespace morla::captureone {
namespace {

using applescript::Code;
using applescript::Enumerator;
using applescript::KeyForm;
using applescript::Value;

Gallery const* galleryOf(Model const& model, ObjectReference const& object) {
  auto const* document = model.documents().find(object.document);
  return document == nullptr ? nullptr : &document->gallery;
}

ObjectReference variantIn(ObjectReference const& object, std::size_t place) {
  return {codes::kVariant, std::to_string(place + 1), object.document};
}

/// The three classes of a gallery's objects: nothing in them but the selection changes, and that not by scripts.
class GalleryClass : public ServedClass {
 public:
  explicit GalleryClass(Model& model) : model_(model) {}

  Failure write(ObjectReference const& object, Code, Content const&) override {
    return failures::notModifiable(specifier(object));
  }
  std::optional<std::vector<ObjectReference>> elements(ObjectReference const&, Code) const override { return {}; }

 protected:
  [[nodiscard]] Gallery const* gallery(ObjectReference const& object) const { return galleryOf(model_, object); }

 private:
  Model& model_;
};

class CollectionClass final : public GalleryClass {
 public:
  using GalleryClass::GalleryClass;

  Code code() const override { return codes::kCollection; }
  bool exists(ObjectReference const& object) const override { return find(object) != nullptr; }
  Value specifier(ObjectReference const& object) const override {
    return specifierIn(documentSpecifier(object.document), codes::kCollection, KeyForm::id, object.id);
  }

  Reading read(ObjectReference const& object, Code property) const override {
    auto const* collection = find(object);
    if (collection == nullptr) return failures::cannotGet(specifier(object));
    if (property == codes::kName) return Value(collection->name);
    if (property == codes::kId) return Value(collection->id);
    if (property == Code("COkd")) return Value(Enumerator{kindOf(*collection)});
    if (property == Code("COus")) return Value(collection->kind == Collection::Kind::album);
    return failures::notSimulated("such property of a collection", specifier(object));
  }

  std::optional<std::vector<ObjectReference>> elements(ObjectReference const& object, Code wanted) const override {
    std::vector<ObjectReference> found;
    auto const* collection = find(object);
    if (wanted == codes::kCollection) return found;
    if (wanted != codes::kVariant && wanted != codes::kImage) return {};
    if (collection == nullptr) return found;
    auto const& all = *gallery(object);
    auto const count = wanted == codes::kVariant ? all.size() : all.imageCount();
    for (std::size_t place = 0; place < count; place += collection->step) {
      if (wanted == codes::kVariant) {
        found.push_back(variantIn(object, place));
      } else {
        found.push_back({codes::kImage, all.imageAt(place).id, object.document});
      }
    }
    return found;
  }

  std::optional<ObjectReference> elementWithId(ObjectReference const& object, Code wanted,
                                               std::string const& id) const override {
    auto const* collection = find(object);
    if (collection == nullptr || (wanted != codes::kVariant && wanted != codes::kImage)) return {};
    auto const& all = *gallery(object);
    auto const place = wanted == codes::kVariant ? all.placeOf(id) : all.imagePlaceOf(id);
    if (!place || *place % collection->step != 0) return {};
    return ObjectReference{wanted, id, object.document};
  }

 private:
  static Code kindOf(Collection const& collection) {
    switch (collection.kind) {
      case Collection::Kind::favorite:
        return Code("CTfv");
      case Collection::Kind::smartAlbum:
        return Code("CTsm");
      case Collection::Kind::album:
        break;
    }
    return Code("CTal");
  }

  [[nodiscard]] Collection const* find(ObjectReference const& object) const {
    auto const* all = gallery(object);
    return all == nullptr ? nullptr : all->findCollection(object.id);
  }
};

class VariantClass final : public GalleryClass {
 public:
  using GalleryClass::GalleryClass;

  Code code() const override { return codes::kVariant; }
  bool exists(ObjectReference const& object) const override { return placeOf(object).has_value(); }

  /// Variants are named by a collection that holds them: the current one where it does.
  Value specifier(ObjectReference const& object) const override {
    auto const document = documentSpecifier(object.document);
    auto const place = placeOf(object);
    if (!place) return specifierIn(document, codes::kVariant, KeyForm::id, object.id);
    auto const* all = gallery(object);
    auto const& current = all->currentCollection();
    auto const& collection = *place % current.step == 0 ? current : all->collections().front();
    return specifierIn(specifierIn(document, codes::kCollection, KeyForm::id, collection.id), codes::kVariant,
                       KeyForm::id, object.id);
  }

  Reading read(ObjectReference const& object, Code property) const override {
    auto const place = placeOf(object);
    if (!place) return failures::cannotGet(specifier(object));
    if (property == Code("vsel")) return Value(gallery(object)->isSelected(*place));
    if (property == codes::kId) return Value(object.id);
    auto const variant = gallery(object)->at(*place);
    if (property == codes::kName) return Value(variant.image.name);
    if (property == Code("COpi")) return Content(ObjectReference{codes::kImage, variant.image.id, object.document});
    if (property == Code("file")) return fileValue(variant.image.path);
    if (property == Code("posn")) return Value(static_cast<std::int64_t>(*place + 1));
    return failures::notSimulated("such property of a variant", specifier(object));
  }

 private:
  [[nodiscard]] std::optional<std::size_t> placeOf(ObjectReference const& object) const {
    auto const* all = gallery(object);
    return all == nullptr ? std::nullopt : all->placeOf(object.id);
  }
};

class ImageClass final : public GalleryClass {
 public:
  using GalleryClass::GalleryClass;

  Code code() const override { return codes::kImage; }
  bool exists(ObjectReference const& object) const override { return placeOf(object).has_value(); }
  Value specifier(ObjectReference const& object) const override {
    return specifierIn(documentSpecifier(object.document), codes::kImage, KeyForm::id, object.id);
  }

  Reading read(ObjectReference const& object, Code property) const override {
    auto const place = placeOf(object);
    if (!place) return failures::cannotGet(specifier(object));
    auto const image = gallery(object)->imageAt(*place);
    if (property == codes::kName) return Value(image.name);
    if (property == codes::kId) return Value(image.id);
    if (property == Code("ipth")) return Value(image.path);
    if (property == Code("file")) return fileValue(image.path);
    return failures::notSimulated("such property of an image", specifier(object));
  }

  std::optional<std::vector<ObjectReference>> elements(ObjectReference const& object, Code wanted) const override {
    std::vector<ObjectReference> found;
    auto const place = placeOf(object);
    if (wanted != codes::kVariant) return {};
    if (!place) return found;
    auto const& all = *gallery(object);
    for (auto each = *place; each < all.size(); each += all.imageCount()) found.push_back(variantIn(object, each));
    return found;
  }

 private:
  [[nodiscard]] std::optional<std::size_t> placeOf(ObjectReference const& object) const {
    auto const* all = gallery(object);
    return all == nullptr ? std::nullopt : all->imagePlaceOf(object.id);
  }
};

}  // namespace

std::unique_ptr<ServedClass> makeCollectionClass(Model& model) {
  return std::make_unique<CollectionClass>(model);
}

std::unique_ptr<ServedClass> makeImageClass(Model& model) {
  return std::make_unique<ImageClass>(model);
}

std::unique_ptr<ServedClass> makeVariantClass(Model& model) {
  return std::make_unique<VariantClass>(model);
}

}  // namespace morla::captureone
