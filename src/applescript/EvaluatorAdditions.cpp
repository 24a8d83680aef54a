#include <array>
#include <cmath>
#include <random>

#include "applescript/Coercion.h"
#include "applescript/Describe.h"
#include "applescript/ErrorTexts.h"
#include "applescript/Evaluator.h"
#include "applescript/Parser.h"
#include "applescript/Scoped.h"
#include "applescript/TextElements.h"

namespace morla::applescript {
namespace {

/// What a machine without anybody in front of the script cannot ask: nobody is there to answer.
constexpr auto kDialogs = std::to_array<std::string_view>({"sysodlog", "sysodisA", "gtqpchlt", "sysostdf", "sysostfl",
                                                           "sysonwfl", "sysochcl", "sysochur", "sysoppcb", "sysochra"});
/// What would only be seen or heard, or opened by another program.
constexpr auto kSilent =
    std::to_array<std::string_view>({"sysobeep", "sysottos", "sysonotf", "aevtstvl", "GURLGURL", "aevtmvol"});
constexpr auto kOthers = std::to_array<std::string_view>(
    {"sysorand", "sysorond", "sysontoc", "sysocton", "misccurd", "sysoGMT ", "sysodela", "ascrchid",
     "earsffdr", "sysodsct", "sysoload", "sysostor", "JonsgClp", "JonspClp", "JonsiClp", "fndrgstl",
     "sysosigt", "sysolocS", "sysorpth", "sysogtvl", "sysocpls", "earslvol"});

[[nodiscard]] std::string codeOf(tree::Command const& node) {
  return node.eventClass.text() + node.eventId.text();
}

[[nodiscard]] bool isOneOf(auto const& codes, std::string const& code) {
  for (std::string_view const one : codes) {
    if (one == code) return true;
  }
  return false;
}

constexpr std::int64_t kNoResource = -192;

}  // namespace

bool Evaluator::isAddition(tree::Command const& node) {
  std::string const code = codeOf(node);
  return isOneOf(kDialogs, code) || isOneOf(kSilent, code) || isOneOf(kOthers, code) || isFileCommand(node);
}

Datum Evaluator::directOf(tree::Command const& node) {
  if (node.direct == nullptr) raise(errors::kParameterMissing, "“" + node.name + "” needs a value.");
  return operand(*node.direct);
}

/// The commands that the language's standard additions carry out, wherever a script stands.
Datum Evaluator::addition(tree::Command const& node) {
  std::string const code = codeOf(node);
  if (isFileCommand(node)) return fileCommand(node);
  if (isOneOf(kDialogs, code)) raise(errors::kNoUserInteraction, "No user interaction allowed.");
  if (isOneOf(kSilent, code)) {
    if (node.direct != nullptr) static_cast<void>(operand(*node.direct));
    return {};
  }
  if (node.eventClass == "Jons"_code) return clipboardCommand(node);
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
  if (code == "earslvol") return state_->makeList({Datum("Macintosh HD")});
  if (code == "sysodsct") return runScriptText(node);
  if (code == "sysoload") return loadScript(node);
  if (code == "sysosigt") return systemInformation();
  if (code == "sysolocS") return coerce(directOf(node), "ctxt"_code, *state_);  // nothing is translated
  if (code == "sysocpls") return state_->makeList({Datum("AppleScript")});
  if (code == "sysogtvl") {
    // As on a machine whose output has no volume that could be set.
    RecordObject::Fields fields;
    for (Code const property : {"ouvl"_code, "invl"_code, "alvl"_code, "mute"_code}) {
      fields.emplace_back(property, Datum::missing());
    }
    return state_->heap.makeRecord(std::move(fields));
  }
  if (code == "fndrgstl") {
    std::string const name = coerce(directOf(node), "ctxt"_code, *state_).as<Text>()->string();
    return state_->makeText(state_->host.environmentVariable(name).value_or(""));
  }
  if (code == "sysorpth") raise(kNoResource, errorText(kNoResource));
  if (code == "sysostor") raise(errors::kEventNotHandled, "Script objects cannot be stored in files.");
  wait(node);
  return {};
}

void Evaluator::wait(tree::Command const& node) {
  double const seconds = node.direct == nullptr ? 0 : coerceToReal(directOf(node), *state_);
  constexpr double kLongest = 1e9;
  state_->host.wait(std::chrono::milliseconds(static_cast<std::int64_t>(std::clamp(seconds, 0.0, kLongest) * 1000)));
}

/// The value in the class of the command's "as".
Datum Evaluator::coercedAsAsked(tree::Command const& node, Datum const& value) {
  Expression const* const type = optionalParameter(node, "rtyp"_code);
  if (type == nullptr) return value;
  Datum const given = operand(*type);
  auto const* code = given.as<TypeCode>();
  return code == nullptr ? value : coerce(value, code->code, *state_);
}

Datum Evaluator::clipboardCommand(tree::Command const& node) {
  if (node.eventId == "pClp"_code) {
    state_->clipboard = directOf(node);
    return {};
  }
  if (node.eventId == "gClp"_code) return coercedAsAsked(node, state_->clipboard);
  std::optional<std::string> const text = coercedToText(state_->clipboard, *state_);
  if (!text) return state_->makeList({});
  std::vector<Datum> entry{TypeCode{"ctxt"_code}, static_cast<std::int64_t>(text->size())};
  return state_->makeList({Datum(state_->makeList(std::move(entry)))});
}

/// What a script may know of the machine that is no application's.
Datum Evaluator::systemInformation() {
  std::string const user = state_->host.environmentVariable("USER").value_or("");
  RecordObject::Fields fields;
  fields.emplace_back("siav"_code, "2.8");
  fields.emplace_back("sisn"_code, user);
  fields.emplace_back("siln"_code, user);
  fields.emplace_back("home"_code, Alias{state_->host.homeFolder() + "/"});
  return state_->heap.makeRecord(std::move(fields));
}

/// An integer between integers, else a real; from 0 to 1 without limits.
Datum Evaluator::randomNumber(tree::Command const& node) {
  auto const bound = [this, &node](Code code) -> std::optional<Datum> {
    Expression const* expression = optionalParameter(node, code);
    if (expression == nullptr) return std::nullopt;
    return coerce(operand(*expression), "nmbr"_code, *state_);
  };
  if (std::optional<Datum> const seed = bound("seed"_code)) {
    double const number = std::clamp(coerceToReal(*seed, *state_), -1e15, 1e15);
    state_->random.seed(static_cast<std::uint64_t>(std::llround(number)));
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
  double const a = coerceToReal(low, *state_);
  double const b = coerceToReal(*high, *state_);
  if (a == b) return a;
  return std::min(a, b) + std::generate_canonical<double, 53>(state_->random) * std::abs(b - a);
}

Datum Evaluator::rounded(tree::Command const& node) {
  double const number = coerceToReal(directOf(node), *state_);
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
                                                          {"site", "Sites"},
                                                          {"trsh", ".Trash"},
                                                          {"dlib", "Library"},
                                                          {"asup", "Library/Application Support"},
                                                          {"pref", "Library/Preferences"},
                                                          {"font", "Library/Fonts"},
                                                          {"scrp", "Library/Scripts"},
                                                          {"apps", "/Applications"},
                                                          {"uti$", "/Applications/Utilities"},
                                                          {"usrs", "/Users"},
                                                          {"sdat", "/Users/Shared"},
                                                          {"macs", "/System"},
                                                          {"temp", "/tmp"},
                                                          {"boot", "/"}});
  Datum const wanted = directOf(node);
  if (wanted.as<ScriptReference>() != nullptr && !state_->scriptPath.empty()) {
    return coercedAsAsked(node, Alias{state_->scriptPath});
  }
  Expression const* const domain = optionalParameter(node, "from"_code);
  Datum const where = domain == nullptr ? Datum() : operand(*domain);
  auto const* place = where.as<Enumerator>();
  auto const* folder = wanted.as<Enumerator>();
  for (Folder const& each : kFolders) {
    if (folder == nullptr || folder->code != Code(each.code)) continue;
    std::string path(each.path);
    bool const isOfAll = path.starts_with("Library") && place != nullptr && place->code != "fldu"_code;
    if (isOfAll) {
      path.insert(0, place->code == "flds"_code ? "/System/" : "/");
    } else if (!path.starts_with('/')) {
      path.insert(0, state_->host.homeFolder() + "/");
    }
    if (!path.ends_with('/')) path += '/';
    return coercedAsAsked(node, Alias{path});
  }
  raise(errors::kFileNotFound, "The folder " + sourceText(wanted, *state_) + " wasn’t found.", wanted);
}

