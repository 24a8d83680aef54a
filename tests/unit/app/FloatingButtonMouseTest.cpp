#include "app/FloatingButtonMouse.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morla::app {
namespace {

using platform::MonitorDecision;
using platform::MouseEvent;
using platform::MouseEventKind;

class Recorder : public FloatingButtonMouse::Surroundings {
 public:
  BottomLeftPoint pointerLocation() const override { return pointer; }
  void clicked() override { happened.emplace_back("clicked"); }
  void released() override { happened.emplace_back("released"); }
  void contextMenuWanted(BottomLeftPoint) override { happened.emplace_back("menu"); }

  BottomLeftPoint pointer;
  std::vector<std::string> happened;
};

struct World {
  Recorder recorder;
  FloatingButtonMouse mouse{recorder};

  MonitorDecision send(MouseEventKind kind, BottomLeftPoint pointer) {
    recorder.pointer = pointer;
    return mouse.handle(MouseEvent{kind, nullptr, {}});
  }
};

TEST(FloatingButtonMouse, OnlyAMoveOfMoreThanThreePointsIsADrag) {
  struct Row {
    BottomLeftPoint movedTo;
    bool isClick;
  };
  for (auto const& [movedTo, isClick] : {
           Row{{100, 100}, true},
           Row{{103, 100}, true},
           Row{{100, 97}, true},
           Row{{102.1, 102.1}, true},   // 2.97 points
           Row{{102.2, 102.2}, false},  // 3.11 points
           Row{{103.001, 100}, false},
           Row{{400, 400}, false},
       }) {
    World world;
    world.send(MouseEventKind::leftDown, {100, 100});
    world.send(MouseEventKind::leftDragged, movedTo);
    world.send(MouseEventKind::leftUp, movedTo);
    auto const expected =
        isClick ? std::vector<std::string>{"clicked", "released"} : std::vector<std::string>{"released"};
    EXPECT_EQ(world.recorder.happened, expected) << movedTo.x << ", " << movedTo.y;
  }
}

TEST(FloatingButtonMouse, ADragThatComesBackIsStillADrag) {
  World world;
  world.send(MouseEventKind::leftDown, {100, 100});
  world.send(MouseEventKind::leftDragged, {150, 100});
  world.send(MouseEventKind::leftDragged, {100, 100});
  world.send(MouseEventKind::leftUp, {100, 100});
  EXPECT_EQ(world.recorder.happened, std::vector<std::string>{"released"});
}

TEST(FloatingButtonMouse, EachPressStartsAnew) {
  World world;
  world.send(MouseEventKind::leftDown, {100, 100});
  world.send(MouseEventKind::leftDragged, {150, 100});
  world.send(MouseEventKind::leftUp, {150, 100});
  world.recorder.happened.clear();
  world.send(MouseEventKind::leftDown, {150, 100});
  world.send(MouseEventKind::leftUp, {150, 100});
  EXPECT_EQ(world.recorder.happened, (std::vector<std::string>{"clicked", "released"}));
}

TEST(FloatingButtonMouse, ARightPressWantsTheMenuAndDoesNotReachThePanel) {
  World world;
  EXPECT_EQ(world.send(MouseEventKind::rightDown, {100, 100}), MonitorDecision::consume);
  EXPECT_EQ(world.recorder.happened, std::vector<std::string>{"menu"});
}

TEST(FloatingButtonMouse, LeftEventsReachThePanel) {
  World world;
  EXPECT_EQ(world.send(MouseEventKind::leftDown, {}), MonitorDecision::pass);
  EXPECT_EQ(world.send(MouseEventKind::leftDragged, {}), MonitorDecision::pass);
  EXPECT_EQ(world.send(MouseEventKind::leftUp, {}), MonitorDecision::pass);
}

TEST(FloatingButtonMouse, WatchesTheFourKindsItHandles) {
  EXPECT_EQ(FloatingButtonMouse::kMask.bits, 0x4Eu);
}

}  // namespace
}  // namespace morla::app
