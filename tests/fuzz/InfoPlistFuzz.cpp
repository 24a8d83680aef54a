#include "Fuzz.h"
#include "platform/linux/scripting/InfoPlist.h"

namespace {

using morla::fuzz::require;
using morla::platform::BundleInformation;

std::string entry(char const* key, std::optional<std::string> const& value) {
  if (!value) return {};
  std::string text;
  for (char const c : *value) {
    bool const isPlain = static_cast<unsigned char>(c) > ' ' && c != '<' && c != '>' && c != '&';
    text += isPlain ? std::string(1, c) : "&#" + std::to_string(static_cast<unsigned char>(c)) + ";";
  }
  return std::string("<key>") + key + "</key><string>" + text + "</string>";
}

std::string written(BundleInformation const& bundle) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist><dict>" + entry("CFBundleIdentifier", bundle.identifier) +
         entry("CFBundleName", bundle.name) + entry("CFBundleShortVersionString", bundle.shortVersion) +
         "</dict></plist>";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  auto const text = morla::fuzz::textOf(data, size);
  auto const bundle = morla::linux::readInfoPlist(text);
  if (!bundle) return 0;
  for (auto const& value : {bundle->identifier, bundle->name, bundle->shortVersion}) {
    // A character of one byte (Latin-1) becomes one of two at most.
    require(!value || value->size() <= 2 * text.size(), "no value is longer than the file");
  }
  auto const again = morla::linux::readInfoPlist(written(*bundle));
  require(again.has_value(), "what was written is a property list");
  require(again->identifier == bundle->identifier, "the identifier is read as it was written");
  require(again->name == bundle->name, "the name is read as it was written");
  require(again->shortVersion == bundle->shortVersion, "the version is read as it was written");
  return 0;
}
