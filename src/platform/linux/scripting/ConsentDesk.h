#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/Lifetime.h"
#include "base/MainLoop.h"
#include "platform/linux/scripting/AutomationGate.h"

namespace morla::linux {

/// Where the scripts' questions about permissions meet the user. Scripts wait on their own threads; everything else
/// happens on the main thread, in turns of its loop, so that nothing stands still meanwhile.
///
/// Scripts that ask about the same application share one question; different questions are shown one after the other,
/// in the order in which they came. A question ends with the user's answer, or as soon as the store has a decision from
/// elsewhere. One that the user has closed is not put again while scripts go on asking without a pause, unless the user
/// has asked for it.
class ConsentDesk final : public ConsentPrompt {
 public:
  enum class Answer { allow, refuse, none };
  /// Shows a question about the application of that name until the subscription ends; calls `answered` at most once, on
  /// the main thread.
  using Show = std::function<Subscription(std::string const& targetName, std::function<void(Answer)> answered)>;
  /// Calls `changed` on the main thread after the file has been replaced, until the subscription ends.
  using Watch = std::function<Subscription(std::string const& path, std::function<void()> changed)>;

  /// Longer than the pause of whatever asks again and again (the camera poll: one second), shorter than the time in
  /// which a person who has closed the question comes to want it after all.
  static constexpr Duration kPauseAfterNoAnswer = std::chrono::seconds(3);

  /// Main thread; `loop` outlives the desk.
  ConsentDesk(MainLoop& loop, privacy::PermissionStore store, Show show, Watch watch);
  /// Scripts that still wait go on without an answer.
  ~ConsentDesk() override;
  ConsentDesk(ConsentDesk const&) = delete;
  ConsentDesk& operator=(ConsentDesk const&) = delete;

  [[nodiscard]] privacy::Permission ask(privacy::PermissionQuestion const& question,
                                        applescript::ApplicationInformation const& target) override;

  /// The user wants to be asked: a question that was closed is put again at once. Main thread.
  void forgetClosedQuestions();

 private:
  /// One script that waits. A promise that goes unkept is no answer either.
  using Waiting = std::shared_ptr<std::promise<privacy::Permission>>;

  struct Question {
    privacy::PermissionQuestion about;
    std::string targetName;
    std::vector<Waiting> scripts;
  };
  struct Unanswered {
    privacy::PermissionQuestion about;
    TimePoint lastAsked;
  };

  void take(privacy::PermissionQuestion const& about, std::string const& targetName, Waiting const& script);
  [[nodiscard]] std::optional<privacy::Permission> answerAtOnce(privacy::PermissionQuestion const& about);
  /// Closes what has been decided elsewhere, and shows the first of the rest.
  void review();
  void showFirst();
  void answered(Answer answer);
  void finish(std::list<Question>::iterator question, privacy::Permission permission);
  void keep(privacy::PermissionQuestion const& about, privacy::Permission permission);

  MainLoop& loop_;
  privacy::PermissionStore store_;
  Show show_;
  Watch watch_;
  std::list<Question> questions_;  ///< the first is the one that is shown
  Subscription window_;
  Subscription storeWatch_;  ///< while there are questions
  std::vector<Unanswered> unanswered_;
  /// Decisions that could not be stored count until this program ends.
  std::vector<privacy::PermissionStore::Decision> unstored_;
  Lifetime life_;
};

}  // namespace morla::linux
