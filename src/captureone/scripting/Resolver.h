#pragma once

#include <memory>
#include <variant>
#include <vector>

#include "captureone/scripting/ServedClass.h"
#include "captureone/scripting/Terms.h"

namespace morla::captureone {

/// A property of an object: the place, not what is in it.
struct PropertyReference {
  ObjectReference owner;
  Terms::Property const* property = nullptr;  ///< never null; lives as long as the terms
};
using Item = std::variant<ObjectReference, PropertyReference>;

/// What a specifier picks out.
struct Found {
  enum class Number { one, many } number = Number::one;
  std::vector<Item> items;  ///< exactly one item unless `number` is many
};

/// Finds what specifiers mean, in the model as it is at this moment. Knows no class: the dictionary says what there can
/// be, the served classes what there is.
class Resolver {
 public:
  Resolver(Terms const& terms, std::vector<std::unique_ptr<ServedClass>> const& classes)
      : terms_(terms), classes_(classes) {}

  /// Null means the application.
  [[nodiscard]] std::variant<Found, applescript::EventError> resolve(applescript::Value const& value,
                                                                     applescript::Considerations considerations) const;

  /// The objects of class `wanted` inside `container`.
  [[nodiscard]] std::variant<std::vector<ObjectReference>, applescript::EventError> elements(
      ObjectReference const& container, applescript::Code wanted, applescript::Value const& offender) const;

  /// The object that an item is or, for a property, holds.
  [[nodiscard]] std::variant<ObjectReference, applescript::EventError> object(Item const& item,
                                                                              applescript::Value const& offender) const;

  [[nodiscard]] Reading read(PropertyReference const& reference, applescript::Value const& offender) const;

  /// Null for a class that the model does not have.
  [[nodiscard]] ServedClass* served(applescript::Code code) const;

 private:
  struct Request;
  /// `examined` is the object that a test is about; null outside of tests.
  [[nodiscard]] std::variant<Found, applescript::EventError> resolve(applescript::Value const& value,
                                                                     applescript::Considerations considerations,
                                                                     ObjectReference const* examined) const;
  [[nodiscard]] std::variant<Found, applescript::EventError> property(Request const& request,
                                                                      ObjectReference const& container) const;
  [[nodiscard]] std::variant<Found, applescript::EventError> element(Request const& request,
                                                                     ObjectReference const& container) const;
  /// The specifier's choice of these objects.
  [[nodiscard]] std::variant<Found, applescript::EventError> among(Request const& request,
                                                                   std::vector<ObjectReference> const& all) const;
  [[nodiscard]] std::variant<Found, applescript::EventError> elementWithId(Request const& request,
                                                                           ObjectReference const& container) const;
  [[nodiscard]] std::variant<Found, applescript::EventError> elementsThatPass(
      Request const& request, std::vector<ObjectReference> const& all) const;
  /// Every property of the object in one record.
  [[nodiscard]] Reading readAll(ObjectReference const& object, applescript::Value const& offender) const;
  /// What an operand of a test means.
  [[nodiscard]] Reading operand(applescript::Value const& value, Request const& request,
                                ObjectReference const& examined) const;
  [[nodiscard]] bool hasName(ObjectReference const& object, Request const& request) const;

  Terms const& terms_;
  std::vector<std::unique_ptr<ServedClass>> const& classes_;
};

}  // namespace morla::captureone
