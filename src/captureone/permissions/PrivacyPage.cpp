#include "captureone/permissions/PrivacyPage.h"

#include <algorithm>
#include <tuple>

namespace morla::captureone {
namespace {

constexpr char kMorla[] = "app.morla.MORLA";
constexpr char kCaptureOne[] = "com.captureone.captureone16";

std::string nameOf(std::string const& identifier) {
  if (identifier == kMorla) return "MORLA";
  if (identifier == kCaptureOne) return "Capture One";
  return identifier;
}

PrivacyRow rowOf(privacy::PermissionQuestion const& question, privacy::Permission permission) {
  return {question, nameOf(question.client), nameOf(question.target), permission};
}

}  // namespace

std::string titleOf(PrivacyPage page) {
  switch (page) {
    case PrivacyPage::automation:
      return "Automatisation";
    case PrivacyPage::screenRecording:
      return "Enregistrement de l’écran";
    case PrivacyPage::accessibility:
      return "Accessibilité";
  }
  return {};
}

std::string explanationOf(PrivacyPage page) {
  switch (page) {
    case PrivacyPage::automation:
      return "Quelles applications peuvent en contrôler d’autres.";
    case PrivacyPage::screenRecording:
      return "Quelles applications peuvent enregistrer le contenu de l’écran.";
    case PrivacyPage::accessibility:
      return "Quelles applications peuvent suivre le clavier et agir à votre place.";
  }
  return {};
}

PrivacyPage pageAt(std::string_view address) {
  auto const anchor = address.substr(std::min(address.find('?'), address.size()));
  if (anchor == "?Privacy_ScreenCapture") return PrivacyPage::screenRecording;
  if (anchor == "?Privacy_Accessibility") return PrivacyPage::accessibility;
  return PrivacyPage::automation;
}

std::vector<PrivacyRow> rowsOf(PrivacyPage page, std::vector<privacy::PermissionStore::Decision> const& decisions) {
  bool const hasTarget = page == PrivacyPage::automation;
  privacy::PermissionQuestion const own{page, kMorla, hasTarget ? kCaptureOne : ""};
  std::vector<PrivacyRow> rows;
  for (auto const& [question, permission] : decisions) {
    if (question.service == page) rows.push_back(rowOf(question, permission));
  }
  if (std::ranges::find(rows, own, &PrivacyRow::question) == rows.end()) {
    rows.push_back(rowOf(own, privacy::Permission::undecided));
  }
  std::ranges::sort(rows, {}, [](PrivacyRow const& row) {
    auto const& [service, client, target] = row.question;
    return std::tuple(client != kMorla, client, target != kCaptureOne, target);
  });
  return rows;
}

}  // namespace morla::captureone
