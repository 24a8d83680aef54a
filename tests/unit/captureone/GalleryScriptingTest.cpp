#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "EventReplies.h"
#include "captureone/EmbeddedDictionary.h"
#include "captureone/scripting/ObjectModel.h"

/// What scripts do with collections, variants, images, recipes and jobs, as events.
namespace morla::captureone {
namespace {

using namespace applescript;

Value pick(Code wanted, KeyForm form, Value selector, Value container = {}) {
  return specifierIn(std::move(container), wanted, form, std::move(selector));
}
Value property(char const* code, Value container = {}) {
  return pick(Code("prop"), KeyForm::property, TypeCode{Code(code)}, std::move(container));
}
Value document() {
  return pick(codes::kDocument, KeyForm::index, std::int64_t{1});
}
Value every(Code wanted, Value container = document()) {
  return pick(wanted, KeyForm::every, {}, std::move(container));
}
Value recipe(Value name) {
  bool const isIndex = name.as<std::int64_t>() != nullptr;
  return pick(codes::kRecipe, isIndex ? KeyForm::index : KeyForm::name, std::move(name), document());
}
/// A property of the object that a test is about.
Value its(char const* code) {
  return property(code, TypeCode{codes::kExamined});
}
Value test(char const* relation, Value left, Value right) {
  return Record{{Code("relo"), Enumerator{Code(relation)}}, {Code("obj1"), left}, {Code("obj2"), right}};
}
Value logic(char const* operation, List terms) {
  return Record{{Code("logc"), Enumerator{Code(operation)}}, {Code("term"), std::move(terms)}};
}

class GalleryScriptingTest : public ::testing::Test {
 protected:
  EventReply send(char const* id, Value direct, std::vector<std::pair<Code, Value>> parameters = {},
                  char const* family = "core") {
    return objects_.handle(AppleEvent{Code(family), Code(id), std::move(direct), std::move(parameters)});
  }
  EventReply get(Value what) { return send("getd", std::move(what)); }
  EventReply set(Value what, Value data) { return send("setd", std::move(what), {{Code("data"), std::move(data)}}); }
  EventReply make(Value container, Record properties, Code what = codes::kRecipe) {
    return send(
        "crel", {},
        {{Code("kocl"), TypeCode{what}}, {Code("insh"), std::move(container)}, {Code("prdt"), std::move(properties)}});
  }
  EventReply process(Value what, std::vector<std::pair<Code, Value>> parameters = {}) {
    return send("proc", std::move(what), std::move(parameters), "Capt");
  }

  /// Texts joined by commas; other values as they are counted.
  std::string texts(EventReply reply) {
    auto const all = value(std::move(reply));
    std::string joined;
    if (all.as<List>() == nullptr) return "no list";
    for (auto const& each : *all.as<List>()) joined += (joined.empty() ? "" : ",") + *each.as<std::string>();
    return joined;
  }
  std::string idsWhere(Value condition) {
    return texts(get(property("ID  ", pick(codes::kVariant, KeyForm::test, std::move(condition), document()))));
  }
  Document const& front() { return *model_.documents().current(); }
  std::string names() { return texts(get(property("pnam", every(codes::kRecipe)))); }

