#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "base/Lifetime.h"
#include "platform/macos/ActionTarget.h"
#include "platform/macos/Rects.h"
#include "platform/macos/Text.h"
#include "platform/macos/nodes/FieldDelegate.h"
#include "platform/macos/nodes/Look.h"
#include "platform/macos/nodes/NodeContent.h"
#include "platform/macos/nodes/Views.h"

namespace morla::macos {
namespace {

void setEnabled(NSControl* control, bool isEnabled) {
  if (static_cast<bool>(control.enabled) != isEnabled) control.enabled = isEnabled;
}

/// As large as it needs to be for all that it shows; to be called for each control.
void keepFull(NSControl* control) {
  for (auto const orientation : {NSLayoutConstraintOrientationHorizontal, NSLayoutConstraintOrientationVertical}) {
    [control setContentCompressionResistancePriority:kKeep forOrientation:orientation];
  }
}

class ButtonContent final : public ContentOf<view::Button> {
 public:
  ButtonContent() : button_([MORLAButton buttonWithTitle:@"" target:nil action:nil]) {
    target_ = [[MORLAActionTarget alloc] initWithAction:life_.weak([this] {
      // A copy: the action may be the end of this button.
      auto const action = shown_.action;
      action();
    })];
    button_.target = target_;
    button_.action = @selector(performAction:);
    keepFull(button_);
  }
  [[nodiscard]] NSView* view() const override { return button_; }
  [[nodiscard]] bool fills(Axis) const override { return true; }
  [[nodiscard]] Clicks clicks() const override { return Clicks::all; }

 private:
  void show(view::Button const& button, Surroundings const& surroundings) override {
    bool const isOther = !(shown_ == button) || isEnabled_ != surroundings.isEnabled;
    shown_ = button;
    if (!isOther) return;
    isEnabled_ = surroundings.isEnabled;
    setEnabled(button_, surroundings.isEnabled);
    bool const isProminent = button.style == view::ButtonStyle::prominent;
    button_.bezelColor = isProminent ? [NSColor controlAccentColor] : nil;
    button_.font = [NSFont systemFontOfSize:13 weight:isProminent ? NSFontWeightMedium : NSFontWeightRegular];
    // Faint text is the system's own affair.
    if (isProminent && surroundings.isEnabled) {
      button_.attributedTitle = whiteTitle(button.title);
    } else {
      button_.title = shownText(button.title);
    }
  }

  [[nodiscard]] NSAttributedString* whiteTitle(std::string const& title) const {
    NSMutableParagraphStyle* const style = [[NSMutableParagraphStyle alloc] init];
    style.alignment = NSTextAlignmentCenter;
    NSMutableDictionary<NSAttributedStringKey, id>* const attributes = [NSMutableDictionary dictionary];
    attributes[NSForegroundColorAttributeName] = [NSColor whiteColor];
    attributes[NSParagraphStyleAttributeName] = style;
    attributes[NSFontAttributeName] = button_.font;
    return [[NSAttributedString alloc] initWithString:shownText(title) attributes:attributes];
  }

  MORLAButton* button_;
  view::Button shown_;
  std::optional<bool> isEnabled_;
  MORLAActionTarget* target_ = nil;
  Lifetime life_;
};

class ToggleContent final : public ContentOf<view::Toggle> {
 public:
  explicit ToggleContent(MainLoop& loop) : loop_(loop), switch_([[MORLASwitch alloc] initWithFrame:nsRect({})]) {
    target_ = [[MORLAActionTarget alloc] initWithAction:life_.weak([this] { turned(); })];
    switch_.target = target_;
    switch_.action = @selector(performAction:);
    keepFull(switch_);
    for (auto const orientation : {NSLayoutConstraintOrientationHorizontal, NSLayoutConstraintOrientationVertical}) {
      [switch_ setContentHuggingPriority:kKeep forOrientation:orientation];
    }
  }
  [[nodiscard]] NSView* view() const override { return switch_; }
  [[nodiscard]] Clicks clicks() const override { return Clicks::all; }

 private:
  void show(view::Toggle const& toggle, Surroundings const& surroundings) override {
    bool const isOther = !(shown_ == toggle);
    shown_ = toggle;
    setEnabled(switch_, surroundings.isEnabled);
    if (isOther) follow();
  }

  void turned() {
    auto& loop = loop_;
    carryOut(
        loop, [action = shown_.action, isOn = switch_.state == NSControlStateValueOn] { action(isOn); },
        life_.weak([this] { follow(); }));
  }

  void follow() {
    auto const state = shown_.isOn ? NSControlStateValueOn : NSControlStateValueOff;
    if (switch_.state != state) switch_.state = state;
  }

  MainLoop& loop_;
  MORLASwitch* switch_;
  view::Toggle shown_;
  MORLAActionTarget* target_ = nil;
  Lifetime life_;
};

class TextFieldContent final : public ContentOf<view::TextField> {
 public:
  explicit TextFieldContent(MainLoop& loop) : loop_(loop), field_([MORLAEditField textFieldWithString:@""]) {
    delegate_ = [[MORLAFieldDelegate alloc] initWithEdit:life_.weak([this] { edited(); })
                                                  submit:life_.weak([this] {
                                                    auto const action = shown_.onSubmit;
                                                    action();
                                                  })];
    field_.delegate = delegate_;
    keepFull(field_);
  }
  [[nodiscard]] NSView* view() const override { return field_; }
  [[nodiscard]] bool fills(Axis) const override { return true; }
  [[nodiscard]] Clicks clicks() const override { return Clicks::all; }

 private:
  void show(view::TextField const& next, Surroundings const& surroundings) override {
    auto const before = std::exchange(shown_, next);
    setEnabled(field_, surroundings.isEnabled);
    if (before.placeholder != next.placeholder) field_.placeholderString = shownText(next.placeholder);
    if (font_ != next.font) {
      font_ = next.font;
      field_.font = font(next.font);
    }
    if (before.text != next.text) follow();
  }

  void edited() {
    auto const edit = ++edits_;
    auto& loop = loop_;
    carryOut(
        loop, [action = shown_.action, text = utf8(field_.stringValue)] { action(text); }, life_.weak([this, edit] {
          // A later edit has a turn of its own.
          if (edit == edits_) follow();
        }));
  }

  void follow() {
    NSString* const text = shownText(shown_.text);
    if ([field_.stringValue isEqualToString:text]) return;
    // To set the field's own value would end the editing.
    NSText* const editor = [field_ currentEditor];
    if (editor != nil) {
      editor.string = text;
    } else {
      field_.stringValue = text;
    }
  }

  MainLoop& loop_;
  MORLAEditField* field_;
  view::TextField shown_;
  std::optional<view::Font> font_;
  std::uint64_t edits_ = 0;
  MORLAFieldDelegate* delegate_ = nil;
  Lifetime life_;
};

}  // namespace

std::unique_ptr<NodeContent> makeContentOf(view::Button const&, Surroundings const&) {
  return std::make_unique<ButtonContent>();
}

std::unique_ptr<NodeContent> makeContentOf(view::Toggle const&, Surroundings const& surroundings) {
  return std::make_unique<ToggleContent>(surroundings.loop);
}

std::unique_ptr<NodeContent> makeContentOf(view::TextField const&, Surroundings const& surroundings) {
  return std::make_unique<TextFieldContent>(surroundings.loop);
}

}  // namespace morla::macos
