#include "platform/linux/scripting/InfoPlist.h"

#include <cstring>
#include <pugixml.hpp>

#include "platform/linux/RegularFile.h"

namespace morla::linux {

/// The value of `key`, when it is text.
static std::optional<std::string> textOf(pugi::xml_node dictionary, char const* key) {
  for (auto const child : dictionary.children("key")) {
    if (std::strcmp(child.child_value(), key) != 0) continue;
    auto const value = child.next_sibling();
    if (std::strcmp(value.name(), "string") != 0) return std::nullopt;
    std::string text;
    for (auto const part : value.children()) text += part.value();  // a comment or CDATA splits the text
    return text;
  }
  return std::nullopt;
}

std::optional<platform::BundleInformation> readBundle(std::string const& bundlePath) {
  auto const file = readRegularFile(bundlePath + "/Contents/Info.plist");
  return file.text ? readInfoPlist(*file.text) : std::nullopt;
}

std::optional<platform::BundleInformation> readInfoPlist(std::string_view text) {
  pugi::xml_document document;
  auto const options = pugi::parse_default | pugi::parse_ws_pcdata_single;
  if (!document.load_buffer(text.data(), text.size(), options)) return std::nullopt;
  auto const dictionary = document.child("plist").child("dict");
  if (!dictionary) return std::nullopt;
  return platform::BundleInformation{textOf(dictionary, "CFBundleIdentifier"), textOf(dictionary, "CFBundleName"),
                                     textOf(dictionary, "CFBundleShortVersionString")};
}

}  // namespace morla::linux
