#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "captureone/control/AutomationPermission.h"
#include "captureone/model/Model.h"

namespace morla::captureone {

/// The simulator as keys and texts, for the control tool: everything that can be seen or set has a key. Booleans are
/// `true` and `false`, lists are joined by `|`, seconds are decimal. Main thread.
class Controls {
 public:
  /// Both must outlive this object.
  Controls(Model& model, AutomationPermission& automation);

  using Refusal = std::optional<std::string>;  ///< why nothing was changed; nothing when it was

  /// Nothing for an unknown key, and for one that can only be set.
  [[nodiscard]] std::optional<std::string> get(std::string_view key) const;
  /// Why `get` has nothing.
  [[nodiscard]] std::string whyUnreadable(std::string_view key) const;
  [[nodiscard]] Refusal set(std::string_view key, std::string const& value);
  /// The model as it starts, and the automation permission as this object found it.
  void reset();

  using Snapshot = std::map<std::string, std::string, std::less<>>;
  [[nodiscard]] Snapshot snapshot() const;
  /// One JSON object of all keys that can be read, every value a text.
  [[nodiscard]] std::string dump() const;

  /// Tells the keys whose values have changed, with what they are now, after each change of the model or of the
  /// permission by a key.
  Subscription onChange(std::function<void(Snapshot const& changed)> observer);
  /// To be called when the permission may have been changed from outside.
  void review();

 private:
  struct Entry {
    std::string key;
    std::function<std::string()> get;                ///< empty: the key can be set only
    std::function<Refusal(std::string const&)> set;  ///< empty: the key can be read only
    bool isOfModel = true;                           ///< changes with the model alone
  };
  void addDocumentKeys();
  void addCameraKeys();
  void addSettingKeys(CameraSetting which, std::string const& name);
  void addVariantKeys();
  void addRecipeKeys();
  void addCaptureFolderKeys();
  void addQueueKeys();
  void addFaultKeys();
  void addAutomationKey();
  [[nodiscard]] Entry const* find(std::string_view key) const;
  /// Tells of those keys of `now` whose values are not what they were.
  void tellChanges(Snapshot const& now);

  Model& model_;
  AutomationPermission& automation_;
  Automation automationAtStart_;
  std::vector<Entry> entries_;
  Snapshot last_;
  ObserverList<Snapshot const&> observers_;
  Subscription modelChanges_;
  Subscription modelEvents_;
};

}  // namespace morla::captureone
