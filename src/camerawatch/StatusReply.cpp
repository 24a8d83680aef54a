#include "camerawatch/StatusReply.h"

#include <algorithm>
#include <array>

namespace morla::camerawatch {
namespace {

/// Empty pieces are kept.
std::vector<std::string_view> split(std::string_view text, std::string_view separator) {
  std::vector<std::string_view> pieces;
  for (;;) {
    auto const at = text.find(separator);
    pieces.push_back(text.substr(0, at));
    if (at == std::string_view::npos) return pieces;
    text.remove_prefix(at + separator.size());
  }
}

}  // namespace

std::vector<std::string> parseAvailableValues(std::string_view field) {
  std::vector<std::string> items;
  for (auto const piece : split(field, "|")) {
    if (!piece.empty()) items.emplace_back(piece);
  }
  return items;
}

StatusReply parseStatusReply(std::string_view reply) {
  constexpr std::array kWords{status::kNoCamera, status::kNoDocument, status::kError, status::kCameraOff};
  if (std::ranges::find(kWords, reply) != kWords.end()) return NoReading{std::string(reply)};

  auto const fields = split(reply, "||");
  if (fields.size() < 4) return NoReading{std::string(reply)};

  CameraReading reading{std::string(fields[0]), std::string(fields[1]), std::string(fields[2]),
                        std::string(fields[3]), std::nullopt,           std::nullopt};
  if (fields.size() >= 7) {
    reading.available = AvailableValues{parseAvailableValues(fields[4]), parseAvailableValues(fields[5]),
                                        parseAvailableValues(fields[6])};
  }
  if (fields.size() >= 8) reading.cameraName = std::string(fields[7]);
  return reading;
}

}  // namespace morla::camerawatch
