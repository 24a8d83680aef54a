#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "SimulatedHost.h"

/// The scripts that the program sends while the application quits, or its user takes the permission back, at each
/// single event.
namespace morla::captureone {
namespace {

struct Script {
  char const* label;
  std::string source;
  std::int64_t firstCaught;  ///< from this event on the script itself deals with errors; 0: never
  std::int64_t lastCaught;
  char const* whenCaught;
};

std::vector<Script> scripts() {
  std::string const restore = part("airdrop-restore-head") + "\"JPEG pleine taille\"" + part("airdrop-restore-tail");
  return {
      {"status", "tell application \"Capture One\"" + part("status"), 2, 10, "value: CAMERA_OFF"},
      {"export", part("airdrop-export-a") + "JPEG" + part("airdrop-export-b"), 0, 0, ""},
      {"clean-up", part("airdrop-cleanup-head") + part("airdrop-cleanup-tail"), 0, 0, ""},
      {"clean-up with names", part("airdrop-cleanup-head") + restore + part("airdrop-cleanup-tail"), 0, 0, ""},
      {"parent", part("capture-folder-parent"), 3, 3, "value: "},
      {"set", part("capture-folder-set-head") + "/tmp" + part("capture-folder-set-tail"), 0, 0, ""},
  };
}

void arrange(SimulatedHost& host) {
  host.model.documents().change(host.model.documents().current()->id, [](Document& document) {
    document.recipes.add("AirDrop").isEnabled = true;
    document.gallery.selectAll(true);
    return true;
  });
}

std::int64_t eventsOf(Script const& script) {
  SimulatedHost host;
  arrange(host);
  EXPECT_NE(host.outcomeOf(script.source).substr(0, 6), "error:") << script.label << ": " << host.message;
  return host.model.faults().events();
}

std::string expectedAt(Script const& script, std::int64_t event, char const* error) {
  bool const isCaught = script.firstCaught > 0 && event >= script.firstCaught && event <= script.lastCaught;
  return isCaught ? script.whenCaught : error;
}

TEST(ScriptFaults, EveryEventCanBeTheOneThatIsRefused) {
  for (auto const& script : scripts()) {
    auto const events = eventsOf(script);
    ASSERT_GE(events, 3) << script.label;
    for (std::int64_t k = 1; k <= events; ++k) {
      SimulatedHost host;
      arrange(host);
      host.model.faults().setRefuseAtEvent(k);
      EXPECT_EQ(host.outcomeOf(script.source), expectedAt(script, k, "error: -1743")) << script.label << " at " << k;
      EXPECT_EQ(host.model.faults().events(), k) << script.label << ": nothing is sent after an error";
      EXPECT_EQ(host.delimiters, applescript::TextItemDelimiters{""}) << script.label << " at " << k;
    }
  }
}

TEST(ScriptFaults, EveryEventCanBeTheOneAtWhichTheApplicationQuits) {
  for (auto const& script : scripts()) {
    auto const events = eventsOf(script);
    for (std::int64_t k = 1; k <= events; ++k) {
      SimulatedHost host;
      arrange(host);
      host.model.faults().setQuitAtEvent(k);
      EXPECT_EQ(host.outcomeOf(script.source), expectedAt(script, k, "error: -609")) << script.label << " at " << k;
      EXPECT_FALSE(host.running) << script.label << " at " << k;
      EXPECT_EQ(host.launches, 0) << script.label << " at " << k;
      EXPECT_EQ(host.model.faults().events(), k) << script.label;
    }
  }
}

TEST(ScriptFaults, TheNextCleanUpDeletesTheRecipeWhereverAnExportEnded) {
  auto const all = scripts();
  auto const events = eventsOf(all[1]);
  ASSERT_GT(events, 20);
  for (std::int64_t k = 1; k <= events; ++k) {
    SimulatedHost host;
    arrange(host);
    host.model.faults().setRefuseAtEvent(k);
    EXPECT_EQ(host.outcomeOf(all[1].source), "error: -1743");
    EXPECT_EQ(host.model.queue().length(), 0u) << "nothing is processed by an export that ended at event " << k;
    EXPECT_NE(host.outcomeOf(all[3].source).substr(0, 6), "error:") << k;
    auto const& recipes = host.model.documents().current()->recipes;
    EXPECT_EQ(recipes.all().size(), 3u) << k;
    EXPECT_EQ(recipes.findNamed("AirDrop"), nullptr) << k;
    EXPECT_TRUE(recipes.findNamed("JPEG pleine taille")->isEnabled) << k;
  }
}

TEST(ScriptFaults, NoTextInAReplyMakesAnExportProcessSomethingElse) {
  SimulatedHost host;
  arrange(host);
  host.model.faults().setReply("x");
  // Names and identifiers are texts; what is selected and enabled is not.
  EXPECT_EQ(host.outcomeOf(part("airdrop-export-a") + "JPEG" + part("airdrop-export-b")),
            "value: 12|/private/tmp/C1AIRDROP_1|x,x,x");
  EXPECT_EQ(host.model.queue().length(), 12u);
}

}  // namespace
}  // namespace morla::captureone
