#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "SimulatedHost.h"

/// The scripts that the program sends, word for word and put together as it does, against the simulated application in
/// every state that it can be in.
namespace morla::captureone {
namespace {

std::string toldById(std::string const& name) {
  return "tell application id \"com.captureone.captureone16\"" + part(name);
}
std::string exporting(std::string const& format = "JPEG") {
  return part("airdrop-export-a") + format + part("airdrop-export-b");
}
std::string settingCaptures(std::string const& path) {
  return part("capture-folder-set-head") + path + part("capture-folder-set-tail");
}

/// What the program makes of the recipes that an export has named: it splits at commas and puts quotes around each.
std::string cleaning(std::string const& recipes) {
  std::string names;
  for (std::size_t start = 0; !recipes.empty() && start <= recipes.size();) {
    auto const end = std::min(recipes.find(',', start), recipes.size());
    names += (names.empty() ? "\"" : ", \"") + recipes.substr(start, end - start) + "\"";
    start = end + 1;
  }
  std::string const restore = names.empty() ? "" : part("airdrop-restore-head") + names + part("airdrop-restore-tail");
  return part("airdrop-cleanup-head") + restore + part("airdrop-cleanup-tail");
}

class ScriptsTest : public ::testing::Test {
 protected:
  static constexpr char const* kEnabledAtStart = "JPEG pleine taille,Épreuve rapide";

  Document const& document() { return *host_.model.documents().current(); }
  void change(std::function<void(Document&)> const& change) {
    host_.model.documents().change(document().id, [&](Document& document) {
      change(document);
      return true;
    });
  }
  void addRecipe(std::string const& name, bool isEnabled) {
    change([&](Document& document) { document.recipes.add(name).isEnabled = isEnabled; });
  }
  void select(std::size_t count) {
    change([&](Document& document) {
      document.gallery.setCount(std::max<std::size_t>(count, Gallery::kStartCount));
      document.gallery.selectAll(false);
      for (std::size_t i = 0; i < count; ++i) document.gallery.setSelected(i, true);
    });
  }
  std::string names(bool isOnlyEnabled) {
    std::string all;
    for (auto const& each : document().recipes.all()) {
      if (each.isEnabled || !isOnlyEnabled) all += (all.empty() ? "" : ",") + each.name;
    }
    return all;
  }
  std::string enabled() { return names(true); }
  Recipe const* airDrop() { return document().recipes.findNamed("AirDrop"); }

