#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>
#include <variant>

#include "applescript/AppleEvent.h"

/// What the tests of the object model ask of its replies.
namespace morla::captureone {

/// A failure of the test where the reply is an error.
inline applescript::Value value(applescript::EventReply reply) {
  auto const* error = std::get_if<applescript::EventError>(&reply);
  if (error != nullptr) ADD_FAILURE() << error->number << " " << error->message;
  return error != nullptr ? applescript::Value() : std::get<applescript::Value>(std::move(reply));
}

/// The number of the error; 0 where there is none.
inline std::int64_t error(applescript::EventReply reply) {
  auto const* failure = std::get_if<applescript::EventError>(&reply);
  return failure == nullptr ? 0 : failure->number;
}

}  // namespace morla::captureone
