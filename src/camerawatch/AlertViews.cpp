#include "camerawatch/AlertViews.h"

#include <utility>

namespace morla::camerawatch {
namespace {

using namespace view;

constexpr Paint kWhitePaint{kWhite};
/// Continuous corners; the red is the system's.
constexpr RoundedRect kBanner{14, Corners::continuous, {SystemColour::red}};

Node banner(std::string first, std::string second) {
  auto label = first + "\n" + second;
  auto lines = VStack{{node(Text{std::move(first), {14, Weight::bold}, kWhitePaint}),
                       node(Text{std::move(second), {13, Weight::semibold}, kWhitePaint})},
                      4,
                      HorizontalAlignment::leading};
  return node(HStack{{node(Symbol{"exclamationmark.triangle.fill", {28}, kWhitePaint}), node(std::move(lines)),
                      node(Spacer{})},
                     12})
      .labelled(std::move(label))
      .padded(Edges::symmetric(18, 14))
      .framed({.fillsWidth = true, .fillsHeight = true})
      .on(kBanner);
}

}  // namespace

Node FormatAlertView(std::string const& format) {
  return banner("Le format n'est pas : RAW", "Format détecté : " + format);
}

Node ISOAlertView(std::string const& detected, std::string const& expected) {
  return banner("L'ISO n'est pas : " + expected, "ISO détecté : " + detected);
}

Node ApertureAlertView(std::string const& detected, std::string const& expected) {
  return banner("L'ouverture n'est pas : " + expected, "Ouverture détectée : " + detected);
}

Node ShutterAlertView(std::string const& detected, std::string const& expected) {
  return banner("La vitesse n'est pas : " + expected, "Vitesse détectée : " + detected);
}

}  // namespace morla::camerawatch
