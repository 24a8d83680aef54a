#pragma once

#import <Foundation/Foundation.h>

#include <optional>
#include <string>
#include <string_view>

NS_ASSUME_NONNULL_BEGIN

/// Text between the core (UTF-8) and Foundation. Any thread.
namespace morla::macos {

/// nil when `text` is not well-formed UTF-8.
[[nodiscard]] NSString* _Nullable nsString(std::string_view text);

/// For titles and labels: empty when `text` is not well-formed UTF-8.
[[nodiscard]] NSString* labelText(std::string_view text);

/// Half of a surrogate pair, which has no UTF-8 form, is replaced.
[[nodiscard]] std::string utf8(NSString* text);

/// Nothing for nil.
[[nodiscard]] std::optional<std::string> optionalUtf8(NSString* _Nullable text);

/// `value` when it is text; nothing for any other object and for nil.
[[nodiscard]] std::optional<std::string> textOrNothing(id _Nullable value);

}  // namespace morla::macos

NS_ASSUME_NONNULL_END
