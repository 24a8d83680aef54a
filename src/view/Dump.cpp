#include <array>
#include <cstdint>
#include <string_view>

#include "base/Decimal.h"
#include "base/Overloaded.h"
#include "base/unicode/Utf8.h"
#include "view/View.h"

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

std::string describe(SystemColour colour) {
  constexpr std::array kNames{"primary", "secondary",        "tertiary",          "accent",   "red", "orange", "green",
                              "grey",    "windowBackground", "controlBackground", "separator"};
  return kNames.at(static_cast<std::size_t>(colour));
}

std::string describe(Paint const& paint) {
  auto const colour = std::visit([](auto const& held) { return describe(held); }, paint.colour);
  return paint.opacity == 1 ? colour : colour + "*" + shortestDecimal(paint.opacity);
}

std::string describe(Font const& font) {
  constexpr std::array kWeights{"", " medium", " semibold", " bold"};
  return shortestDecimal(font.size) + kWeights.at(static_cast<std::size_t>(font.weight));
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

/// What would break the line, show as nothing, or turn the rest of the line round in an editor.
bool isEscaped(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c <= 0x9F) || (c >= 0x200E && c <= 0x200F) || (c >= 0x2028 && c <= 0x202E) ||
         (c >= 0x2066 && c <= 0x2069) || c >= unicode::kIllFormedByte;
}

std::string hexadecimal(std::uint32_t number) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string digits;
  do {
    digits.insert(digits.begin(), kDigits[number % 16]);
    number /= 16;
  } while (number != 0);
  return digits;
}

std::string quoted(std::string_view text) {
  std::string out = "\"";
  while (!text.empty()) {
    auto const [codePoint, length] = unicode::decodeFirst(text);
    if (codePoint == U'\n') {
      out += "\\n";
    } else if (codePoint == U'"' || codePoint == U'\\') {
      out += '\\';
      out += text[0];
    } else if (codePoint >= unicode::kIllFormedByte) {
      out += "\\x" + hexadecimal(codePoint - unicode::kIllFormedByte);
    } else if (isEscaped(codePoint)) {
      out += "\\u{" + hexadecimal(codePoint) + "}";
    } else {
      out += text.substr(0, length);
    }
    text.remove_prefix(length);
  }
  return out + "\"";
}

/// One node's line, without its children: each attribute that differs from the default in one fixed order.
class Line {
 public:
  explicit Line(std::string start) : text_(std::move(start)) {}

  Line& word(std::string_view word, bool applies = true) {
    if (applies) text_ += " " + std::string(word);
    return *this;
  }
  Line& text(std::string_view name, std::string const& value) {
    if (!value.empty()) text_ += " " + std::string(name) + "=" + quoted(value);
    return *this;
  }
  Line& number(std::string_view name, double value, double usual) {
    if (value != usual) text_ += " " + std::string(name) + "=" + shortestDecimal(value);
    return *this;
  }
  Line& number(std::string_view name, std::optional<double> value) {
    if (value) text_ += " " + std::string(name) + "=" + shortestDecimal(*value);
    return *this;
  }
  Line& font(Font const& font) {
    if (font != Font{}) text_ += " font=" + describe(font);
    return *this;
  }
  Line& paint(std::string_view name, Paint const& paint) {
    if (paint != Paint{}) text_ += " " + std::string(name) + "=" + describe(paint);
    return *this;
  }
  /// top, leading, bottom, trailing
  Line& edges(std::string_view name, Edges const& edges) {
    if (edges == Edges{}) return *this;
    text_ += " " + std::string(name) + "=" + shortestDecimal(edges.top) + "," + shortestDecimal(edges.leading) + "," +
             shortestDecimal(edges.bottom) + "," + shortestDecimal(edges.trailing);
    return *this;
  }
  [[nodiscard]] std::string const& str() const { return text_; }

 private:
  std::string text_;
};

std::string_view nameOf(HorizontalAlignment alignment) {
  constexpr std::array kNames{"leading", "centre", "trailing"};
  return kNames.at(static_cast<std::size_t>(alignment));
}
std::string_view nameOf(VerticalAlignment alignment) {
  constexpr std::array kNames{"top", "centre", "bottom"};
  return kNames.at(static_cast<std::size_t>(alignment));
}

