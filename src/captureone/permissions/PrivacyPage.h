#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "privacy/PermissionStore.h"

namespace morla::captureone {

/// A page of the privacy settings: one service, whose decisions it shows.
using PrivacyPage = privacy::PermissionQuestion::Service;

/// In the order in which they are shown.
inline constexpr PrivacyPage kPrivacyPages[] = {PrivacyPage::automation, PrivacyPage::screenRecording,
                                                PrivacyPage::accessibility};

[[nodiscard]] std::string titleOf(PrivacyPage page);
/// What a person decides there, in a sentence.
[[nodiscard]] std::string explanationOf(PrivacyPage page);

/// The page that "x-apple.systempreferences:com.apple.preference.security?Privacy_…" leads to; the first for any other
/// address.
[[nodiscard]] PrivacyPage pageAt(std::string_view address);

/// One decision, as it is shown.
struct PrivacyRow {
  privacy::PermissionQuestion question;
  std::string client;  ///< the name, or the identifier of an application without a known name
  std::string target;  ///< automation only
  privacy::Permission permission = privacy::Permission::undecided;
  friend bool operator==(PrivacyRow const&, PrivacyRow const&) = default;
};

/// MORLA first, whether the store knows it or not; then the others by their identifiers.
[[nodiscard]] std::vector<PrivacyRow> rowsOf(PrivacyPage page,
                                             std::vector<privacy::PermissionStore::Decision> const& decisions);

}  // namespace morla::captureone
