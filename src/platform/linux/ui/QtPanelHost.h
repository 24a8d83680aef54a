#pragma once

#include <memory>
#include <vector>

#include "platform/Panel.h"
#include "platform/linux/ui/PanelServices.h"

class QWindow;

namespace morla::linux {

class QtPanel;

class QtPanelHost : public platform::PanelHost {
 public:
  explicit QtPanelHost(PanelServices const& services) : services_(services) {}

  [[nodiscard]] std::unique_ptr<platform::Panel> makePanel(view::PanelSpec const& spec,
                                                           view::PanelBehaviour& behaviour) override;
  [[nodiscard]] Size fittingSize(view::Node const& content) override;

  /// None for windows that are no panel's.
  [[nodiscard]] QtPanel const* panelOf(QWindow const* window) const;

 private:
  class HostedPanel;

  PanelServices services_;
  /// Panels and their host end in any order.
  std::shared_ptr<std::vector<QtPanel const*>> panels_ = std::make_shared<std::vector<QtPanel const*>>();
};

}  // namespace morla::linux
