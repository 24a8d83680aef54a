#include "applescript/Dictionary.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace morla::applescript {
namespace {

using Columns = std::vector<std::string_view>;

[[nodiscard]] Columns split(std::string_view text, char separator) {
  Columns columns;
  for (;;) {
    std::size_t const end = text.find(separator);
    columns.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return columns;
    text.remove_prefix(end + 1);
  }
}

[[nodiscard]] bool isName(std::string_view text) {
  return !text.empty() && text.front() != ' ' && text.back() != ' ' && text.find("  ") == std::string_view::npos;
}

/// Reads one line after the other into a dictionary; `problem` says what is wrong with a line.
class TableReader {
 public:
  [[nodiscard]] bool read(std::string_view text) {
    columns_ = split(text, '\t');
    std::string_view const kind = columns_.front();
    if (kind == "class") return readClass();
    if (kind == "property") return readProperty();
    if (kind == "element") return readElement();
    if (kind == "command") return readCommand();
    if (kind == "parameter") return readParameter();
    if (kind == "enumerator") return readEnumerator();
    return fail("unknown kind of term “" + std::string(kind) + "”");
  }

  /// Names that a line may mention before the line that defines them.
  [[nodiscard]] bool checkReferences() {
    for (auto const& [number, command] : parameterLines_) {
      if (std::ranges::none_of(dictionary.commands, [&](auto const& c) { return c.name == command; })) {
        problemLine = number;
        return fail("no command “" + command + "”");
      }
    }
    for (auto const& [number, name] : classLines_) {
      if (name != "application" &&
          std::ranges::none_of(dictionary.classes, [&](auto const& c) { return c.name == name; })) {
        problemLine = number;
        return fail("no class “" + name + "”");
      }
    }
    return true;
  }

  Dictionary dictionary;
  std::string problem;
  std::size_t problemLine = 0;
  std::size_t line = 0;

 private:
  bool fail(std::string what) {
    problem = std::move(what);
    return false;
  }

  [[nodiscard]] bool hasColumns(std::size_t least, std::size_t most) {
    if (columns_.size() < least || columns_.size() > most) return fail("wrong number of columns");
    if (!isName(columns_[1])) return fail("no name");
    return true;
  }
  [[nodiscard]] std::string column(std::size_t index) const {
    return index < columns_.size() ? std::string(columns_[index]) : std::string();
  }
  [[nodiscard]] bool hasCode(std::size_t index, std::size_t length = 4) {
    return columns_[index].size() == length || fail("a code has " + std::to_string(length) + " characters");
  }

  bool readClass() {
    if (!hasColumns(3, 5) || !hasCode(2)) return false;
    std::string plural = column(3);
    if (plural.empty()) plural = column(1) + "s";
    dictionary.classes.push_back({column(1), Code(columns_[2]), std::move(plural), column(4)});
    if (!column(4).empty()) classLines_.emplace_back(line, column(4));
    return true;
  }

  bool readProperty() {
    if (!hasColumns(6, 6) || !hasCode(3)) return false;
    if (!isName(columns_[2])) return fail("no name");
    std::string_view const access = columns_[5];
    if (access != "r" && access != "w" && access != "rw") return fail("access is r, w or rw");
    dictionary.properties.push_back({column(1), column(2), Code(columns_[3]), column(4),
                                     access.find('r') != std::string_view::npos,
                                     access.find('w') != std::string_view::npos});
    classLines_.emplace_back(line, column(1));
    return true;
  }

  bool readElement() {
    if (!hasColumns(3, 3)) return false;
    dictionary.elements.push_back({column(1), column(2)});
    classLines_.emplace_back(line, column(1));
    classLines_.emplace_back(line, column(2));
    return true;
  }

  bool readCommand() {
    if (!hasColumns(3, 5) || !hasCode(2, 8)) return false;
    dictionary.commands.push_back(
        {column(1), Code(columns_[2].substr(0, 4)), Code(columns_[2].substr(4)), column(3), column(4)});
    return true;
  }

  bool readParameter() {
    if (!hasColumns(5, 6) || !hasCode(3)) return false;
    if (!isName(columns_[2])) return fail("no name");
    if (columns_.size() == 6 && columns_[5] != "optional") return fail("the last column is “optional” or absent");
    dictionary.parameters.push_back({column(1), column(2), Code(columns_[3]), column(4), columns_.size() == 6});
    parameterLines_.emplace_back(line, column(1));
    return true;
  }

  bool readEnumerator() {
    if (!hasColumns(4, 4) || !hasCode(3)) return false;
    if (!isName(columns_[2])) return fail("no name");
    dictionary.enumerators.push_back({column(1), column(2), Code(columns_[3])});
    return true;
  }

  Columns columns_;
  std::vector<std::pair<std::size_t, std::string>> parameterLines_;
  std::vector<std::pair<std::size_t, std::string>> classLines_;
};

}  // namespace

DictionaryOrProblem parseDictionary(std::string_view table) {
  TableReader reader;
  auto const failure = [&reader](std::size_t line) {
    return DictionaryOrProblem{std::nullopt, "line " + std::to_string(line) + ": " + reader.problem};
  };
  for (std::string_view line : split(table, '\n')) {
    ++reader.line;
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (line.empty() || line.front() == '#') continue;
    if (!reader.read(line)) return failure(reader.line);
  }
  if (!reader.checkReferences()) return failure(reader.problemLine);
  return {std::move(reader.dictionary), ""};
}

}  // namespace morla::applescript
