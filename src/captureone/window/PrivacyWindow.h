#pragma once

#include <QWidget>
#include <vector>

#include "captureone/permissions/PrivacyPage.h"
#include "privacy/PermissionStore.h"

class QComboBox;
class QLabel;
class QListWidget;
class QVBoxLayout;

namespace morla::captureone {

/// The privacy settings: a page for each service, with the decision about each application. Shows what the store says
/// and writes what is chosen at once.
class PrivacyWindow final : public QWidget {
 public:
  explicit PrivacyWindow(privacy::PermissionStore store);

  void show(PrivacyPage page);
  /// Before the other windows, with the keyboard.
  void present();
  /// After the store has changed.
  void refresh();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  [[nodiscard]] QWidget* makePages();
  [[nodiscard]] QWidget* makePage();
  void makeRows(std::vector<PrivacyRow> const& rows);
  [[nodiscard]] QWidget* makeRow(PrivacyRow const& row);
  void decide(privacy::PermissionQuestion const& question, privacy::Permission permission);

  privacy::PermissionStore store_;
  PrivacyPage page_ = PrivacyPage::automation;
  std::vector<PrivacyRow> rows_;
  std::vector<QComboBox*> choices_;  ///< one for each row
  QListWidget* pages_ = nullptr;
  QLabel* title_ = nullptr;
  QLabel* explanation_ = nullptr;
  QLabel* problem_ = nullptr;
  QWidget* list_ = nullptr;
  QVBoxLayout* listPlace_ = nullptr;
};

}  // namespace morla::captureone
