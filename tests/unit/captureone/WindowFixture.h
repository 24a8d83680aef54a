#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QLabel>
#include <QListView>
#include <QTest>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "captureone/control/AutomationPermission.h"
#include "captureone/control/Controls.h"
#include "captureone/model/Model.h"
#include "captureone/window/MainWindow.h"
#include "captureone/window/VariantGrid.h"

namespace morla::captureone {

using Ids = std::vector<std::string>;

class RememberedPermission final : public AutomationPermission {
 public:
  [[nodiscard]] Automation read() const override { return automation_; }
  bool write(Automation decision) override {
    automation_ = decision;
    return true;
  }

 private:
  Automation automation_ = Automation::allow;
};

/// The window on a screen of memory: a person's hand on the one side, scripts on the other.
class WindowTest : public ::testing::Test {
 protected:
  WindowTest() {
    window_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window_));
    window_.settle();
  }

  template <typename Widget>
  Widget* find(QString const& name) {
    for (auto* each : window_.findChildren<Widget*>()) {
      if (each->accessibleName() == name) return each;
    }
    ADD_FAILURE() << "nothing is called " << name.toStdString();
    return nullptr;
  }
  [[nodiscard]] bool says(QString const& text) {
    for (auto const* each : window_.findChildren<QLabel*>()) {
      if (each->isVisible() && each->text() == text) return true;
    }
    return false;
  }
  static QPoint centre(QAbstractItemView* view, int row) {
    return view->visualRect(view->model()->index(row, 0)).center();
  }
  void click(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::mouseClick(grid_->viewport(), Qt::LeftButton, modifiers, centre(grid_, row));
  }
  Document const& document() { return *model_.documents().current(); }
  Ids selected() { return document().gallery.selectedIds(); }
  /// As a script or the control tool does it.
  void change(std::function<bool(Document&)> const& how) { model_.documents().change(document().id, how); }
  Ids selectedInWindow() {
    Ids ids;
    for (int row = 0; row < grid_->model()->rowCount(); ++row) {
      if (grid_->selectionModel()->isRowSelected(row)) {
        ids.push_back(grid_->model()->index(row, 0).data().toString().toStdString());
      }
    }
    return ids;
  }

  std::shared_ptr<PictureSet const> pictures_ = std::make_shared<PictureSet const>();
  Model model_{{"/S", pictures_}};
  RememberedPermission permission_;
  Controls controls_{model_, permission_};
  MainWindow window_{model_, controls_, pictures_, QStringLiteral("Capture One")};
  VariantGrid* grid_ = dynamic_cast<VariantGrid*>(find<QListView>("Images"));
};

}  // namespace morla::captureone