  SimulatedHost host_;
};

struct State {
  char const* label;
  void (*arrange)(SimulatedHost&);
  char const* probe;
  char const* status;
  char const* exported;
  char const* cleaned;
  char const* parent;
  char const* set;
};

constexpr char kReading[] =
    "value: RAW||100||f/8||1/125||50|100|200|400|800|1600|3200|6400||f/2.8|f/4|f/5.6|f/8|f/11|f/16|f/22||"
    "1/1000|1/500|1/250|1/125|1/60|1/30|1/15|1/8|1/4|1/2|1\"|2\"||MX-1 Studio";
constexpr char kExported[] = "value: 1|/private/tmp/C1AIRDROP_1|JPEG pleine taille,Épreuve rapide";
constexpr char kParent[] = "value: /Capture One/Séance 1";
constexpr char kCapturesSet[] = "value: /private/tmp/New/";

std::vector<State> const kStates{
    {"as it starts", [](SimulatedHost&) {}, "value: OK", kReading, kExported, "value: true", kParent, kCapturesSet},
    {"not installed", [](SimulatedHost& host) { host.isInstalled = host.running = false; }, "error: -1728",
     "error: -1728", "error: -1728", "error: -1728", "error: -1728", "error: -1728"},
    {"not running", [](SimulatedHost& host) { host.running = false; }, "value: OK", kReading, "no value", "no value",
     "value: ", kCapturesSet},
    {"no permission", [](SimulatedHost& host) { host.isTellRefused = true; }, "error: -1743", "error: -1743",
     "error: -1743", "error: -1743", "error: -1743", "error: -1743"},
    {"no document", [](SimulatedHost& host) { host.model.documents().setCount(0); }, "value: OK", "value: NO_DOCUMENT",
     "no value", "no value", "value: ", "no value"},
    {"a catalog without an output folder",
     [](SimulatedHost& host) { host.model.documents().setKind(DocumentKind::catalog); }, "value: OK", kReading,
     "error: -43", "value: true", kParent, kCapturesSet},
    {"no camera", [](SimulatedHost& host) { host.model.cameras().setCount(0); }, "value: OK", "value: NO_CAMERA",
     kExported, "value: true", kParent, kCapturesSet},
    {"a camera that is off", [](SimulatedHost& host) { host.model.cameras().setPower(CameraPower::off); }, "value: OK",
     "value: CAMERA_OFF", kExported, "value: true", kParent, kCapturesSet},
    {"a camera whose link has gone",
     [](SimulatedHost& host) { host.model.cameras().setLink(CameraLink::disconnected); }, "value: OK",
     "value: CAMERA_OFF", kExported, "value: true", kParent, kCapturesSet},
};

TEST(ScriptStates, EveryScriptEndsAsItMustInEveryStateOfTheApplication) {
  for (auto const& state : kStates) {
    struct Row {
      char const* label;
      std::string source;
      char const* expected;
    };
    Row const rows[] = {
        {"probe", toldById("probe"), state.probe},
        {"status", toldById("status"), state.status},
        {"export", exporting(), state.exported},
        {"clean-up", cleaning("JPEG pleine taille,Épreuve rapide"), state.cleaned},
        {"parent", part("capture-folder-parent"), state.parent},
        {"set", settingCaptures("/private/tmp/New"), state.set},
    };
    for (auto const& row : rows) {
      SimulatedHost host;
      std::filesystem::create_directory(host.temporary("New"));
      state.arrange(host);
      EXPECT_EQ(host.outcomeOf(row.source), row.expected) << state.label << ": " << row.label << ": " << host.message;
      EXPECT_EQ(host.delimiters, applescript::TextItemDelimiters{""}) << state.label << ": " << row.label;
    }
  }
}

TEST(ScriptStates, OnlyScriptsThatDoNotAskFirstStartTheApplication) {
  struct Row {
    char const* label;
    std::string source;
    int launches;
  };
  Row const rows[] = {
      {"probe", toldById("probe"), 0},
      {"status", toldById("status"), 1},
      {"export", exporting(), 0},
      {"clean-up", cleaning(""), 0},
      {"parent", part("capture-folder-parent"), 0},
      {"set", settingCaptures("/tmp"), 1},
  };
  for (auto const& row : rows) {
    SimulatedHost host;
    host.running = false;
    (void)host.outcomeOf(row.source);
    EXPECT_EQ(host.launches, row.launches) << row.label;
    EXPECT_EQ(host.model.faults().events() > 0, row.launches > 0) << row.label;
  }
}

TEST_F(ScriptsTest, AnExportMakesItsRecipeEnablesItAloneAndProcessesTheSelection) {
  for (std::size_t const count : {1U, 3U, 5000U}) {
    host_.model.reset();
    select(count);
    auto const folder = "/private/tmp/C1AIRDROP_" + std::to_string(count == 1 ? 1 : count == 3 ? 2 : 3);
    EXPECT_EQ(host_.outcomeOf(exporting()), "value: " + std::to_string(count) + "|" + folder + "|" + kEnabledAtStart);
    EXPECT_EQ(enabled(), "AirDrop");
    ASSERT_NE(airDrop(), nullptr);
    EXPECT_EQ(airDrop()->format, FileFormat::jpeg);
    EXPECT_EQ(airDrop()->jpegQuality, 80);
    EXPECT_EQ(airDrop()->scaling, ScalingMethod::longEdge);
    EXPECT_EQ(airDrop()->primaryValue, 1024);
    EXPECT_EQ(airDrop()->unit, MeasurementUnit::pixels);
    EXPECT_EQ(airDrop()->colorProfile, "sRGB Color Space Profile.icm");
    EXPECT_EQ(airDrop()->pixelsPerInch, 300);
    EXPECT_EQ(airDrop()->rootLocation, folder);
    EXPECT_EQ(airDrop()->rootFolder, RootFolder::customLocation);
    auto const& jobs = host_.model.queue().jobs();
    ASSERT_EQ(jobs.size(), count);
    EXPECT_EQ(jobs.front().folder, folder);
    EXPECT_EQ(jobs.front().recipe.name, "AirDrop");
    EXPECT_EQ(jobs.back().variant, std::to_string(count));
  }
}

TEST_F(ScriptsTest, AnExportTakesTheFormatThatWasChosen) {
  EXPECT_EQ(host_.outcomeOf(exporting("JPEG_QuickProof")), kExported);
  EXPECT_EQ(airDrop()->format, FileFormat::jpegQuickProof);
}

TEST_F(ScriptsTest, AnExportWithoutASelectionChangesTheRecipesAndHasNoValue) {
  select(0);
  EXPECT_EQ(host_.outcomeOf(exporting()), "no value");
  EXPECT_EQ(enabled(), "AirDrop");
  EXPECT_EQ(host_.model.queue().length(), 0u);
}

TEST_F(ScriptsTest, AnExportGoesIntoTheFolderAfterTheHighestNumber) {
  for (auto const* name : {"C1AIRDROP_2", "C1AIRDROP_10", "C1AIRDROP_", "C1AIRDROP_x", "C1AIRDROP", "XC1AIRDROP_99"}) {
    std::filesystem::create_directory(host_.temporary(name));
  }
  EXPECT_EQ(host_.outcomeOf(exporting()), std::string("value: 1|/private/tmp/C1AIRDROP_11|") + kEnabledAtStart);
  EXPECT_TRUE(std::filesystem::is_directory(host_.temporary("C1AIRDROP_11")));
}

TEST_F(ScriptsTest, AnExportIsAboutTheDocumentInFront) {
  host_.model.documents().setCount(3);
  select(3);
  EXPECT_EQ(host_.outcomeOf(exporting()).substr(0, 9), "value: 3|");
  EXPECT_EQ(host_.model.queue().jobs().front().document, document().id);
}

TEST_F(ScriptsTest, AnExportProcessesWhatIsSelectedInTheCurrentCollection) {
  change([](Document& document) {
    document.gallery.selectAll(true);
    document.gallery.setCurrentCollection("13");
  });
  EXPECT_EQ(host_.outcomeOf(exporting()).substr(0, 9), "value: 4|") << "every third of twelve";
}

TEST_F(ScriptsTest, AnExportReplacesARecipeOfItsNameInAnyCase) {
  for (auto const* name : {"AirDrop", "airdrop", "AIRDROP"}) {
    for (bool const isEnabled : {false, true}) {
      host_.model.reset();
      addRecipe(name, isEnabled);
      change([&](Document& document) { document.recipes.find(document.recipes.findNamed(name)->handle)->bits = 16; });
      auto const outcome = host_.outcomeOf(exporting());
      EXPECT_TRUE(outcome.ends_with(std::string(kEnabledAtStart) + (isEnabled ? std::string(",") + name : "")))
          << outcome;
      EXPECT_EQ(names(false), "JPEG pleine taille,JPEG web,Épreuve rapide,AirDrop") << name;
      EXPECT_EQ(airDrop()->bits, 8) << "made anew";
    }
  }
}

TEST_F(ScriptsTest, ASecondRecipeOfTheNameStaysAndTheNewOneIsStillTold) {
  addRecipe("airdrop", false);
  addRecipe("AIRDROP", false);
  EXPECT_EQ(host_.outcomeOf(exporting()), kExported);
  EXPECT_EQ(names(false), "JPEG pleine taille,JPEG web,Épreuve rapide,AIRDROP,AirDrop");
  EXPECT_EQ(enabled(), "AirDrop");
  EXPECT_EQ(airDrop()->jpegQuality, 80);
}

TEST_F(ScriptsTest, ACleanUpDeletesTheRecipeAndEnablesThoseThatWere) {
  ASSERT_EQ(host_.outcomeOf(exporting()), kExported);
  EXPECT_EQ(host_.outcomeOf(cleaning(kEnabledAtStart)), "value: true");
  EXPECT_EQ(names(false), "JPEG pleine taille,JPEG web,Épreuve rapide");
  EXPECT_EQ(enabled(), kEnabledAtStart);
}

TEST_F(ScriptsTest, ACleanUpWithoutNamesOnlyDeletesTheRecipe) {
  ASSERT_EQ(host_.outcomeOf(exporting()), kExported);
  EXPECT_EQ(host_.outcomeOf(cleaning("")), "no value");
  EXPECT_EQ(names(false), "JPEG pleine taille,JPEG web,Épreuve rapide");
  EXPECT_EQ(enabled(), "");
}

TEST_F(ScriptsTest, NamesOfRecipesThatScriptsCannotCarryAreNotRestored) {
  struct Row {
    char const* label;
    char const* name;
    char const* enabledAfterwards;
  };
  Row const rows[] = {
      {"a blank", "Two words", "Two words"},
      {"an accent", "Épreuve écran", "Épreuve écran"},
      {"a bar", "a|b", "a|b"},
      {"a comma splits it in two", "a,b", ""},
      {"a backslash makes an escape, and no script", "a\\b", "AirDrop"},
      {"a quotation mark ends the text, and there is no script", "say \"cheese\"", "AirDrop"},
  };
  for (auto const& row : rows) {
    host_.model.reset();
    change([](Document& document) {
      for (auto const& each : document.recipes.all()) document.recipes.find(each.handle)->isEnabled = false;
    });
    addRecipe(row.name, true);
    EXPECT_TRUE(host_.outcomeOf(exporting()).ends_with(std::string("|") + row.name)) << row.label;
    (void)host_.outcomeOf(cleaning(row.name));
    EXPECT_EQ(enabled(), row.enabledAfterwards) << row.label;
  }
}

TEST_F(ScriptsTest, NamesAreRestoredInAnyCase) {
  ASSERT_EQ(host_.outcomeOf(exporting()), kExported);
  EXPECT_EQ(host_.outcomeOf(cleaning("JPEG WEB,épreuve RAPIDE")), "value: true");
  EXPECT_EQ(enabled(), "JPEG web,Épreuve rapide");
}

TEST_F(ScriptsTest, ACleanUpThatDoesNotCompileLeavesEverythingAsItIs) {
  addRecipe("say \"cheese\"", true);
  ASSERT_EQ(host_.outcomeOf(exporting()).substr(0, 6), "value:");
  auto const events = host_.model.faults().events();
  EXPECT_EQ(host_.outcomeOf(cleaning("say \"cheese\"")).substr(0, 6), "error:");
  EXPECT_EQ(host_.model.faults().events(), events);
  EXPECT_EQ(enabled(), "AirDrop");
}

TEST_F(ScriptsTest, TheParentOfTheCaptureFolderIsFoundInEveryForm) {
  struct Row {
    char const* captures;
    CaptureForm form;
    char const* expected;
  };
  using enum CaptureForm;
  Row const rows[] = {
      {"/Users/me/Job/Capture", file, "value: /Users/me/Job"},
      {"/Users/me/Job/Capture/", file, "value: /Users/me/Job"},
      {"/Users/me/Job/Capture", hfs, "value: /Users/me/Job"},
      {"Macintosh HD:Users:me:Shoots:2024-05-01:Capture:", hfs, "value: /Users/me/Shoots/2024-05-01"},
      {"Macintosh HD:Users:me:Job:Capture", hfs, "value: /Users/me/Job"},
      {"/Volumes/Disk/Job/Capture/", posix, "value: /Volumes/Disk/Job"},
      {"/Users/me/Job/Capture", posix, "value: /Users/me/Job"},
      {"/Capture", posix, "value: /"},
      {"/Users/me/L'été/Capture", posix, "value: /Users/me/L'été"},
      {"Disk:Job:Capture:", hfs, "value: /Job"},
      {"/Volumes/Disk/Job/Capture", file, "value: /Job"},
      {"/", posix, "error: -1728"},
      {"neither", hfs, "value: "},
      {"", posix, "value: "},
      {"/Users/me/Job/Capture", missing, "value: "},
  };
  for (auto const& row : rows) {
    change([&](Document& document) { document.captures = {row.captures, row.form}; });
    EXPECT_EQ(host_.outcomeOf(part("capture-folder-parent")), row.expected) << row.captures << " " << host_.message;
    EXPECT_EQ(host_.delimiters, applescript::TextItemDelimiters{""}) << row.captures;
  }
}

TEST_F(ScriptsTest, ANewCaptureFolderIsTakenAndFoundAgainInEveryForm) {
  for (auto const form : {CaptureForm::hfs, CaptureForm::posix, CaptureForm::file}) {
    host_.model.reset();
    std::filesystem::create_directories(host_.temporary("Job/Séance 2"));
    change([&](Document& document) { document.captures.form = form; });
    EXPECT_EQ(host_.outcomeOf(settingCaptures("/private/tmp/Job/Séance 2")).substr(0, 6), "value:") << host_.message;
    EXPECT_EQ(document().captures.text, "/private/tmp/Job/Séance 2");
    EXPECT_EQ(host_.outcomeOf(part("capture-folder-parent")), "value: /private/tmp/Job");
  }
}

TEST_F(ScriptsTest, ACaptureFolderThatIsNotThereIsNotTaken) {
  EXPECT_EQ(host_.outcomeOf(settingCaptures("/private/tmp/gone")), "error: -43");
  EXPECT_EQ(host_.outcomeOf(settingCaptures("/private/tmp/say \"x\"")).substr(0, 6), "error:");
  EXPECT_EQ(document().captures.text, "/Capture One/Séance 1/Capture");
}

}  // namespace
}  // namespace morla::captureone
