#include "captureone/pictures/DocumentFolders.h"

#include <filesystem>
#include <system_error>

namespace morla::captureone {

DocumentFolders::DocumentFolders(Model& model) : model_(model) {
  changes_ = model_.onChange([this] { makeMissing(); });
  makeMissing();
}

void DocumentFolders::makeMissing() {
  for (auto const& document : model_.documents().all()) {
    if (!seen_.insert(document.id).second) continue;
    for (auto const& folder :
         {posixFolder(answerOf(document.captures)), document.output, document.selects, document.trash}) {
      std::error_code ignored;
      if (!folder.empty()) std::filesystem::create_directories(folder, ignored);
    }
  }
}

}  // namespace morla::captureone
