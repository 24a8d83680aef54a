#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "applescript/Datum.h"
#include "applescript/SyntaxTree.h"

namespace morla::applescript {

/// The variables of one call of a handler.
class Activation final : public Aggregate {
 public:
  enum class Scope : std::uint8_t { open, local, global };
  struct Slot {
    Datum value;  ///< null: none
    Scope scope = Scope::open;
  };

  Activation(Heap& heap, Routine const& theRoutine, ScriptReference theHome, ScriptReference receiver);
  ~Activation() override;
  void surrender(std::vector<Datum>& out) override;

  /// The slot of a name that the handler mentions; null of another one.
  [[nodiscard]] Slot* find(std::string_view name);

  Routine const* routine;
  ScriptReference home;  ///< the script object that the handler is written in
  ScriptReference me;    ///< the one that it was called for: `home`, or one that has it as its parent
  std::vector<Slot> slots;
};

/// A script object: a whole script, or what `script … end script` makes.
class ScriptInstance final : public Aggregate {
 public:
  /// `theOuter` is null of a whole script; `theCreator` is null of a script object that stands in no handler, or that
  /// needs none of its variables.
  ScriptInstance(Heap& heap, Script const& theCode, ScriptReference theOuter, ActivationReference theCreator);
  ~ScriptInstance() override;
  void surrender(std::vector<Datum>& out) override;

  /// A property, or a variable at the top of a script whose run handler is implied; null when there is none.
  [[nodiscard]] Datum* find(RecordKey const& key);
  [[nodiscard]] Datum* find(std::string_view name);
  void put(RecordKey const& key, Datum value);

  Script const* code;
  ScriptReference outer;
  ActivationReference creator;
  ActivationReference runVariables;  ///< of the implied run handler; null before it runs
  Datum parent;                      ///< null when the script names none
  std::map<std::string, Datum, std::less<>> named;
  std::map<Code, Datum> coded;
};

}  // namespace morla::applescript
