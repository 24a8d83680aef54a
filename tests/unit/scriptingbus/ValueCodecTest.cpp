#include "scriptingbus/ValueCodec.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <cmath>
#include <limits>
#include <memory>

#include "scriptingbus/BusHandles.h"
#include "scriptingbus/Protocol.h"
#include "support/PrivateBus.h"

namespace morla::scriptingbus {
namespace {

using namespace applescript;

class ValueCodec : public ::testing::Test {
 protected:
  ValueCodec() {
    sd_bus* raw = nullptr;
    EXPECT_GE(sd_bus_open_user(&raw), 0);
    bus_.reset(raw);
  }

  [[nodiscard]] MessagePointer newMessage() const {
    sd_bus_message* raw = nullptr;
    EXPECT_GE(sd_bus_message_new_method_call(bus_.get(), &raw, "a.b", "/", "a.b", "Test"), 0);
    return MessagePointer(raw);
  }

  /// What arrives when `value` is sent.
  [[nodiscard]] std::optional<Value> roundTrip(Value const& value, std::string& problem) const {
    auto const message = newMessage();
    ValueWriter writer(message.get());
    if (!writer.write(value)) {
      problem = writer.problem();
      return std::nullopt;
    }
    return read(message.get(), problem);
  }

  [[nodiscard]] static std::optional<Value> read(sd_bus_message* message, std::string& problem) {
    EXPECT_GE(sd_bus_message_seal(message, 1, 0), 0);
    EXPECT_GE(sd_bus_message_rewind(message, 1), 0);
    ValueReader reader(message);
    auto value = reader.read();
    problem = reader.problem();
    return value;
  }

  /// Why a message with these contents is refused.
  template <typename... Arguments>
  [[nodiscard]] std::string problemOf(char const* signature, Arguments... arguments) const {
    auto const message = newMessage();
    EXPECT_GE(sd_bus_message_append(message.get(), signature, arguments...), 0) << signature;
    std::string problem;
    EXPECT_FALSE(read(message.get(), problem)) << signature;
    return problem;
  }

 private:
  support::PrivateBus privateBus_;
  BusPointer bus_;
};

SpecifierPointer specifier(Code wanted, KeyForm form, Value selector, Value container) {
  return std::make_shared<Specifier>(Specifier{wanted, form, std::move(selector), std::move(container)});
}

TEST_F(ValueCodec, CarriesEveryKindOfValueUnchanged) {
  Value const document = specifier("docu"_code, KeyForm::index, std::int64_t{1}, {});
  struct Row {
    char const* name;
    Value value;
  };
  Row const rows[] = {
      {"null", {}},
      {"true", true},
      {"false", false},
      {"zero", std::int64_t{0}},
      {"the smallest integer", std::numeric_limits<std::int64_t>::min()},
      {"the largest integer", std::numeric_limits<std::int64_t>::max()},
      {"a real", 0.1},
      {"an infinite real", std::numeric_limits<double>::infinity()},
      {"text", "Capture One é"},
      {"empty text", ""},
      {"text that is not UTF-8", std::string("\xff\xfe\x80")},
      {"text that holds a null character", std::string("a\0b", 3)},
      {"missing value", Value::missing()},
      {"a type", TypeCode{"docu"_code}},
      {"a type whose code has blanks", TypeCode{"ID  "_code}},
      {"an enumerator", Enumerator{"Rjpg"_code}},
      {"a file", FileUrl{"/Users/a/é.jpg"}},
      {"a file whose path is not UTF-8", FileUrl{"/\xff"}},
      {"an alias of a folder", Alias{"/Users/a/"}},
      {"the empty list", List{}},
      {"a list of everything", List{Value(), true, std::int64_t{5}, 2.5, "x", FileUrl{"/a"}, document, List{List{}}}},
      {"the empty record", Record{}},
      {"a record", Record{{"pnam"_code, "AirDrop"}, {std::string("my key"), List{std::int64_t{1}}}}},
      {"a record whose key is four letters of the script's author", Record{{std::string("name"), true}}},
      {"a record with an empty key", Record{{std::string(), true}}},
      {"a property", specifier("prop"_code, KeyForm::property, TypeCode{"pnam"_code}, document)},
      {"an element by index", document},
      {"an element by name", specifier("COrp"_code, KeyForm::name, "AirDrop", document)},
      {"an element by id", specifier("cvar"_code, KeyForm::id, "6", document)},
      {"a relative element", specifier("cvar"_code, KeyForm::relative, Enumerator{"next"_code}, document)},
      {"a range", specifier("cvar"_code, KeyForm::range, Record{{"star"_code, document}, {"stop"_code, document}}, {})},
      {"a test", specifier("cvar"_code, KeyForm::test, Record{{"relo"_code, Enumerator{"=   "_code}}}, document)},
      {"every", specifier("cvar"_code, KeyForm::every, {}, document)},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.name);
    std::string problem;
    auto const arrived = roundTrip(row.value, problem);
    ASSERT_TRUE(arrived) << problem;
    EXPECT_TRUE(*arrived == row.value);
  }
}

TEST_F(ValueCodec, CarriesARealThatIsNoNumber) {
  std::string problem;
  auto const arrived = roundTrip(std::nan(""), problem);
  ASSERT_TRUE(arrived) << problem;
  ASSERT_NE(arrived->as<double>(), nullptr);
  EXPECT_TRUE(std::isnan(*arrived->as<double>()));
}

Value nestedLists(std::size_t levels) {
  Value value = "innermost";
  for (std::size_t i = 0; i < levels; ++i) value = List{std::move(value)};
  return value;
}

TEST_F(ValueCodec, SendsValuesAsDeepAsTheBusAllowsAndNoDeeper) {
  std::string problem;
  // A list takes two levels of the message, a variant and an array; the text inside another variant.
  auto const deep = nestedLists((kMaximumDepth - 1) / 2);
  auto const arrived = roundTrip(deep, problem);
  ASSERT_TRUE(arrived) << problem;
  EXPECT_TRUE(*arrived == deep);
  EXPECT_FALSE(roundTrip(nestedLists((kMaximumDepth - 1) / 2 + 1), problem));
  EXPECT_EQ(problem, "The value is nested too deeply to be sent.");
}

TEST_F(ValueCodec, RefusesASpecifierWithTooManyContainers) {
  Value value;
  for (int i = 0; i < 1000; ++i) value = specifier("docu"_code, KeyForm::index, std::int64_t{1}, value);
  std::string problem;
  EXPECT_FALSE(roundTrip(value, problem));
  EXPECT_EQ(problem, "The value is nested too deeply to be sent.");
}

TEST_F(ValueCodec, RefusesWhatIsTooLarge) {
  std::string problem;
  EXPECT_FALSE(roundTrip(std::string(kMaximumBytes + 1, 'x'), problem));
  EXPECT_EQ(problem, "The value is too large to be sent.");
  std::string const third(kMaximumBytes / 3, 'x');
  EXPECT_FALSE(roundTrip(List{third, third, third}, problem));
  EXPECT_EQ(problem, "The value is too large to be sent.");
  EXPECT_TRUE(roundTrip(List{third, third}, problem)) << problem;
}

TEST_F(ValueCodec, RefusesCodesAndNamesThatTheBusWouldGarble) {
  struct Row {
    char const* name;
    Value value;
    char const* problem;
  };
  Row const rows[] = {
      {"a code with a null character", TypeCode{Code(std::string_view("a\0bc", 4))},
       "A code or name holds a null character."},
      {"a code that is not UTF-8", Enumerator{"\xff\xff\xff\xff"_code}, "A code or name is not UTF-8 text."},
      {"a key with a null character", Record{{std::string("a\0b", 3), true}}, "A code or name holds a null character."},
      {"a specifier that is none", SpecifierPointer(), "A specifier is missing."},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.name);
    std::string problem;
    EXPECT_FALSE(roundTrip(row.value, problem));
    EXPECT_EQ(problem, row.problem);
  }
}

