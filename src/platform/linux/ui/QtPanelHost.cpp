#include "platform/linux/ui/QtPanelHost.h"

#include <algorithm>

#include "base/MainThread.h"
#include "platform/linux/ui/QtPanel.h"
#include "platform/linux/ui/views/ContentView.h"

namespace morla::linux {

/// Known to its host for as long as it lives.
class QtPanelHost::HostedPanel : public QtPanel {
 public:
  HostedPanel(QtPanelHost const& host, view::PanelSpec const& spec, view::PanelBehaviour& behaviour)
      : QtPanel(host.services_, spec, behaviour), panels_(host.panels_) {
    panels_->push_back(this);
  }
  ~HostedPanel() override { std::erase(*panels_, this); }

 private:
  std::shared_ptr<std::vector<QtPanel const*>> panels_;
};

std::unique_ptr<platform::Panel> QtPanelHost::makePanel(view::PanelSpec const& spec, view::PanelBehaviour& behaviour) {
  assertIsMainThread();
  return std::make_unique<HostedPanel>(*this, spec, behaviour);
}

Size QtPanelHost::fittingSize(view::Node const& content) {
  assertIsMainThread();
  // Never shown, so it has no window.
  ContentView view(services_.loop);
  view.setTree(content);
  return view.fittingSize();
}

QtPanel const* QtPanelHost::panelOf(QWindow const* window) const {
  auto const found =
      std::find_if(panels_->begin(), panels_->end(), [window](auto const* panel) { return panel->window() == window; });
  return found == panels_->end() ? nullptr : *found;
}

}  // namespace morla::linux
