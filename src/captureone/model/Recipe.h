#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace morla::captureone {

enum class FileFormat { jpeg, jpegQuickProof, tiff, png };
enum class ScalingMethod { fixed, width, height, boundingDimensions, widthByHeight, longEdge, shortEdge };
enum class MeasurementUnit { pixels, inches, millimeters, centimeters, percent };
enum class RootFolder { outputLocation, imageFolder, customLocation };
enum class ExistingFiles { addSuffix, overwrite, skip };

/// How pictures are written. What is not said otherwise is how a new recipe comes.
struct Recipe {
  std::string handle;  ///< never given twice in one document; scripts see the name, which need not be unique
  std::string name;
  bool isEnabled = false;
  FileFormat format = FileFormat::jpeg;
  std::int64_t bits = 8;
  std::int64_t jpegQuality = 90;  ///< 0 to 100
  std::string colorProfile = "sRGB Color Space Profile";
  double pixelsPerInch = 300;
  ScalingMethod scaling = ScalingMethod::fixed;
  MeasurementUnit unit = MeasurementUnit::percent;
  double primaryValue = 100;    ///< in `unit`
  double secondaryValue = 100;  ///< in `unit`; only where there are two
  bool upscales = false;
  RootFolder rootFolder = RootFolder::outputLocation;
  std::string rootLocation;  ///< POSIX path for `customLocation`; kept whatever `rootFolder` is; empty when never set
  std::string subFolder;
  std::string nameFormat = "Image Name";
  ExistingFiles existingFiles = ExistingFiles::addSuffix;

  friend bool operator==(Recipe const&, Recipe const&) = default;
};

/// In pixels.
struct Extent {
  std::size_t width = 0;
  std::size_t height = 0;
  friend bool operator==(Extent, Extent) = default;
};

/// How large the recipe writes a picture of `original` pixels: proportions are kept, no edge is under one pixel nor
/// over `kLongestEdge`, and only a recipe that upscales makes a picture larger than it is.
[[nodiscard]] Extent scaledExtent(Recipe const& recipe, Extent original);

/// What a JPEG file can hold.
inline constexpr std::size_t kLongestEdge = 65'500;

/// The recipes of one document, in their order.
class RecipeBook {
 public:
  RecipeBook();

  [[nodiscard]] std::vector<Recipe> const& all() const { return recipes_; }
  /// Null: no such recipe.
  [[nodiscard]] Recipe const* find(std::string_view handle) const;
  [[nodiscard]] Recipe* find(std::string_view handle);
  /// The first one with exactly that name.
  [[nodiscard]] Recipe const* findNamed(std::string_view name) const;
  /// At the end, as new recipes come. Names may be equal.
  Recipe& add(std::string name);
  /// False: no such recipe.
  bool remove(std::string_view handle);

 private:
  std::vector<Recipe> recipes_;
  std::size_t made_ = 0;
};

}  // namespace morla::captureone
