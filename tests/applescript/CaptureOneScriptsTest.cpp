#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "ToyApplication.h"
#include "applescript/Interpreter.h"

/// The export, recipe and capture-folder scripts, word for word, put together as the program does.
namespace morla::applescript::test {
namespace {

constexpr std::string_view kTable =
    "class\tapplication\tcapp\n"
    "class\tdocument\tdocu\n"
    "class\tcollection\tCOcl\n"
    "class\tvariant\tcvar\n"
    "class\trecipe\tCOrp\n"
    "element\tapplication\tdocument\n"
    "element\tdocument\trecipe\n"
    "element\tcollection\tvariant\n"
    "property\tapplication\tcurrent document\tCudo\tdocument\trw\n"
    "property\tdocument\tcurrent collection\tCuco\tcollection\trw\n"
    "property\tdocument\tcaptures\tCOcf\tany\trw\n"
    "property\tvariant\tselected\tvsel\tboolean\tr\n"
    "property\trecipe\tname\tpnam\ttext\trw\n"
    "property\trecipe\tenabled\tCRen\tboolean\trw\n"
    "property\trecipe\toutput format\tCRft\trecipeFileFormat\trw\n"
    "property\trecipe\tJPEG quality\tCRjq\tinteger\trw\n"
    "property\trecipe\tcolor profile\tCRcp\ttext\trw\n"
    "property\trecipe\tpixels per inch\tCRrs\tnumber\trw\n"
    "property\trecipe\tscaling method\tCSmt\tscalingType\trw\n"
    "property\trecipe\tscaling unit\tCSut\tmeasurementUnit\trw\n"
    "property\trecipe\tprimary scaling value\tCSv1\tnumber\trw\n"
    "property\trecipe\troot folder type\tCRro\trecipeRootType\trw\n"
    "property\trecipe\troot folder location\tCRrf\tfile\trw\n"
    "enumerator\trecipeFileFormat\tJPEG\tRjpg\n"
    "enumerator\tscalingType\tLong_Edge\tRsle\n"
    "enumerator\tmeasurementUnit\tpixels\tMUpx\n"
    "enumerator\trecipeRootType\tcustom location\tRrcu\n"
    "command\tprocess\tCaptproc\tany\ttext\n"
    "parameter\tprocess\trecipe\tPrec\ttext\toptional\n";

[[nodiscard]] std::string part(std::string const& name) {
  std::ifstream stream(MORLA_SOURCE_DIR "/scripts/" + name + ".applescript", std::ios::binary);
  return std::string{std::istreambuf_iterator<char>(stream), {}};
}

class CaptureOneScripts : public testing::Test {
 protected:
  CaptureOneScripts() : application_("Capture One", "com.captureone.captureone16", kTable) {
    host_.applications = {&application_};
    host_.shell = [this](std::string const& command) -> ShellResult {
      if (command.starts_with("ls -1 /private/tmp/")) return {0, listing_, ""};
      if (command.starts_with("mkdir -p ")) {
        host_.folders.insert(command.substr(9));
        return {0, "", ""};
      }
      if (command.starts_with("dirname '")) {
        std::string const path = command.substr(9, command.size() - 10);
        return {0, path.substr(0, path.rfind('/')) + "\n", ""};
      }
      return {1, "", "unexpected: " + command};
    };
    application_.root.elements.reserve(4);
    document_ = &application_.add(application_.root, "docu"_code, {});
    collection_ = &application_.add(application_.root, "COcl"_code, {});
    application_.root.properties["Cudo"_code] = first("docu"_code);
    document_->properties["Cuco"_code] = first("COcl"_code);
    addRecipe("Full size", true);
    addRecipe("Web", false);
    addRecipe("Print", true);
    application_.intercept = [this](std::size_t, AppleEvent const& event) -> std::optional<EventReply> {
      if (event.eventId != "proc"_code) return std::nullopt;
      processed_ = event.directObject;
      return Value("D5A1");
    };
  }

