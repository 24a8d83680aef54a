#include "captureone/model/Documents.h"

#include <algorithm>
#include <utility>

namespace morla::captureone {
namespace {

/// What a document of its kind begins with: an output folder is a session's.
std::string outputOf(Document const& document) {
  return document.kind == DocumentKind::session ? document.folder + "/Output" : std::string();
}

}  // namespace

Documents::Documents(Changes& changes, Surroundings surroundings)
    : changes_(changes), surroundings_(std::move(surroundings)) {
  append(DocumentKind::session);
}

Document const* Documents::find(std::string_view id) const {
  auto const found =
      std::find_if(documents_.begin(), documents_.end(), [id](auto const& each) { return each.id == id; });
  return found == documents_.end() ? nullptr : &*found;
}

Document const* Documents::current() const {
  return documents_.empty() ? nullptr : &documents_[current_];
}

DocumentKind Documents::kind() const {
  return documents_.empty() ? kind_ : documents_[current_].kind;
}

void Documents::append(DocumentKind kind) {
  auto const number = std::to_string(++named_);
  auto name = (kind == DocumentKind::session ? "Séance " : "Catalogue ") + number;
  auto const folder = surroundings_.folder + "/" + name;
  Document document{.id = "document-" + std::to_string(++opened_),
                    .name = std::move(name),
                    .kind = kind,
                    .folder = folder,
                    .captures = {folder + "/Capture", CaptureForm::file},
                    .output = {},
                    .selects = folder + "/Selects",
                    .trash = folder + "/Trash",
                    .gallery = Gallery(surroundings_.pictures, folder + "/Capture"),
                    .recipes = {}};
  document.output = outputOf(document);
  documents_.push_back(std::move(document));
  current_ = documents_.size() - 1;
}

bool Documents::change(std::string_view id, std::function<bool(Document&)> const& change) {
  auto const found =
      std::find_if(documents_.begin(), documents_.end(), [id](auto const& each) { return each.id == id; });
  if (found == documents_.end() || !change(*found)) return false;
  changes_.announce();
  return true;
}

bool Documents::open(DocumentKind kind) {
  if (documents_.size() >= kMaximum) return false;
  append(kind);
  kind_ = kind;
  changes_.announce();
  return true;
}

bool Documents::close(std::string_view id) {
  auto const* found = find(id);
  if (found == nullptr) return false;
  auto const index = static_cast<std::size_t>(found - documents_.data());
  kind_ = kind();
  documents_.erase(documents_.begin() + static_cast<std::ptrdiff_t>(index));
  if (current_ > index || (current_ == documents_.size() && current_ > 0)) --current_;
  changes_.announce();
  return true;
}

bool Documents::makeCurrent(std::string_view id) {
  auto const* found = find(id);
  if (found == nullptr) return false;
  auto const index = static_cast<std::size_t>(found - documents_.data());
  if (index == current_) return true;
  current_ = index;
  changes_.announce();
  return true;
}

void Documents::setKind(DocumentKind kind) {
  if (this->kind() == kind) return;
  kind_ = kind;
  if (!documents_.empty()) {
    documents_[current_].kind = kind;
    documents_[current_].output = outputOf(documents_[current_]);
  }
  changes_.announce();
}

bool Documents::setCount(std::size_t count) {
  if (count > kMaximum) return false;
  if (count == documents_.size()) return true;
  kind_ = kind();
  while (documents_.size() < count) append(kind_);
  if (documents_.size() > count) {
    documents_.erase(documents_.begin() + static_cast<std::ptrdiff_t>(count), documents_.end());
    if (current_ >= count) current_ = count == 0 ? 0 : count - 1;
  }
  changes_.announce();
  return true;
}

void Documents::reset() {
  documents_.clear();
  named_ = 0;
  kind_ = DocumentKind::session;
  append(kind_);
  changes_.announce();
}

}  // namespace morla::captureone
