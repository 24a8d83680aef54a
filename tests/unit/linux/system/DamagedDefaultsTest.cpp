#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "DiagnosticLines.h"
#include "platform/fake/FakeMainLoop.h"
#include "platform/linux/system/FileUserDefaults.h"
#include "support/TemporaryFolder.h"

namespace morla::linux {
namespace {

using support::TemporaryFolder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct DamageRow {
  char const* label;
  std::string text;
  std::map<std::string, std::int64_t> kept;
};

std::vector<DamageRow> const& damageRows() {
  static std::vector<DamageRow> const rows = {
      {"empty", "", {}},
      {"white space", " \n", {}},
      {"not JSON", "hello", {}},
      {"zero bytes", std::string(64, '\0'), {}},
      {"an array", "[1, 2]", {}},
      {"a number", "17", {}},
      {"null", "null", {}},
      {"cut off after the brace", "{", {}},
      {"cut off in a key", R"({"a": 1, "b)", {{"a", 1}}},
      {"cut off before a value", R"({"a": 1, "b": )", {{"a", 1}}},
      {"cut off in a text", R"({"a": 1, "b": 2, "c": "te)", {{"a", 1}, {"b", 2}}},
      {"cut off after a comma", R"({"a": 1, "b": 2,)", {{"a", 1}, {"b", 2}}},
      {"cut off where a number may go on", R"({"a": 1, "b": 12)", {{"a", 1}}},
      {"cut off behind a number that has ended", "{\"a\": 1, \"b\": 12\n", {{"a", 1}, {"b", 12}}},
      {"cut off in a foreign value", R"({"a": 1, "b": {"c": 2)", {{"a", 1}}},
      {"garbage in the middle", R"({"a": 1, "b": 2, ??, "c": 3})", {{"a", 1}, {"b", 2}}},
      {"garbage at the end", R"({"a": 1} {"b": 2})", {{"a", 1}}},
      {"bytes that are not UTF-8", "{\"a\": 1, \"b\": \"\xFF\"}", {{"a", 1}}},
      {"a number beyond every range", R"({"a": 1, "b": 1e999, "c": 3})", {{"a", 1}}},
      {"nested without end", R"({"a": 1, "b": )" + std::string(100000, '['), {{"a", 1}}},
  };
  return rows;
}

TEST(DamagedDefaults, EveryKeyBeforeTheDamageIsReadAndOneLineTellsOfIt) {
  for (auto const& row : damageRows()) {
    fake::FakeMainLoop loop;
    TemporaryFolder const folder;
    folder.write("defaults.json", row.text);
    DiagnosticLines lines;
    FileUserDefaults const defaults(loop, folder / "defaults.json");
    for (auto const* key : {"a", "b", "c"}) {
      auto const expected = row.kept.find(key);
      EXPECT_EQ(defaults.integer(key),
                expected == row.kept.end() ? std::nullopt : std::optional<std::int64_t>(expected->second))
          << row.label << ": " << key;
    }
    EXPECT_THAT(lines.get(), ElementsAre(HasSubstr("damaged"))) << row.label;
    EXPECT_EQ(folder.read("defaults.json"), row.text) << row.label << ": reading changes nothing";
  }
}

TEST(DamagedDefaults, TheFirstWriteKeepsTheDamagedFileAsideAndEveryKeyThatCouldBeRead) {
  for (auto const& row : damageRows()) {
    fake::FakeMainLoop loop;
    TemporaryFolder const folder;
    folder.write("defaults.json", row.text);
    FileUserDefaults defaults(loop, folder / "defaults.json");
    defaults.set("new", true);
    defaults.set("new", false);
    DiagnosticLines lines;
    FileUserDefaults const again(loop, folder / "defaults.json");
    EXPECT_THAT(lines.get(), IsEmpty()) << row.label << ": the file is whole again";
    EXPECT_EQ(again.boolean("new"), false) << row.label;
    for (auto const& [key, value] : row.kept) EXPECT_EQ(again.integer(key), value) << row.label << ": " << key;
    int copies = 0;
    for (auto const& entry : std::filesystem::directory_iterator(folder.path())) {
      auto const name = entry.path().filename().string();
      if (!name.starts_with("defaults.json.broken-")) continue;
      ++copies;
      EXPECT_EQ(folder.read(name), row.text) << row.label;
    }
    EXPECT_EQ(copies, 1) << row.label;
  }
}

}  // namespace
}  // namespace morla::linux
