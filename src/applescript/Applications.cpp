#include "applescript/Applications.h"

#include <utility>

namespace morla::applescript {

std::shared_ptr<TargetApplication> Applications::named(ApplicationReference const& reference) {
  for (auto const& entry : entries_) {
    if (entry->reference == reference) return entry;
  }
  entries_.push_back(std::make_shared<TargetApplication>());
  entries_.back()->reference = reference;
  return entries_.back();
}

bool Applications::locate(TargetApplication& application) {
  if (application.information) return true;
  application.information = host_->locate(application.reference);
  if (!application.information) return false;
  if (std::shared_ptr<Dictionary const> dictionary = host_->dictionary(*application.information)) {
    application.terms = std::make_unique<Terminology const>(std::move(dictionary));
  }
  return true;
}

std::optional<std::string> Applications::enumeratorName(Code code) const {
  for (auto const& entry : entries_) {
    if (entry->terms == nullptr) continue;
    if (std::optional<std::string> name = entry->terms->enumeratorName(code)) return name;
  }
  return standardTerms().enumeratorName(code);
}

std::optional<std::string> Applications::className(Code code) const {
  for (auto const& entry : entries_) {
    if (entry->terms == nullptr) continue;
    if (std::optional<std::string> name = entry->terms->className(code)) return name;
  }
  return std::nullopt;
}

std::optional<std::string> Applications::propertyName(Code code) const {
  for (auto const& entry : entries_) {
    if (entry->terms == nullptr) continue;
    if (std::optional<std::string> name = entry->terms->propertyName(code)) return name;
  }
  return std::nullopt;
}

}  // namespace morla::applescript
