#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "base/unicode/Unicode.h"
#include "captureone/scripting/Classes.h"
#include "captureone/scripting/FileValues.h"

namespace morla::captureone {
namespace {

using applescript::Code;
using applescript::Enumerator;
using applescript::KeyForm;
using applescript::Value;

template <typename T>
struct Word {
  T value;
  Code code;
};
constexpr std::array kFormats{Word{FileFormat::jpeg, Code("Rjpg")}, Word{FileFormat::jpegQuickProof, Code("Rjqp")},
                              Word{FileFormat::tiff, Code("Rtif")}, Word{FileFormat::png, Code("Rpng")}};
constexpr std::array kMethods{
    Word{ScalingMethod::fixed, Code("Rsfx")},         Word{ScalingMethod::width, Code("Rswd")},
    Word{ScalingMethod::height, Code("Rsht")},        Word{ScalingMethod::boundingDimensions, Code("Rsbd")},
    Word{ScalingMethod::widthByHeight, Code("Rswh")}, Word{ScalingMethod::longEdge, Code("Rsle")},
    Word{ScalingMethod::shortEdge, Code("Rsse")}};
constexpr std::array kUnits{Word{MeasurementUnit::pixels, Code("MUpx")}, Word{MeasurementUnit::inches, Code("MUin")},
                            Word{MeasurementUnit::millimeters, Code("MUmm")},
                            Word{MeasurementUnit::centimeters, Code("MUcm")},
                            Word{MeasurementUnit::percent, Code("MUpc")}};
constexpr std::array kRoots{Word{RootFolder::outputLocation, Code("Rrof")}, Word{RootFolder::imageFolder, Code("Rrif")},
                            Word{RootFolder::customLocation, Code("Rrcu")}};
constexpr std::array kExisting{Word{ExistingFiles::addSuffix, Code("Reas")},
                               Word{ExistingFiles::overwrite, Code("Reov")}, Word{ExistingFiles::skip, Code("Resk")}};

template <typename T>
Reading word(auto const& words, T value) {
  return Value(Enumerator{std::ranges::find(words, value, &Word<T>::value)->code});
}

/// One property of recipes. Content of the dictionary's type comes to `set`; false: no such value can be had.
struct Property {
  Code code;
  Reading (*get)(Recipe const& recipe);
  bool (*set)(Recipe& recipe, Value const& value);
};

template <auto Member>
constexpr Property text(char const* code) {
  return {Code(code), [](Recipe const& recipe) -> Reading { return Value(recipe.*Member); },
          [](Recipe& recipe, Value const& value) {
            recipe.*Member = *value.as<std::string>();
            return true;
          }};
}

template <auto Member>
constexpr Property truth(char const* code) {
  return {Code(code), [](Recipe const& recipe) -> Reading { return Value(recipe.*Member); },
          [](Recipe& recipe, Value const& value) {
            recipe.*Member = *value.as<bool>();
            return true;
          }};
}

template <auto Member, bool kMayBeZero>
constexpr Property number(char const* code) {
  return {Code(code), [](Recipe const& recipe) -> Reading { return Value(recipe.*Member); },
          [](Recipe& recipe, Value const& value) {
            double const given = *value.as<double>();
            bool const isFit = given > 0 || (kMayBeZero && !(given < 0));
            if (isFit) recipe.*Member = given;
            return isFit;
          }};
}

template <auto const& kWords, auto Member>
constexpr Property choice(char const* code) {
  return {Code(code), [](Recipe const& recipe) -> Reading { return word(kWords, recipe.*Member); },
          [](Recipe& recipe, Value const& value) {
            auto const given = value.as<Enumerator>()->code;
            auto const found = std::ranges::find_if(kWords, [&](auto const& each) { return each.code == given; });
            if (found == std::end(kWords)) return false;
            recipe.*Member = found->value;
            return true;
          }};
}

bool setQuality(Recipe& recipe, Value const& value) {
  auto const quality = *value.as<std::int64_t>();
  bool const isFit = quality >= 0 && quality <= 100;
  if (isFit) recipe.jpegQuality = quality;
  return isFit;
}

bool setBits(Recipe& recipe, Value const& value) {
  auto const bits = *value.as<std::int64_t>();
  bool const isFit = bits == 8 || bits == 16;
  if (isFit) recipe.bits = bits;
  return isFit;
}

bool setName(Recipe& recipe, Value const& value) {
  auto const& name = *value.as<std::string>();
  if (!name.empty()) recipe.name = name;
  return !name.empty();
}

bool setRootLocation(Recipe& recipe, Value const& value) {
  auto const path = pathText(Content(value));
  if (!path || path->empty()) return false;
  recipe.rootLocation = posixFolder(*path);
  return true;
}

constexpr Property kProperties[] = {
    {codes::kName, [](Recipe const& recipe) -> Reading { return Value(recipe.name); }, setName},
    truth<&Recipe::isEnabled>("CRen"),
    choice<kFormats, &Recipe::format>("CRft"),
    {Code("CRbt"), [](Recipe const& recipe) -> Reading { return Value(recipe.bits); }, setBits},
    {Code("CRjq"), [](Recipe const& recipe) -> Reading { return Value(recipe.jpegQuality); }, setQuality},
    text<&Recipe::colorProfile>("CRcp"),
    number<&Recipe::pixelsPerInch, false>("CRrs"),
    choice<kMethods, &Recipe::scaling>("CSmt"),
    choice<kUnits, &Recipe::unit>("CSut"),
    number<&Recipe::primaryValue, true>("CSv1"),
    number<&Recipe::secondaryValue, true>("CSv2"),
    truth<&Recipe::upscales>("CSus"),
    choice<kRoots, &Recipe::rootFolder>("CRro"),
    {Code("CRrf"), [](Recipe const& recipe) -> Reading { return fileValue(recipe.rootLocation); }, setRootLocation},
    text<&Recipe::subFolder>("CRsf"),
    text<&Recipe::nameFormat>("COOF"),
    choice<kExisting, &Recipe::existingFiles>("CRef"),
};

class RecipeClass final : public ServedClass {
 public:
  explicit RecipeClass(Model& model) : model_(model) {}

