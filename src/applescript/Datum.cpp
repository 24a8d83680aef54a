#include "applescript/Datum.h"

namespace morla::applescript {

static thread_local std::size_t liveTextBytes = 0;

Text::Buffer::Buffer(std::string text) : text_(std::move(text)) {
  liveTextBytes += sizeof(Buffer) + text_.size();
}

Text::Buffer::~Buffer() {
  liveTextBytes -= sizeof(Buffer) + text_.size();
}

void Text::Buffer::append(std::string_view more) {
  text_.append(more);
  liveTextBytes += more.size();
}

std::size_t Text::liveBytes() {
  return liveTextBytes;
}

Text Text::appended(std::string_view more) const {
  Text result(*this);
  std::string_view const whole = buffer_->view();
  if (length_ != whole.size()) result.buffer_ = std::make_shared<Buffer>(string());
  // `more` may be a part of the very buffer that is about to grow.
  bool const isOwnPart = more.data() >= whole.data() && more.data() < whole.data() + whole.size();
  if (isOwnPart) {
    result.buffer_->append(std::string(more));
  } else {
    result.buffer_->append(more);
  }
  result.length_ = result.buffer_->view().size();
  return result;
}

Aggregate::Aggregate(Heap& heap) : heap_(&heap), next_(heap.first_) {
  if (next_ != nullptr) next_->previous_ = this;
  heap.first_ = this;
  account(sizeof(ListObject));
}

void Aggregate::account(std::size_t bytes) {
  bytes_ += bytes;
  heap_->liveBytes_ += bytes;
}

Aggregate::~Aggregate() {
  if (previous_ != nullptr) previous_->next_ = next_;
  if (next_ != nullptr) next_->previous_ = previous_;
  if (heap_->first_ == this) heap_->first_ = next_;
  heap_->liveBytes_ -= bytes_;
}

ListObject::ListObject(Heap& heap, std::vector<Datum> contents) : Aggregate(heap), items(std::move(contents)) {
  account(items.size() * sizeof(Datum));
}

ListObject::~ListObject() {
  heap().bury(*this);
}

void ListObject::surrender(std::vector<Datum>& out) {
  for (Datum& item : items) out.push_back(std::move(item));
  items.clear();
}

RecordObject::RecordObject(Heap& heap, Fields contents) : Aggregate(heap), fields(std::move(contents)) {
  account(fields.size() * sizeof(Fields::value_type));
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
