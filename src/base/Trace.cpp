#include "base/Trace.h"

#include "base/MainThread.h"

namespace morla {

Trace* Trace::active_ = nullptr;

Trace::Trace(WriteLine write, Clock sinceStart) : write_(std::move(write)), sinceStart_(std::move(sinceStart)) {
  assertIsMainThread();
  active_ = this;
}

Trace::~Trace() {
  if (active_ == this) active_ = nullptr;
}

void Trace::line(std::map<std::string, Json> const& fields) {
  assertIsMainThread();
  std::string text = "{\"t\":" + Json(std::int64_t{sinceStart_().count()}).text();
  for (auto const& [key, value] : fields) text += ',' + Json(key).text() + ':' + value.text();
  write_(text + '}');
}

void Trace::published(std::string_view name, Json const& value) {
  line({{"published", Json(name)}, {"value", value}});
}

void Trace::ready() {
  line({{"ready", Json(true)}});
}

}  // namespace morla
