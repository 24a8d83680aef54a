#include "captureone/scripting/ProcessCommand.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>
#include <utility>

#include "base/unicode/Unicode.h"
#include "captureone/scripting/Classes.h"
#include "captureone/scripting/FileValues.h"

namespace morla::captureone {

namespace errors = applescript::errors;
using applescript::AppleEvent;
using applescript::Code;
using applescript::Considerations;
using applescript::EventError;
using applescript::EventReply;
using applescript::List;
using applescript::SpecifierPointer;
using applescript::Value;

namespace {

constexpr Code kRecipeParameter{"Prec"};

Value const* parameter(AppleEvent const& event, Code key) {
  for (auto const& [code, value] : event.parameters) {
    if (code == key) return &value;
  }
  return nullptr;
}

/// A random UUID in capitals, as the application gives.
std::string newBatch() {
  std::random_device random;
  std::array<std::uint32_t, 4> bits{};
  for (auto& each : bits) each = random();
  bits[1] = (bits[1] & 0xFFFF0FFFU) | 0x4000U;
  bits[2] = (bits[2] & 0x3FFFFFFFU) | 0x80000000U;
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%08X-%04X-%04X-%04X-%04X%08X", bits[0], bits[1] >> 16U, bits[1] & 0xFFFFU,
                bits[2] >> 16U, bits[2] & 0xFFFFU, bits[3]);
  return text.data();
}

/// The variants that a value of the direct object means are put at the end of `found`.
Failure collect(Value const& value, Resolver const& resolver, Model const& model, Considerations considerations,
                std::vector<ObjectReference>& found) {
  if (value.as<SpecifierPointer>() != nullptr) {
    auto resolved = resolver.resolve(value, considerations);
    if (auto* error = std::get_if<EventError>(&resolved)) return *std::move(error);
    for (auto const& item : std::get<Found>(resolved).items) {
      auto object = resolver.object(item, value);
      if (auto* error = std::get_if<EventError>(&object)) return *std::move(error);
      if (std::get<ObjectReference>(object).type != codes::kVariant) return failures::wrongType(value, "variant");
      found.push_back(std::get<ObjectReference>(std::move(object)));
    }
    return {};
  }
  auto const path = pathText(Content(value));
  if (!path) return failures::wrongType(value, "variant");
  auto const* document = model.documents().current();
  for (std::size_t place = 0; document != nullptr && place < document->gallery.imageCount(); ++place) {
    if (document->gallery.imageAt(place).path != posixFolder(*path)) continue;
    found.push_back({codes::kVariant, document->gallery.at(place).id, document->id});
    return {};
  }
  return EventError{errors::kFileNotFound, "File " + *path + " wasn’t found.", value};
}

/// Those of a document that are meant; an error when a name is nobody's.
std::variant<std::vector<Recipe>, EventError> recipesFor(Document const& document, Value const* named,
                                                         Considerations considerations) {
  std::vector<Recipe> recipes;
  if (named == nullptr) {
    for (auto const& each : document.recipes.all()) {
      if (each.isEnabled) recipes.push_back(each);
    }
    return recipes;
  }
  auto const* name = named->as<std::string>();
  if (name == nullptr) return failures::wrongType(*named, "text");
  bool const ignoresCase = (considerations.bits & Considerations::kIgnoreCase) != 0;
  for (auto const& each : document.recipes.all()) {
    bool const isMeant =
        ignoresCase ? unicode::equalsIgnoringCase(each.name, *name) : unicode::equals(each.name, *name);
    if (isMeant) return std::vector{each};
  }
  return EventError{errors::kNoSuchObject, "Can’t get recipe \"" + *name + "\".",
                    specifierIn(documentSpecifier(document.id), codes::kRecipe, applescript::KeyForm::name, *name)};
}

struct Plan {
  std::string batch;
  std::vector<OutputJob> jobs;
};

Failure plan(ObjectReference const& variant, std::vector<Recipe> const& recipes, Document const& document, Plan& plan) {
  auto const place = document.gallery.placeOf(variant.id);
  if (!place) return failures::cannotGet({});
  auto const image = document.gallery.at(*place).image;
  for (auto const& recipe : recipes) {
    plan.jobs.push_back(
        {{}, plan.batch, document.id, variant.id, image, recipe, outputFolder(document, recipe, image)});
  }
  return {};
}

}  // namespace

EventReply process(AppleEvent const& event, Resolver const& resolver, Model& model) {
  Value const* direct = &event.directObject;
  if (direct->isNull()) direct = parameter(event, Code("subj"));
  if (direct == nullptr) return EventError{errors::kParameterMissing, "The direct parameter is missing.", {}};
  List const single{*direct};
  auto const* list = direct->as<List>();
  std::vector<ObjectReference> variants;
  for (auto const& each : list == nullptr ? single : *list) {
    if (auto failure = collect(each, resolver, model, event.considerations, variants)) return *std::move(failure);
  }
  if (variants.empty()) return Value("ERROR: There is nothing to process.");

  Plan all{newBatch(), {}};
  std::string recipesOf;
  std::vector<Recipe> recipes;
  for (auto const& each : variants) {
    auto const* document = model.documents().find(each.document);
    if (document == nullptr) return failures::cannotGet(*direct);
    if (document->output.empty()) {
      return EventError{errors::kFileNotFound, "An output folder has not yet been chosen for this catalog", {}};
    }
    if (recipesOf != document->id) {
      auto meant = recipesFor(*document, parameter(event, kRecipeParameter), event.considerations);
      if (auto* error = std::get_if<EventError>(&meant)) return *std::move(error);
      recipes = std::get<std::vector<Recipe>>(std::move(meant));
      recipesOf = document->id;
    }
    if (auto failure = plan(each, recipes, *document, all)) return *std::move(failure);
  }
  if (all.jobs.empty()) return Value("ERROR: No process recipe is enabled.");
  model.queue().add(std::move(all.jobs));
  return Value(std::move(all.batch));
}

}  // namespace morla::captureone
