#include <gtest/gtest.h>

#include <span>
#include <string>
#include <vector>

#include "unit/shortcuts/Keys.h"

namespace morla::shortcuts {
namespace {

/// One thing that fingers do, or that the keyboard does by itself.
struct Move {
  char const* label;
  enum class Kind { down, repeat, up, modifier } kind;
  char key;                          ///< not for modifiers
  platform::ModifierFlags modifier;  ///< pressed when it is up, released when it is down
};

constexpr Move kMoves[] = {
    {"a down", Move::Kind::down, 'a', kNone},
    {"a repeats", Move::Kind::repeat, 'a', kNone},
    {"a up", Move::Kind::up, 'a', kNone},
    {"b down", Move::Kind::down, 'b', kNone},
    {"b up", Move::Kind::up, 'b', kNone},
    {"x down", Move::Kind::down, 'x', kNone},
    {"Command", Move::Kind::modifier, 0, platform::kCommandFlag},
    {"Shift", Move::Kind::modifier, 0, platform::kShiftFlag},
};

struct Chord {
  char const* label;
  std::string keys;  ///< lower-case
  platform::ModifierFlags modifiers;
};

/// What happened, with the modifiers held then.
struct Step {
  Move const* move;
  platform::ModifierFlags flags;
};

/// Says what must become of the last step from the whole history, without any state of its own.
class Model {
 public:
  Model(Chord const& chord, std::vector<Step> const& history) : chord_(chord), history_(history) {}

  [[nodiscard]] bool isSwallowed() const { return isOfChord(history_.back()); }

  [[nodiscard]] bool isFired() const {
    if (!isOfChord(history_.back()) || history_.back().move->kind != Move::Kind::down) return false;
    for (char const key : chord_.keys) {
      if (!isHeld(key)) return false;
    }
    return true;
  }

 private:
  [[nodiscard]] bool isOfChord(Step const& step) const {
    return step.move->kind != Move::Kind::modifier && step.flags == chord_.modifiers &&
           chord_.keys.find(step.move->key) != std::string::npos;
  }

  /// Looks back for what happened last to the key, or for what made every key count as released.
  [[nodiscard]] bool isHeld(char key) const {
    for (auto step = history_.rbegin(); step != history_.rend(); ++step) {
      if (step->move->kind == Move::Kind::modifier || step->flags != chord_.modifiers) return false;
      if (step->move->key != key || step->move->kind == Move::Kind::repeat) continue;
      return step->move->kind == Move::Kind::down;
    }
    return false;
  }

  Chord const& chord_;
  std::vector<Step> const& history_;
};

platform::KeyEvent eventOf(Step const& step) {
  std::string const characters(1, step.move->key);
  switch (step.move->kind) {
    case Move::Kind::down:
      return down(characters, step.flags);
    case Move::Kind::repeat:
      return repeat(characters, step.flags);
    case Move::Kind::up:
      return up(characters, step.flags);
    case Move::Kind::modifier:
      return flagsChanged(step.flags);
  }
  return {};
}

class Explorer {
 public:
  Explorer(Chord const& chord, std::span<Move const> moves) : chord_(chord), moves_(moves) {}

  void explore(std::size_t depth) {
    ChordMatcher matcher;
    KeySet characters;
    for (char const key : chord_.keys) characters.emplace(1, static_cast<char>(key - 'a' + 'A'));
    matcher.setCharacters(std::move(characters));
    matcher.setModifiers(modifierMask(chord_.modifiers));
    descend(matcher, kNone, depth);
  }

  [[nodiscard]] long sequences() const { return sequences_; }
  [[nodiscard]] long fires() const { return fires_; }

 private:
  void descend(ChordMatcher const& before, platform::ModifierFlags flagsBefore, std::size_t depth) {
    if (depth == 0 || testing::Test::HasFailure()) return;
    for (auto const& move : moves_) {
      auto const flags = platform::ModifierFlags{flagsBefore.bits ^ move.modifier.bits};
      history_.push_back({&move, flags});
      auto matcher = before;
      auto const outcome = matcher.handle(eventOf(history_.back()));
      Model const model(chord_, history_);
      EXPECT_EQ(outcome.decision == platform::TapDecision::swallow, model.isSwallowed()) << told();
      EXPECT_EQ(outcome.isFired, model.isFired()) << told();
      ++sequences_;
      fires_ += outcome.isFired ? 1 : 0;
      descend(matcher, flags, depth - 1);
      history_.pop_back();
    }
  }

  [[nodiscard]] std::string told() const {
    std::string text = chord_.label;
    for (auto const& step : history_) text += std::string(", ") + step.move->label;
    return text;
  }

  Chord const& chord_;
  std::span<Move const> moves_;
  std::vector<Step> history_;
  long sequences_ = 0;
  long fires_ = 0;
};

TEST(ChordMatcher, AgreesWithANaiveModelOnEverySequenceUpToSevenMoves) {
  Chord const chord{"Command A+B", "ab", platform::kCommandFlag};
  // Without the second modifier, which would take thrice the time; the shorter sequences have it.
  Explorer explorer(chord, std::span(kMoves).first(7));
  explorer.explore(7);
  EXPECT_EQ(explorer.sequences(), (7 * 7 * 7 * 7 * 7 * 7 * 7 - 1) / 6 * 7);
  EXPECT_GT(explorer.fires(), 1000);
}

TEST(ChordMatcher, AgreesWithANaiveModelOnShorterSequencesForOtherChords) {
  Chord const chords[] = {
      {"A", "a", kNone},
      {"A+B", "ab", kNone},
      {"Shift B", "b", platform::kShiftFlag},
      {"Command Shift A+B+X", "abx", platform::kCommandFlag | platform::kShiftFlag},
  };
  for (auto const& chord : chords) {
    Explorer explorer(chord, kMoves);
    explorer.explore(5);
    EXPECT_GT(explorer.fires(), 0) << chord.label;
  }
}

}  // namespace
}  // namespace morla::shortcuts
