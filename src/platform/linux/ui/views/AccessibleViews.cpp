#include "platform/linux/ui/views/AccessibleViews.h"

#include <QAccessibleWidget>
#include <QMenu>

#include "platform/linux/ui/views/FigureWidgets.h"
#include "platform/linux/ui/views/PickerControl.h"
#include "platform/linux/ui/views/SpinnerWidget.h"
#include "platform/linux/ui/views/TextWidget.h"

namespace morla::linux {
namespace {

class AccessibleText : public QAccessibleWidget {
 public:
  explicit AccessibleText(TextWidget* widget) : QAccessibleWidget(widget, QAccessible::StaticText) {}

  [[nodiscard]] QString text(QAccessible::Text which) const override {
    auto const own = QAccessibleWidget::text(which);
    if (which != QAccessible::Name || !own.isEmpty()) return own;
    return static_cast<TextWidget*>(widget())->spoken();
  }
};

/// A combo box by the name of what it sets, with its current value as description and its list as child.
class AccessiblePicker : public QAccessibleWidget {
 public:
  explicit AccessiblePicker(PickerControl* control) : QAccessibleWidget(control, QAccessible::ComboBox) {}

  [[nodiscard]] QString text(QAccessible::Text which) const override {
    if (which == QAccessible::Value || which == QAccessible::Description) return control().value();
    auto const own = QAccessibleWidget::text(which);
    return which == QAccessible::Name && own.isEmpty() ? control().value() : own;
  }

  [[nodiscard]] QAccessible::State state() const override {
    auto state = QAccessibleWidget::state();
    state.hasPopup = true;
    state.expandable = true;
    state.expanded = control().list().isVisible();
    state.collapsed = !state.expanded;
    return state;
  }

  [[nodiscard]] int childCount() const override { return 1; }
  [[nodiscard]] QAccessibleInterface* child(int index) const override {
    return index == 0 ? QAccessible::queryAccessibleInterface(&control().list()) : nullptr;
  }
  [[nodiscard]] int indexOfChild(QAccessibleInterface const* child) const override {
    return child != nullptr && child->object() == &control().list() ? 0 : -1;
  }

  [[nodiscard]] QStringList actionNames() const override {
    return widget()->isEnabled() ? QStringList{pressAction(), showMenuAction()} : QStringList{};
  }
  void doAction(QString const& name) override {
    if (widget()->isEnabled() && (name == pressAction() || name == showMenuAction())) control().click();
  }

 private:
  [[nodiscard]] PickerControl& control() const { return *static_cast<PickerControl*>(widget()); }
};

QAccessibleInterface* makeInterface(QString const& className, QObject* object) {
  // Our classes have no names of their own for the toolkit, which asks with those of their base classes.
  if (className != "QWidget" && className != "QAbstractButton") return nullptr;
  if (auto* const text = dynamic_cast<TextWidget*>(object)) return new AccessibleText(text);
  if (auto* const picker = dynamic_cast<PickerControl*>(object)) return new AccessiblePicker(picker);
  if (auto* const symbol = dynamic_cast<SymbolWidget*>(object))
    return new QAccessibleWidget(symbol, QAccessible::Graphic);
  if (auto* const disc = dynamic_cast<DiscWidget*>(object)) return new QAccessibleWidget(disc, QAccessible::Indicator);
  if (auto* const spinner = dynamic_cast<SpinnerWidget*>(object)) {
    return new QAccessibleWidget(spinner, QAccessible::Animation);
  }
  return nullptr;
}

}  // namespace

void makeViewsAccessible() {
  // Qt forgets nothing between two applications of one process, and takes the same function once.
  QAccessible::installFactory(makeInterface);
}

}  // namespace morla::linux
