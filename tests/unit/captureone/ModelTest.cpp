#include "captureone/model/Model.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <string>

namespace morla::captureone {
namespace {

class ModelTest : public ::testing::Test {
 protected:
  Model model_;
  int changes_ = 0;
  Subscription observer_ = model_.onChange([this] { ++changes_; });
};

TEST_F(ModelTest, StartsWithOneSessionAndTwoCamerasOfWhichTheFirstIsReady) {
  ASSERT_EQ(model_.documents().all().size(), 1u);
  EXPECT_EQ(model_.documents().kind(), DocumentKind::session);
  ASSERT_EQ(model_.cameras().all().size(), 2u);
  EXPECT_EQ(model_.cameras().currentIndex(), 0u);
  EXPECT_EQ(model_.cameras().current()->link, CameraLink::connected);
  EXPECT_EQ(model_.cameras().current()->power, CameraPower::on);
  EXPECT_EQ(model_.faults().events(), 0);
}

TEST_F(ModelTest, NoTwoCamerasShareANameAnIdentifierOrAListOfValues) {
  ASSERT_TRUE(model_.cameras().setCount(Cameras::maximum()));
  std::set<std::string> seen;
  std::size_t texts = 0;
  for (auto const& camera : model_.cameras().all()) {
    seen.insert(camera.name);
    seen.insert(camera.identifier);
    texts += 2;
    for (auto const which : kCameraSettings) {
      seen.insert(camera.setting(which).available);
      ++texts;
    }
  }
  EXPECT_EQ(seen.size(), texts);
}

TEST_F(ModelTest, EveryCameraOffersTheValuesThatItStartsWith) {
  ASSERT_TRUE(model_.cameras().setCount(Cameras::maximum()));
  for (auto const& camera : model_.cameras().all()) {
    for (auto const which : kCameraSettings) {
      auto const offered = camera.offered(which);
      EXPECT_NE(std::find(offered.begin(), offered.end(), camera.setting(which).value), offered.end()) << camera.name;
    }
  }
}

TEST_F(ModelTest, TellsOfEachChangeOnceAndOfNoneWhereNothingChanged) {
  struct Row {
    char const* label;
    void (*change)(Model&);
  };
  Row const rows[] = {
      {"documents", [](Model& m) { m.documents().setCount(3); }},
      {"document kind", [](Model& m) { m.documents().setKind(DocumentKind::catalog); }},
      {"camera count", [](Model& m) { m.cameras().setCount(3); }},
      {"current camera", [](Model& m) { m.cameras().makeCurrent(1); }},
      {"link", [](Model& m) { m.cameras().setLink(CameraLink::disconnected); }},
      {"power", [](Model& m) { m.cameras().setPower(CameraPower::off); }},
      {"name", [](Model& m) { m.cameras().setName("X"); }},
      {"value", [](Model& m) { m.cameras().setValue(CameraSetting::iso, "7"); }},
      {"offer", [](Model& m) { m.cameras().setAvailable(CameraSetting::iso, "7|8"); }},
      {"delay", [](Model& m) { m.faults().setDelay(std::chrono::seconds(1)); }},
      {"silence", [](Model& m) { m.faults().setSilence(Silence::on); }},
      {"reply", [](Model& m) { m.faults().setReply("x"); }},
      {"kind of reply", [](Model& m) { m.faults().setStandIn(StandIn::missing); }},
      {"delay of the queue", [](Model& m) { m.queue().setDelay(std::chrono::seconds(1)); }},
      {"stall", [](Model& m) { m.queue().setStall(ProcessingQueue::Stall::on); }},
      {"frontmost", [](Model& m) { m.setFrontmost(true); }},
  };
  for (auto const& row : rows) {
    changes_ = 0;
    row.change(model_);
    EXPECT_EQ(changes_, 1) << row.label;
    row.change(model_);
    EXPECT_EQ(changes_, 1) << row.label << ", again";
  }
}

TEST_F(ModelTest, ResetIsOneChangeAndBringsBackTheStart) {
  model_.documents().setCount(4);
  model_.documents().setKind(DocumentKind::catalog);
  model_.queue().add({OutputJob{}});
  model_.queue().setDelay(std::chrono::seconds(2));
  model_.queue().setStall(ProcessingQueue::Stall::on);
  model_.cameras().setCount(1);
  model_.cameras().setValue(CameraSetting::iso, "9");
  model_.faults().setReply("x");
  (void)model_.faults().nextEvent();
  changes_ = 0;
  model_.reset();
  EXPECT_EQ(changes_, 1);
  Model const fresh;
  EXPECT_EQ(model_.cameras().all(), fresh.cameras().all());
  EXPECT_EQ(model_.documents().all().size(), 1u);
  EXPECT_EQ(model_.documents().current()->name, fresh.documents().current()->name);
  EXPECT_EQ(model_.documents().kind(), DocumentKind::session);
  EXPECT_EQ(model_.queue().length(), 0u);
  EXPECT_EQ(model_.queue().delay().count(), 0);
  EXPECT_EQ(model_.queue().stall(), ProcessingQueue::Stall::off);
  EXPECT_EQ(model_.faults().reply(), "");
  EXPECT_EQ(model_.faults().events(), 0);
}

TEST_F(ModelTest, ADocumentIdIsNeverGivenTwiceEvenAfterAReset) {
  std::set<std::string> ids;
  for (int i = 0; i < 3; ++i) {
    model_.documents().setCount(3);
    for (auto const& each : model_.documents().all()) ids.insert(each.id);
    model_.reset();
  }
  EXPECT_EQ(ids.size(), 9u);
}

TEST_F(ModelTest, ClosingTheCurrentDocumentMakesItsNeighbourCurrent) {
  auto& documents = model_.documents();
  documents.setCount(3);
  auto const all = documents.all();
  documents.makeCurrent(all[1].id);
  EXPECT_TRUE(documents.close(all[1].id));
  EXPECT_EQ(documents.current()->id, all[2].id);
  EXPECT_TRUE(documents.close(all[2].id));
  EXPECT_EQ(documents.current()->id, all[0].id);
  EXPECT_TRUE(documents.close(all[0].id));
  EXPECT_EQ(documents.current(), nullptr);
  EXPECT_FALSE(documents.close(all[0].id));
}

TEST_F(ModelTest, ClosingAnEarlierDocumentLeavesTheCurrentOneCurrent) {
  auto& documents = model_.documents();
  documents.setCount(3);
  auto const all = documents.all();
  documents.close(all[0].id);
  EXPECT_EQ(documents.current()->id, all[2].id);
}

TEST_F(ModelTest, TheKindOfTheLastDocumentIsThatOfTheNext) {
  auto& documents = model_.documents();
  documents.setKind(DocumentKind::catalog);
  documents.setCount(0);
  EXPECT_EQ(documents.kind(), DocumentKind::catalog);
  documents.setCount(1);
  EXPECT_EQ(documents.current()->kind, DocumentKind::catalog);
}

TEST_F(ModelTest, OpensNoMoreDocumentsThanTheMaximum) {
  EXPECT_FALSE(model_.documents().setCount(Documents::kMaximum + 1));
  EXPECT_EQ(model_.documents().all().size(), 1u);
  EXPECT_TRUE(model_.documents().setCount(Documents::kMaximum));
  EXPECT_FALSE(model_.documents().open(DocumentKind::session));
}

TEST_F(ModelTest, TakingCamerasAwayKeepsACurrentOneAsLongAsThereIsOne) {
  auto& cameras = model_.cameras();
  cameras.makeCurrent(1);
  cameras.setCount(1);
  EXPECT_EQ(cameras.current()->identifier, cameras.all()[0].identifier);
  cameras.setCount(0);
  EXPECT_EQ(cameras.current(), nullptr);
  EXPECT_FALSE(cameras.setPower(CameraPower::on));
  EXPECT_FALSE(cameras.setCount(Cameras::maximum() + 1));
  cameras.setCount(2);
  EXPECT_EQ(cameras.currentIndex(), 0u);
}

TEST_F(ModelTest, EachCameraKeepsItsOwnState) {
  auto& cameras = model_.cameras();
  cameras.setPower(CameraPower::off);
  cameras.setValue(CameraSetting::iso, "1");
  cameras.makeCurrent(1);
  EXPECT_EQ(cameras.current()->power, CameraPower::on);
  EXPECT_NE(cameras.current()->setting(CameraSetting::iso).value, "1");
  cameras.makeCurrent(0);
  EXPECT_EQ(cameras.current()->power, CameraPower::off);
}

TEST_F(ModelTest, ADialTurnsOnlyToWhatABodyThatIsThereOffers) {
  auto& cameras = model_.cameras();
  auto const id = cameras.current()->identifier;
  EXPECT_TRUE(cameras.dial(id, CameraSetting::iso, "800"));
  EXPECT_FALSE(cameras.dial(id, CameraSetting::iso, "801"));
  EXPECT_FALSE(cameras.dial(id, CameraSetting::iso, ""));
  EXPECT_FALSE(cameras.dial("nobody", CameraSetting::iso, "800"));
  cameras.setPower(CameraPower::off);
  EXPECT_FALSE(cameras.dial(id, CameraSetting::iso, "400"));
  cameras.setPower(CameraPower::on);
  cameras.setLink(CameraLink::disconnected);
  EXPECT_FALSE(cameras.dial(id, CameraSetting::iso, "400"));
  EXPECT_EQ(cameras.current()->setting(CameraSetting::iso).value, "800");
}

TEST(SplitOffer, DropsEmptyPiecesAndKeepsOrderAndDuplicates) {
  using Pieces = std::vector<std::string>;
  EXPECT_EQ(splitOffer(""), Pieces{});
  EXPECT_EQ(splitOffer("|"), Pieces{});
  EXPECT_EQ(splitOffer("b|a|b"), (Pieces{"b", "a", "b"}));
  EXPECT_EQ(splitOffer("|a||b |"), (Pieces{"a", "b "}));
}

TEST_F(ModelTest, CountsEventsAndStrikesAtTheOneThatWasAskedForOnly) {
  using Outcome = Faults::Outcome;
  auto& faults = model_.faults();
  (void)faults.nextEvent();
  ASSERT_TRUE(faults.setRefuseAtEvent(2));
  EXPECT_EQ(faults.nextEvent().outcome, Outcome::answer);
  EXPECT_EQ(faults.nextEvent().outcome, Outcome::refuse);
  EXPECT_EQ(faults.nextEvent().outcome, Outcome::answer);
  EXPECT_EQ(faults.refuseAtEvent(), 2);
  EXPECT_EQ(faults.events(), 4);
}

TEST_F(ModelTest, CountingAnEventIsToldApartFromChanges) {
  int events = 0;
  auto const observer = model_.onEvent([&] { events = static_cast<int>(model_.faults().events()); });
  changes_ = 0;
  (void)model_.faults().nextEvent();
  EXPECT_EQ(events, 1);
  EXPECT_EQ(changes_, 0) << "whoever shows the model would draw all of it anew at every event";
}

TEST_F(ModelTest, SettingTheSameNumberAgainStartsTheCountAgain) {
  auto& faults = model_.faults();
  faults.setQuitAtEvent(2);
  EXPECT_EQ(faults.nextEvent().outcome, Faults::Outcome::answer);
  faults.setQuitAtEvent(2);
  EXPECT_EQ(faults.nextEvent().outcome, Faults::Outcome::answer);
  EXPECT_EQ(faults.nextEvent().outcome, Faults::Outcome::quit);
}

TEST_F(ModelTest, ZeroTurnsACountOff) {
  auto& faults = model_.faults();
  faults.setQuitAtEvent(1);
  faults.setQuitAtEvent(0);
  EXPECT_EQ(faults.nextEvent().outcome, Faults::Outcome::answer);
  EXPECT_FALSE(faults.setQuitAtEvent(-1));
  EXPECT_FALSE(faults.setRefuseAtEvent(-1));
}

TEST_F(ModelTest, QuittingGoesBeforeRefusingAndRefusingBeforeSilence) {
  auto& faults = model_.faults();
  faults.setSilence(Silence::on);
  faults.setRefuseAtEvent(2);
  faults.setQuitAtEvent(3);
  EXPECT_EQ(faults.nextEvent().outcome, Faults::Outcome::staySilent);
  EXPECT_EQ(faults.nextEvent().outcome, Faults::Outcome::refuse);
  EXPECT_EQ(faults.nextEvent().outcome, Faults::Outcome::quit);
  EXPECT_EQ(faults.nextEvent().outcome, Faults::Outcome::staySilent);
}

TEST_F(ModelTest, TakesNoDelayThatAClockCannotBeSetTo) {
  using Seconds = std::chrono::duration<double>;
  auto& faults = model_.faults();
  for (double const seconds :
       {-1.0, 86'401.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
    EXPECT_FALSE(faults.setDelay(Seconds(seconds))) << seconds;
  }
  EXPECT_TRUE(faults.setDelay(Seconds(0.25)));
  EXPECT_EQ(faults.nextEvent().delay, Seconds(0.25));
}

}  // namespace
}  // namespace morla::captureone
