#include "platform/linux/ui/views/StackWidgets.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <numeric>
#include <string>
#include <utility>

namespace morla::linux {
namespace {

template <typename T>
bool holds(NodeWidget const& child) {
  static std::size_t const kind = view::Node::Content(T()).index();
  return child.kind() == kind;
}

int sum(std::vector<int> const& values) {
  return std::accumulate(values.begin(), values.end(), 0);
}

std::vector<int> cutAt(std::vector<LengthNeed> const& needs, int longest) {
  std::vector<int> lengths;
  for (auto const& need : needs) lengths.push_back(std::max(need.smallest, std::min(need.natural, longest)));
  return lengths;
}

std::vector<int> shrunk(std::vector<LengthNeed> const& needs, int available) {
  int low = 0;
  int high = 0;
  for (auto const& need : needs) high = std::max(high, need.natural);
  while (low < high) {
    int const middle = low + (high - low + 1) / 2;
    if (sum(cutAt(needs, middle)) <= available) {
      low = middle;
    } else {
      high = middle - 1;
    }
  }
  auto lengths = cutAt(needs, low);
  int rest = available - sum(lengths);
  for (std::size_t i = 0; i < needs.size() && rest > 0; ++i) {
    if (lengths[i] >= needs[i].natural) continue;
    ++lengths[i];
    --rest;
  }
  return lengths;
}

std::vector<int> grown(std::vector<LengthNeed> const& needs, std::vector<int> lengths, int extra) {
  auto growing =
      static_cast<int>(std::count_if(needs.begin(), needs.end(), [](auto const& need) { return need.grows; }));
  for (std::size_t i = 0; i < needs.size(); ++i) {
    if (!needs[i].grows) continue;
    int const share = extra / growing;
    lengths[i] += share;
    extra -= share;
    --growing;
  }
  return lengths;
}

}  // namespace

std::vector<int> sharedLengths(std::vector<LengthNeed> const& needs, int available) {
  std::vector<int> natural;
  for (auto const& need : needs) natural.push_back(need.natural);
  int const extra = available - sum(natural);
  return extra < 0 ? shrunk(needs, available) : grown(needs, std::move(natural), extra);
}

void StackWidget::adoptChildren(std::vector<view::Node> const& nodes) {
  auto const before = std::exchange(children_, {});
  std::map<std::string, NodeWidget*> withKey;
  std::vector<NodeWidget*> withoutKey;
  for (auto* child : before) {
    if (child->key().empty() || !withKey.emplace(child->key(), child).second) withoutKey.push_back(child);
  }
  std::size_t position = 0;
  for (auto const& node : nodes) {
    NodeWidget** match = nullptr;
    if (!node.key.empty()) {
      if (auto const found = withKey.find(node.key); found != withKey.end()) match = &found->second;
    } else if (auto const here = position++; here < withoutKey.size()) {
      match = &withoutKey[here];
    }
    bool const fits = match != nullptr && *match != nullptr && (*match)->kind() == node.content.index();
    auto* child = fits ? std::exchange(*match, nullptr) : makeNodeWidget(context(), node, this);
    child->adopt(node);
    children_.push_back(child);
  }
  for (auto const& [key, child] : withKey) {
    if (child != nullptr) child->retire();
  }
  for (auto* child : withoutKey) {
    if (child != nullptr) child->retire();
  }
  if (children_ == before) return;
  for (auto* child : children_) child->raise();
  didChange();
}

void LineWidget::adoptLine(std::vector<view::Node> const& nodes, double spacing, Side side) {
  bool const changed = std::exchange(spacing_, spacing) != spacing;
  if (bool const turned = std::exchange(side_, side) != side; changed || turned) didChange();
  adoptChildren(nodes);
}

bool LineWidget::growsAlong(NodeWidget const& child, Needs const& needs) const {
  return holds<view::Spacer>(child) || (axis_ == Qt::Horizontal ? needs.growsWide : needs.growsHigh);
}

int LineWidget::gaps() const {
  return children().size() < 2 ? 0 : wholePoints(spacing_ * static_cast<double>(children().size() - 1));
}

Needs LineWidget::contentNeeds() const {
  int smallestAlong = gaps();
  int naturalAlong = gaps();
  int smallestAcross = 0;
  int naturalAcross = 0;
  bool along_ = false;
  bool across_ = false;
  for (auto const* child : children()) {
    auto const needs = child->needs();
    smallestAlong += along(needs.smallest);
    naturalAlong += along(needs.natural);
    smallestAcross = std::max(smallestAcross, across(needs.smallest));
    naturalAcross = std::max(naturalAcross, across(needs.natural));
    along_ |= growsAlong(*child, needs);
    across_ |= growsAcross(needs);
  }
  bool const isRow = axis_ == Qt::Horizontal;
  return {sized(smallestAlong, smallestAcross), sized(naturalAlong, naturalAcross), isRow ? along_ : across_,
          isRow ? across_ : along_};
}

void LineWidget::arrangeContent(QRect const& place) {
  std::vector<LengthNeed> lengthNeeds;
  std::vector<int> breadths;
  bool grows = false;
  int const breadth = across(place.size());
  for (auto const* child : children()) {
    auto const needs = child->needs();
    lengthNeeds.push_back({along(needs.smallest), along(needs.natural), growsAlong(*child, needs)});
    grows |= lengthNeeds.back().grows;
    bool const fills = growsAcross(needs) || holds<view::Divider>(*child);
    breadths.push_back(fills ? breadth : std::max(across(needs.smallest), std::min(across(needs.natural), breadth)));
  }
  auto const lengths = sharedLengths(lengthNeeds, along(place.size()) - gaps());
  int const used = sum(lengths) + gaps();
  double at = grows ? 0 : std::max(0, (along(place.size()) - used) / 2);
  for (std::size_t i = 0; i < children().size(); ++i) {
    int const rest = breadth - breadths[i];
    int const aside = side_ == Side::start ? 0 : side_ == Side::end ? rest : rest / 2;
    int const start = wholePoints(at);
    QPoint const corner = axis_ == Qt::Horizontal ? QPoint(start, aside) : QPoint(aside, start);
    children()[i]->setGeometry(QRect(place.topLeft() + corner, sized(lengths[i], breadths[i])));
    children()[i]->arrange();
    at += lengths[i] + spacing_;
  }
}

void RowWidget::adoptContent(view::Node::Content const& content) {
  auto const& stack = std::get<view::HStack>(content);
  using view::VerticalAlignment;
  adoptLine(stack.children, stack.spacing,
            stack.alignment == VerticalAlignment::top      ? Side::start
            : stack.alignment == VerticalAlignment::bottom ? Side::end
                                                           : Side::middle);
}

void ColumnWidget::adoptContent(view::Node::Content const& content) {
  auto const& stack = std::get<view::VStack>(content);
  using view::HorizontalAlignment;
  adoptLine(stack.children, stack.spacing,
            stack.alignment == HorizontalAlignment::leading    ? Side::start
            : stack.alignment == HorizontalAlignment::trailing ? Side::end
                                                               : Side::middle);
}

void PileWidget::adoptContent(view::Node::Content const& content) {
  adoptChildren(std::get<view::ZStack>(content).children);
}

Needs PileWidget::contentNeeds() const {
  Needs all;
  for (auto const* child : children()) {
    auto const needs = child->needs();
    all.smallest = all.smallest.expandedTo(needs.smallest);
    all.natural = all.natural.expandedTo(needs.natural);
    all.growsWide |= needs.growsWide;
    all.growsHigh |= needs.growsHigh;
  }
  return all;
}

void PileWidget::arrangeContent(QRect const& place) {
  for (auto* child : children()) {
    auto const needs = child->needs();
    QSize size = needs.natural.boundedTo(place.size()).expandedTo(needs.smallest);
    if (needs.growsWide) size.setWidth(place.width());
    if (needs.growsHigh) size.setHeight(place.height());
    child->setGeometry(QRect(
        place.topLeft() + QPoint((place.width() - size.width()) / 2, (place.height() - size.height()) / 2), size));
    child->arrange();
  }
}

}  // namespace morla::linux
