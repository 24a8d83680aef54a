#include "platform/macos/Text.h"

namespace morla::macos {

NSString* nsString(std::string_view text) {
  return [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding];
}

NSString* labelText(std::string_view text) {
  NSString* const label = nsString(text);
  return label == nil ? @"" : label;
}

std::string utf8(NSString* text) {
  NSData* const data = [text dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
  // Of an empty data object the bytes are null.
  return data.length == 0 ? std::string() : std::string(static_cast<char const*>(data.bytes), data.length);
}

std::optional<std::string> optionalUtf8(NSString* text) {
  if (text == nil) return std::nullopt;
  return utf8(text);
}

std::optional<std::string> textOrNothing(id value) {
  if (![value isKindOfClass:[NSString class]]) return std::nullopt;
  return utf8(value);
}

}  // namespace morla::macos
