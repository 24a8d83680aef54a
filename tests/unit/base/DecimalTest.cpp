#include "base/Decimal.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

namespace morla {
namespace {

TEST(Decimal, IsAsShortAsTheNumberAllows) {
  struct Row {
    double value;
    char const* text;
  };
  for (auto const& [value, text] : {
           Row{0, "0"},
           Row{-0.0, "-0"},
           Row{40, "40"},
           Row{-2.5, "-2.5"},
           Row{0.1, "0.1"},
           Row{0.7, "0.7"},
           Row{1920.25, "1920.25"},
           Row{100000, "100000"},
           Row{1e20, "1e+20"},
           Row{1e-7, "1e-07"},
           Row{1.0 / 3, "0.3333333333333333"},
           Row{0.1 + 0.2, "0.30000000000000004"},
       }) {
    EXPECT_EQ(shortestDecimal(value), text);
  }
}

TEST(Decimal, ReadsBackAsTheSameNumber) {
  std::mt19937_64 random(20240229);
  for (int i = 0; i < 20000; ++i) {
    std::uint64_t const bits = random();
    double value;
    std::memcpy(&value, &bits, sizeof value);
    if (!std::isfinite(value)) continue;
    auto const text = shortestDecimal(value);
    EXPECT_EQ(std::strtod(text.c_str(), nullptr), value) << text;
  }
}

TEST(Decimal, HasAPointAlsoWhereTheLocaleWritesAComma) {
  std::string const before = std::setlocale(LC_NUMERIC, nullptr);
  if (std::setlocale(LC_NUMERIC, "fr_FR.UTF-8") == nullptr) {
    GTEST_SKIP() << "this machine has no locale fr_FR.UTF-8";
  }
  EXPECT_EQ(shortestDecimal(2.5), "2.5");
  std::setlocale(LC_NUMERIC, before.c_str());
}

}  // namespace
}  // namespace morla