  Code code() const override { return codes::kRecipe; }
  bool exists(ObjectReference const& object) const override { return find(object) != nullptr; }

  /// By its name, as far as that names this recipe and no other.
  Value specifier(ObjectReference const& object) const override {
    auto const container = documentSpecifier(object.document);
    auto const* recipe = find(object);
    if (recipe != nullptr && isNameUnique(object)) {
      return specifierIn(container, codes::kRecipe, KeyForm::name, recipe->name);
    }
    return specifierIn(container, codes::kRecipe, KeyForm::id, object.id);
  }

  Reading read(ObjectReference const& object, Code property) const override {
    auto const* recipe = find(object);
    if (recipe == nullptr) return failures::cannotGet(specifier(object));
    auto const found = std::ranges::find(kProperties, property, &Property::code);
    if (found != std::end(kProperties)) return found->get(*recipe);
    return failures::notSimulated("such property of a recipe", specifier(object));
  }

  Failure write(ObjectReference const& object, Code property, Content const& content) override {
    auto const* value = std::get_if<Value>(&content);
    auto const found = std::ranges::find(kProperties, property, &Property::code);
    if (!exists(object)) return failures::cannotGet(specifier(object));
    if (value == nullptr || found == std::end(kProperties)) {
      return failures::notSimulated("such property of a recipe", specifier(object));
    }
    bool isFit = true;
    model_.documents().change(object.document, [&](Document& document) {
      auto& recipe = *document.recipes.find(object.id);
      auto const before = recipe;
      isFit = found->set(recipe, *value);
      return recipe != before;
    });
    return isFit ? Failure() : failures::cannotSet(specifier(object));
  }

  std::optional<std::vector<ObjectReference>> elements(ObjectReference const&, Code) const override { return {}; }

  Failure remove(ObjectReference const& object) override {
    bool const isGone = model_.documents().change(
        object.document, [&](Document& document) { return document.recipes.remove(object.id); });
    return isGone ? Failure() : failures::cannotGet(specifier(object));
  }

 private:
  [[nodiscard]] Recipe const* find(ObjectReference const& object) const {
    auto const* document = model_.documents().find(object.document);
    return document == nullptr ? nullptr : document->recipes.find(object.id);
  }

  /// A script that asks for the name is blind to case.
  [[nodiscard]] bool isNameUnique(ObjectReference const& object) const {
    auto const& all = model_.documents().find(object.document)->recipes.all();
    auto const& name = find(object)->name;
    return std::ranges::count_if(all, [&](auto const& each) { return unicode::equalsIgnoringCase(each.name, name); }) ==
           1;
  }

  Model& model_;
};

}  // namespace

std::unique_ptr<ServedClass> makeRecipeClass(Model& model) {
  return std::make_unique<RecipeClass>(model);
}

}  // namespace morla::captureone
