#include "captureone/scripting/FileValues.h"

namespace morla::captureone {

using applescript::Alias;
using applescript::FileUrl;
using applescript::Value;

Value fileValue(std::string const& path) {
  return path.empty() ? Value::missing() : Value(FileUrl{path});
}

std::optional<std::string> pathText(Content const& content) {
  auto const* value = std::get_if<Value>(&content);
  if (value == nullptr) return {};
  if (auto const* file = value->as<FileUrl>()) return file->path;
  if (auto const* alias = value->as<Alias>()) return alias->path;
  if (auto const* text = value->as<std::string>()) return *text;
  return {};
}

applescript::EventError notTextOrFile(Content const& content) {
  auto const* value = std::get_if<Value>(&content);
  bool const isMissing = value != nullptr && value->isMissing();
  return {applescript::errors::kCannotCoerce,
          std::string("Can’t make ") + (isMissing ? "missing value" : "the value") + " into type text or file.",
          value == nullptr ? Value() : *value};
}

}  // namespace morla::captureone
