#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "applescript/Value.h"

namespace morla::applescript {

/// The terms of one scriptable application, each with its code. Renaming a term in the table is all it takes to run a
/// script with the new word.
///
/// The table is UTF-8 text, one term a line, columns separated by one tab; empty lines and lines that begin with `#`
/// are skipped. The columns:
///
///     class        NAME CODE [PLURAL [INHERITED-CLASS]]          plural: NAME + "s" unless given
///     property     CLASS NAME CODE TYPE ACCESS                   ACCESS: r, w or rw
///     element      CLASS ELEMENT-CLASS
///     command      NAME EVENT-CODE [DIRECT-TYPE [RESULT-TYPE]]   EVENT-CODE: eight characters, class then id
///     parameter    COMMAND NAME CODE TYPE [optional]
///     enumerator   ENUMERATION NAME CODE
///
/// NAMEs may have several words, separated by single blanks, and keep their case ("JPEG quality"); they are matched
/// without regard to case. CLASS `application` is the root. TYPE names a class, an enumeration or a basic type (text,
/// integer, number, boolean, file, record, list, specifier, any).
struct Dictionary {
  struct Class {
    std::string name;
    Code code;
    std::string plural;
    std::string inherits;
  };
  struct Property {
    std::string ownerClass;
    std::string name;
    Code code;
    std::string type;
    bool isReadable = true;
    bool isWritable = false;
  };
  struct Element {
    std::string ownerClass;
    std::string elementClass;
  };
  struct Parameter {
    std::string command;
    std::string name;
    Code code;
    std::string type;
    bool isOptional = false;
  };
  struct Command {
    std::string name;
    Code eventClass;
    Code eventId;
    std::string directType;
    std::string resultType;
  };
  struct EnumeratorTerm {
    std::string enumeration;
    std::string name;
    Code code;
  };

  std::vector<Class> classes;
  std::vector<Property> properties;
  std::vector<Element> elements;
  std::vector<Command> commands;
  std::vector<Parameter> parameters;
  std::vector<EnumeratorTerm> enumerators;
};

struct DictionaryOrProblem {
  std::optional<Dictionary> dictionary;
  std::string problem;  ///< "line 12: …" when there is no dictionary
};

/// Never fails halfway: the whole table is right, or nothing is returned and the first wrong line is named.
[[nodiscard]] DictionaryOrProblem parseDictionary(std::string_view table);

}  // namespace morla::applescript
