#include "captureone/scripting/ServedClass.h"

namespace morla::captureone::failures {

namespace errors = applescript::errors;
using applescript::EventError;
using applescript::Value;

EventError cannotGet(Value offender) {
  return {errors::kNoSuchObject, "Can’t get the object.", std::move(offender)};
}

EventError invalidIndex(Value offender) {
  return {errors::kInvalidIndex, "Can’t get the object. Invalid index.", std::move(offender)};
}

EventError notModifiable(Value offender) {
  return {errors::kNotModifiable, "The object can’t be modified.", std::move(offender)};
}

EventError wrongType(Value offender, std::string const& type) {
  return {errors::kCannotCoerce, "Can’t make the value into type " + type + ".", std::move(offender)};
}

EventError cannotSet(Value offender) {
  return {errors::kCannotSet, "Can’t set the object to that value.", std::move(offender)};
}

EventError cannotMake(Value offender) {
  return {errors::kCannotPutThere, "Can’t make or move that element into that container.", std::move(offender)};
}

EventError notSimulated(std::string const& what, Value offender) {
  return {errors::kHandlerFailed, "The simulator has no " + what + ".", std::move(offender)};
}

}  // namespace morla::captureone::failures
