#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "applescript/AppleEvent.h"

namespace morla::captureone {

/// One object of the simulated application, by its class and an id that stays its own while the object moves. The
/// application has no id.
struct ObjectReference {
  applescript::Code type;
  std::string id;
  std::string document;  ///< id of the document that it belongs to; empty for the application and its documents

  friend bool operator==(ObjectReference const&, ObjectReference const&) = default;
};

/// What a property holds: a value, or another object of the application.
using Content = std::variant<applescript::Value, ObjectReference>;
using Reading = std::variant<Content, applescript::EventError>;

/// Why something could not be done; nothing when it was.
using Failure = std::optional<applescript::EventError>;

/// One class of the dictionary as the model has it. Access and types are the dictionary's business and have been seen
/// to before anything is asked here.
class ServedClass {
 public:
  virtual ~ServedClass() = default;

  [[nodiscard]] virtual applescript::Code code() const = 0;
  [[nodiscard]] virtual bool exists(ObjectReference const& object) const = 0;
  /// How the application names the object to a script.
  [[nodiscard]] virtual applescript::Value specifier(ObjectReference const& object) const = 0;

  [[nodiscard]] virtual Reading read(ObjectReference const& object, applescript::Code property) const = 0;
  [[nodiscard]] virtual Failure write(ObjectReference const& object, applescript::Code property,
                                      Content const& content) = 0;
  /// In their order; nothing when the dictionary has such elements but the model has not.
  [[nodiscard]] virtual std::optional<std::vector<ObjectReference>> elements(ObjectReference const& object,
                                                                             applescript::Code wanted) const = 0;
  /// The one of `elements` with that id, exactly; nothing when there is none. Classes with many elements answer this
  /// without making them all.
  [[nodiscard]] virtual std::optional<ObjectReference> elementWithId(ObjectReference const& object,
                                                                     applescript::Code wanted,
                                                                     std::string const& id) const;

  /// A new object of class `wanted` in `object`. Only what has been asked for by name is made.
  [[nodiscard]] virtual std::variant<ObjectReference, applescript::EventError> make(ObjectReference const& object,
                                                                                    applescript::Code wanted,
                                                                                    std::string name);
  [[nodiscard]] virtual Failure remove(ObjectReference const& object);
};

/// Errors in the words of the system that the application comes from. `offender` is what the script asked for.
namespace failures {
[[nodiscard]] applescript::EventError cannotGet(applescript::Value offender);
[[nodiscard]] applescript::EventError invalidIndex(applescript::Value offender);
[[nodiscard]] applescript::EventError notModifiable(applescript::Value offender);
[[nodiscard]] applescript::EventError wrongType(applescript::Value offender, std::string const& type);
[[nodiscard]] applescript::EventError cannotSet(applescript::Value offender);
[[nodiscard]] applescript::EventError cannotMake(applescript::Value offender);
[[nodiscard]] applescript::EventError notSimulated(std::string const& what, applescript::Value offender = {});
}  // namespace failures

}  // namespace morla::captureone
