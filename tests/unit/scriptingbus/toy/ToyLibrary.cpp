#include "toy/ToyLibrary.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>
#include <utility>

namespace morla::scriptingbus::testing {

using namespace applescript;

static EventError cannotGet(Value const& offender) {
  return {errors::kNoSuchObject, "Can’t get it.", offender};
}

static Specifier const* specifierIn(Value const& value) {
  auto const* const pointer = value.as<SpecifierPointer>();
  return pointer == nullptr ? nullptr : pointer->get();
}

static Value const* parameter(AppleEvent const& event, Code code) {
  auto const found = std::ranges::find(event.parameters, code, &std::pair<Code, Value>::first);
  return found == event.parameters.end() ? nullptr : &found->second;
}

std::string ToyLibrary::dictionary() {
  std::ifstream file(MORLA_TOY_DICTIONARY, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

EventReply ToyLibrary::handle(AppleEvent const& event) {
  if (event.eventClass == "core"_code) {
    if (event.eventId == "getd"_code) return get(event.directObject);
    if (event.eventId == "setd"_code) return set(event);
    if (event.eventId == "cnte"_code) return Value(static_cast<std::int64_t>(books_.size()));
  }
  if (event.eventClass == "Toy "_code) {
    if (event.eventId == "Lend"_code) return lend(event);
    if (event.eventId == "echo"_code) return event.directObject;
  }
  return EventError{errors::kEventNotHandled, "Toy Library doesn’t understand that.", {}};
}

EventReply ToyLibrary::get(Value const& direct) const {
  if (auto const place = placeOf(direct)) {
    if (!place->book) {
      if (place->property == "pnam"_code) return Value("Toy Library");
      if (place->property == "Hour"_code) return Value(openingHours_);
      return cannotGet(direct);
    }
    Book const& book = books_[*place->book];
    if (place->property == "pnam"_code) return Value(book.name);
    if (place->property == "Page"_code) return Value(book.pageCount);
    if (place->property == "Mark"_code) return Value(book.shelfMark);
    if (place->property == "Bind"_code) return Value(Enumerator{book.binding});
    return cannotGet(direct);
  }
  auto const* const specifier = specifierIn(direct);
  if (specifier != nullptr && specifier->wanted == "Book"_code && specifier->form == KeyForm::every) {
    List all;
    for (Book const& book : books_) all.push_back(bookSpecifier(book));
    return Value(std::move(all));
  }
  if (auto const index = find(direct)) return bookSpecifier(books_[*index]);
  return cannotGet(direct);
}

EventReply ToyLibrary::set(AppleEvent const& event) {
  auto const place = placeOf(event.directObject);
  auto const* const data = parameter(event, "data"_code);
  if (!place) return cannotGet(event.directObject);
  auto const* const text = data == nullptr ? nullptr : data->as<std::string>();
  auto const* const enumerator = data == nullptr ? nullptr : data->as<Enumerator>();
  if (!place->book && place->property == "Hour"_code && text != nullptr) {
    openingHours_ = *text;
  } else if (place->book && place->property == "Mark"_code && text != nullptr) {
    books_[*place->book].shelfMark = *text;
  } else if (place->book && place->property == "Bind"_code && enumerator != nullptr) {
    books_[*place->book].binding = enumerator->code;
  } else {
    return EventError{errors::kNotModifiable, "Can’t set it.", event.directObject};
  }
  return Value();
}

EventReply ToyLibrary::lend(AppleEvent const& event) const {
  auto const book = find(event.directObject);
  if (!book) return cannotGet(event.directObject);
  auto const* const to = parameter(event, "Toto"_code);
  if (to == nullptr || to->as<std::string>() == nullptr) return EventError{errors::kParameterMissing, "To whom?", {}};
  return Value(books_[*book].name + " goes to " + *to->as<std::string>());
}

std::optional<std::size_t> ToyLibrary::find(Value const& reference) const {
  auto const* const specifier = specifierIn(reference);
  if (specifier == nullptr || specifier->wanted != "Book"_code || !specifier->container.isNull()) return std::nullopt;
  if (auto const* const name = specifier->selector.as<std::string>(); specifier->form == KeyForm::name && name) {
    auto const found = std::ranges::find(books_, *name, &Book::name);
    if (found == books_.end()) return std::nullopt;
    return static_cast<std::size_t>(found - books_.begin());
  }
  auto const* const index = specifier->selector.as<std::int64_t>();
  if (specifier->form != KeyForm::index || index == nullptr) return std::nullopt;
  auto const size = static_cast<std::int64_t>(books_.size());
  auto const position = *index < 0 ? size + *index : *index - 1;
  if (position < 0 || position >= size) return std::nullopt;
  return static_cast<std::size_t>(position);
}

std::optional<ToyLibrary::Place> ToyLibrary::placeOf(Value const& reference) const {
  auto const* const specifier = specifierIn(reference);
  if (specifier == nullptr || specifier->form != KeyForm::property) return std::nullopt;
  auto const* const property = specifier->selector.as<TypeCode>();
  if (property == nullptr) return std::nullopt;
  if (specifier->container.isNull()) return Place{std::nullopt, property->code};
  auto const book = find(specifier->container);
  if (!book) return std::nullopt;
  return Place{book, property->code};
}

Value ToyLibrary::bookSpecifier(Book const& book) {
  return SpecifierPointer(std::make_shared<Specifier>(Specifier{"Book"_code, KeyForm::name, book.name, {}}));
}

}  // namespace morla::scriptingbus::testing