/// The script that a text or a file holds; it stays as long as this evaluator.
Script const& Evaluator::compiled(Datum const& source) {
  std::string const text = source.as<Text>() != nullptr ? source.as<Text>()->string() : scriptText(source);
  ownScriptBytes_ += text.size();
  if (ownScriptBytes_ > state_->limits.textBytes) raise(errors::kValueTooLarge, "The scripts are too large together.");
  Parser::Result parsed = Parser(text, state_->applications, state_->limits).parse();
  if (!parsed.script) raise(parsed.failure->number, parsed.failure->message);
  ownScripts_.push_back(std::make_unique<Script const>(*std::move(parsed.script)));
  return *ownScripts_.back();
}

/// Compiles a text and runs it as a script of its own.
Datum Evaluator::runScriptText(tree::Command const& node) {
  Level const level(*this);
  Datum const source = directOf(node);
  Datum arguments = state_->makeList({});
  if (Expression const* given = optionalParameter(node, "plst"_code)) {
    arguments = coerce(operand(*given), "list"_code, *state_);
  }
  if (auto const* script = source.as<ScriptReference>()) {
    return runScript(*script, {arguments}).value.value_or(Datum());
  }
  Script const& script = compiled(source);
  Scoped<ScriptReference> const top(top_, nullptr);
  Scoped<ActivationReference> const outside(current_, nullptr);
  top_ = instantiate(script, nullptr, nullptr);
  return runScript(top_, {arguments}).value.value_or(Datum());
}

/// The script of a file as a script object, which does not run.
Datum Evaluator::loadScript(tree::Command const& node) {
  Level const level(*this);
  Datum const file = directOf(node);
  Script const& script = compiled(FileUrl{pathOf(file)});
  return instantiate(script, nullptr, nullptr);
}

}  // namespace morla::applescript
