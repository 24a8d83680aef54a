#include "view/View.h"

#include "base/Decimal.h"
#include "base/Overloaded.h"

namespace morla::view {
namespace {

std::string describe(Size size) {
  return shortestDecimal(size.width) + "x" + shortestDecimal(size.height);
}
std::string describe(BottomLeftPoint point) {
  return "(" + shortestDecimal(point.x) + ", " + shortestDecimal(point.y) + ")";
}
std::string describe(BottomLeftRect rect) {
  return describe(rect.origin) + " " + describe(rect.size);
}

std::string describe(Colour const& colour) {
  if (colour == kBlack) return "black";
  if (colour == kWhite) return "white";
  return "rgba(" + shortestDecimal(colour.red) + ", " + shortestDecimal(colour.green) + ", " +
         shortestDecimal(colour.blue) + ", " + shortestDecimal(colour.alpha) + ")";
}

std::string describe(DrawingStep const& step) {
  return std::visit(Overloaded{
                        [](FillOval const& s) { return "fill oval " + describe(s.bounds) + " " + describe(s.colour); },
                        [](FillRoundedRect const& s) {
                          return "fill rounded rectangle " + describe(s.bounds) + " radius " +
                                 shortestDecimal(s.radius) + " " + describe(s.colour);
                        },
                        [](StrokeRoundedRect const& s) {
                          return "stroke rounded rectangle " + describe(s.bounds) + " radius " +
                                 shortestDecimal(s.radius) + " width " + shortestDecimal(s.lineWidth) + " " +
                                 describe(s.colour);
                        },
                        [](StrokeLine const& s) {
                          return "stroke line " + describe(s.from) + " to " + describe(s.to) + " width " +
                                 shortestDecimal(s.lineWidth) + " " + describe(s.colour);
                        },
                    },
                    step);
}

void dumpInto(std::string& out, Node const& node, std::size_t depth) {
  std::string const indent(2 * depth, ' ');
  std::string const label = node.accessibilityLabel.empty() ? "" : " label=\"" + node.accessibilityLabel + "\"";
  std::visit(Overloaded{
                 [&](ZStack const& stack) {
                   out += indent + "ZStack" + label + "\n";
                   for (auto const& child : stack.children) dumpInto(out, child, depth + 1);
                 },
                 [&](Canvas const& canvas) {
                   out += indent + "Canvas " + describe(canvas.drawing.size) + label + "\n";
                   for (auto const& step : canvas.drawing.steps) out += indent + "  " + describe(step) + "\n";
                 },
             },
             node.content);
}

}  // namespace

std::string dump(Node const& root) {
  std::string out;
  dumpInto(out, root, 0);
  return out;
}

}  // namespace morla::view
