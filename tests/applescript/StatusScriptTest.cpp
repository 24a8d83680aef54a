#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "ToyApplication.h"
#include "applescript/Interpreter.h"

/// The scripts that the program sends, word for word, against an application that has just the terms they use.
namespace morla::applescript::test {
namespace {

constexpr std::string_view kTable =
    "class\tapplication\tcapp\n"
    "class\tdocument\tdocu\n"
    "class\tcamera\tCObj\n"
    "element\tapplication\tdocument\n"
    "property\tapplication\tcurrent document\tCudo\tdocument\trw\n"
    "property\tdocument\tcamera\tCOco\tcamera\tr\n"
    "property\tcamera\tname\tpnam\ttext\tr\n"
    "property\tcamera\tformat\tCCfm\ttext\trw\n"
    "property\tcamera\tISO\tCCis\ttext\trw\n"
    "property\tcamera\taperture\tCCat\ttext\trw\n"
    "property\tcamera\tshutter speed\tCCsh\ttext\trw\n"
    "property\tcamera\tavailable ISO settings\tCCAi\ttext\tr\n"
    "property\tcamera\tavailable aperture settings\tCCAp\ttext\tr\n"
    "property\tcamera\tavailable shutter speeds\tCCAs\ttext\tr\n";

constexpr std::string_view kTarget = "tell application id \"com.captureone.captureone16\"";
constexpr std::size_t kEventsOfARound = 10;

[[nodiscard]] std::string script(std::string const& name) {
  std::ifstream stream(MORLA_SOURCE_DIR "/scripts/" + name + ".applescript", std::ios::binary);
  return std::string(kTarget) + std::string{std::istreambuf_iterator<char>(stream), {}};
}

[[nodiscard]] Value elementOfApplication(Code type) {
  return std::make_shared<Specifier const>(Specifier{type, KeyForm::index, std::int64_t{1}, {}});
}

class StatusScript : public testing::Test {
 protected:
  StatusScript() : application_("Capture One", "com.captureone.captureone16", kTable) {
    host_.applications = {&application_};
    application_.root.elements.reserve(2);
    document_ = &application_.add(application_.root, "docu"_code, {});
    // The camera is no element that a script can count, so it stands beside the documents.
    camera_ = &application_.add(application_.root, "CObj"_code,
                                {{"pnam"_code, "IQ4 150MP"},
                                 {"CCfm"_code, "RAW"},
                                 {"CCis"_code, "100"},
                                 {"CCat"_code, "f/8"},
                                 {"CCsh"_code, "1/125"},
                                 {"CCAi"_code, "50|100|200"},
                                 {"CCAp"_code, "f/5.6|f/8"},
                                 {"CCAs"_code, "1/60|1/125"}});
    application_.root.properties["Cudo"_code] = elementOfApplication("docu"_code);
    document_->properties["COco"_code] = elementOfApplication("CObj"_code);
  }

  ScriptOutcome runScript(std::string const& name) {
    TextItemDelimiters delimiters{""};
    return run(script(name), host_, delimiters);
  }

  /// The reply of a run that must succeed.
  std::string reply() {
    ScriptOutcome const outcome = runScript("status");
    EXPECT_FALSE(outcome.failure) << outcome.failure->message;
    return outcome.result ? stringValue(*outcome.result).value_or("a list") : "no value";
  }

