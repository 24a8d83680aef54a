#include <algorithm>

#include "Fuzz.h"
#include "camerawatch/StatusReply.h"

namespace {

using namespace morla::camerawatch;
using morla::fuzz::require;

std::size_t fieldsIn(std::string_view text) {
  std::size_t fields = 1;
  for (auto at = text.find("||"); at != std::string_view::npos; at = text.find("||", at + 2)) ++fields;
  return fields;
}

std::string joined(std::vector<std::string> const& items) {
  std::string text;
  for (auto const& item : items) {
    require(!item.empty() && item.find('|') == std::string::npos, "an item is a text without a bar");
    text += (text.empty() ? "" : "|") + item;
  }
  return text;
}

/// The reply that says what `reading` says, and nothing more.
std::string written(CameraReading const& reading) {
  auto text = reading.format + "||" + reading.iso + "||" + reading.aperture + "||" + reading.shutter;
  if (reading.available) {
    text += "||" + joined(reading.available->isos) + "||" + joined(reading.available->apertures) + "||" +
            joined(reading.available->shutters);
  }
  if (reading.cameraName) text += "||" + *reading.cameraName;
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  auto const text = morla::fuzz::textOf(data, size);
  auto const fields = fieldsIn(text);
  auto const reply = parseStatusReply(text);
  if (auto const* const none = std::get_if<NoReading>(&reply)) {
    require(fields < 4, "four fields are a reading");
    require(none->text == text, "what is no reading is shown as it came");
    return 0;
  }
  auto const& reading = std::get<CameraReading>(reply);
  require(fields >= 4, "a reading has four fields");
  require(text.starts_with(reading.format + "||" + reading.iso + "||" + reading.aperture + "||" + reading.shutter),
          "the settings are the reply's own words");
  require(reading.available.has_value() == (fields >= 7), "seven fields bring the lists");
  require(reading.cameraName.has_value() == (fields >= 8), "eight fields bring the name");
  require(parseStatusReply(written(reading)) == reply, "what a reading says is read as that reading");
  return 0;
}
