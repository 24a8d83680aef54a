#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include "app/StatusImage.h"
#include "mirror/FloatingButton.h"
#include "view/View.h"

namespace morla::view {
namespace {

struct GoldenView {
  std::string name;
  std::function<Node()> describe;
};

std::ostream& operator<<(std::ostream& out, GoldenView const& view) {
  return out << view.name;
}

std::filesystem::path goldenFile(std::string const& name) {
  return std::filesystem::path(MORLA_SOURCE_DIR) / "tests/view/golden" / (name + ".txt");
}

class GoldenViewTest : public testing::TestWithParam<GoldenView> {};

/// With MORLA_UPDATE_GOLDEN=1 the files are written instead; the test then fails, so that it cannot be left on.
TEST_P(GoldenViewTest, IsDescribedAsItsFileSays) {
  auto const path = goldenFile(GetParam().name);
  auto const described = dump(GetParam().describe());
  if (std::getenv("MORLA_UPDATE_GOLDEN") != nullptr) {
    std::ofstream(path) << described;
    FAIL() << "wrote " << path;
  }
  std::ifstream file(path);
  ASSERT_TRUE(file) << path << " is missing";
  std::string const expected{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  EXPECT_EQ(described, expected);
}

INSTANTIATE_TEST_SUITE_P(Views, GoldenViewTest,
                         testing::Values(GoldenView{"floating-button", mirror::FloatingButtonView},
                                         GoldenView{"screen-icon", mirror::ScreenIconView},
                                         GoldenView{"status-image", [] { return node(Canvas{app::statusImage()}); }}),
                         [](auto const& row) {
                           std::string name = row.param.name;
                           for (auto& c : name) c = c == '-' ? '_' : c;
                           return name;
                         });

}  // namespace
}  // namespace morla::view
