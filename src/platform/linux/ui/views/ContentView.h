#pragma once

#include <QWidget>
#include <cstddef>
#include <functional>

#include "base/Geometry.h"
#include "platform/linux/ui/views/NodeWidget.h"

namespace morla::linux {

/// Shows one tree after the other in its whole place, with native widgets that stay where a node stays. Main thread.
class ContentView : public QWidget {
 public:
  explicit ContentView(MainLoop& loop, QWidget* parent = nullptr);

  void setTree(view::Node const& tree);
  /// After another size or tree has changed how the panel looks.
  void onDidArrange(std::function<void()> observer) { didArrange_ = std::move(observer); }

  /// What the tree needs to be shown in full.
  [[nodiscard]] Size fittingSize() const;
  /// How many widgets have been made, changed or removed so far.
  [[nodiscard]] std::size_t changes() const { return context_.changes; }
  /// True while an action of the tree runs: the widgets must not be destroyed then.
  [[nodiscard]] bool isActing() const { return context_.actionsUnderWay > 0; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void arrange();

  ViewContext context_;
  NodeWidget* root_ = nullptr;
  std::function<void()> didArrange_;
};

}  // namespace morla::linux
