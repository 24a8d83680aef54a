#pragma once

#include <optional>
#include <string>

#include "applescript/AppleEvent.h"
#include "captureone/scripting/ServedClass.h"

namespace morla::captureone {

/// A file or folder as scripts are told of it: missing value for an empty path.
[[nodiscard]] applescript::Value fileValue(std::string const& path);

/// A script's file, alias or text, as it was given; nothing for anything else.
[[nodiscard]] std::optional<std::string> pathText(Content const& content);

/// `content` is none of those.
[[nodiscard]] applescript::EventError notTextOrFile(Content const& content);

}  // namespace morla::captureone