  static Value first(Code type) {
    return std::make_shared<Specifier const>(Specifier{type, KeyForm::index, std::int64_t{1}, {}});
  }
  void addRecipe(char const* name, bool isEnabled) {
    application_.add(*document_, "COrp"_code, {{"pnam"_code, name}, {"CRen"_code, isEnabled}});
  }
  void addVariants(std::size_t selected, std::size_t others) {
    for (std::size_t i = 0; i < selected + others; ++i) {
      application_.add(*collection_, "cvar"_code, {{"vsel"_code, i < selected}});
    }
  }
  [[nodiscard]] std::string enabledRecipes() const {
    std::string names;
    for (auto const& recipe : document_->elements) {
      if (recipe.properties.at("CRen"_code) == Value(true)) {
        names += *recipe.properties.at("pnam"_code).as<std::string>() + ";";
      }
    }
    return names;
  }
  ScriptOutcome runText(std::string const& source) { return run(source, host_, delimiters_); }
  ScriptOutcome exportJpeg() { return runText(part("airdrop-export-a") + "JPEG" + part("airdrop-export-b")); }
  std::string textOf(ScriptOutcome const& outcome) {
    EXPECT_FALSE(outcome.failure) << outcome.failure->number << " " << outcome.failure->message;
    return outcome.result ? stringValue(*outcome.result).value_or("a list") : "no value";
  }
  std::string parentOf(Value captures) {
    document_->properties["COcf"_code] = std::move(captures);
    return textOf(runText(part("capture-folder-parent")));
  }