  ToyApplication application_;
  ToyHost host_;
  ToyApplication::Object* document_;
  ToyApplication::Object* camera_;
};

TEST_F(StatusScript, TellsEverythingAboutAConnectedCamera) {
  EXPECT_EQ(reply(), "RAW||100||f/8||1/125||50|100|200||f/5.6|f/8||1/60|1/125||IQ4 150MP");
  EXPECT_EQ(application_.events.size(), kEventsOfARound);
}

TEST_F(StatusScript, AsksEachThingOnceAndByCode) {
  ASSERT_EQ(reply().substr(0, 3), "RAW");
  AppleEvent const& count = application_.events[0];
  EXPECT_EQ(count.eventClass.text() + count.eventId.text(), "corecnte");
  EXPECT_TRUE(count.directObject.isNull());
  ASSERT_EQ(count.parameters.size(), 1U);
  EXPECT_EQ(count.parameters[0].first, "kocl"_code);
  EXPECT_EQ(count.parameters[0].second, Value(TypeCode{"docu"_code}));

  AppleEvent const& get = application_.events[1];
  EXPECT_EQ(get.eventClass.text() + get.eventId.text(), "coregetd");
  auto const current =
      std::make_shared<Specifier const>(Specifier{"prop"_code, KeyForm::property, TypeCode{"Cudo"_code}, {}});
  auto const camera =
      std::make_shared<Specifier const>(Specifier{"prop"_code, KeyForm::property, TypeCode{"COco"_code}, current});
  EXPECT_EQ(get.directObject, Value(camera));
  EXPECT_EQ(get.timeout, kDefaultReplyTimeout);
}

TEST_F(StatusScript, SaysThereIsNoDocument) {
  std::erase_if(application_.root.elements, [](auto const& one) { return one.type == "docu"_code; });
  EXPECT_EQ(reply(), "NO_DOCUMENT");
}

TEST_F(StatusScript, SaysThereIsNoCameraWhenItIsMissing) {
  document_->properties["COco"_code] = Value::missing();
  EXPECT_EQ(reply(), "NO_CAMERA");
}

TEST_F(StatusScript, TakesAnEmptyListOfIsoSettingsForACameraThatIsOff) {
  camera_->properties["CCAi"_code] = "";
  EXPECT_EQ(reply(), "CAMERA_OFF");
}

TEST_F(StatusScript, TakesAMissingListOfIsoSettingsForACameraThatIsOff) {
  camera_->properties["CCAi"_code] = Value::missing();
  EXPECT_EQ(reply(), "CAMERA_OFF");
}

TEST_F(StatusScript, SpellsAMissingSettingOutBehindText) {
  camera_->properties["CCis"_code] = Value::missing();
  EXPECT_EQ(reply(), "RAW||missing value||f/8||1/125||50|100|200||f/5.6|f/8||1/60|1/125||IQ4 150MP");
}

TEST_F(StatusScript, HasNoTextWhenTheFormatIsMissing) {
  // Without a text on the left, & makes a list.
  camera_->properties["CCfm"_code] = Value::missing();
  ScriptOutcome const outcome = runScript("status");
  ASSERT_TRUE(outcome.result);
  EXPECT_EQ(stringValue(*outcome.result), std::nullopt);
}

TEST_F(StatusScript, FailsWithTheFirstEventAndCallsTheCameraOffForEveryLaterOne) {
  for (std::int64_t const number : {errors::kConnectionInvalid, errors::kTimedOut, errors::kNoSuchObject,
                                    errors::kNotPermitted, errors::kApplicationNotRunning}) {
    for (std::size_t k = 1; k <= kEventsOfARound; ++k) {
      application_.events.clear();
      application_.intercept = [k, number](std::size_t event, AppleEvent const&) -> std::optional<EventReply> {
        if (event < k) return std::nullopt;
        return EventError{number, "", {}};
      };
      ScriptOutcome const outcome = runScript("status");
      if (k == 1) {
        // The count stands before the try.
        ASSERT_TRUE(outcome.failure) << number;
        EXPECT_EQ(outcome.failure->number, number);
        EXPECT_EQ(outcome.failure->applicationName, "Capture One");
      } else {
        ASSERT_TRUE(outcome.result) << number << " at event " << k;
        EXPECT_EQ(stringValue(*outcome.result), "CAMERA_OFF") << number << " at event " << k;
        EXPECT_EQ(application_.events.size(), k);
      }
    }
  }
}

TEST_F(StatusScript, FailsWithTheRefusalOfItsTell) {
  application_.tellRefusal = EventError{errors::kNotPermitted, "", {}};
  ScriptOutcome const outcome = runScript("status");
  ASSERT_TRUE(outcome.failure);
  EXPECT_EQ(outcome.failure->number, errors::kNotPermitted);
  EXPECT_EQ(outcome.failure->message, "Not authorized to send Apple events to Capture One.");
  EXPECT_EQ(outcome.failure->briefMessage, outcome.failure->message);
  EXPECT_EQ(outcome.failure->applicationName, "Capture One");
  EXPECT_TRUE(application_.events.empty());
}

TEST_F(StatusScript, DoesNotCompileWithoutTheApplication) {
  host_.applications.clear();
  ScriptOutcome const outcome = runScript("status");
  ASSERT_TRUE(outcome.failure);
  EXPECT_EQ(outcome.failure->number, errors::kNoSuchObject);
  EXPECT_EQ(outcome.failure->message, "Can’t get application id \"com.captureone.captureone16\".");
  EXPECT_EQ(outcome.failure->range.start, 5U);
}

TEST_F(StatusScript, DoesNotCompileWhenTheDictionaryLacksItsTerms) {
  ToyApplication bare("Capture One", "com.captureone.captureone16", "class\tdocument\tdocu\n");
  host_.applications = {&bare};
  ScriptOutcome const outcome = runScript("status");
  ASSERT_TRUE(outcome.failure);
  EXPECT_TRUE(outcome.failure->number == -2741 || outcome.failure->number == -2740) << outcome.failure->number;
}

TEST_F(StatusScript, RunsWithARenamedTermOnceTheTableHasIt) {
  std::string table(kTable);
  table.replace(table.find("available ISO settings"), 22, "sensitivities");
  ToyApplication renamed("Capture One", "com.captureone.captureone16", table);
  renamed.root = application_.root;
  host_.applications = {&renamed};
  std::string source = script("status");
  source.replace(source.find("available ISO settings"), 22, "sensitivities");
  TextItemDelimiters delimiters{""};
  ScriptOutcome const outcome = run(source, host_, delimiters);
  ASSERT_TRUE(outcome.result) << outcome.failure->message;
  EXPECT_EQ(stringValue(*outcome.result)->substr(0, 8), "RAW||100");
}

TEST_F(StatusScript, ProbeSendsNothingAndStartsNothing) {
  application_.isRunning = false;
  ScriptOutcome const outcome = runScript("probe");
  ASSERT_TRUE(outcome.result) << outcome.failure->message;
  EXPECT_EQ(stringValue(*outcome.result), "OK");
  EXPECT_EQ(host_.tells.size(), 1U);
  EXPECT_TRUE(application_.events.empty());
  EXPECT_FALSE(application_.isRunning);
}

TEST_F(StatusScript, ProbeFailsWithTheRefusal) {
  application_.tellRefusal = EventError{errors::kConsentPending, "", {}};
  ScriptOutcome const outcome = runScript("probe");
  ASSERT_TRUE(outcome.failure);
  EXPECT_EQ(outcome.failure->number, errors::kConsentPending);
}

}  // namespace
}  // namespace morla::applescript::test
