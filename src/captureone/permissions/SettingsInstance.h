#pragma once

#include <functional>
#include <memory>
#include <string>

#include "scriptingbus/BusHandles.h"

namespace morla::captureone {

/// What the desktop's system settings are known by: a name on the session bus, the id of the .desktop file and the
/// class of the window.
inline constexpr char kSettingsIdentifier[] = "com.apple.systempreferences";

/// Makes this process the one that shows the settings, under org.freedesktop.Application. Main thread.
class SettingsInstance {
 public:
  /// The address may be empty: then the window only comes to the front.
  using Open = std::function<void(std::string const& address)>;

  enum class Claim { first, handedOver, failed };
  struct Claimed {
    Claim claim = Claim::failed;
    std::unique_ptr<SettingsInstance> instance;  ///< of the first
    std::string failure;
  };
  /// Hands `address` to the process that shows the settings already, or becomes it.
  [[nodiscard]] static Claimed claim(std::string const& address);

  ~SettingsInstance();
  SettingsInstance(SettingsInstance const&) = delete;
  SettingsInstance& operator=(SettingsInstance const&) = delete;

  /// What comes before it is set waits for `process`.
  void onOpen(Open open) { open_ = std::move(open); }
  /// Watch this for reading and call `process` whenever it is readable; also once right after `onOpen`.
  [[nodiscard]] int fileDescriptor() const;
  /// False once the bus has gone.
  [[nodiscard]] bool process();

 private:
  explicit SettingsInstance(scriptingbus::BusPointer bus) : bus_(std::move(bus)) {}
  [[nodiscard]] int serve();
  [[nodiscard]] int take(sd_bus_message* call);

  scriptingbus::BusPointer bus_;
  Open open_;
};

}  // namespace morla::captureone
