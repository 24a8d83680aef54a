// The panels in memory, and their user.

#include <algorithm>
#include <ranges>

#include "base/Decimal.h"
#include "platform/fake/FakePanels.h"

namespace morla::fake {
namespace {

std::string describe(Size size) {
  return shortestDecimal(size.width) + "x" + shortestDecimal(size.height);
}
std::string describe(BottomLeftPoint point) {
  return shortestDecimal(point.x) + " " + shortestDecimal(point.y);
}

std::vector<view::Node> const& childrenOf(view::Node const& node) {
  static std::vector<view::Node> const kNone;
  if (auto const* stack = std::get_if<view::HStack>(&node.content)) return stack->children;
  if (auto const* stack = std::get_if<view::VStack>(&node.content)) return stack->children;
  if (auto const* stack = std::get_if<view::ZStack>(&node.content)) return stack->children;
  return kNone;
}

bool isCalled(view::Node const& node, std::string_view name) {
  if (node.accessibilityLabel == name) return true;
  if (auto const* button = std::get_if<view::Button>(&node.content)) return button->title == name;
  if (auto const* text = std::get_if<view::Text>(&node.content)) return text->text == name;
  return false;
}

bool isControl(view::Node const& node) {
  return std::holds_alternative<view::Button>(node.content) || std::holds_alternative<view::Toggle>(node.content) ||
         std::holds_alternative<view::Picker>(node.content) || std::holds_alternative<view::TextField>(node.content);
}

/// A node, and whether it and everything round it is enabled and not hidden.
struct Found {
  view::Node const* node = nullptr;
  bool isUsable = false;
};

template <typename Predicate>
Found findIn(view::Node const& node, Predicate const& wanted, bool isUsable = true) {
  isUsable = isUsable && node.isEnabled && !node.isHidden;
  if (wanted(node)) return {&node, isUsable};
  for (auto const& child : childrenOf(node)) {
    if (auto const found = findIn(child, wanted, isUsable); found.node != nullptr) return found;
  }
  return {};
}

/// The control of this kind and name. A copy, since the tree may be replaced while the control acts.
template <typename Control>
Control usable(std::optional<view::Node> const& content, std::string_view name) {
  Found found;
  if (content) {
    found = findIn(*content, [&](view::Node const& node) {
      return std::holds_alternative<Control>(node.content) && isCalled(node, name);
    });
  }
  if (found.node == nullptr) failLoudly("a control that is not there: " + std::string(name));
  if (!found.isUsable) failLoudly("a control that is disabled or hidden: " + std::string(name));
  return std::get<Control>(found.node->content);
}

double countNodes(view::Node const& node) {
  double count = 1;
  for (auto const& child : childrenOf(node)) count += countNodes(child);
  return count;
}

}  // namespace

FakePanel::FakePanel(MainLoop& loop, Journal& journal, view::PanelSpec spec, view::PanelBehaviour& behaviour,
                     std::vector<FakePanel*>& livePanels)
    : loop_(loop),
      journal_(journal),
      spec_(std::move(spec)),
      behaviour_(behaviour),
      livePanels_(livePanels),
      frame_(spec_.contentRect) {
  livePanels_.push_back(this);
}

FakePanel::~FakePanel() {
  std::erase(livePanels_, this);
}

void FakePanel::note(std::string const& entry) {
  journal_.add((spec_.name.empty() ? "panel" : spec_.name) + "." + entry);
}

void FakePanel::setContentSize(Size size) {
  note("setContentSize " + describe(size));
  frame_.size = size;
}

void FakePanel::setContent(view::Node content) {
  note("setContent");
  if (content_ != content) ++contentChanges_;
  content_ = std::move(content);
}

void FakePanel::setFrame(BottomLeftRect frame) {
  note("setFrame " + describe(frame.origin) + " " + describe(frame.size));
  frame_.size = frame.size;
  moveTo(frame.origin);
}

void FakePanel::setFrameOrigin(BottomLeftPoint origin) {
  note("setFrameOrigin " + describe(origin));
  moveTo(origin);
}

void FakePanel::centre() {
  note("centre");
  auto const& display = FakePanelHost::kDisplay.size;
  moveTo({(display.width - frame_.size.width) / 2, (display.height - frame_.size.height) / 2});
}

void FakePanel::moveTo(BottomLeftPoint origin) {
  if (frame_.origin == origin) return;
  frame_.origin = origin;
  if (std::exchange(isMoveDue_, true)) return;
  loop_.post([self = std::weak_ptr(self_)] {
    auto const panel = self.lock();
    if (panel == nullptr) return;
    (*panel)->isMoveDue_ = false;
    (*panel)->didMove_.call();
  });
}

void FakePanel::orderFrontRegardless() {
  note("orderFrontRegardless");
  isVisible_ = true;
}

void FakePanel::orderOut() {
  note("orderOut");
  isVisible_ = false;
}

void FakePanel::close() {
  note("close");
  // An observer may end the panel.
  std::weak_ptr const self(self_);
  willClose_.call();
  if (!self.expired()) isVisible_ = false;
}

view::Node const* FakePanel::find(std::string_view name) const {
  if (!content_) return nullptr;
  return findIn(*content_, [name](view::Node const& node) { return isCalled(node, name); }).node;
}

view::Node const* FakePanel::findControl(std::string_view name) const {
  if (!content_) return nullptr;
  return findIn(*content_, [name](view::Node const& node) { return isControl(node) && isCalled(node, name); }).node;
}

void FakePanel::press(std::string_view title) {
  auto const button = usable<view::Button>(content_, title);
  send(view::PanelEvent::leftMouseDown);
  behaviour_.sendEvent(view::PanelEvent::leftMouseUp, [&button] { button.action(); });
}

void FakePanel::turn(std::string_view label) {
  auto const toggle = usable<view::Toggle>(content_, label);
  send(view::PanelEvent::leftMouseDown);
  behaviour_.sendEvent(view::PanelEvent::leftMouseUp, [&toggle] { toggle.action(!toggle.isOn); });
}

void FakePanel::choose(std::string_view label, std::string_view option) {
  auto const picker = usable<view::Picker>(content_, label);
  auto const found = std::ranges::find(picker.options, option);
  if (found == picker.options.end()) failLoudly("an option that is not there: " + std::string(option));
  auto const index = static_cast<std::size_t>(found - picker.options.begin());
  behaviour_.sendEvent(view::PanelEvent::leftMouseDown, [&picker, index] { picker.action(index); });
}

std::unique_ptr<platform::Panel> FakePanelHost::makePanel(view::PanelSpec const& spec,
                                                          view::PanelBehaviour& behaviour) {
  journal_.add("panels.makePanel " + spec.name);
  return std::make_unique<FakePanel>(loop_, journal_, spec, behaviour, panels);
}

Size FakePanelHost::fittingSize(view::Node const& content) {
  ++measurements;
  return {content.frame.width.value_or(100), 10 * countNodes(content) + content.padding.top + content.padding.bottom};
}

FakePanel* FakePanelHost::find(std::string_view name) const {
  for (auto* panel : panels | std::views::reverse) {
    if (panel->spec().name == name) return panel;
  }
  return nullptr;
}

FakePanel& FakePanelHost::panel(std::string_view name) const {
  auto* found = find(name);
  if (found == nullptr) failLoudly("a panel that is not there: " + std::string(name));
  return *found;
}

}  // namespace morla::fake
