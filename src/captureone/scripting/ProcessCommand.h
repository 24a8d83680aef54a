#pragma once

#include "captureone/model/Model.h"
#include "captureone/scripting/Resolver.h"

namespace morla::captureone {

/// `process`: queues a file for each variant and recipe and answers the identifier of the batch, or a text that begins
/// with ERROR when there is nothing to be done. Files appear later.
///
/// The direct object is a variant, a file or text that is the path of an image of the current document, or a list of
/// those. Without the parameter `recipe` all enabled recipes are meant. A document without an output folder processes
/// nothing (error -43), even with recipes that would not need it.
[[nodiscard]] applescript::EventReply process(applescript::AppleEvent const& event, Resolver const& resolver,
                                              Model& model);

}  // namespace morla::captureone
