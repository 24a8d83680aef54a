#include "applescript/Datum.h"

namespace morla::applescript {

Text Text::appended(std::string_view more) const {
  Text result(*this);
  if (length_ != buffer_->size()) result.buffer_ = std::make_shared<std::string>(view());
  // `more` may be a part of the very buffer that is about to grow.
  bool const isOwnPart = more.data() >= result.buffer_->data() && more.data() < result.buffer_->data() + length_;
  if (isOwnPart) {
    result.buffer_->append(std::string(more));
  } else {
    result.buffer_->append(more);
  }
  result.length_ = result.buffer_->size();
  return result;
}

Aggregate::Aggregate(Heap& heap) : heap_(&heap), next_(heap.first_) {
  if (next_ != nullptr) next_->previous_ = this;
  heap.first_ = this;
}

Aggregate::~Aggregate() {
  if (previous_ != nullptr) previous_->next_ = next_;
  if (next_ != nullptr) next_->previous_ = previous_;
  if (heap_->first_ == this) heap_->first_ = next_;
}

ListObject::~ListObject() {
  heap().bury(*this);
}

void ListObject::surrender(std::vector<Datum>& out) {
  for (Datum& item : items) out.push_back(std::move(item));
  items.clear();
}

RecordObject::~RecordObject() {
  heap().bury(*this);
}

void RecordObject::surrender(std::vector<Datum>& out) {
  for (auto& field : fields) out.push_back(std::move(field.second));
  fields.clear();
}

Datum* RecordObject::find(RecordKey const& key) {
  for (auto& [name, value] : fields) {
    if (name == key) return &value;
  }
  return nullptr;
}

void Heap::bury(Aggregate& aggregate) {
  aggregate.surrender(graveyard_);
  if (isBurying_) return;
  isBurying_ = true;
  while (!graveyard_.empty()) {
    // The last one may put more into the graveyard when it ends, which must not be inside the vector then.
    Datum const last = std::move(graveyard_.back());
    graveyard_.pop_back();
  }
  isBurying_ = false;
}

Heap::~Heap() {
  // What is still there hangs together in a circle.
  while (first_ != nullptr) {
    Aggregate* const aggregate = first_;
    // Keeps the loop going should the aggregate survive its own contents: it is never visited twice.
    first_ = aggregate->next_;
    if (first_ != nullptr) first_->previous_ = nullptr;
    aggregate->next_ = nullptr;
    aggregate->previous_ = nullptr;
    bury(*aggregate);
  }
}

}  // namespace morla::applescript
