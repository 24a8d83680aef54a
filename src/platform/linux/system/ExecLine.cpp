#include "platform/linux/system/ExecLine.h"

#include <optional>

#include "platform/linux/system/DesktopEntries.h"

namespace morla::linux {
namespace {

/// The words of an Exec line; within double quotes a backslash takes the next character as it is. Nothing when a quote
/// is not closed.
std::optional<std::vector<std::string>> words(std::string_view line) {
  std::vector<std::string> result;
  std::optional<std::string> word;
  bool isQuoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    char c = line[i];
    if (c == '"') {
      isQuoted = !isQuoted;
      if (!word) word.emplace();
      continue;
    }
    if (!isQuoted && (c == ' ' || c == '\t')) {
      if (word) result.push_back(*word);
      word.reset();
      continue;
    }
    if (isQuoted && c == '\\' && i + 1 < line.size()) c = line[++i];
    if (!word) word.emplace();
    *word += c;
  }
  if (isQuoted) return std::nullopt;
  if (word) result.push_back(*word);
  return result;
}

/// Replaces the field codes of one word. Codes that have no meaning here vanish, as the format asks.
std::string expanded(std::string_view word, DesktopEntry const& entry, std::string const& url) {
  std::string out;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (word[i] != '%' || i + 1 == word.size()) {
      out += word[i];
      continue;
    }
    switch (word[++i]) {
      case '%':
        out += '%';
        break;
      case 'u':
      case 'U':
      case 'f':
      case 'F':
        out += url;
        break;
      case 'c':
        out += entry.name;
        break;
      case 'k':
        out += entry.path;
        break;
      default:
        break;
    }
  }
  return out;
}

}  // namespace

std::vector<std::string> commandFor(DesktopEntry const& entry, std::string const& url) {
  auto const line = words(entry.exec);
  if (!line || line->empty()) return {};
  std::vector<std::string> command;
  for (auto const& word : *line) {
    auto argument = expanded(word, entry, url);
    // A word that was only a code without meaning ("%i") is no argument at all.
    bool const vanishes = argument.empty() && !word.empty();
    if (!vanishes) command.push_back(std::move(argument));
  }
  return command;
}

}  // namespace morla::linux