  ToyApplication application_;
  ToyHost host_;
  TextItemDelimiters delimiters_{""};
  std::string listing_;
  ToyApplication::Object* document_;
  ToyApplication::Object* collection_;
  Value processed_;
};

TEST_F(CaptureOneScripts, ExportProcessesTheSelectionIntoTheNextFolder) {
  addVariants(3, 2);
  listing_ = "C1AIRDROP_2\nC1AIRDROP_10\nC1AIRDROP_\nC1AIRDROP_x\n";
  EXPECT_EQ(textOf(exportJpeg()), "3|/private/tmp/C1AIRDROP_11|Full size,Print");
  ASSERT_NE(processed_.as<List>(), nullptr);
  EXPECT_EQ(processed_.as<List>()->size(), 3U);
  auto const& recipe = document_->elements.back();
  EXPECT_EQ(recipe.properties.at("pnam"_code), Value("AirDrop"));
  EXPECT_EQ(recipe.properties.at("CRft"_code), Value(Enumerator{"Rjpg"_code}));
  EXPECT_EQ(recipe.properties.at("CRjq"_code), Value(std::int64_t{80}));
  EXPECT_EQ(recipe.properties.at("CSmt"_code), Value(Enumerator{"Rsle"_code}));
  EXPECT_EQ(recipe.properties.at("CSut"_code), Value(Enumerator{"MUpx"_code}));
  EXPECT_EQ(recipe.properties.at("CRrs"_code), Value(std::int64_t{300}));
  EXPECT_EQ(recipe.properties.at("CRrf"_code), Value(Alias{"/private/tmp/C1AIRDROP_11/"}));
  EXPECT_EQ(recipe.properties.at("CRro"_code), Value(Enumerator{"Rrcu"_code}));
  EXPECT_EQ(enabledRecipes(), "AirDrop;");
}

TEST_F(CaptureOneScripts, ExportBeginsWithTheFirstFolderAndCountsOneImage) {
  addVariants(1, 0);
  EXPECT_EQ(textOf(exportJpeg()), "1|/private/tmp/C1AIRDROP_1|Full size,Print");
}

TEST_F(CaptureOneScripts, ExportReplacesAnExistingRecipeOfItsNameInAnyCase) {
  addVariants(1, 0);
  addRecipe("airdrop", true);
  EXPECT_EQ(textOf(exportJpeg()).substr(0, 30), "1|/private/tmp/C1AIRDROP_1|Ful");
  // The test is blind to case, and the application's own search by name decides what is deleted.
  EXPECT_EQ(document_->elements.back().properties.at("pnam"_code), Value("AirDrop"));
}

TEST_F(CaptureOneScripts, ExportHasNoValueWithoutASelectionADocumentOrTheApplication) {
  addVariants(0, 2);
  EXPECT_EQ(textOf(exportJpeg()), "no value");
  application_.root.elements.clear();
  EXPECT_EQ(textOf(exportJpeg()), "no value");
  application_.isRunning = false;
  application_.events.clear();
  EXPECT_EQ(textOf(exportJpeg()), "no value");
  EXPECT_TRUE(application_.events.empty());
  EXPECT_FALSE(application_.isRunning);
}

TEST_F(CaptureOneScripts, ExportFailsWithTheErrorOfEveryEvent) {
  addVariants(1, 1);
  ToyApplication::Object const fresh = application_.root;
  ASSERT_EQ(textOf(exportJpeg()).substr(0, 2), "1|");
  std::size_t const events = application_.events.size();
  ASSERT_GT(events, 20U);
  for (std::size_t k = 1; k <= events; ++k) {
    application_.root = fresh;
    application_.events.clear();
    application_.intercept = [k](std::size_t event, AppleEvent const& sent) -> std::optional<EventReply> {
      if (event >= k) return EventError{errors::kConnectionInvalid, "", {}};
      if (sent.eventId == "proc"_code) return Value("D5A1");
      return std::nullopt;
    };
    ScriptOutcome const outcome = exportJpeg();
    ASSERT_TRUE(outcome.failure) << "event " << k;
    EXPECT_EQ(outcome.failure->number, errors::kConnectionInvalid);
    EXPECT_EQ(outcome.failure->message, "Capture One got an error: Connection is invalid.");
    EXPECT_EQ(application_.events.size(), k) << "nothing is sent after an error";
    EXPECT_EQ(delimiters_, TextItemDelimiters{""}) << "restored before the first event";
  }
}

TEST_F(CaptureOneScripts, CleanupDeletesTheRecipeAndRestoresTheOthers) {
  addRecipe("AirDrop", true);
  document_->elements[0].properties["CRen"_code] = false;
  document_->elements[2].properties["CRen"_code] = false;
  std::string const source = part("airdrop-cleanup-head") + part("airdrop-restore-head") + "\"full SIZE\", \"Print\"" +
                             part("airdrop-restore-tail") + part("airdrop-cleanup-tail");
  ScriptOutcome const outcome = runText(source);
  EXPECT_FALSE(outcome.failure) << outcome.failure->message;
  EXPECT_EQ(enabledRecipes(), "Full size;Print;");
  EXPECT_EQ(document_->elements.size(), 3U);
}

TEST_F(CaptureOneScripts, CleanupAloneDeletesTheRecipe) {
  addRecipe("AIRDROP", true);
  ScriptOutcome const outcome = runText(part("airdrop-cleanup-head") + part("airdrop-cleanup-tail"));
  EXPECT_FALSE(outcome.failure) << outcome.failure->message;
  EXPECT_EQ(document_->elements.size(), 3U);
}

TEST_F(CaptureOneScripts, ParentUnderstandsEveryFormOfTheCaptureFolder) {
  EXPECT_EQ(parentOf(FileUrl{"/Users/me/Job/Capture"}), "/Users/me/Job");
  EXPECT_EQ(parentOf(Alias{"/Users/me/Job/Capture/"}), "/Users/me/Job");
  EXPECT_EQ(parentOf("Macintosh HD:Users:me:Job:Capture:"), "/Users/me/Job");
  EXPECT_EQ(parentOf("/Users/me/Job/Capture"), "/Users/me/Job");
  EXPECT_EQ(parentOf("/Users/me/Job/Capture/"), "/Users/me/Job");
  EXPECT_EQ(parentOf("Disk:Job:Capture:"), "/Job") << "another volume loses its name";
  EXPECT_EQ(parentOf(Value::missing()), "");
  EXPECT_EQ(parentOf("neither"), "");
  EXPECT_EQ(delimiters_, TextItemDelimiters{""});
}

TEST_F(CaptureOneScripts, ParentOfTheRootIsAnErrorOutsideTheTry) {
  document_->properties["COcf"_code] = "/";
  ScriptOutcome const outcome = runText(part("capture-folder-parent"));
  ASSERT_TRUE(outcome.failure);
  EXPECT_EQ(outcome.failure->number, errors::kNoSuchObject);
  EXPECT_EQ(outcome.failure->message, "Can’t get text 1 thru -2 of \"/\".");
}

TEST_F(CaptureOneScripts, ParentIsEmptyWithoutADocumentOrTheApplication) {
  application_.root.elements.clear();
  EXPECT_EQ(textOf(runText(part("capture-folder-parent"))), "");
  application_.isRunning = false;
  EXPECT_EQ(textOf(runText(part("capture-folder-parent"))), "");
}

TEST_F(CaptureOneScripts, SetSendsAnAliasOfTheNewFolder) {
  host_.folders.insert("/Users/me/New");
  ScriptOutcome const outcome =
      runText(part("capture-folder-set-head") + "/Users/me/New" + part("capture-folder-set-tail"));
  EXPECT_FALSE(outcome.failure) << outcome.failure->message;
  EXPECT_EQ(document_->properties.at("COcf"_code), Value(Alias{"/Users/me/New/"}));
}

TEST_F(CaptureOneScripts, SetFailsWhenTheFolderIsMissing) {
  ScriptOutcome const outcome =
      runText(part("capture-folder-set-head") + "/Users/me/Gone" + part("capture-folder-set-tail"));
  ASSERT_TRUE(outcome.failure);
  EXPECT_EQ(outcome.failure->number, errors::kFileNotFound);
  EXPECT_EQ(outcome.failure->message, "File Macintosh HD:Users:me:Gone wasn’t found.");
}

}  // namespace
}  // namespace morla::applescript::test
