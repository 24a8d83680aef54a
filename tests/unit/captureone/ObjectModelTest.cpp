#include "captureone/scripting/ObjectModel.h"

#include <gtest/gtest.h>

#include "EventReplies.h"
#include "captureone/EmbeddedDictionary.h"

namespace morla::captureone {
namespace {

using applescript::AppleEvent;
using applescript::Code;
using applescript::Enumerator;
using applescript::EventError;
using applescript::EventReply;
using applescript::KeyForm;
using applescript::List;
using applescript::Record;
using applescript::Specifier;
using applescript::SpecifierPointer;
using applescript::TypeCode;
using applescript::Value;

Value pick(Code wanted, KeyForm form, Value selector, Value container = {}) {
  return std::make_shared<Specifier const>(Specifier{wanted, form, std::move(selector), std::move(container)});
}
Value property(char const* code, Value container = {}) {
  return pick(Code("prop"), KeyForm::property, TypeCode{Code(code)}, std::move(container));
}
Value document(std::int64_t index) {
  return pick(codes::kDocument, KeyForm::index, index);
}
Value everyDocument() {
  return pick(codes::kDocument, KeyForm::every, {});
}
Value camera() {
  return property("COco", property("Cudo"));
}

class ObjectModelTest : public ::testing::Test {
 protected:
  EventReply send(char const* id, Value direct, std::vector<std::pair<Code, Value>> parameters = {}) {
    return objects_.handle(AppleEvent{Code("core"), Code(id), std::move(direct), std::move(parameters)});
  }
  EventReply get(Value what) { return send("getd", std::move(what)); }
  EventReply set(Value what, Value data) { return send("setd", std::move(what), {{Code("data"), std::move(data)}}); }
  EventReply exists(Value what) { return send("doex", std::move(what)); }
  EventReply count(Value where, char const* what) {
    return send("cnte", std::move(where), {{Code("kocl"), TypeCode{Code(what)}}});
  }

  std::string id(std::size_t index) { return model_.documents().all().at(index).id; }

  /// As many documents, the first of them in front: scripts count from there.
  void openDocuments(std::size_t count) {
    model_.documents().setCount(count);
    if (count > 0) model_.documents().makeCurrent(id(0));
  }

