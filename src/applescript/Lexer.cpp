#include "applescript/Lexer.h"

#include <array>
#include <optional>
#include <utility>

namespace morla::applescript {
namespace {

constexpr std::string_view kContinuation = "¬";
constexpr std::string_view kNoBreakSpace = "\u00A0";
constexpr std::string_view kUnknownToken = "unknown token";

[[nodiscard]] bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
[[nodiscard]] bool startsName(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
[[nodiscard]] bool continuesName(char c) {
  return startsName(c) || isDigit(c);
}
[[nodiscard]] bool isLineEnd(char c) {
  return c == '\n' || c == '\r';
}

[[nodiscard]] std::string lowercase(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return result;
}

/// Spelling and canonical form, longer spellings first.
constexpr std::array<std::pair<std::string_view, std::string_view>, 25> kSymbols{{
    {"<=", "<="}, {">=", ">="}, {"/=", "/="}, {"≤", "<="}, {"≥", ">="}, {"≠", "/="}, {"÷", "/"},
    {"'s", "'s"}, {"’s", "'s"}, {"(", "("},   {")", ")"},  {"{", "{"},  {"}", "}"},  {",", ","},
    {":", ":"},   {"&", "&"},   {"*", "*"},   {"/", "/"},  {"+", "+"},  {"-", "-"},  {"^", "^"},
    {"=", "="},   {"<", "<"},   {">", ">"},   {"×", "*"},
}};

class Lexer {
 public:
  explicit Lexer(std::string_view source) : source_(source) {}

  std::vector<Word> run() {
    // A byte order mark is no part of the text.
    if (startsWith("\xEF\xBB\xBF")) position_ = 3;
    while (position_ < source_.size()) step();
    add(WordKind::end, source_.size(), "");
    return std::move(words_);
  }

 private:
  [[nodiscard]] bool startsWith(std::string_view text) const { return source_.substr(position_).starts_with(text); }
  [[nodiscard]] char at(std::size_t index) const { return index < source_.size() ? source_[index] : '\0'; }

  /// Adds a word that reaches from `start` to the current position.
  void add(WordKind kind, std::size_t start, std::string text) {
    std::string key = kind == WordKind::name ? lowercase(text) : std::string();
    words_.push_back({kind, std::move(text), std::move(key), {start, position_ - start}});
  }

  void step() {
    char const c = source_[position_];
    if (c == ' ' || c == '\t' || c == '\f' || c == '\v') {
      ++position_;
    } else if (startsName(c)) {
      std::size_t const start = position_;
      while (continuesName(at(position_))) ++position_;
      add(WordKind::name, start, std::string(source_.substr(start, position_ - start)));
      contraction(start);
    } else if (isLineEnd(c)) {
      lineEnd();
    } else if (isDigit(c) || (c == '.' && isDigit(at(position_ + 1)))) {
      number();
    } else if (c == '"') {
      textLiteral();
    } else if (c == '|') {
      enclosed(WordKind::pipedName, "|", "|");
    } else if (c == '#' || startsWith("--")) {
      skipLine();
    } else if (startsWith("(*")) {
      blockComment();
    } else if (startsWith(kContinuation)) {
      continuation();
    } else if (startsWith("«")) {
      enclosed(WordKind::chevron, "«", "»");
    } else if (startsWith(kNoBreakSpace)) {
      position_ += kNoBreakSpace.size();
    } else {
      symbol();
    }
  }

  /// "isn't", "doesn't": two words.
  void contraction(std::size_t start) {
    std::string const& key = words_.back().key;
    if (key != "isn" && key != "doesn" && key != "aren" && key != "don") return;
    for (std::string_view const ending : {"'t", "’t"}) {
      if (!startsWith(ending) || continuesName(at(position_ + ending.size()))) continue;
      std::string const verb = key.substr(0, key.size() - 1);
      words_.pop_back();
      std::size_t const end = position_ + ending.size();
      position_ = start + verb.size();
      add(WordKind::name, start, verb);
      position_ = end;
      add(WordKind::name, start + verb.size(), "not");
      return;
    }
  }

  void lineEnd() {
    std::size_t const start = position_;
    position_ += std::size_t{startsWith("\r\n") ? 2U : 1U};
    add(WordKind::lineEnd, start, "");
  }

  void skipLine() {
    while (position_ < source_.size() && !isLineEnd(source_[position_])) ++position_;
  }

  void blockComment() {
    std::size_t const start = position_;
    std::size_t depth = 0;
    while (position_ < source_.size()) {
      if (startsWith("(*")) {
        ++depth;
        position_ += 2;
      } else if (startsWith("*)")) {
        position_ += 2;
        if (--depth == 0) return;
      } else {
        ++position_;
      }
    }
    add(WordKind::error, start, "end of script");
  }

  /// `¬`, then nothing but blanks and a comment up to the line end, which it takes away.
  void continuation() {
    std::size_t const start = position_;
    position_ += kContinuation.size();
    while (at(position_) == ' ' || at(position_) == '\t') ++position_;
    if (startsWith("--") || at(position_) == '#') skipLine();
    if (isLineEnd(at(position_))) {
      position_ += std::size_t{startsWith("\r\n") ? 2U : 1U};
    } else {
      add(WordKind::error, start, std::string(kUnknownToken));
    }
  }

  void textLiteral() {
    std::size_t const start = position_++;
    std::string text;
    bool isRight = true;
    while (position_ < source_.size() && source_[position_] != '"') {
      if (source_[position_] != '\\') {
        text += source_[position_++];
        continue;
      }
      if (std::optional<char> const c = escaped(at(position_ + 1))) {
        text += *c;
      } else {
        isRight = false;
      }
      position_ = std::min(position_ + 2, source_.size());
    }
    if (position_ == source_.size()) {
      add(WordKind::error, start, "end of script");
      return;
    }
    ++position_;
    add(isRight ? WordKind::text : WordKind::error, start, isRight ? text : std::string(kUnknownToken));
  }

  [[nodiscard]] static std::optional<char> escaped(char c) {
    switch (c) {
      case '"':
      case '\\':
        return c;
      case 'n':
        return '\n';
      case 'r':
        return '\r';
      case 't':
        return '\t';
      default:
        return std::nullopt;
    }
  }

  void enclosed(WordKind kind, std::string_view open, std::string_view close) {
    std::size_t const start = position_;
    position_ += open.size();
    std::size_t const first = position_;
    while (position_ < source_.size() && !isLineEnd(source_[position_]) && !startsWith(close)) ++position_;
    std::string text(source_.substr(first, position_ - first));
    bool const isClosed = startsWith(close);
    if (isClosed) position_ += close.size();
    add(isClosed ? kind : WordKind::error, start, isClosed ? text : std::string(kUnknownToken));
  }

  void number() {
    std::size_t const start = position_;
    bool isReal = false;
    while (isDigit(at(position_))) ++position_;
    if (at(position_) == '.' && isDigit(at(position_ + 1))) {
      isReal = true;
      ++position_;
      while (isDigit(at(position_))) ++position_;
    }
    if (at(position_) == 'e' || at(position_) == 'E') {
      std::size_t digits = position_ + 1;
      if (at(digits) == '+' || at(digits) == '-') ++digits;
      if (isDigit(at(digits))) {
        isReal = true;
        position_ = digits;
        while (isDigit(at(position_))) ++position_;
      }
    }
    std::string digits(source_.substr(start, position_ - start));
    if (!isReal) {
      for (std::string_view const ending : {"st", "nd", "rd", "th"}) {
        if (lowercase(source_.substr(position_, 2)) != ending || continuesName(at(position_ + 2))) continue;
        position_ += 2;
        add(WordKind::ordinal, start, std::move(digits));
        return;
      }
    }
    add(isReal ? WordKind::real : WordKind::integer, start, std::move(digits));
  }

  void symbol() {
    std::size_t const start = position_;
    for (auto const& [spelling, canonical] : kSymbols) {
      if (!startsWith(spelling)) continue;
      // "'s" only where the name it belongs to ends: "'start" is not one.
      if (canonical == "'s" && continuesName(at(position_ + spelling.size()))) continue;
      position_ += spelling.size();
      add(WordKind::symbol, start, std::string(canonical));
      return;
    }
    // One whole character, so that a message's range does not cut it.
    ++position_;
    while (position_ < source_.size() && (static_cast<unsigned char>(source_[position_]) & 0xC0U) == 0x80U) ++position_;
    add(WordKind::error, start, std::string(kUnknownToken));
  }

  std::string_view source_;
  std::size_t position_ = 0;
  std::vector<Word> words_;
};

}  // namespace

std::vector<Word> lex(std::string_view source) {
  return Lexer(source).run();
}

}  // namespace morla::applescript
