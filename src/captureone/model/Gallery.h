#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morla::captureone {

/// Where the pictures come from: files, or drawn ones without end when there are none.
struct PictureSet {
  std::vector<std::string> files;  ///< POSIX paths
};

struct Image {
  std::string id;
  std::string name;         ///< without a suffix
  std::string path;         ///< POSIX path; of a drawn picture the path that it would have
  std::size_t picture = 0;  ///< of the picture set: which file, or which drawing
};

/// One rendering of an image. More variants than pictures means that images have several.
struct Variant {
  std::string id;
  std::size_t place = 0;  ///< in the gallery, from 0
  Image image;
};

struct Collection {
  enum class Kind { favorite, smartAlbum, album };
  std::string id;
  std::string name;
  Kind kind = Kind::favorite;
  std::size_t step = 1;  ///< holds every variant whose place is divisible by this
};

/// The pictures of one document and which of them are selected. Variants are made when they are asked for, so 5,000 of
/// them weigh nothing.
class Gallery {
 public:
  static constexpr std::size_t kStartCount = 12;
  static constexpr std::size_t kMaximum = 20'000;

  /// `folder` is where drawn pictures would lie.
  Gallery(std::shared_ptr<PictureSet const> pictures, std::string folder);

  [[nodiscard]] std::size_t size() const { return selected_.size(); }
  /// `place` must be less than `size()`.
  [[nodiscard]] Variant at(std::size_t place) const;
  [[nodiscard]] std::optional<std::size_t> placeOf(std::string_view variantId) const;
  [[nodiscard]] std::size_t imageCount() const;
  [[nodiscard]] Image imageAt(std::size_t index) const;
  [[nodiscard]] std::optional<std::size_t> imagePlaceOf(std::string_view imageId) const;

  [[nodiscard]] bool isSelected(std::size_t place) const { return selected_[place]; }
  [[nodiscard]] std::size_t selectedCount() const;
  /// Ids of the selected variants, in order.
  [[nodiscard]] std::vector<std::string> selectedIds() const;

  [[nodiscard]] std::vector<Collection> const& collections() const { return collections_; }
  [[nodiscard]] Collection const* findCollection(std::string_view id) const;
  [[nodiscard]] Collection const& currentCollection() const { return collections_[current_]; }

  /// These answer whether anything has changed.
  bool setCount(std::size_t count);  ///< more come unselected; above `kMaximum` nothing happens
  bool setSelected(std::size_t place, bool isSelected);
  bool select(std::vector<std::size_t> const& places);  ///< these and no others
  bool selectAll(bool isSelected);
  bool setCurrentCollection(std::string_view id);

 private:
  std::shared_ptr<PictureSet const> pictures_;
  std::string folder_;
  std::vector<bool> selected_;
  std::vector<Collection> collections_;
  std::size_t current_ = 0;
};

}  // namespace morla::captureone