  Model model_;
  int quits_ = 0;
  ObjectModel objects_{model_, ApplicationIdentity{}, kDictionary, {[this] { ++quits_; }}};
};

TEST_F(ObjectModelTest, TellsNameVersionAndFrontmostOfTheApplication) {
  EXPECT_EQ(value(get(property("pnam"))), Value("Capture One"));
  EXPECT_EQ(value(get(property("vers"))), Value("16.4.2"));
  EXPECT_EQ(value(get(property("pisf"))), Value(false));
  model_.setFrontmost(true);
  EXPECT_EQ(value(get(property("pisf"))), Value(true));
}

TEST_F(ObjectModelTest, NamesDocumentsByTheirIds) {
  Value const expected = pick(codes::kDocument, KeyForm::id, id(0));
  EXPECT_EQ(value(get(property("Cudo"))), expected);
  EXPECT_EQ(value(get(document(1))), expected);
  EXPECT_EQ(value(get(everyDocument())), Value(List{expected}));
}

TEST_F(ObjectModelTest, CountsDocumentsFromFrontToBack) {
  model_.documents().setCount(3);
  Value const expected = List{Value(id(2)), Value(id(0)), Value(id(1))};
  EXPECT_EQ(value(get(property("ID  ", everyDocument()))), expected);
  EXPECT_EQ(value(get(document(1))), value(get(property("Cudo"))));
}

TEST_F(ObjectModelTest, FindsADocumentInEveryWayThatAScriptCanNameIt) {
  openDocuments(3);
  struct Row {
    char const* label;
    Value specifier;
    std::size_t expected;
  };
  Row const rows[] = {
      {"first", document(1), 0},
      {"third", document(3), 2},
      {"last", document(-1), 2},
      {"first from the end", document(-3), 0},
      {"whole real", pick(codes::kDocument, KeyForm::index, 2.0), 1},
      {"name", pick(codes::kDocument, KeyForm::name, "Séance 2"), 1},
      {"name in another case", pick(codes::kDocument, KeyForm::name, "sÉANCE 2"), 1},
      {"id", pick(codes::kDocument, KeyForm::id, id(1)), 1},
      {"the one in front", property("Cudo"), 0},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(value(get(property("ID  ", row.specifier))), Value(id(row.expected))) << row.label;
    EXPECT_EQ(value(exists(row.specifier)), Value(true)) << row.label;
  }
}

TEST_F(ObjectModelTest, SaysWhyADocumentCannotBeFound) {
  struct Row {
    char const* label;
    Value specifier;
    std::int64_t expected;
  };
  Row const rows[] = {
      {"index 0", document(0), -1719},
      {"beyond the end", document(2), -1719},
      {"before the beginning", document(-2), -1719},
      {"half an index", pick(codes::kDocument, KeyForm::index, 1.5), -1700},
      {"index in words", pick(codes::kDocument, KeyForm::index, "1"), -1700},
      {"unknown name", pick(codes::kDocument, KeyForm::name, "X"), -1728},
      {"unknown id", pick(codes::kDocument, KeyForm::id, "X"), -1728},
      {"id in another case", pick(codes::kDocument, KeyForm::id, "Document-1"), -1728},
      {"a number for an id", pick(codes::kDocument, KeyForm::id, std::int64_t{1}), -1728},
      {"unknown class", pick(Code("nope"), KeyForm::every, {}), -1728},
      {"class that is elsewhere", pick(codes::kDocument, KeyForm::every, {}, document(1)), -1728},
      {"a test that says nothing", pick(codes::kDocument, KeyForm::test, Record{}), -1700},
      {"relative", pick(codes::kDocument, KeyForm::relative, Enumerator{Code("next")}), -10000},
      {"unknown property", property("nope", document(1)), -1728},
      {"property of a text property", property("pnam", property("pnam", document(1))), -1728},
      {"not a specifier", Value("text"), -1728},
  };
  for (auto const& row : rows) EXPECT_EQ(error(get(row.specifier)), row.expected) << row.label;
}

TEST_F(ObjectModelTest, AnErrorNamesWhatTheScriptAskedFor) {
  auto const reply = get(document(9));
  auto const* failure = std::get_if<EventError>(&reply);
  ASSERT_NE(failure, nullptr);
  EXPECT_EQ(failure->offender, document(9));
  EXPECT_FALSE(failure->message.empty());
}

TEST_F(ObjectModelTest, ReadsAPropertyOfEveryDocument) {
  openDocuments(2);
  EXPECT_EQ(value(get(property("ID  ", everyDocument()))), Value(List{Value(id(0)), Value(id(1))}));
  model_.documents().setCount(0);
  EXPECT_EQ(value(get(property("ID  ", everyDocument()))), Value(List{}));
  EXPECT_EQ(value(get(everyDocument())), Value(List{}));
}

TEST_F(ObjectModelTest, ARangeTakesIndexesAndSpecifiersInEitherOrder) {
  openDocuments(4);
  auto const range = [](Value from, Value to) {
    return property("ID  ", pick(codes::kDocument, KeyForm::range,
                                 Record{{Code("star"), std::move(from)}, {Code("stop"), std::move(to)}}));
  };
  auto const number = [](std::int64_t n) { return Value(n); };
  Value const middle = List{Value(id(1)), Value(id(2))};
  EXPECT_EQ(value(get(range(number(2), number(3)))), middle);
  EXPECT_EQ(value(get(range(number(3), number(2)))), middle);
  EXPECT_EQ(value(get(range(number(2), number(-2)))), middle);
  EXPECT_EQ(value(get(range(document(2), document(3)))), middle);
  EXPECT_EQ(error(get(range(number(2), number(5)))), -1719);
  EXPECT_EQ(error(get(range(number(0), number(1)))), -1719);
  EXPECT_EQ(error(get(range("a", "b"))), -1700);
  EXPECT_EQ(error(get(pick(codes::kDocument, KeyForm::range, Record{}))), -1700);
}

TEST_F(ObjectModelTest, CountsElementsAndCollections) {
  model_.documents().setCount(3);
  EXPECT_EQ(value(count({}, "docu")), Value(std::int64_t{3}));
  EXPECT_EQ(value(send("cnte", everyDocument())), Value(std::int64_t{3}));
  model_.documents().setCount(0);
  EXPECT_EQ(value(count({}, "docu")), Value(std::int64_t{0}));
  EXPECT_EQ(error(count({}, "nope")), -1728);
  EXPECT_EQ(error(send("cnte", Value())), -1701);
  model_.documents().setCount(1);
  EXPECT_EQ(value(count(document(1), "COrp")), Value(std::int64_t{3}));
  EXPECT_EQ(error(count({}, "COrp")), -1728);
}

TEST_F(ObjectModelTest, TheObjectOfTheTellStandsInForAMissingDirectObject) {
  auto const reply = send("cnte", Value(), {{Code("kocl"), TypeCode{Code("COrp")}}, {Code("subj"), document(1)}});
  EXPECT_EQ(value(reply), Value(std::int64_t{3})) << "the application has no recipes at all: that would be -1728";
}

TEST_F(ObjectModelTest, WithoutADocumentThereIsNoCurrentOne) {
  model_.documents().setCount(0);
  EXPECT_EQ(error(get(property("Cudo"))), -1728);
  EXPECT_EQ(value(exists(property("Cudo"))), Value(false));
  EXPECT_EQ(error(get(camera())), -1728);
}

TEST_F(ObjectModelTest, ExistsIsFalseForWhatIsAbsentAndAnErrorForWhatCannotBeTold) {
  EXPECT_EQ(value(exists(document(9))), Value(false));
  EXPECT_EQ(value(exists(everyDocument())), Value(true));
  EXPECT_EQ(value(exists(camera())), Value(true));
  EXPECT_EQ(value(exists(property("CCwb", camera()))), Value(false));
  EXPECT_EQ(value(exists(Value("text"))), Value(false));
  model_.cameras().setLink(CameraLink::disconnected);
  EXPECT_EQ(value(exists(camera())), Value(false));
  model_.cameras().setCount(0);
  EXPECT_EQ(value(exists(camera())), Value(false));
}

TEST_F(ObjectModelTest, MakesAnotherDocumentTheCurrentOne) {
  openDocuments(3);
  EXPECT_EQ(value(set(property("Cudo"), document(2))), Value());
  EXPECT_EQ(model_.documents().current()->id, id(1));
  EXPECT_EQ(value(set(property("Cudo"), document(2))), Value()) << "the first one is now the second from the front";
  EXPECT_EQ(model_.documents().current()->id, id(0));
  EXPECT_EQ(error(set(property("Cudo"), document(7))), -1719);
  EXPECT_EQ(error(set(property("Cudo"), "Séance 1")), -1700);
  EXPECT_EQ(error(set(property("Cudo"), camera())), -1700);
  EXPECT_EQ(error(set(property("Cudo"), everyDocument())), -1700);
  EXPECT_EQ(model_.documents().current()->id, id(0));
}

TEST_F(ObjectModelTest, TellsTheKindOfADocumentAsAConstant) {
  EXPECT_EQ(value(get(property("COdk", document(1)))), Value(Enumerator{Code("COsd")}));
  model_.documents().setKind(DocumentKind::catalog);
  EXPECT_EQ(value(get(property("COdk", document(1)))), Value(Enumerator{Code("COct")}));
}

TEST_F(ObjectModelTest, TheCameraIsAPropertyOfItsDocument) {
  Value const expected = property("COco", pick(codes::kDocument, KeyForm::id, id(0)));
  EXPECT_EQ(value(get(camera())), expected);
  EXPECT_EQ(value(get(property("pnam", expected))), Value("MX-1 Studio"));
}

TEST_F(ObjectModelTest, ReadsEveryValueOfTheCamera) {
  auto const& body = *model_.cameras().current();
  struct Row {
    char const* code;
    Value expected;
  };
  Row const rows[] = {
      {"pnam", body.name},
      {"CCid", body.identifier},
      {"CCfm", body.setting(CameraSetting::format).value},
      {"CCis", body.setting(CameraSetting::iso).value},
      {"CCap", body.setting(CameraSetting::aperture).value},
      {"CCsh", body.setting(CameraSetting::shutterSpeed).value},
      {"CCAf", body.setting(CameraSetting::format).available},
      {"CCAi", body.setting(CameraSetting::iso).available},
      {"CCAp", body.setting(CameraSetting::aperture).available},
      {"CCAs", body.setting(CameraSetting::shutterSpeed).available},
      {"CCwb", Value::missing()},
      {"CCpr", Value::missing()},
      {"CCev", Value::missing()},
  };
  for (auto const& row : rows) EXPECT_EQ(value(get(property(row.code, camera()))), row.expected) << row.code;
}

TEST_F(ObjectModelTest, WithoutABodyTheCameraIsMissingValue) {
  model_.cameras().setCount(0);
  EXPECT_TRUE(value(get(camera())).isMissing());
  EXPECT_EQ(error(get(property("CCAi", camera()))), -1728);
}

TEST_F(ObjectModelTest, ABodyThatIsOffKeepsItsNameAndOffersNothing) {
  model_.cameras().setPower(CameraPower::off);
  EXPECT_EQ(value(get(property("pnam", camera()))), Value("MX-1 Studio"));
  EXPECT_EQ(value(get(property("CCAi", camera()))), Value(""));
  EXPECT_EQ(value(get(property("CCis", camera()))), Value(""));
  EXPECT_EQ(error(set(property("CCis", camera()), "200")), -10006);
}

TEST_F(ObjectModelTest, ABodyWhoseLinkHasGoneFailsWhateverIsAskedOfIt) {
  Value const kept = value(get(camera()));
  model_.cameras().setLink(CameraLink::disconnected);
  for (char const* code : {"pnam", "CCid", "CCis", "CCAi", "CCwb"}) {
    EXPECT_EQ(error(get(property(code, kept))), -1728) << code;
  }
  EXPECT_EQ(error(set(property("CCis", kept), "200")), -1728);
}

TEST_F(ObjectModelTest, EveryPropertyIsThereAndKeepsTheAccessThatTheDictionaryGivesIt) {
  constexpr std::pair<char const*, char const*> kClasses[] = {
      {"collection", "COcl"}, {"image", "COim"}, {"variant", "cvar"}, {"recipe", "COrp"}, {"job", "CQjb"}};
  OutputJob job;
  job.document = id(0);
  model_.queue().add({job});
  for (auto const& each : objects_.terms().dictionary().properties) {
    Value owner;
    if (each.ownerClass == "document") owner = document(1);
    if (each.ownerClass == "camera") owner = camera();
    for (auto const& [name, code] : kClasses) {
      if (each.ownerClass == name) owner = pick(Code(code), KeyForm::index, std::int64_t{1}, document(1));
    }
    ASSERT_TRUE(each.ownerClass == "application" || !owner.isNull()) << each.ownerClass;
    auto const code = each.code.text();
    EXPECT_EQ(error(get(property(code.c_str(), owner))), 0) << each.ownerClass << ": " << each.name;
    if (each.isWritable) {
      EXPECT_NE(error(set(property(code.c_str(), owner), "x")), -10003) << each.ownerClass << ": " << each.name;
    } else {
      EXPECT_EQ(error(set(property(code.c_str(), owner), "x")), -10003) << each.ownerClass << ": " << each.name;
    }
  }
}

TEST_F(ObjectModelTest, EveryTextPropertyOfTheCameraRefusesWhatIsNoText) {
  for (char const* code : {"CCfm", "CCis", "CCap", "CCsh", "CCwb", "CCpr", "CCev"}) {
    EXPECT_EQ(error(set(property(code, camera()), List{Value("100")})), -1700) << code;
    EXPECT_EQ(error(set(property(code, camera()), Value::missing())), -1700) << code;
    EXPECT_EQ(error(set(property(code, camera()), "no such value")), -10006) << code;
  }
  EXPECT_EQ(*model_.cameras().current(), *Model().cameras().current());
}

TEST_F(ObjectModelTest, SetsAValueThatTheBodyOffersAlsoFromANumber) {
  EXPECT_EQ(value(set(property("CCis", camera()), "800")), Value());
  EXPECT_EQ(model_.cameras().current()->setting(CameraSetting::iso).value, "800");
  EXPECT_EQ(value(set(property("CCis", camera()), std::int64_t{400})), Value());
  EXPECT_EQ(value(get(property("CCis", camera()))), Value("400"));
}

TEST_F(ObjectModelTest, SetNeedsAValueAndAPropertyToPutItIn) {
  EXPECT_EQ(error(send("setd", property("CCis", camera()))), -1701);
  EXPECT_EQ(error(set(document(1), "x")), -10006);
  EXPECT_EQ(error(set(property("nope", document(1)), "x")), -1728);
  model_.documents().setCount(2);
  EXPECT_EQ(value(set(property("CCis", property("COco", everyDocument())), "800")), Value());
  EXPECT_EQ(value(get(property("CCis", property("COco", everyDocument())))), Value(List{Value("800"), Value("800")}));
}

TEST_F(ObjectModelTest, QuitsWhenAskedToAndUnderstandsNoUnknownEvent) {
  EXPECT_EQ(value(objects_.handle(AppleEvent{Code("aevt"), Code("quit"), {}, {}})), Value());
  EXPECT_EQ(quits_, 1);
  EXPECT_EQ(error(send("move", document(1))), -1708);
  EXPECT_EQ(error(objects_.handle(AppleEvent{Code("what"), Code("ever"), {}, {}})), -1708);
}

}  // namespace
}  // namespace morla::captureone
