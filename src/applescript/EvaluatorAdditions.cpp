#include <array>
#include <cmath>
#include <random>

#include "applescript/Coercion.h"
#include "applescript/Describe.h"
#include "applescript/Evaluator.h"
#include "applescript/Parser.h"
#include "applescript/Scoped.h"
#include "applescript/TextElements.h"

namespace morla::applescript {
namespace {

/// What a machine without anybody in front of the script cannot ask: nobody is there to answer.
constexpr auto kDialogs = std::to_array<std::string_view>({"sysodlog", "sysodisA", "gtqpchlt", "sysostdf", "sysostfl"});
/// What would only be seen or heard.
constexpr auto kSilent = std::to_array<std::string_view>({"sysobeep", "sysottos", "sysonotf"});
constexpr auto kOthers = std::to_array<std::string_view>({"sysorand", "sysorond", "sysontoc", "sysocton", "misccurd",
                                                          "sysoGMT ", "sysodela", "ascrchid", "earsffdr", "sysodsct"});

[[nodiscard]] std::string codeOf(tree::Command const& node) {
  return node.eventClass.text() + node.eventId.text();
}

[[nodiscard]] bool isOneOf(auto const& codes, std::string const& code) {
  for (std::string_view const one : codes) {
    if (one == code) return true;
  }
  return false;
}

[[nodiscard]] double realOf(Datum const& number) {
  auto const* integer = number.as<std::int64_t>();
  return integer == nullptr ? *number.as<double>() : static_cast<double>(*integer);
}

}  // namespace

bool Evaluator::isAddition(tree::Command const& node) {
  std::string const code = codeOf(node);
  return isOneOf(kDialogs, code) || isOneOf(kSilent, code) || isOneOf(kOthers, code);
}

Datum Evaluator::directOf(tree::Command const& node) {
  if (node.direct == nullptr) raise(errors::kParameterMissing, "“" + node.name + "” needs a value.");
  return operand(*node.direct);
}

/// The commands that the language's standard additions carry out, wherever a script stands.
Datum Evaluator::addition(tree::Command const& node) {
  std::string const code = codeOf(node);
  if (isOneOf(kDialogs, code)) raise(errors::kNoUserInteraction, "No user interaction allowed.");
  if (isOneOf(kSilent, code)) {
    if (node.direct != nullptr) static_cast<void>(operand(*node.direct));
    return {};
  }
  if (code == "sysorand") return randomNumber(node);
  if (code == "sysorond") return rounded(node);
  if (code == "sysontoc" || code == "ascrchid") return characterWithId(directOf(node));
  if (code == "sysocton") {
    std::vector<std::int64_t> const points =
        codePointsOf(coerce(directOf(node), "ctxt"_code, *state_).as<Text>()->view());
    return points.empty() ? std::int64_t{0} : points.front();
  }
  if (code == "misccurd") return Date(state_->host.now().seconds);
  if (code == "sysoGMT ") return state_->host.now().secondsFromGmt;
  if (code == "earsffdr") return pathTo(node);
  if (code == "sysodsct") return runScriptText(node);
  double const seconds = node.direct == nullptr ? 0 : realOf(coerce(directOf(node), "nmbr"_code, *state_));
  constexpr double kLongest = 1e9;
  state_->host.wait(std::chrono::milliseconds(static_cast<std::int64_t>(std::clamp(seconds, 0.0, kLongest) * 1000)));
  return {};
}

/// An integer between integers, else a real; from 0 to 1 without limits.
Datum Evaluator::randomNumber(tree::Command const& node) {
  auto const bound = [this, &node](Code code) -> std::optional<Datum> {
    Expression const* expression = optionalParameter(node, code);
    if (expression == nullptr) return std::nullopt;
    return coerce(operand(*expression), "nmbr"_code, *state_);
  };
  if (std::optional<Datum> const seed = bound("seed"_code)) {
    state_->random.seed(static_cast<std::uint64_t>(std::llround(std::clamp(realOf(*seed), -1e15, 1e15))));
  }
  Datum low = bound("from"_code).value_or(Datum(std::int64_t{0}));
  std::optional<Datum> high = bound("to  "_code);
  if (!high && node.direct != nullptr) high = coerce(directOf(node), "nmbr"_code, *state_);
  if (!high)
    high = node.parameters.empty() || optionalParameter(node, "from"_code) == nullptr ? Datum(1.0) : Datum(100.0);
  auto const* first = low.as<std::int64_t>();
  auto const* last = high->as<std::int64_t>();
  if (first != nullptr && last != nullptr) {
    return std::uniform_int_distribution<std::int64_t>(std::min(*first, *last),
                                                       std::max(*first, *last))(state_->random);
  }
  double const a = realOf(low);
  double const b = realOf(*high);
  if (a == b) return a;
  return std::min(a, b) + std::generate_canonical<double, 53>(state_->random) * std::abs(b - a);
}

Datum Evaluator::rounded(tree::Command const& node) {
  double const number = realOf(coerce(directOf(node), "nmbr"_code, *state_));
  Code direction = "Rnea"_code;
  if (Expression const* expression = optionalParameter(node, "dire"_code)) {
    Datum const value = operand(*expression);
    auto const* given = value.as<Enumerator>();
    if (given == nullptr) raiseCannotMake(value, "enum"_code, *state_);
    direction = given->code;
  }
  double result = std::nearbyint(number);  // halves go to the even neighbour
  if (direction == "Rup "_code) result = std::ceil(number);
  if (direction == "Rdn "_code) result = std::floor(number);
  if (direction == "Rzer"_code) result = std::trunc(number);
  if (direction == "Rsch"_code) result = std::round(number);
  constexpr double kLargestInteger = 536870911;
  if (std::abs(result) > kLargestInteger) return result;
  return static_cast<std::int64_t>(result);
}

/// One character for a number, a text of all for a list of numbers.
Datum Evaluator::characterWithId(Datum const& id) {
  std::string text;
  Datum const all = coerce(id, "list"_code, *state_);
  for (Datum const& one : (*all.as<ListReference>())->items) {
    std::int64_t const point = coerceToInteger(one, *state_);
    if (!appendCodePoint(text, point)) {
      raise(errors::kNoSuchObject, "Can’t get character id " + std::to_string(point) + ".", id);
    }
  }
  return state_->makeText(std::move(text));
}

Datum Evaluator::pathTo(tree::Command const& node) {
  struct Folder {
    std::string_view code;
    std::string_view path;  // one that does not begin with a slash is in the home folder
  };
  static constexpr auto kFolders = std::to_array<Folder>({{"cusr", ""},
                                                          {"desk", "Desktop"},
                                                          {"docs", "Documents"},
                                                          {"down", "Downloads"},
                                                          {"pdoc", "Pictures"},
                                                          {"mdoc", "Movies"},
                                                          {"mudc", "Music"},
                                                          {"pubb", "Public"},
                                                          {"dlib", "Library"},
                                                          {"apps", "/Applications"},
                                                          {"temp", "/tmp"},
                                                          {"boot", "/"}});
  Datum const folder = directOf(node);
  auto const* wanted = folder.as<Enumerator>();
  for (Folder const& place : kFolders) {
    if (wanted == nullptr || wanted->code != Code(place.code)) continue;
    std::string path = place.path.starts_with('/') ? std::string(place.path)
                                                   : state_->host.homeFolder() + "/" + std::string(place.path);
    if (!path.ends_with('/')) path += '/';
    Datum const alias = Alias{path};
    Expression const* type = optionalParameter(node, "rtyp"_code);
    if (type == nullptr) return alias;
    Datum const given = operand(*type);
    auto const* code = given.as<TypeCode>();
    return code == nullptr ? alias : coerce(alias, code->code, *state_);
  }
  raise(errors::kFileNotFound, "The folder " + sourceText(folder, *state_) + " wasn’t found.", folder);
}

/// Compiles a text and runs it as a script of its own.
Datum Evaluator::runScriptText(tree::Command const& node) {
  Level const level(*this);
  Datum const text = coerce(directOf(node), "ctxt"_code, *state_);
  Datum arguments = state_->makeList({});
  if (Expression const* given = optionalParameter(node, "plst"_code)) {
    arguments = coerce(operand(*given), "list"_code, *state_);
  }
  Parser::Result parsed = Parser(text.as<Text>()->view(), state_->applications, state_->limits).parse();
  if (!parsed.script) raise(parsed.failure->number, parsed.failure->message);
  ownScripts_.push_back(std::make_unique<Script const>(*std::move(parsed.script)));
  Scoped<ScriptReference> const top(top_, nullptr);
  Scoped<ActivationReference> const outside(current_, nullptr);
  top_ = instantiate(*ownScripts_.back(), nullptr, nullptr);
  return runScript(top_, {arguments}).value.value_or(Datum());
}

}  // namespace morla::applescript