TEST_F(ValueCodec, RefusesNonsenseFromTheOtherSide) {
  EXPECT_EQ(problemOf("v", "s", "text as a string"), "A value has the unknown type \"s\".");
  EXPECT_EQ(problemOf("v", "i", 5), "A value has the unknown type \"i\".");
  EXPECT_EQ(problemOf("v", "v", "b", 1), "A value has the unknown type \"v\".");
  EXPECT_EQ(problemOf("v", "as", 0), "A value has the unknown type \"as\".");
  EXPECT_EQ(problemOf("v", "a{sv}", 0), "A value has the unknown type \"a{sv}\".");
  EXPECT_EQ(problemOf("v", "(y)", 7), "A null value holds 7.");
  EXPECT_EQ(problemOf("s", "no variant"), "A value is missing.");
  EXPECT_EQ(problemOf(""), "A value ends too early.");
  EXPECT_EQ(problemOf("v", "(sv)", "nope", "s", "docu"), "A value has the unknown type \"nope\".");
  EXPECT_EQ(problemOf("v", "(sv)", "type", "s", "document"), "\"document\" is no four-character code.");
  EXPECT_EQ(problemOf("v", "(sv)", "enum", "s", ""), "\"\" is no four-character code.");
  EXPECT_EQ(problemOf("v", "(sv)", "furl", "ay", 3, '/', 0, 'a'), "A file's path holds a null character.");
  EXPECT_EQ(problemOf("v", "(sv)", "obj ", "(ssvv)", "docu", "what", "x", std::int64_t{1}, "(y)", 0),
            "A specifier has the unknown form \"what\".");
  EXPECT_EQ(problemOf("v", "a(sv)", 1, "toolong", "b", 1), "\"toolong\" is no key of a record.");
  EXPECT_EQ(problemOf("v", "av", 2, "b", 1, "s", "x"), "A value has the unknown type \"s\".");
}

TEST_F(ValueCodec, RefusesAKnownKindWithForeignContents) {
  EXPECT_NE(problemOf("v", "(sv)", "type", "x", std::int64_t{5}), "");
  EXPECT_NE(problemOf("v", "(sv)", "furl", "s", "/a"), "");
  EXPECT_NE(problemOf("v", "(sv)", "obj ", "av", 0), "");
}

TEST_F(ValueCodec, RefusesValuesFromTheOtherSideThatAreNestedTooDeeply) {
  auto const message = newMessage();
  for (std::size_t i = 0; i < 40; ++i) {
    ASSERT_GE(sd_bus_message_open_container(message.get(), 'v', "av"), 0);
    ASSERT_GE(sd_bus_message_open_container(message.get(), 'a', "v"), 0);
  }
  for (std::size_t i = 0; i < 80; ++i) ASSERT_GE(sd_bus_message_close_container(message.get()), 0);
  std::string problem;
  EXPECT_FALSE(read(message.get(), problem));
  EXPECT_EQ(problem, "A value is nested too deeply.");
}

}  // namespace
}  // namespace morla::scriptingbus
