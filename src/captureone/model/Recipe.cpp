#include "captureone/model/Recipe.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace morla::captureone {
namespace {

/// A length of the recipe in pixels; `whole` is what 100 percent are.
double pixels(Recipe const& recipe, double value, double whole) {
  constexpr double kMillimetersPerInch = 25.4;
  switch (recipe.unit) {
    case MeasurementUnit::pixels:
      return value;
    case MeasurementUnit::inches:
      return value * recipe.pixelsPerInch;
    case MeasurementUnit::millimeters:
      return value / kMillimetersPerInch * recipe.pixelsPerInch;
    case MeasurementUnit::centimeters:
      return value * 10 / kMillimetersPerInch * recipe.pixelsPerInch;
    case MeasurementUnit::percent:
      return value / 100 * whole;
  }
  return whole;
}

double factorOf(Recipe const& recipe, double width, double height) {
  auto const first = [&](double whole) { return pixels(recipe, recipe.primaryValue, whole) / whole; };
  switch (recipe.scaling) {
    case ScalingMethod::fixed:
      // A share of the whole: a length has no meaning here.
      return recipe.primaryValue / 100;
    case ScalingMethod::width:
      return first(width);
    case ScalingMethod::height:
      return first(height);
    case ScalingMethod::boundingDimensions:
    case ScalingMethod::widthByHeight:
      return std::min(first(width), pixels(recipe, recipe.secondaryValue, height) / height);
    case ScalingMethod::longEdge:
      return first(std::max(width, height));
    case ScalingMethod::shortEdge:
      return first(std::min(width, height));
  }
  return 1;
}

}  // namespace

Extent scaledExtent(Recipe const& recipe, Extent original) {
  if (original.width == 0 || original.height == 0) return original;
  auto const width = static_cast<double>(original.width);
  auto const height = static_cast<double>(original.height);
  double factor = factorOf(recipe, width, height);
  if (!std::isfinite(factor) || factor < 0) factor = 1;
  if (!recipe.upscales) factor = std::min(factor, 1.0);
  factor = std::min(factor, double(kLongestEdge) / std::max(width, height));
  auto const scaled = [factor](double edge) {
    return static_cast<std::size_t>(std::max(1.0, std::round(edge * factor)));
  };
  return {scaled(width), scaled(height)};
}

RecipeBook::RecipeBook() {
  auto& full = add("JPEG pleine taille");
  full.isEnabled = true;
  full.subFolder = "Pleine taille";
  auto& web = add("JPEG web");
  web.jpegQuality = 75;
  web.scaling = ScalingMethod::longEdge;
  web.unit = MeasurementUnit::pixels;
  web.primaryValue = 2048;
  web.pixelsPerInch = 72;
  web.subFolder = "Web";
  auto& proof = add("Épreuve rapide");
  proof.isEnabled = true;
  proof.format = FileFormat::jpegQuickProof;
  proof.scaling = ScalingMethod::longEdge;
  proof.unit = MeasurementUnit::pixels;
  proof.primaryValue = 1200;
  proof.subFolder = "Épreuves";
}

Recipe const* RecipeBook::find(std::string_view handle) const {
  auto const found = std::ranges::find(recipes_, handle, &Recipe::handle);
  return found == recipes_.end() ? nullptr : &*found;
}

Recipe* RecipeBook::find(std::string_view handle) {
  auto const found = std::ranges::find(recipes_, handle, &Recipe::handle);
  return found == recipes_.end() ? nullptr : &*found;
}

Recipe const* RecipeBook::findNamed(std::string_view name) const {
  auto const found = std::ranges::find(recipes_, name, &Recipe::name);
  return found == recipes_.end() ? nullptr : &*found;
}

Recipe& RecipeBook::add(std::string name) {
  Recipe recipe;
  recipe.handle = "recipe-" + std::to_string(++made_);
  recipe.name = std::move(name);
  return recipes_.emplace_back(std::move(recipe));
}

bool RecipeBook::remove(std::string_view handle) {
  return std::erase_if(recipes_, [handle](auto const& each) { return each.handle == handle; }) > 0;
}

}  // namespace morla::captureone
