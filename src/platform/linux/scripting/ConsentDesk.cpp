#include "platform/linux/scripting/ConsentDesk.h"

#include <algorithm>
#include <cassert>

#include "base/Log.h"
#include "base/MainThread.h"

namespace morla::linux {

using privacy::Permission;
using privacy::PermissionQuestion;

ConsentDesk::ConsentDesk(MainLoop& loop, privacy::PermissionStore store, Show show, Watch watch)
    : loop_(loop), store_(std::move(store)), show_(std::move(show)), watch_(std::move(watch)) {
  assertIsMainThread();
}

ConsentDesk::~ConsentDesk() = default;

Permission ConsentDesk::ask(PermissionQuestion const& question, applescript::ApplicationInformation const& target) {
  assert(!isMainThread());
  auto script = std::make_shared<std::promise<Permission>>();
  auto answer = script->get_future();
  // The loop destroys what it will not run any more, and with it the promise.
  loop_.post(
      life_.weak([this, question, name = target.name, script = std::move(script)] { take(question, name, script); }));
  try {
    return answer.get();
  } catch (std::future_error const&) {
    return Permission::undecided;
  }
}

void ConsentDesk::forgetClosedQuestions() {
  assertIsMainThread();
  unanswered_.clear();
}

void ConsentDesk::take(PermissionQuestion const& about, std::string const& targetName, Waiting const& script) {
  if (auto const answer = answerAtOnce(about)) {
    script->set_value(*answer);
    return;
  }
  auto const same = std::ranges::find(questions_, about, &Question::about);
  if (same != questions_.end()) {
    same->scripts.push_back(script);
    return;
  }
  questions_.push_back({about, targetName, {script}});
  if (!storeWatch_.isActive()) storeWatch_ = watch_(store_.path(), life_.weak([this] { review(); }));
  // Once more, since the watch tells of no change before it.
  review();
}

std::optional<Permission> ConsentDesk::answerAtOnce(PermissionQuestion const& about) {
  auto const stored = store_.get(about);
  if (stored != Permission::undecided) return stored;
  for (auto const& decision : unstored_) {
    if (decision.question == about) return decision.permission;
  }
  auto const unanswered = std::ranges::find(unanswered_, about, &Unanswered::about);
  if (unanswered == unanswered_.end()) return std::nullopt;
  if (loop_.now() - unanswered->lastAsked < kPauseAfterNoAnswer) {
    unanswered->lastAsked = loop_.now();
    return Permission::undecided;
  }
  unanswered_.erase(unanswered);
  return std::nullopt;
}

void ConsentDesk::review() {
  for (auto question = questions_.begin(); question != questions_.end();) {
    auto const current = question++;
    auto const stored = store_.get(current->about);
    if (stored != Permission::undecided) finish(current, stored);
  }
  showFirst();
}

void ConsentDesk::showFirst() {
  if (questions_.empty()) {
    storeWatch_.end();
  } else if (!window_.isActive()) {
    window_ = show_(questions_.front().targetName, life_.weak([this](Answer answer) { answered(answer); }));
  }
}

void ConsentDesk::answered(Answer answer) {
  // A decision that came from elsewhere at the same moment has taken the question away.
  if (questions_.empty() || !window_.isActive()) return;
  auto const question = questions_.begin();
  if (answer == Answer::none) {
    unanswered_.push_back({question->about, loop_.now()});
    finish(question, Permission::undecided);
  } else {
    auto const permission = answer == Answer::allow ? Permission::allow : Permission::deny;
    keep(question->about, permission);
    finish(question, permission);
  }
  review();
}

void ConsentDesk::finish(std::list<Question>::iterator question, Permission permission) {
  if (question == questions_.begin()) window_.end();
  auto const scripts = std::move(question->scripts);
  questions_.erase(question);
  for (auto const& script : scripts) script->set_value(permission);
}

void ConsentDesk::keep(PermissionQuestion const& about, Permission permission) {
  auto const failure = store_.set(about, permission);
  if (!failure) return;
  log("Privacy", *failure + "; the answer counts until MORLA ends");
  unstored_.push_back({about, permission});
}

}  // namespace morla::linux
