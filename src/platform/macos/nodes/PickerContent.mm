#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "base/Lifetime.h"
#include "platform/macos/ActionTarget.h"
#include "platform/macos/Rects.h"
#include "platform/macos/nodes/Look.h"
#include "platform/macos/nodes/NodeContent.h"
#include "platform/macos/nodes/Views.h"

namespace morla::macos {
namespace {

NSMenuItem* makeItem(std::string const& title) {
  // The pop-up button gives its items their action.
  return [[NSMenuItem alloc] initWithTitle:shownText(title) action:nil keyEquivalent:@""];
}

/// While the menu is open the system shows no change of it, so none is made: what the user chooses is what is seen.
class PickerContent final : public ContentOf<view::Picker> {
 public:
  explicit PickerContent(MainLoop& loop)
      : loop_(loop), button_([[MORLAPopUpButton alloc] initWithFrame:nsRect({}) pullsDown:NO]) {
    target_ = [[MORLAActionTarget alloc] initWithAction:life_.weak([this] { chosen(); })];
    button_.target = target_;
    button_.action = @selector(performAction:);
    button_.menu.delegate = button_;
    // What came while the menu was open is caught up with, after the choice that may follow.
    std::function<void()> const caughtUp = life_.weak([this] { follow(); });
    button_.onClose = ^{
      carryOut(loop, [] {}, caughtUp);
    };
    for (auto const orientation : {NSLayoutConstraintOrientationHorizontal, NSLayoutConstraintOrientationVertical}) {
      [button_ setContentCompressionResistancePriority:kKeep forOrientation:orientation];
    }
  }
  [[nodiscard]] NSView* view() const override { return button_; }
  [[nodiscard]] bool fills(Axis) const override { return true; }
  [[nodiscard]] Clicks clicks() const override { return Clicks::all; }

 private:
  void show(view::Picker const& picker, Surroundings const& surroundings) override {
    bool const isOther = !(picker_ == std::optional(picker));
    picker_ = picker;
    if (static_cast<bool>(button_.enabled) != surroundings.isEnabled) button_.enabled = surroundings.isEnabled;
    if (isOther) follow();
  }

  void follow() {
    if (button_.open || !picker_) return;
    if (differs(options_, picker_->options)) {
      NSMenu* const menu = button_.menu;
      [menu removeAllItems];
      // Not by title through the button, which keeps no two of the same.
      for (auto const& option : options_) [menu addItem:makeItem(option)];
    }
    auto const& selection = picker_->selection;
    bool const isListed = selection.has_value() && *selection < options_.size();
    NSPopUpButtonCell* const cell = button_.cell;
    if (isListed) {
      cell.usesItemFromMenu = YES;
      [button_ selectItemAtIndex:static_cast<NSInteger>(*selection)];
    } else {
      [button_ selectItem:nil];
      cell.usesItemFromMenu = NO;
      cell.menuItem = makeItem(picker_->unlisted);
    }
  }

  void chosen() {
    auto const index = optionOf(button_.indexOfSelectedItem);
    auto& loop = loop_;
    carryOut(
        loop,
        [action = picker_->action, index] {
          if (index) action(*index);
        },
        life_.weak([this] { follow(); }));
  }

  /// Which of the tree's options the menu's row is. They differ where a tree came while the menu was open; then the
  /// words count.
  [[nodiscard]] std::optional<std::size_t> optionOf(NSInteger row) const {
    if (row < 0 || static_cast<std::size_t>(row) >= options_.size()) return std::nullopt;
    auto const index = static_cast<std::size_t>(row);
    auto const& now = picker_->options;
    if (index < now.size() && now[index] == options_[index]) return index;
    auto const found = std::ranges::find(now, options_[index]);
    if (found == now.end()) return std::nullopt;
    return static_cast<std::size_t>(found - now.begin());
  }

  MainLoop& loop_;
  MORLAPopUpButton* button_;
  std::optional<view::Picker> picker_;
  std::vector<std::string> options_;  ///< those in the menu
  MORLAActionTarget* target_ = nil;
  Lifetime life_;
};

}  // namespace

std::unique_ptr<NodeContent> makeContentOf(view::Picker const&, Surroundings const& surroundings) {
  return std::make_unique<PickerContent>(surroundings.loop);
}

}  // namespace morla::macos
