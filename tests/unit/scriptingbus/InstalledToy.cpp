#include "InstalledToy.h"

#include <filesystem>

namespace morla::scriptingbus::testing {

InstalledToy::InstalledToy() : homeVariable_("HOME", home_.path()) {
  home_.write("Applications/Toy Library.app/Contents/Info.plist",
              "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key><string>com.example.toy</string>"
              "<key>CFBundleName</key><string>Toy Library</string></dict></plist>");
  auto const resources = home_.path() / "Applications/Toy Library.app/Contents/Resources";
  std::filesystem::create_directories(resources);
  std::filesystem::copy_file(MORLA_TOY_DICTIONARY, resources / "dictionary.tsv");
  bus_.installService(kBusName, MORLA_TOY_PROGRAM);
  decide("allow");
}

void InstalledToy::decide(std::string const& permission) const {
  bus_.dataHome().write("privacy/permissions.json",
                        R"({"automation":{"app.morla.MORLA":{"com.example.toy":")" + permission + "\"}}}");
}

}  // namespace morla::scriptingbus::testing