struct DescribeContent {
  Line operator()(HStack const& s) const {
    Line line("HStack");
    return line.word(nameOf(s.alignment), s.alignment != HStack{}.alignment)
        .number("spacing", s.spacing, HStack{}.spacing);
  }
  Line operator()(VStack const& s) const {
    Line line("VStack");
    return line.word(nameOf(s.alignment), s.alignment != VStack{}.alignment)
        .number("spacing", s.spacing, VStack{}.spacing);
  }
  Line operator()(ZStack const&) const { return Line("ZStack"); }
  Line operator()(Spacer const&) const { return Line("Spacer"); }
  Line operator()(Divider const&) const { return Line("Divider"); }
  Line operator()(Text const& t) const {
    Line line("Text " + quoted(t.text));
    return line.word(nameOf(t.alignment), t.alignment != Text{}.alignment).font(t.font).paint("paint", t.paint);
  }
  Line operator()(Symbol const& s) const {
    Line line("Symbol " + quoted(s.name));
    return line.font(s.font).paint("paint", s.paint);
  }
  Line operator()(Canvas const& c) const { return Line("Canvas " + describe(c.drawing.size)); }
  Line operator()(Disc const& d) const {
    Line line("Disc");
    return line.number("diameter", d.diameter, Disc{}.diameter).paint("fill", d.fill);
  }
  Line operator()(Button const& b) const {
    Line line("Button " + quoted(b.title));
    return line.word("prominent", b.style == ButtonStyle::prominent);
  }
  Line operator()(Toggle const& t) const { return Line(t.isOn ? "Toggle on" : "Toggle off"); }
  Line operator()(Picker const& p) const {
    Line line("Picker");
    return line.word("without selection", !p.selection).text("unlisted", p.unlisted);
  }
  Line operator()(TextField const& f) const {
    Line line("TextField " + quoted(f.text));
    return line.text("placeholder", f.placeholder).font(f.font);
  }
  Line operator()(Spinner const& s) const {
    Line line("Spinner");
    return line.number("diameter", s.diameter, Spinner{}.diameter);
  }
};

void describeModifiers(Line& line, Node const& node) {
  line.text("label", node.accessibilityLabel).edges("padding", node.padding);
  line.number("width", node.frame.width).number("height", node.frame.height);
  line.number("minWidth", node.frame.minWidth).number("minHeight", node.frame.minHeight);
  line.word("fillsWidth", node.frame.fillsWidth).word("fillsHeight", node.frame.fillsHeight);
  if (node.background) {
    line.number("radius", node.background->radius)
        .word("continuous", node.background->corners == Corners::continuous)
        .word("background=" + describe(node.background->fill));
  }
  line.word("disabled", !node.isEnabled).word("hidden", node.isHidden);
  line.text("tooltip", node.tooltip).text("key", node.key);
}

void dumpInto(std::string& out, Node const& node, std::size_t depth) {
  std::string const indent(2 * depth, ' ');
  auto line = std::visit(DescribeContent{}, node.content);
  describeModifiers(line, node);
  out += indent + line.str() + "\n";

  auto const dumpChildren = [&](auto const& stack) {
    for (auto const& child : stack.children) dumpInto(out, child, depth + 1);
  };
  std::visit(Overloaded{
                 [&](HStack const& stack) { dumpChildren(stack); },
                 [&](VStack const& stack) { dumpChildren(stack); },
                 [&](ZStack const& stack) { dumpChildren(stack); },
                 [&](Canvas const& canvas) {
                   for (auto const& step : canvas.drawing.steps) out += indent + "  " + describe(step) + "\n";
                 },
                 [&](Picker const& picker) {
                   for (std::size_t i = 0; i < picker.options.size(); ++i) {
                     out += indent + "  option " + quoted(picker.options[i]);
                     out += picker.selection == i ? " selected\n" : "\n";
                   }
                 },
                 [](auto const&) {},
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
