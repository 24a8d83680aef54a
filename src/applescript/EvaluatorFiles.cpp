#include <algorithm>

#include "applescript/Coercion.h"
#include "applescript/Describe.h"
#include "applescript/ErrorTexts.h"
#include "applescript/Evaluator.h"
#include "applescript/TextElements.h"

namespace morla::applescript {
namespace {

constexpr std::int64_t kNotOpen = -38;
constexpr std::int64_t kEndOfFile = -39;
constexpr std::int64_t kTooManyOpen = -42;
constexpr std::int64_t kAlreadyOpen = -49;
constexpr std::int64_t kBadParameter = -50;
constexpr std::int64_t kNotWritable = -61;

[[noreturn]] void raiseAboutFile(std::int64_t number, std::string const& path) {
  std::string const file = "File " + hfsPath(path);
  std::string message = errorText(number);
  if (message.starts_with("File ") && number != kNotWritable) message.replace(0, 4, file);
  raise(number, std::move(message), FileUrl{path});
}

void require(std::int64_t error, std::string const& path) {
  if (error != 0) raiseAboutFile(error, path);
}

[[nodiscard]] std::string lastPart(std::string path) {
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path.substr(path.rfind('/') + 1);
}

}  // namespace

HostFiles& Evaluator::files() {
  HostFiles* const files = state_->host.files();
  if (files == nullptr) raise(errors::kPrivilege, errorText(errors::kPrivilege));
  return *files;
}

/// What a command may name a file with: a path as text, a file or an alias.
std::string Evaluator::pathOf(Datum const& file) {
  if (auto const* url = file.as<FileUrl>()) return url->path;
  if (auto const* alias = file.as<Alias>()) return alias->path;
  Datum const path = coerce(file, "furl"_code, *state_);
  return path.as<FileUrl>()->path;
}

/// The file of the command's direct parameter or `file`; one that is not open is opened for this command alone.
OpenFiles::File Evaluator::fileOf(Datum const& file, std::optional<std::int64_t>& number) {
  if (auto const* reference = file.as<std::int64_t>()) {
    OpenFiles::File const* const open = state_->openFiles.find(*reference);
    if (open == nullptr) raise(kNotOpen, errorText(kNotOpen), file);
    number = *reference;
    return *open;
  }
  std::string const path = pathOf(file);
  number = state_->openFiles.numberOf(path);
  if (number) return *state_->openFiles.find(*number);
  return {path, true, 0};
}

std::size_t Evaluator::sizeOf(std::string const& path) {
  auto const information = files().information(path);
  if (!information || information->isFolder) raiseAboutFile(errors::kFileNotFound, path);
  return static_cast<std::size_t>(std::max<std::int64_t>(information->size, 0));
}

Datum Evaluator::openForAccess(tree::Command const& node) {
  Datum const file = directOf(node);
  std::string const path = pathOf(file);
  Expression const* const permission = optionalParameter(node, "perm"_code);
  bool const isWritable = permission != nullptr && condition(*permission);
  auto const open = state_->openFiles.numberOf(path);
  if (open && isWritable && state_->openFiles.find(*open)->isWritable) raiseAboutFile(kAlreadyOpen, path);
  auto const information = files().information(path);
  if (information && information->isFolder) raiseAboutFile(errors::kFileNotFound, path);
  // A file that is not there yet is made, whatever it is opened for.
  if (!information) require(files().resize(path, 0), path);
  if (isWritable && information && information->isLocked) raiseAboutFile(-54, path);
  std::optional<std::int64_t> const number = state_->openFiles.open(path, isWritable);
  if (!number) raise(kTooManyOpen, errorText(kTooManyOpen));
  return *number;
}

void Evaluator::closeAccess(tree::Command const& node) {
  Datum const file = directOf(node);
  std::optional<std::int64_t> number;
  static_cast<void>(fileOf(file, number));
  if (!number || !state_->openFiles.close(*number)) raiseAboutFile(kNotOpen, pathOf(file));
}

/// A place in a file that a script gives, as an offset from 0: places count from 1, negative ones from the end.
std::size_t Evaluator::offsetIn(Expression const& place, std::size_t size) {
  Datum const value = operand(place);
  if (auto const* end = value.as<Enumerator>(); end != nullptr && end->code == "eof "_code) return size;
  std::int64_t const number = coerceToInteger(value, *state_);
  std::int64_t const offset =
      number < 0 ? static_cast<std::int64_t>(size) + number : std::max<std::int64_t>(number, 1) - 1;
  if (offset < 0) raise(kBadParameter, errorText(kBadParameter), value);
  return static_cast<std::size_t>(offset);
}

/// How many bytes `read` takes from `start` on, as far as the script says it in numbers.
std::size_t Evaluator::lengthToRead(tree::Command const& node, std::string const& path, std::size_t start,
                                    std::size_t size) {
  std::size_t end = size;
  if (Expression const* last = optionalParameter(node, "rdto"_code)) end = std::min(offsetIn(*last, size) + 1, size);
  if (Expression const* count = optionalParameter(node, "rdfr"_code)) {
    std::int64_t const bytes = coerceToInteger(operand(*count), *state_);
    end = std::min(size, start + static_cast<std::size_t>(std::max<std::int64_t>(bytes, 0)));
  }
  if (start >= size) raise(kEndOfFile, errorText(kEndOfFile), FileUrl{path});
  std::size_t const length = std::max(end, start) - start;
  if (length > state_->limits.textBytes) raise(errors::kValueTooLarge, "The text is too large.");
  return length;
}

/// Cuts off what `before` and `until` leave to the next `read`; gives where that goes on in what was read.
std::size_t Evaluator::stopAtText(tree::Command const& node, std::string& bytes) {
  for (Code const code : {"rdbf"_code, "rdut"_code}) {
    Expression const* const expression = optionalParameter(node, code);
    if (expression == nullptr) continue;
    Datum const stop = coerce(operand(*expression), "ctxt"_code, *state_);
    std::size_t const at = bytes.find(stop.as<Text>()->view());
    if (at == std::string::npos || stop.as<Text>()->size() == 0) continue;
    std::size_t const next = at + stop.as<Text>()->size();
    bytes.resize(code == "rdbf"_code ? at : next);
    return next;
  }
  return bytes.size();
}

Datum Evaluator::readFile(tree::Command const& node) {
  Datum const file = directOf(node);
  std::optional<std::int64_t> number;
  OpenFiles::File const open = fileOf(file, number);
  std::size_t const size = sizeOf(open.path);
  std::size_t start = open.position;
  if (Expression const* first = optionalParameter(node, "rdfm"_code)) start = offsetIn(*first, size);
  auto [bytes, error] = files().read(open.path, start, lengthToRead(node, open.path, start, size));
  require(error, open.path);
  std::size_t const next = start + stopAtText(node, bytes);
  if (number) state_->openFiles.find(*number)->position = next;
  return readValue(node, bytes);
}

/// Files hold UTF-8 here, unless the script says otherwise.
Datum Evaluator::readValue(tree::Command const& node, std::string const& bytes) {
  Code type = "ctxt"_code;
  if (Expression const* wanted = optionalParameter(node, "as  "_code)) {
    Datum const given = operand(*wanted);
    auto const* list = given.as<ListReference>();
    Datum const one = list != nullptr && !(*list)->items.empty() ? (*list)->items.front() : given;
    auto const* code = one.as<TypeCode>();
    if (code == nullptr) raiseCannotMake(given, "pcls"_code, *state_);
    type = code->code;
  }
  bool const isUtf16 = type == "ut16"_code || type == "utxt"_code;
  if (!isUtf16 && type != "ctxt"_code && type != "TEXT"_code && type != "utf8"_code) {
    raise(errors::kCannotCoerce, errorText(errors::kCannotCoerce), TypeCode{type});
  }
  Datum const text = state_->makeText(isUtf16 ? textOfUtf16(bytes) : bytes);
  Expression const* const delimiter = optionalParameter(node, "deli"_code);
  if (delimiter == nullptr) return text;
  std::vector<std::string> delimiters;
  Datum const given = coerce(operand(*delimiter), "list"_code, *state_);
  for (Datum const& each : (*given.as<ListReference>())->items) {
    delimiters.push_back(coerce(each, "ctxt"_code, *state_).as<Text>()->string());
  }
  std::vector<Datum> items;
  for (std::string_view const item : textItemsOf(text.as<Text>()->view(), delimiters, Considerations{0})) {
    items.emplace_back(std::string(item));
  }
  // The delimiter at the end of the last line begins no other one.
  if (!items.empty() && items.back().as<Text>()->size() == 0) items.pop_back();
  return state_->makeList(std::move(items));
}

void Evaluator::writeFile(tree::Command const& node) {
  Datum const data = directOf(node);
  std::optional<std::int64_t> number;
  OpenFiles::File const open = fileOf(operand(parameter(node, "refn"_code)), number);
  if (!open.isWritable) raiseAboutFile(kNotWritable, open.path);
  Expression const* const type = optionalParameter(node, "as  "_code);
  Datum const wanted = type == nullptr ? Datum(TypeCode{"ctxt"_code}) : operand(*type);
  auto const* code = wanted.as<TypeCode>();
  bool const isUtf16 = code != nullptr && (code->code == "ut16"_code || code->code == "utxt"_code);
  bool const isText =
      isUtf16 ||
      (code != nullptr && (code->code == "ctxt"_code || code->code == "utf8"_code || code->code == "TEXT"_code));
  // A number would be written as the machine holds it, which no text file wants: the script has to say "as text".
  if (!isText || (type == nullptr && data.as<Text>() == nullptr)) raiseCannotMake(data, "ctxt"_code, *state_);
  std::string bytes = coerce(data, "ctxt"_code, *state_).as<Text>()->string();
  if (isUtf16) bytes = utf16Of(bytes);
  if (Expression const* count = optionalParameter(node, "nmwr"_code)) {
    std::int64_t const most = std::max<std::int64_t>(coerceToInteger(operand(*count), *state_), 0);
    bytes.resize(std::min(bytes.size(), static_cast<std::size_t>(most)));
  }
  std::size_t start = open.position;
  if (Expression const* place = optionalParameter(node, "wrat"_code)) {
    auto const information = files().information(open.path);
    start = offsetIn(*place, information ? static_cast<std::size_t>(information->size) : 0);
  }
  if (start > state_->limits.textBytes) raise(errors::kValueTooLarge, "The file is too large.");
  require(files().write(open.path, start, bytes), open.path);
  if (number) state_->openFiles.find(*number)->position = start + bytes.size();
}

void Evaluator::setFileSize(tree::Command const& node) {
  Datum const file = directOf(node);
  std::optional<std::int64_t> number;
  OpenFiles::File const open = fileOf(file, number);
  if (!open.isWritable) raiseAboutFile(kNotWritable, open.path);
  double const size = coerceToReal(operand(parameter(node, "set2"_code)), *state_);
  if (!(size >= 0)) raise(kBadParameter, errorText(kBadParameter));
  if (size > static_cast<double>(state_->limits.textBytes)) {
    raise(errors::kValueTooLarge, "The file is too large.");
  }
  auto const bytes = static_cast<std::size_t>(size);
  require(files().resize(open.path, bytes), open.path);
  if (number) state_->openFiles.find(*number)->position = std::min(open.position, bytes);
}

Datum Evaluator::informationAbout(tree::Command const& node) {
  std::string const path = pathOf(directOf(node));
  auto const information = files().information(path);
  if (!information) raiseAboutFile(errors::kFileNotFound, path);
  std::string const name = lastPart(path);
  std::size_t const dot = name.rfind('.');
  bool const hasExtension = !information->isFolder && dot != std::string::npos && dot > 0;
  RecordObject::Fields fields;
  fields.emplace_back("pnam"_code, name);
  fields.emplace_back("asmo"_code, Date(information->modified));
  fields.emplace_back("size", static_cast<double>(information->size));
  fields.emplace_back("folder", information->isFolder);
  fields.emplace_back("alis"_code, false);
  fields.emplace_back("ispk"_code, false);
  fields.emplace_back("visible", !name.starts_with('.'));
  fields.emplace_back("locked", information->isLocked);
  fields.emplace_back("nmxt"_code, hasExtension ? Datum(name.substr(dot + 1)) : Datum::missing());
  fields.emplace_back("dnam"_code, name);
  return state_->heap.makeRecord(std::move(fields));
}

Datum Evaluator::folderNames(tree::Command const& node) {
  std::string const path = pathOf(directOf(node));
  std::optional<std::vector<std::string>> names = files().namesIn(path);
  if (!names) raiseAboutFile(errors::kFileNotFound, path);
  Expression const* const choice = optionalParameter(node, "lfiv"_code);
  bool const hasInvisibles = choice == nullptr || condition(*choice);
  if (!hasInvisibles) std::erase_if(*names, [](std::string const& name) { return name.starts_with('.'); });
  std::ranges::sort(*names, {}, [](std::string const& name) { return lowercaseKey(name); });
  std::vector<Datum> items;
  for (std::string& name : *names) items.emplace_back(std::move(name));
  return state_->makeList(std::move(items));
}

/// The text of a script; what is compiled already belongs to another program.
std::string Evaluator::scriptText(Datum const& file) {
  std::string const path = pathOf(file);
  std::size_t const size = sizeOf(path);
  if (size > state_->limits.sourceBytes) raise(errors::kValueTooLarge, "The script is too large.");
  auto const [bytes, error] = files().read(path, 0, size);
  require(error, path);
  constexpr std::string_view kCompiled = "FasdUAS";
  constexpr std::int64_t kUnreadable = -1702;
  if (bytes.starts_with(kCompiled)) raise(kUnreadable, errorText(kUnreadable), FileUrl{path});
  return bytes;
}

bool Evaluator::isFileCommand(tree::Command const& node) {
  if (node.eventClass == "rdwr"_code) return true;
  return (node.eventClass == "syso"_code && node.eventId == "nfo4"_code) ||
         (node.eventClass == "ears"_code && node.eventId == "lfdr"_code);
}

Datum Evaluator::fileCommand(tree::Command const& node) {
  if (node.eventId == "open"_code) return openForAccess(node);
  if (node.eventId == "read"_code) return readFile(node);
  if (node.eventId == "nfo4"_code) return informationAbout(node);
  if (node.eventId == "lfdr"_code) return folderNames(node);
  if (node.eventId == "geof"_code) {
    std::optional<std::int64_t> number;
    auto const size = sizeOf(fileOf(directOf(node), number).path);
    constexpr std::size_t kLargestInteger = 536870911;
    return size > kLargestInteger ? Datum(static_cast<double>(size)) : Datum(static_cast<std::int64_t>(size));
  }
  if (node.eventId == "clos"_code) closeAccess(node);
  if (node.eventId == "writ"_code) writeFile(node);
  if (node.eventId == "seof"_code) setFileSize(node);
  return {};
}

}  // namespace morla::applescript
