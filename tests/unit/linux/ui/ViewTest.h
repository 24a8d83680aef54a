#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <cmath>

#include "platform/linux/ui/QtMainLoop.h"
#include "platform/linux/ui/views/ContentView.h"
#include "unit/linux/ui/LoopRunner.h"

namespace morla::linux {

/// As it would stand on a screen of that resolution.
[[nodiscard]] inline QImage imageOf(QWidget& widget, double scale = 1) {
  QImage image(static_cast<int>(std::lround(widget.width() * scale)),
               static_cast<int>(std::lround(widget.height() * scale)), QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(scale);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  widget.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
  return image;
}

/// Tests of trees on widgets, which need no display.
class ViewTest : public testing::Test {
 protected:
  /// Hidden widgets would hear of their sizes later.
  void SetUp() override { view_.show(); }

  void show(view::Node const& tree, QSize size) {
    view_.resize(size);
    view_.setTree(tree);
  }
  void show(view::Node const& tree) {
    view_.setTree(tree);
    auto const fitting = view_.fittingSize();
    view_.resize(static_cast<int>(fitting.width), static_cast<int>(fitting.height));
  }

  /// Runs what is posted, and what that posts, and so on for a few turns.
  void settle() {
    for (int turn = 0; turn < 4; ++turn) {
      bool isDone = false;
      loop_.post([&] { isDone = true; });
      ASSERT_TRUE(runUntil([&] { return isDone; }));
    }
  }

  /// The widgets of a kind that can be seen, in the order of the tree.
  template <typename Widget>
  [[nodiscard]] std::vector<Widget*> all() const {
    std::vector<Widget*> found;
    for (auto* const widget : view_.findChildren<QWidget*>()) {
      auto* const one = dynamic_cast<Widget*>(widget);
      if (one != nullptr && one->isVisibleTo(&view_)) found.push_back(one);
    }
    return found;
  }
  template <typename Widget>
  [[nodiscard]] Widget& the() const {
    auto const found = all<Widget>();
    EXPECT_EQ(found.size(), 1U);
    return *found.at(0);
  }

  QtMainLoop loop_;
  ContentView view_{loop_};
};

}  // namespace morla::linux
