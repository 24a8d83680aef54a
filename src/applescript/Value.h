#pragma once

#include <compare>
#include <concepts>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

/// Values as Apple events carry them.
namespace morla::applescript {

/// A four-character code, compared as its bytes. The text is padded with blanks or cut to four bytes.
class Code {
 public:
  constexpr Code() = default;
  constexpr explicit Code(std::string_view text) {
    for (std::size_t i = 0; i < 4; ++i) bytes_[i] = i < text.size() ? text[i] : ' ';
  }
  [[nodiscard]] std::string text() const { return {bytes_, 4}; }
  friend constexpr bool operator==(Code const&, Code const&) = default;
  friend constexpr auto operator<=>(Code const&, Code const&) = default;

 private:
  char bytes_[4] = {' ', ' ', ' ', ' '};
};

/// `"docu"_code`
[[nodiscard]] constexpr Code operator""_code(char const* text, std::size_t length) {
  return Code(std::string_view(text, length));
}

struct Value;
struct Specifier;
struct RecordField;

struct Null {
  friend bool operator==(Null, Null) = default;
};
struct TypeCode {
  Code code;
  friend bool operator==(TypeCode, TypeCode) = default;
};
struct Enumerator {
  Code code;
  friend bool operator==(Enumerator, Enumerator) = default;
};
/// A file that need not exist, by its POSIX path.
struct FileUrl {
  std::string path;
  friend bool operator==(FileUrl const&, FileUrl const&) = default;
};
/// A file that existed when this was made, by its POSIX path; a folder's ends with a slash.
struct Alias {
  std::string path;
  friend bool operator==(Alias const&, Alias const&) = default;
};

using List = std::vector<Value>;
using Record = std::vector<RecordField>;
/// Never null.
using SpecifierPointer = std::shared_ptr<Specifier const>;

/// Text is bytes, meant as UTF-8 but not guaranteed to be: other applications send what they like.
struct Value {
  using Data = std::variant<Null, bool, std::int64_t, double, std::string, TypeCode, Enumerator, FileUrl, Alias, List,
                            Record, SpecifierPointer>;
  Data data;

  Value() = default;
  template <typename T>
    requires std::constructible_from<Data, T> && (!std::same_as<std::remove_cvref_t<T>, Value>)
  Value(T&& value) : data(std::forward<T>(value)) {}  // NOLINT(google-explicit-constructor): a value *is* its data
  /// A literal is text; without this it would convert to a boolean.
  Value(char const* text);  // NOLINT(google-explicit-constructor)

  [[nodiscard]] bool isNull() const { return std::holds_alternative<Null>(data); }
  /// The constant `missing value`, which travels as the type 'msng'.
  [[nodiscard]] static Value missing() { return TypeCode{"msng"_code}; }
  [[nodiscard]] bool isMissing() const;

  template <typename T>
  [[nodiscard]] T const* as() const {
    return std::get_if<T>(&data);
  }
};

/// Structural equality: same alternatives, same contents, specifiers compared by what they say.
[[nodiscard]] bool operator==(Value const& a, Value const& b);

/// A key is the code of a dictionary term, or an identifier of the script's author.
using RecordKey = std::variant<Code, std::string>;
struct RecordField {
  RecordKey key;
  Value value;
};

// Here, since a Value can only be made once the type of a record's fields is complete.
inline Value::Value(char const* text) : data(std::string(text)) {}

/// How a specifier picks among the wanted objects of its container. The texts are the codes' own.
///
/// A range's bounds are index integers, or specifiers whose null container stands for the range's own container.
///
/// A test is a comparison, the record {'relo': enumerator, 'obj1': operand, 'obj2': operand} with one of the relations
/// '=   ', '<   ', '<=  ', '>   ', '>=  ', 'cont' (contains), 'bgwt' (begins with), 'ends' (ends with); or a
/// combination, the record {'logc': enumerator 'AND ', 'OR  ' or 'NOT ', 'term': list of tests}. An operand is a plain
/// value, or a specifier whose innermost container is the type 'exmn': the object that is being tested.
enum class KeyForm {
  property,  ///< 'prop': selector is the property's TypeCode
  index,     ///< 'indx': integer from 1, negative from the end
  name,      ///< 'name': text
  id,        ///< 'ID  ': any value
  relative,  ///< 'rele': enumerator 'next' or 'prev'
  range,     ///< 'rang': a record with 'star' and 'stop'
  test,      ///< 'test': a record that describes the condition
  every,     ///< 'every' on the bus; no selector
};
[[nodiscard]] std::string_view textOf(KeyForm form);

/// "The `wanted` picked by `form` and `selector` out of `container`"; a null container is the application itself.
struct Specifier {
  Code wanted;
  KeyForm form = KeyForm::every;
  Value selector;
  Value container;
};

}  // namespace morla::applescript
