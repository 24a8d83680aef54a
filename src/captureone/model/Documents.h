#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "captureone/model/CaptureFolder.h"
#include "captureone/model/Changes.h"
#include "captureone/model/Gallery.h"
#include "captureone/model/Recipe.h"

namespace morla::captureone {

enum class DocumentKind { session, catalog };

struct Document {
  std::string id;  ///< never given twice in one run
  std::string name;
  DocumentKind kind = DocumentKind::session;
  std::string folder;  ///< POSIX path
  CaptureFolder captures;
  std::string output;  ///< POSIX path; a catalog has none until it is given one
  std::string selects;
  std::string trash;
  std::int64_t captureCounter = 1;
  std::string captureNameFormat = "Image Name";
  std::string captureName = "Capture";
  bool processes = true;  ///< whether its processing queue is on
  Gallery gallery;
  RecipeBook recipes;
  std::string currentRecipe = "recipe-1";  ///< handle, which may have gone
};

/// Where documents lie and what is in them.
struct Surroundings {
  std::string folder = "/Capture One";  ///< POSIX path, under which each document has a folder of its own
  std::shared_ptr<PictureSet const> pictures = std::make_shared<PictureSet const>();
};

/// The open documents, in the order in which they were opened. One of them is current as long as there is one.
class Documents {
 public:
  /// More tabs than this are of no use to anybody.
  static constexpr std::size_t kMaximum = 12;

  Documents(Changes& changes, Surroundings surroundings);

  [[nodiscard]] std::vector<Document> const& all() const { return documents_; }
  [[nodiscard]] Document const* find(std::string_view id) const;
  /// Null when no document is open.
  [[nodiscard]] Document const* current() const;
  /// What the current document is and, where none is open, what the next one will be.
  [[nodiscard]] DocumentKind kind() const;

  /// The new document becomes the current one. False: there are as many as can be.
  bool open(DocumentKind kind);
  /// The neighbour of a closed current document becomes current. False: no such document.
  bool close(std::string_view id);
  bool makeCurrent(std::string_view id);
  /// Changes the current document, and what is opened next.
  void setKind(DocumentKind kind);
  /// Changes what is in a document; `change` answers whether it did, and then that is told. False: no such document, or
  /// nothing changed. A document's id and kind are not to be changed here.
  bool change(std::string_view id, std::function<bool(Document&)> const& change);
  /// Opens documents of the present kind, or closes the last ones. False when `count` is more than can be.
  bool setCount(std::size_t count);
  void reset();

 private:
  void append(DocumentKind kind);

  Changes& changes_;
  Surroundings surroundings_;
  std::vector<Document> documents_;
  std::size_t current_ = 0;
  std::size_t opened_ = 0;  ///< in this run: ids
  std::size_t named_ = 0;   ///< since the last reset: names
  DocumentKind kind_ = DocumentKind::session;
};

}  // namespace morla::captureone