  Model model_;
  ObjectModel objects_{model_, ApplicationIdentity{}, kDictionary, {}};
};

TEST_F(GalleryScriptingTest, ATestPicksTheObjectsForWhichItHolds) {
  struct Row {
    char const* label;
    Value condition;
    char const* expected;
  };
  Row const rows[] = {
      {"selected", test("=", its("vsel"), true), "1"},
      {"not selected and near the beginning",
       logic("AND", {logic("NOT", {test("=", its("vsel"), true)}), test("<", its("posn"), std::int64_t{4})}), "2,3"},
      {"either", logic("OR", {test("=", its("posn"), std::int64_t{1}), test("=", its("posn"), 5.0)}), "1,5"},
      {"at most", test("<=", its("posn"), std::int64_t{2}), "1,2"},
      {"more", test(">", its("posn"), std::int64_t{11}), "12"},
      {"at least", test(">=", its("posn"), std::int64_t{11}), "11,12"},
      {"contains, blind to case", test("cont", its("pnam"), "ATELIER_0012"), "12"},
      {"begins", test("bgwt", its("pnam"), "atelier_001"), "10,11,12"},
      {"ends", test("ends", its("pnam"), "2"), "2,12"},
      {"is in a list", test("cont", List{Value("Atelier_0003"), Value("x")}, its("pnam")), "3"},
      {"a list begins with it", test("bgwt", List{Value("x"), Value("Atelier_0003")}, its("pnam")), ""},
      {"a property of a property", test("=", property("pnam", its("COpi")), "Atelier_0004"), "4"},
      {"an object", test("=", its("COpi"), pick(codes::kImage, KeyForm::index, std::int64_t{6}, document())), "6"},
      {"another class is never equal", test("=", its("posn"), "1"), ""},
      {"nothing at all", test("=", its("pnam"), ""), ""},
  };
  for (auto const& row : rows) EXPECT_EQ(idsWhere(row.condition), row.expected) << row.label;
}

TEST_F(GalleryScriptingTest, AmongTheObjectsThatPassATestOneCanBePicked) {
  auto const late = pick(codes::kVariant, KeyForm::test, test(">", its("posn"), std::int64_t{9}), document());
  auto const idOf = [&](KeyForm form, Value selector) {
    return get(property("ID  ", pick(codes::kVariant, form, std::move(selector), late)));
  };
  EXPECT_EQ(value(idOf(KeyForm::index, std::int64_t{1})), Value("10"));
  EXPECT_EQ(value(idOf(KeyForm::index, std::int64_t{-1})), Value("12"));
  EXPECT_EQ(value(idOf(KeyForm::id, "11")), Value("11"));
  EXPECT_EQ(value(idOf(KeyForm::name, "Atelier_0011")), Value("11"));
  EXPECT_EQ(error(idOf(KeyForm::index, std::int64_t{4})), -1719);
  EXPECT_EQ(error(idOf(KeyForm::id, "9")), -1728);
  EXPECT_EQ(error(idOf(KeyForm::name, "Atelier_0001")), -1728);
}

TEST_F(GalleryScriptingTest, ATestThatMeansNothingIsAnError) {
  struct Row {
    char const* label;
    Value condition;
    std::int64_t expected;
  };
  Row const rows[] = {
      {"no record", "x", -1700},
      {"nothing in it", Record{}, -1700},
      {"an unknown relation", test("what", its("posn"), std::int64_t{1}), -1700},
      {"an unknown logic", logic("XOR", {test("=", its("posn"), std::int64_t{1})}), -1700},
      {"no terms", logic("AND", {}), -1700},
      {"an order between text and number", test("<", its("pnam"), std::int64_t{1}), -1700},
      {"a number contains nothing", test("cont", its("posn"), std::int64_t{1}), -1700},
      {"a property that there is not", test("=", its("nope"), true), -1728},
      {"an object that there is not", test("=", its("COpi"), recipe("none")), -1728},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(error(get(pick(codes::kVariant, KeyForm::test, row.condition, document()))), row.expected) << row.label;
  }
}

TEST_F(GalleryScriptingTest, APropertyOfEveryObjectIsOneList) {
  EXPECT_EQ(names(), "JPEG pleine taille,JPEG web,Épreuve rapide");
  EXPECT_EQ(texts(get(property("pnam", every(codes::kCollection)))), "Capture,Toutes les images,Un choix");
  EXPECT_EQ(value(get(property("CRen", every(codes::kRecipe)))), Value(List{Value(true), Value(false), Value(true)}));
  EXPECT_EQ(value(set(property("CRen", every(codes::kRecipe)), false)), Value());
  EXPECT_EQ(value(get(property("CRen", every(codes::kRecipe)))), Value(List{Value(false), Value(false), Value(false)}));
}

TEST_F(GalleryScriptingTest, VariantsAreNamedByACollectionThatHoldsThem) {
  auto const variant = [](char const* id, char const* collection) {
    auto const container = documentSpecifier("document-1");
    return pick(codes::kVariant, KeyForm::id, id, pick(codes::kCollection, KeyForm::id, collection, container));
  };
  auto const second = pick(codes::kVariant, KeyForm::index, std::int64_t{2}, document());
  EXPECT_EQ(value(get(second)), variant("2", "11"));
  auto const third = pick(codes::kCollection, KeyForm::index, std::int64_t{3}, document());
  EXPECT_EQ(value(set(property("Cuco", document()), third)), Value());
  EXPECT_EQ(value(get(second)), variant("2", "11")) << "the third collection does not hold it";
  EXPECT_EQ(value(get(pick(codes::kVariant, KeyForm::index, std::int64_t{2}, third))), variant("4", "13"));
  EXPECT_EQ(error(get(variant("2", "13"))), -1728);
  EXPECT_EQ(texts(get(property("ID  ", every(codes::kVariant, third)))), "1,4,7,10");
  EXPECT_EQ(error(set(property("vsel", second), true)), -10003);
}

TEST_F(GalleryScriptingTest, ARecipeIsMadeWithItsPropertiesAndNamedByItsName) {
  auto const made = make(document(), {{codes::kName, "AirDrop"}, {Code("CRjq"), std::int64_t{50}}});
  EXPECT_EQ(value(made), pick(codes::kRecipe, KeyForm::name, "AirDrop", documentSpecifier("document-1")));
  EXPECT_EQ(front().recipes.findNamed("AirDrop")->jpegQuality, 50);
  EXPECT_FALSE(front().recipes.findNamed("AirDrop")->isEnabled);
}

TEST_F(GalleryScriptingTest, RecipesOfOneNameAreToldApart) {
  auto const first = value(make(document(), {{codes::kName, "Same"}}));
  auto const second = value(make(document(), {{codes::kName, "SAME"}}));
  EXPECT_NE(second, pick(codes::kRecipe, KeyForm::name, "SAME", documentSpecifier("document-1")));
  EXPECT_EQ(value(set(property("CRjq", second), std::int64_t{7})), Value());
  EXPECT_EQ(front().recipes.findNamed("SAME")->jpegQuality, 7);
  EXPECT_EQ(value(send("delo", second)), Value());
  EXPECT_EQ(names(), "JPEG pleine taille,JPEG web,Épreuve rapide,Same");
  EXPECT_EQ(value(get(recipe(std::int64_t{4}))), first);
}

TEST_F(GalleryScriptingTest, ARecipeIsMadeWhereverAScriptMayPutIt) {
  auto const kind = std::pair{Code("kocl"), Value(TypeCode{codes::kRecipe})};
  auto const place = Record{{Code("kobj"), every(codes::kRecipe)}, {Code("kpos"), Enumerator{Code("end")}}};
  EXPECT_EQ(error(send("crel", {}, {kind, {Code("insh"), place}})), 0);
  EXPECT_EQ(error(send("crel", {}, {kind, {Code("subj"), document()}})), 0);
  EXPECT_EQ(front().recipes.all().size(), 5u);
  EXPECT_EQ(front().recipes.all()[3].name, "Recette sans titre");
}

TEST_F(GalleryScriptingTest, WhatCannotBeMadeIsNotHalfMade) {
  struct Row {
    char const* label;
    EventReply reply;
    std::int64_t expected;
  };
  Row const rows[] = {
      {"no class", send("crel", {}), -1701},
      {"something else than a class", send("crel", {}, {{Code("kocl"), Value("recipe")}}), -1700},
      {"a variant", make(document(), {}, codes::kVariant), -10024},
      {"in a variant", make(pick(codes::kVariant, KeyForm::index, std::int64_t{1}, document()), {}), -10024},
      {"in the application", make({}, {}), -10024},
      {"in many documents", make(every(codes::kDocument, {}), {}), -10024},
      {"in a document that there is not", make(pick(codes::kDocument, KeyForm::index, std::int64_t{9}), {}), -1719},
      {"an unknown property", make(document(), {{Code("nope"), true}}), -10006},
      {"a property by a word of the script", make(document(), {{std::string("taste"), true}}), -10006},
      {"a value of another type", make(document(), {{Code("CRjq"), List{}}}), -1700},
      {"a value out of bounds", make(document(), {{Code("CRjq"), std::int64_t{101}}}), -10006},
  };
  for (auto const& row : rows) EXPECT_EQ(error(row.reply), row.expected) << row.label;
  EXPECT_EQ(front().recipes.all().size(), 3u);
}

TEST_F(GalleryScriptingTest, DeletesOneOrManyRecipesAndNothingElse) {
  auto const web = pick(codes::kRecipe, KeyForm::test, test("cont", its("pnam"), "jpeg"), document());
  EXPECT_EQ(value(send("delo", web)), Value());
  EXPECT_EQ(names(), "Épreuve rapide");
  EXPECT_EQ(error(send("delo", recipe("JPEG web"))), -1728);
  EXPECT_EQ(error(send("delo", every(codes::kVariant))), -10003);
  EXPECT_EQ(error(send("delo", document())), -10003);
  EXPECT_EQ(error(send("delo", property("pnam", recipe(std::int64_t{1})))), -10003);
  EXPECT_EQ(error(send("delo", {})), -1701);
}

struct ValueRow {
  char const* code;
  Value fit;
  Value read;   ///< what is read after `fit` was set
  Value unfit;  ///< of the right type; null: there is none
};

TEST_F(GalleryScriptingTest, EveryPropertyOfARecipeTakesWhatFits) {
  auto const enumerator = [](char const* code) { return Value(Enumerator{Code(code)}); };
  ValueRow const rows[] = {
      {"pnam", "New", "New", ""},
      {"CRen", false, false, {}},
      {"CRft", enumerator("Rpng"), enumerator("Rpng"), {}},
      {"CRbt", std::int64_t{16}, std::int64_t{16}, std::int64_t{12}},
      {"CRjq", "80", std::int64_t{80}, std::int64_t{-1}},
      {"CRcp", "Adobe RGB", "Adobe RGB", {}},
      {"CRrs", std::int64_t{72}, 72.0, 0.0},
      {"CSmt", enumerator("Rsse"), enumerator("Rsse"), {}},
      {"CSut", enumerator("MUcm"), enumerator("MUcm"), {}},
      {"CSv1", std::int64_t{1024}, 1024.0, -1.0},
      {"CSv2", 2.5, 2.5, -0.5},
      {"CSus", true, true, {}},
      {"CRro", enumerator("Rrif"), enumerator("Rrif"), {}},
      {"CRrf", Alias{"/x/y/"}, FileUrl{"/x/y"}, ""},
      {"CRrf", "Macintosh HD:a:b:", FileUrl{"/a/b"}, ""},
      {"CRsf", "Sub", "Sub", {}},
      {"COOF", "Image Name", "Image Name", {}},
      {"CRef", enumerator("Reov"), enumerator("Reov"), {}},
  };
  std::set<std::string> covered;
  for (auto const& row : rows) {
    auto const place = property(row.code, recipe(std::int64_t{1}));
    covered.insert(row.code);
    EXPECT_EQ(value(set(place, row.fit)), Value()) << row.code;
    EXPECT_EQ(value(get(place)), row.read) << row.code;
    if (!row.unfit.isNull()) {
      EXPECT_EQ(error(set(place, row.unfit)), -10006) << row.code;
    }
    EXPECT_EQ(error(set(place, Value::missing())), -1700) << row.code;
    EXPECT_EQ(value(get(place)), row.read) << row.code;
  }
  for (auto const& each : objects_.terms().dictionary().properties) {
    EXPECT_TRUE(each.ownerClass != "recipe" || covered.contains(each.code.text())) << each.name;
  }
}

TEST_F(GalleryScriptingTest, FoldersOfADocumentAreFilesTextsOrMissing) {
  auto const captures = property("COcf", document());
  EXPECT_EQ(value(get(captures)), Value(FileUrl{"/Capture One/Séance 1/Capture"}));
  EXPECT_EQ(value(set(captures, Alias{"/Users/me/New/"})), Value());
  EXPECT_EQ(value(get(captures)), Value(FileUrl{"/Users/me/New"}));
  EXPECT_EQ(value(set(captures, "Disk:Job:")), Value());
  EXPECT_EQ(front().captures.text, "Disk:Job:");
  auto const refused = set(captures, Value::missing());
  EXPECT_EQ(error(refused), -1700);
  EXPECT_EQ(std::get<EventError>(refused).message, "Can’t make missing value into type text or file.");
  EXPECT_EQ(error(set(captures, document())), -1700);
  auto const output = property("COof", document());
  model_.documents().setKind(DocumentKind::catalog);
  EXPECT_TRUE(value(get(output)).isMissing());
  EXPECT_EQ(value(set(output, FileUrl{"/Users/me/Out"})), Value());
  EXPECT_EQ(value(get(output)), Value(FileUrl{"/Users/me/Out"}));
  EXPECT_EQ(error(set(output, "")), -10006);
}

TEST_F(GalleryScriptingTest, ProcessQueuesAFileForEachVariantAndEnabledRecipe) {
  auto const batch = value(process(every(codes::kVariant)));
  ASSERT_NE(batch.as<std::string>(), nullptr);
  EXPECT_EQ(batch.as<std::string>()->size(), 36u);
  auto const& jobs = model_.queue().jobs();
  ASSERT_EQ(jobs.size(), 24u);
  EXPECT_EQ(jobs[0].variant, "1");
  EXPECT_EQ(jobs[1].variant, "1");
  EXPECT_EQ(jobs[0].recipe.name, "JPEG pleine taille");
  EXPECT_EQ(jobs[1].recipe.name, "Épreuve rapide");
  EXPECT_EQ(jobs[1].folder, "/Capture One/Séance 1/Output/Épreuves");
  EXPECT_EQ(jobs[23].batch, *batch.as<std::string>());
  EXPECT_NE(value(process(every(codes::kVariant))), batch);
  EXPECT_EQ(value(send("cnte", document(), {{Code("kocl"), TypeCode{codes::kJob}}})), Value(std::int64_t{48}));
}

TEST_F(GalleryScriptingTest, ProcessTakesWhateverNamesVariants) {
  auto const first = pick(codes::kVariant, KeyForm::index, std::int64_t{1}, document());
  auto const web = std::vector<std::pair<Code, Value>>{{Code("Prec"), "jpeg WEB"}};
  std::vector<Value> const ways{first, List{first, first}, "/Capture One/Séance 1/Capture/Atelier_0003.RAW",
                                FileUrl{"/Capture One/Séance 1/Capture/Atelier_0004.RAW"}};
  for (auto const& each : ways) EXPECT_EQ(error(process(each, web)), 0);
  std::string variants;
  for (auto const& each : model_.queue().jobs()) variants += each.variant;
  EXPECT_EQ(variants, "11134");
}

TEST_F(GalleryScriptingTest, ProcessSaysWhyNothingIsDone) {
  auto const first = pick(codes::kVariant, KeyForm::index, std::int64_t{1}, document());
  EXPECT_EQ(error(process({})), -1701);
  EXPECT_EQ(error(process(recipe(std::int64_t{1}))), -1700);
  EXPECT_EQ(error(process(std::int64_t{1})), -1700);
  EXPECT_EQ(error(process(pick(codes::kVariant, KeyForm::index, std::int64_t{99}, document()))), -1719);
  EXPECT_EQ(error(process("/nowhere/x.RAW")), -43);
  EXPECT_EQ(error(process(first, {{Code("Prec"), "none"}})), -1728);
  EXPECT_EQ(error(process(first, {{Code("Prec"), List{}}})), -1700);
  EXPECT_EQ(value(process(List{})).as<std::string>()->substr(0, 6), "ERROR:");
  EXPECT_EQ(value(set(property("CRen", every(codes::kRecipe)), false)), Value());
  EXPECT_EQ(value(process(first)).as<std::string>()->substr(0, 6), "ERROR:");
  model_.documents().setKind(DocumentKind::catalog);
  EXPECT_EQ(error(process(first, {{Code("Prec"), "JPEG web"}})), -43);
  EXPECT_EQ(model_.queue().length(), 0u);
}

TEST_F(GalleryScriptingTest, ACatalogProcessesOnceItHasAnOutputFolder) {
  model_.documents().setKind(DocumentKind::catalog);
  EXPECT_EQ(value(set(property("COof", document()), "/Users/me/Out")), Value());
  EXPECT_EQ(error(process(every(codes::kVariant))), 0);
  EXPECT_EQ(model_.queue().jobs().front().folder, "/Users/me/Out/Pleine taille");
}

TEST_F(GalleryScriptingTest, EveryObjectTellsItsClassAndAllItsProperties) {
  model_.cameras().setCount(0);  // no object of a document is missing from its record, be it missing value
  for (auto const& each :
       {document(), recipe(std::int64_t{1}), pick(codes::kVariant, KeyForm::index, std::int64_t{2}, document())}) {
    auto const type = value(get(property("pcls", each)));
    ASSERT_NE(type.as<TypeCode>(), nullptr);
    auto const* known = objects_.terms().findClass(type.as<TypeCode>()->code);
    ASSERT_NE(known, nullptr);
    auto const all = value(get(property("pALL", each)));
    ASSERT_NE(all.as<Record>(), nullptr) << known->name;
    auto const& terms = objects_.terms().dictionary().properties;
    EXPECT_EQ(all.as<Record>()->size(),
              static_cast<std::size_t>(std::ranges::count(terms, known->name, &Terms::Property::ownerClass)) + 1);
    EXPECT_EQ(all.as<Record>()->front().value, type);
    EXPECT_EQ(error(set(property("pALL", each), Record{})), -10003);
    EXPECT_EQ(error(set(property("pcls", each), type)), -10003);
  }
  EXPECT_EQ(value(get(property("pcls", every(codes::kRecipe)))), Value(List(3, Value(TypeCode{codes::kRecipe}))));
}

TEST_F(GalleryScriptingTest, FurtherVariantsShareTheImageOfTheirPicture) {
  Model model({"/S", std::make_shared<PictureSet const>(PictureSet{{"/p/a.jpg", "/p/b.jpg"}})});
  ObjectModel objects(model, ApplicationIdentity{}, kDictionary, {});
  model.documents().change(model.documents().current()->id,
                           [](Document& document) { return document.gallery.setCount(5); });
  auto const ask = [&](Value what) { return texts(objects.handle({Code("core"), Code("getd"), std::move(what)})); };
  EXPECT_EQ(ask(property("pnam", every(codes::kVariant))), "a,b,a,b,a");
  EXPECT_EQ(ask(property("pnam", every(codes::kImage))), "a,b");
  auto const image = pick(codes::kImage, KeyForm::index, std::int64_t{1}, document());
  EXPECT_EQ(ask(property("ID  ", every(codes::kVariant, image))), "1,3,5");
}

TEST_F(GalleryScriptingTest, AnObjectThatHasGoneIsNotFoundAnyMore) {
  auto const last = value(get(pick(codes::kVariant, KeyForm::index, std::int64_t{-1}, document())));
  auto const image = value(get(property("COpi", last)));
  auto const kept = value(get(recipe("JPEG web")));
  ASSERT_EQ(error(process(last, {{Code("Prec"), "JPEG web"}})), 0);
  auto const job = value(get(pick(codes::kJob, KeyForm::index, std::int64_t{1}, document())));
  EXPECT_EQ(value(get(property("CQin", job))), Value("Atelier_0012"));
  model_.documents().change(front().id, [](Document& document) {
    document.gallery.setCount(3);
    return document.recipes.remove(document.recipes.findNamed("JPEG web")->handle);
  });
  model_.queue().finish(model_.queue().jobs().front().id);
  for (auto const& each : {last, image, kept, job}) {
    EXPECT_EQ(error(get(property("pnam", each))), -1728);
    EXPECT_EQ(value(send("doex", each)), Value(false));
  }
}

}  // namespace
}  // namespace morla::captureone
