#pragma once

#include <QString>
#include <cstddef>

#include "captureone/model/Documents.h"
#include "captureone/model/ProcessingQueue.h"

/// What the window says about pictures, recipes and files, as a person would.
namespace morla::captureone::texts {

struct SelectionCount {
  std::size_t shown = 0;      ///< pictures in the collection
  std::size_t selected = 0;   ///< of those
  std::size_t elsewhere = 0;  ///< selected pictures that the collection does not hold
};
[[nodiscard]] QString selection(SelectionCount const& count);

/// A variant's name, with a number where its picture has more than one.
[[nodiscard]] QString variant(Gallery const& gallery, Variant const& variant);

[[nodiscard]] QString format(Recipe const& recipe);
/// Which folder its files go to.
[[nodiscard]] QString destination(Recipe const& recipe);

[[nodiscard]] QString progress(ProcessingQueue const& queue);

/// The capture folder as it is answered to scripts.
[[nodiscard]] QString captureFolder(Document const& document);

}  // namespace morla::captureone::texts
