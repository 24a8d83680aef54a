#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "captureone/scripting/Classes.h"
#include "captureone/scripting/Resolver.h"
#include "captureone/scripting/Terms.h"

namespace morla::captureone {

/// Answers Apple events out of the model, by codes only: no word of a script ever comes here. The dictionary decides
/// what can be read and written and of which type it is. Main thread.
class ObjectModel {
 public:
  struct Hooks {
    std::function<void()> quit;  ///< called before the reply to `quit` is returned: let it take effect later
  };

  /// `dictionary` is a table that `parseDictionary` accepts; a wrong one is a programming error.
  ObjectModel(Model& model, ApplicationIdentity identity, std::string_view dictionary, Hooks hooks);

  [[nodiscard]] applescript::EventReply handle(applescript::AppleEvent const& event);

  [[nodiscard]] Terms const& terms() const { return terms_; }

 private:
  using Event = applescript::AppleEvent;
  using Reply = applescript::EventReply;

  [[nodiscard]] Reply get(Event const& event);
  [[nodiscard]] Reply set(Event const& event);
  [[nodiscard]] Reply count(Event const& event);
  [[nodiscard]] Reply exists(Event const& event);
  [[nodiscard]] Reply make(Event const& event);
  [[nodiscard]] Reply remove(Event const& event);

  /// What `make` is to put its object into.
  [[nodiscard]] std::variant<ObjectReference, applescript::EventError> containerFor(Event const& event) const;
  /// Nothing, or why the property cannot have that value.
  [[nodiscard]] Failure assign(PropertyReference const& place, applescript::Value const& value,
                               applescript::Value const& offender, applescript::Considerations considerations);
  [[nodiscard]] Reply contentOf(Item const& item, applescript::Value const& offender) const;
  [[nodiscard]] Reading convert(applescript::Value const& value, std::string const& type,
                                applescript::Considerations considerations) const;

  Model& model_;
  Terms terms_;
  std::vector<std::unique_ptr<ServedClass>> classes_;
  Resolver resolver_;
  Hooks hooks_;
};

}  // namespace morla::captureone
