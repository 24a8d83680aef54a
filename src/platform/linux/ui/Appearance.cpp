#include "platform/linux/ui/Appearance.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include "platform/linux/ui/views/Colours.h"

namespace morla::linux {
namespace {

constexpr char const* kService = "org.freedesktop.portal.Desktop";
constexpr char const* kPath = "/org/freedesktop/portal/desktop";
constexpr char const* kInterface = "org.freedesktop.portal.Settings";

/// What the portal's specification calls them.
constexpr uint kPrefersDark = 1;
constexpr uint kPrefersLight = 2;

bool animationsAreWelcome = true;

/// The portal wraps its answers once or twice.
QVariant unwrapped(QVariant value) {
  while (value.userType() == qMetaTypeId<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value;
}

}  // namespace

Appearance::Appearance() : original_(QApplication::palette()) {
  readSoon_.setSingleShot(true);
  readSoon_.setInterval(0);
  QObject::connect(&readSoon_, &QTimer::timeout, &readSoon_, [this] { read(); });
  auto bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  // What changed is asked for, so the signal's own arguments do not matter.
  bus.connect(kService, kPath, kInterface, "SettingChanged", &readSoon_, SLOT(start()));
  read();
}

Appearance::~Appearance() {
  animationsAreWelcome = true;
}

bool Appearance::animates() {
  return animationsAreWelcome;
}

void Appearance::read() {
  ask("org.freedesktop.appearance", "color-scheme", &Appearance::applyScheme);
  ask("org.gnome.desktop.interface", "enable-animations", &Appearance::applyAnimations);
}

void Appearance::ask(char const* space, char const* key, void (Appearance::*apply)(QVariant const&)) {
  auto call = QDBusMessage::createMethodCall(kService, kPath, kInterface, "Read");
  call << QString(space) << QString(key);
  auto* const watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), &readSoon_);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &readSoon_, [this, watcher, apply] {
    QDBusPendingReply<QDBusVariant> const reply = *watcher;
    watcher->deleteLater();
    // No portal, or one that does not know the setting: everything stays.
    if (reply.isValid()) (this->*apply)(unwrapped(reply.value().variant()));
  });
}

void Appearance::applyScheme(QVariant const& value) {
  uint const scheme = value.toUInt();
  bool const isDecided = scheme == kPrefersDark || scheme == kPrefersLight;
  auto const wanted = isDecided ? standardPalette(scheme == kPrefersDark) : original_;
  if (QApplication::palette() != wanted) QApplication::setPalette(wanted);
}

void Appearance::applyAnimations(QVariant const& value) {
  if (value.userType() == QMetaType::Bool) animationsAreWelcome = value.toBool();
}

}  // namespace morla::linux
