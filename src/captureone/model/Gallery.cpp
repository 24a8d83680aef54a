#include "captureone/model/Gallery.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <system_error>
#include <utility>

namespace morla::captureone {
namespace {

/// Ids of images begin here, so that nobody takes them for ids of variants.
constexpr std::size_t kFirstImageId = 100'001;

std::optional<std::size_t> numberIn(std::string_view text) {
  std::size_t number = 0;
  auto const result = std::from_chars(text.data(), text.data() + text.size(), number);
  if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return {};
  // One number, one id: "007" is nobody's.
  return std::to_string(number) == text ? std::optional(number) : std::nullopt;
}

std::string stemOf(std::string const& path) {
  auto const name = path.substr(path.rfind('/') + 1);
  auto const dot = name.rfind('.');
  return dot == std::string::npos || dot == 0 ? name : name.substr(0, dot);
}

std::string drawnName(std::size_t index) {
  std::array<char, 32> name{};
  std::snprintf(name.data(), name.size(), "Atelier_%04zu", index + 1);
  return name.data();
}

}  // namespace

Gallery::Gallery(std::shared_ptr<PictureSet const> pictures, std::string folder)
    : pictures_(std::move(pictures)), folder_(std::move(folder)), selected_(kStartCount, false) {
  collections_ = {{"11", "Capture", Collection::Kind::favorite, 1},
                  {"12", "Toutes les images", Collection::Kind::smartAlbum, 1},
                  {"13", "Un choix", Collection::Kind::album, 3}};
  selected_[0] = true;
}

std::size_t Gallery::imageCount() const {
  auto const files = pictures_->files.size();
  return files == 0 ? size() : std::min(files, size());
}

Image Gallery::imageAt(std::size_t index) const {
  auto const id = std::to_string(kFirstImageId + index);
  if (pictures_->files.empty()) {
    auto const name = drawnName(index);
    return {id, name, folder_ + "/" + name + ".RAW", index};
  }
  auto const& path = pictures_->files[index];
  return {id, stemOf(path), path, index};
}

Variant Gallery::at(std::size_t place) const {
  auto const images = pictures_->files.size();
  return {std::to_string(place + 1), place, imageAt(images == 0 ? place : place % images)};
}

std::optional<std::size_t> Gallery::placeOf(std::string_view variantId) const {
  auto const number = numberIn(variantId);
  if (!number || *number == 0 || *number > size()) return {};
  return *number - 1;
}

std::optional<std::size_t> Gallery::imagePlaceOf(std::string_view imageId) const {
  auto const number = numberIn(imageId);
  if (!number || *number < kFirstImageId || *number - kFirstImageId >= imageCount()) return {};
  return *number - kFirstImageId;
}

std::size_t Gallery::selectedCount() const {
  return static_cast<std::size_t>(std::ranges::count(selected_, true));
}

std::vector<std::string> Gallery::selectedIds() const {
  std::vector<std::string> ids;
  for (std::size_t place = 0; place < size(); ++place) {
    if (selected_[place]) ids.push_back(std::to_string(place + 1));
  }
  return ids;
}

Collection const* Gallery::findCollection(std::string_view id) const {
  auto const found = std::ranges::find(collections_, id, &Collection::id);
  return found == collections_.end() ? nullptr : &*found;
}

bool Gallery::setCount(std::size_t count) {
  if (count == size() || count > kMaximum) return false;
  selected_.resize(count, false);
  return true;
}

bool Gallery::setSelected(std::size_t place, bool isSelected) {
  if (place >= size() || selected_[place] == isSelected) return false;
  selected_[place] = isSelected;
  return true;
}

bool Gallery::select(std::vector<std::size_t> const& places) {
  std::vector<bool> next(size(), false);
  for (auto const place : places) {
    if (place < next.size()) next[place] = true;
  }
  return std::exchange(selected_, next) != next;
}

bool Gallery::selectAll(bool isSelected) {
  std::vector<bool> const next(size(), isSelected);
  return std::exchange(selected_, next) != next;
}

bool Gallery::setCurrentCollection(std::string_view id) {
  auto const* found = findCollection(id);
  if (found == nullptr || found == &collections_[current_]) return false;
  current_ = static_cast<std::size_t>(found - collections_.data());
  return true;
}

}  // namespace morla::captureone
