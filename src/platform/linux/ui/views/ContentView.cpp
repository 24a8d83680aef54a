#include "platform/linux/ui/views/ContentView.h"

#include "platform/linux/ui/views/AccessibleViews.h"

namespace morla::linux {

ContentView::ContentView(MainLoop& loop, QWidget* parent) : QWidget(parent), context_{loop} {
  makeViewsAccessible();
}

void ContentView::setTree(view::Node const& tree) {
  auto const before = context_.changes;
  if (root_ != nullptr && root_->kind() != tree.content.index()) {
    root_->retire();
    root_ = nullptr;
  }
  if (root_ == nullptr) root_ = makeNodeWidget(context_, tree, this);
  root_->adopt(tree);
  if (context_.changes != before) arrange();
}

Size ContentView::fittingSize() const {
  if (root_ == nullptr) return {};
  auto const natural = root_->needs().natural;
  return {static_cast<double>(natural.width()), static_cast<double>(natural.height())};
}

void ContentView::resizeEvent(QResizeEvent*) {
  arrange();
}

void ContentView::arrange() {
  if (root_ == nullptr) return;
  root_->setGeometry(rect());
  root_->arrange();
  if (didArrange_) didArrange_();
}

}  // namespace morla::linux
