#pragma once

#include <set>
#include <string>

#include "captureone/model/Model.h"

namespace morla::captureone {

/// Makes the folders of every document that is opened, as the application does: what a script is told of exists. What
/// cannot be made is missing, and whoever needs it says so. Main thread.
class DocumentFolders {
 public:
  /// The model must outlive this object.
  explicit DocumentFolders(Model& model);

 private:
  void makeMissing();

  Model& model_;
  std::set<std::string> seen_;  ///< ids of documents
  Subscription changes_;
};

}  // namespace morla::captureone
