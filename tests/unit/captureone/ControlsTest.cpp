#include "captureone/control/Controls.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace morla::captureone {
namespace {

class RememberedPermission final : public AutomationPermission {
 public:
  Automation read() const override {
    ++reads;
    return decision;
  }
  bool write(Automation next) override {
    if (!isWritable) return false;
    decision = next;
    return true;
  }
  Automation decision = Automation::undecided;
  bool isWritable = true;
  mutable int reads = 0;
};

class ControlsTest : public ::testing::Test {
 protected:
  std::string get(std::string const& key) { return controls_.get(key).value_or("(unknown key)"); }
  bool set(std::string const& key, std::string const& value) { return !controls_.set(key, value).has_value(); }

  Model model_;
  RememberedPermission permission_;
  Controls controls_{model_, permission_};
};

struct KeyRow {
  std::string key;
  std::string start;
  std::string next;  ///< empty for a key that can be read only
  std::vector<std::string> refused;
};

std::vector<std::string> const kNoBooleans{"", "True", "1", "yes", " true"};

std::vector<KeyRow> const kKeys{
    {"document.open", "1", "3", {"", "-1", "13", "1.0", "two", "1 "}},
    {"document.kind", "session", "catalog", {"", "Session", "catalogue"}},
    {"camera.count", "2", "1", {"", "-1", "4", "x"}},
    {"camera.current", "1", "2", {"", "0", "3", "-1", "x"}},
    {"camera.connected", "true", "false", kNoBooleans},
    {"camera.power", "true", "false", kNoBooleans},
    {"camera.name", "MX-1 Studio", "Autre | nom", {}},
    {"camera.format", "RAW", "", {}},
    {"camera.iso", "100", "Hi 1", {}},
    {"camera.aperture", "f/8", "8,0", {}},
    {"camera.shutter", "1/125", "30\"", {}},
    {"camera.available.format", "RAW|RAW + JPEG|JPEG", "RAW", {}},
    {"camera.available.iso", "50|100|200|400|800|1600|3200|6400", "", {}},
    {"camera.available.aperture", "f/2.8|f/4|f/5.6|f/8|f/11|f/16|f/22", "||f/8|", {}},
    {"camera.available.shutter", "1/1000|1/500|1/250|1/125|1/60|1/30|1/15|1/8|1/4|1/2|1\"|2\"", "x", {}},
    {"variants.count", "12", "5000", {"", "-1", "20001", "x"}},
    {"variants.selected", "1", "2|12", {"0", "13", "1|x", "All", "007"}},
    {"recipes.enabled", "JPEG pleine taille|Épreuve rapide", "JPEG web", {"jpeg web", "JPEG web|", "JPEG web|x"}},
    {"captures", "/Capture One/Séance 1/Capture", "/Users/me/Job/Capture/", {}},
    {"captures.form", "file", "hfs", {"", "HFS", "alias"}},
    {"process.delay", "0", "1.5", {"", "-1", "nan", "1e9"}},
    {"process.stall", "false", "true", kNoBooleans},
    {"automation", "undecided", "deny", {"", "Allow", "yes"}},
    {"fault.delay", "0", "0.25", {"", "-0.1", "nan", "inf", "1e9", "1s"}},
    {"fault.silent", "false", "true", kNoBooleans},
    {"fault.quit-at-event", "0", "4", {"", "-1", "1.5", "99999999999999999999"}},
    {"fault.refuse-at-event", "0", "5", {"", "-1", "x"}},
    {"fault.reply-kind", "text", "missing", {"", "Text", "list"}},
    {"fault.reply", "", "a||b\xff", {}},
};

TEST_F(ControlsTest, EveryKeyStartsWithItsDefaultTakesAValueAndRefusesWhatIsNone) {
  for (auto const& row : kKeys) {
    EXPECT_EQ(get(row.key), row.start) << row.key;
    for (auto const& value : row.refused) {
      auto const refusal = controls_.set(row.key, value);
      EXPECT_TRUE(refusal.has_value() && !refusal->empty()) << row.key << " took \"" << value << '"';
      EXPECT_EQ(get(row.key), row.start) << row.key << " after \"" << value << '"';
    }
    EXPECT_TRUE(set(row.key, row.next)) << row.key;
    EXPECT_EQ(get(row.key), row.next) << row.key;
    model_.reset();
    EXPECT_TRUE(row.key == "automation" || get(row.key) == row.start) << row.key << " after a reset";
  }
}

TEST_F(ControlsTest, ThereAreNoKeysButTheseAndTheCountOfEvents) {
  std::set<std::string> expected{"events", "queue.length", "recipes"};
  for (auto const& row : kKeys) expected.insert(row.key);
  std::set<std::string> actual;
  for (auto const& [key, value] : controls_.snapshot()) actual.insert(key);
  EXPECT_EQ(actual, expected);
}

TEST_F(ControlsTest, RefusesUnknownKeysAndWritingWhatCanOnlyBeRead) {
  for (auto const* key : {"", "bogus", "camera", "Camera.iso", "variants", "recipe", "process"}) {
    EXPECT_FALSE(controls_.get(key).has_value()) << key;
    EXPECT_TRUE(controls_.set(key, "1").has_value()) << key;
  }
  for (auto const* key : {"events", "recipes", "queue.length"}) {
    EXPECT_NE(controls_.set(key, "0")->find("only be read"), std::string::npos) << key;
  }
}

TEST_F(ControlsTest, KeysThatOnlyActHaveNothingToRead) {
  for (auto const* key : {"recipe.add", "recipe.delete"}) {
    EXPECT_FALSE(controls_.get(key).has_value()) << key;
    EXPECT_NE(controls_.whyUnreadable(key).find("only be set"), std::string::npos) << key;
  }
  EXPECT_NE(controls_.whyUnreadable("bogus").find("unknown key"), std::string::npos);
}

TEST_F(ControlsTest, WithoutADocumentItsKeysAreEmptyAndRefuseValues) {
  ASSERT_TRUE(set("document.open", "0"));
  EXPECT_EQ(get("variants.count"), "0");
  for (auto const* key : {"variants.selected", "recipes", "recipes.enabled", "captures", "captures.form"}) {
    EXPECT_EQ(get(key), "") << key;
  }
  for (auto const& [key, value] : std::vector<std::pair<std::string, std::string>>{{"variants.count", "1"},
                                                                                   {"variants.selected", "none"},
                                                                                   {"recipes.enabled", ""},
                                                                                   {"recipe.add", "x"},
                                                                                   {"recipe.delete", "JPEG web"},
                                                                                   {"captures", "/x"},
                                                                                   {"captures.form", "hfs"}}) {
    EXPECT_EQ(controls_.set(key, value), "there is no document") << key;
  }
}

TEST_F(ControlsTest, TheSelectionIsReadAsIdsHoweverItWasMade) {
  ASSERT_TRUE(set("variants.count", "3"));
  ASSERT_TRUE(set("variants.selected", "all"));
  EXPECT_EQ(get("variants.selected"), "1|2|3");
  ASSERT_TRUE(set("variants.count", "5"));
  EXPECT_EQ(get("variants.selected"), "1|2|3") << "new variants are not selected";
  ASSERT_TRUE(set("variants.selected", "5|2"));
  EXPECT_EQ(get("variants.selected"), "2|5") << "in the order of the variants";
  ASSERT_TRUE(set("variants.count", "4"));
  EXPECT_EQ(get("variants.selected"), "2");
  ASSERT_TRUE(set("variants.selected", "none"));
  EXPECT_EQ(get("variants.selected"), "");
}

TEST_F(ControlsTest, RecipesAreAddedAtTheEndDisabledAndDeletedByTheirExactName) {
  std::string const start = get("recipes");
  for (auto const* name : {"a,b", "say \"x\"", "a|b", "AirDrop", "airdrop"}) ASSERT_TRUE(set("recipe.add", name));
  EXPECT_EQ(get("recipes"), start + "|a,b|say \"x\"|a|b|AirDrop|airdrop");
  EXPECT_EQ(get("recipes.enabled"), "JPEG pleine taille|Épreuve rapide");
  ASSERT_TRUE(set("recipe.delete", "airdrop"));
  EXPECT_FALSE(set("recipe.delete", "AIRDROP"));
  EXPECT_EQ(get("recipes"), start + "|a,b|say \"x\"|a|b|AirDrop");
  EXPECT_FALSE(set("recipe.add", ""));
}

TEST_F(ControlsTest, ANameWithABarInItCanBeEnabled) {
  for (auto const* name : {"a|b", "a", "b"}) ASSERT_TRUE(set("recipe.add", name));
  ASSERT_TRUE(set("recipes.enabled", "a|b"));
  EXPECT_EQ(get("recipes.enabled"), "a|b");
  EXPECT_TRUE(model_.documents().current()->recipes.findNamed("a|b")->isEnabled);
  EXPECT_FALSE(model_.documents().current()->recipes.findNamed("a")->isEnabled);
  ASSERT_TRUE(set("recipes.enabled", "a|b|b"));
  EXPECT_TRUE(model_.documents().current()->recipes.findNamed("b")->isEnabled);
  ASSERT_TRUE(set("recipes.enabled", ""));
  EXPECT_EQ(get("recipes.enabled"), "");
}

TEST_F(ControlsTest, TheCaptureFolderIsAnsweredInEachForm) {
  struct Row {
    char const* set;
    char const* form;
    char const* answer;
  };
  Row const rows[] = {
      {"/Users/me/Job/Capture", "hfs", "Macintosh HD:Users:me:Job:Capture:"},
      {"/Users/me/Job/Capture/", "hfs", "Macintosh HD:Users:me:Job:Capture:"},
      {"/Volumes/Disk/Job", "hfs", "Disk:Job:"},
      {"Disk:Job:Capture:", "hfs", "Disk:Job:Capture:"},
      {"Disk:Job", "hfs", "Disk:Job"},
      {"/", "hfs", "Macintosh HD:"},
      {"/Users/me/Job/Capture/", "posix", "/Users/me/Job/Capture/"},
      {"Macintosh HD:Users:me:", "posix", "/Users/me"},
      {"Disk:Job:", "posix", "/Volumes/Disk/Job"},
      {"/", "posix", "/"},
      {"neither", "posix", "neither"},
      {"neither", "hfs", "neither"},
      {"/Users/me/Job", "file", "/Users/me/Job"},
      {"Disk:Job:", "file", "/Volumes/Disk/Job"},
      {"/Users/me/Job", "missing", ""},
  };
  for (auto const& row : rows) {
    ASSERT_TRUE(set("captures", row.set));
    ASSERT_TRUE(set("captures.form", row.form));
    EXPECT_EQ(get("captures"), row.answer) << row.set << " as " << row.form;
  }
}

TEST_F(ControlsTest, ARefusalIsUtf8WhateverTheValueWas) {
  EXPECT_EQ(controls_.set("camera.power", "\xff"), "expected true or false, not \"\xEF\xBF\xBD\"");
}

TEST_F(ControlsTest, WithoutACameraItsKeysAreEmptyAndRefuseValues) {
  ASSERT_TRUE(set("camera.count", "0"));
  EXPECT_EQ(get("camera.current"), "0");
  EXPECT_EQ(get("camera.power"), "false");
  EXPECT_EQ(get("camera.connected"), "false");
  for (auto const* key : {"camera.name", "camera.iso", "camera.available.iso"}) {
    EXPECT_EQ(get(key), "") << key;
    EXPECT_EQ(controls_.set(key, "x"), "there is no camera") << key;
  }
  EXPECT_EQ(controls_.set("camera.power", "true"), "there is no camera");
  EXPECT_FALSE(set("camera.current", "0"));
}

TEST_F(ControlsTest, SwitchingTheCameraSwitchesWhatItsKeysSay) {
  ASSERT_TRUE(set("camera.current", "2"));
  EXPECT_EQ(get("camera.name"), "Roadrunner R5");
  EXPECT_NE(get("camera.available.iso"), model_.cameras().all()[0].setting(CameraSetting::iso).available);
}

TEST_F(ControlsTest, TellsTheKeysThatChangedWithTheirValues) {
  Controls::Snapshot told;
  auto const observer = controls_.onChange([&](auto const& changed) { told = changed; });
  set("camera.iso", "3200");
  EXPECT_EQ(told, (Controls::Snapshot{{"camera.iso", "3200"}}));
  told.clear();
  set("camera.iso", "3200");
  EXPECT_TRUE(told.empty());
  (void)model_.faults().nextEvent();
  EXPECT_EQ(told, (Controls::Snapshot{{"events", "1"}}));
  set("automation", "allow");
  EXPECT_EQ(told, (Controls::Snapshot{{"automation", "allow"}}));
  permission_.decision = Automation::deny;
  controls_.review();
  EXPECT_EQ(told, (Controls::Snapshot{{"automation", "deny"}}));
}

TEST_F(ControlsTest, AnEventTellsItsCountAloneAndReadsNoPermission) {
  Controls::Snapshot told;
  auto const subscription = controls_.onChange([&](Controls::Snapshot const& changed) { told = changed; });
  permission_.reads = 0;
  (void)model_.faults().nextEvent();
  EXPECT_EQ(told, (Controls::Snapshot{{"events", "1"}}));
  EXPECT_EQ(permission_.reads, 0);
  ASSERT_TRUE(set("camera.iso", "9"));
  EXPECT_EQ(told, (Controls::Snapshot{{"camera.iso", "9"}}));
  EXPECT_EQ(permission_.reads, 0) << "a change of the model is none of the permission";
}

TEST_F(ControlsTest, ResetBringsBackThePermissionThatWasFoundNotAnother) {
  permission_.decision = Automation::allow;
  Controls controls(model_, permission_);
  ASSERT_EQ(controls.set("automation", "deny"), std::nullopt);
  ASSERT_EQ(controls.set("document.open", "5"), std::nullopt);
  Controls::Snapshot told;
  auto const observer = controls.onChange([&](auto const& changed) { told.insert(changed.begin(), changed.end()); });
  controls.reset();
  EXPECT_EQ(permission_.decision, Automation::allow);
  EXPECT_EQ(told, (Controls::Snapshot{
                      {"automation", "allow"}, {"captures", "/Capture One/Séance 1/Capture"}, {"document.open", "1"}}));
  EXPECT_EQ(controls.get("document.open"), "1");
}

TEST_F(ControlsTest, SaysSoWhenThePermissionCannotBeKept) {
  permission_.isWritable = false;
  EXPECT_EQ(controls_.set("automation", "allow"), "the store of permissions cannot be written");
  EXPECT_EQ(get("automation"), "undecided");
}

TEST_F(ControlsTest, TheDumpIsOneJsonObjectOfAllKeys) {
  set("fault.reply", "a\"\xff");
  auto const dump = controls_.dump();
  EXPECT_EQ(dump.front(), '{');
  EXPECT_EQ(dump.back(), '}');
  for (auto const& row : kKeys) EXPECT_NE(dump.find("\"" + row.key + "\":\""), std::string::npos) << row.key;
  EXPECT_NE(dump.find("\"events\":\"0\""), std::string::npos);
  EXPECT_NE(dump.find("\"fault.reply\":\"a\\\"\xEF\xBF\xBD\""), std::string::npos);
}

}  // namespace
}  // namespace morla::captureone
