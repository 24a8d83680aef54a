#include "platform/linux/ui/QtStatusBar.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QSystemTrayIcon>
#include <utility>

#include "base/MainThread.h"
#include "platform/linux/ui/DrawingIcon.h"
#include "platform/linux/ui/StatusStandIn.h"

namespace morla::linux {
namespace {

constexpr char const* kTraySelection = "_NET_SYSTEM_TRAY_S";

/// A tray that is spoken to over D-Bus does not say where it put an icon; about this large it is.
constexpr double kAssumedSide = 24;

/// What Qt asks as well, once, before it decides how to speak to a tray.
bool isBusTrayRunning() {
  auto const* const bus = QDBusConnection::sessionBus().interface();
  return bus != nullptr && bus->isServiceRegistered("org.kde.StatusNotifierWatcher").value();
}

class QtStatusItem : public platform::StatusItem, public platform::StatusItemButton {
 public:
  QtStatusItem(PanelServices const& services, XServer& server, platform::Pointer const& pointer, double length)
      : services_(services),
        server_(server),
        pointer_(pointer),
        length_(length),
        hasBusTray_(isBusTrayRunning()),
        trayDidChange_(server.onSelectionOwnerDidChange(kTraySelection, [this] { follow(); })) {
    follow();
  }

  [[nodiscard]] platform::StatusItemButton* button() override { return this; }

  void setImage(view::Drawing const& image) override {
    assertIsMainThread();
    image_ = image;
    showImage();
  }

  void setAction(std::function<void(platform::StatusItemButton&)> action) override { action_ = std::move(action); }

  [[nodiscard]] std::optional<BottomLeftRect> frameOnScreen() const override {
    assertIsMainThread();
    auto const& screens = services_.screens;
    if (standIn_ != nullptr) return screens.flip().toBottomLeft(standIn_->frame());
    if (tray_ == nullptr) return std::nullopt;
    QRect const geometry = tray_->geometry();
    if (!geometry.isEmpty()) return screens.flip().toBottomLeft(screens.fromQt(geometry));
    return aroundLastClick_;
  }

 private:
  /// Goes where items belong now. Also for a tray that started again: it knows nothing of the items of the one before.
  void follow() {
    tray_.reset();
    if (!hasBusTray_ && !server_.hasSelectionOwner(kTraySelection)) {
      if (standIn_ == nullptr) {
        standIn_ = std::make_unique<StatusStandIn>(services_, length_, [this] { clicked(); });
      }
      showImage();
      return;
    }
    standIn_.reset();
    tray_ = std::make_unique<QSystemTrayIcon>();
    QObject::connect(tray_.get(), &QSystemTrayIcon::activated, tray_.get(), [this](auto reason) {
      // The second of two quick clicks is a click as well.
      if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick) clicked();
    });
    showImage();
    tray_->show();
  }

  void showImage() {
    if (standIn_ != nullptr) standIn_->setImage(image_);
    if (tray_ != nullptr) tray_->setIcon(makeIcon(image_));
  }

  void clicked() {
    auto const pointer = pointer_.location();
    aroundLastClick_ = {{pointer.x - kAssumedSide / 2, pointer.y - kAssumedSide / 2}, {kAssumedSide, kAssumedSide}};
    // On a later turn: the action may do away with this item, whose window is in the middle of an event.
    services_.loop.post(life_.weak([this] {
      if (auto const action = action_) action(*this);
    }));
  }

  PanelServices services_;
  XServer& server_;
  platform::Pointer const& pointer_;
  double length_;
  /// Qt finds such a tray at its start or never.
  bool hasBusTray_;
  view::Drawing image_;
  std::function<void(platform::StatusItemButton&)> action_;
  std::optional<BottomLeftRect> aroundLastClick_;
  std::unique_ptr<QSystemTrayIcon> tray_;
  std::unique_ptr<StatusStandIn> standIn_;
  Subscription trayDidChange_;
  Lifetime life_;
};

}  // namespace

std::unique_ptr<platform::StatusItem> QtStatusBar::makeStatusItem(double length) {
  assertIsMainThread();
  return std::make_unique<QtStatusItem>(services_, server_, pointer_, length);
}

}  // namespace morla::linux
