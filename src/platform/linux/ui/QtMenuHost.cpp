#include "platform/linux/ui/QtMenuHost.h"

#include <QAction>
#include <QMenu>
#include <chrono>
#include <string>
#include <utility>

#include "base/Log.h"
#include "base/MainThread.h"
#include "platform/linux/ui/MenuStyle.h"

namespace morla::linux {
namespace {

/// A click's way through a window manager takes milliseconds; a person would not wait longer for a menu.
constexpr Duration kPointerPatience = std::chrono::milliseconds(300);
constexpr Duration kPointerRetry = std::chrono::milliseconds(10);

/// What follows a tab stands at the right; an ampersand would underline a letter.
QString textOf(platform::MenuItem const& item) {
  QString text = QString::fromStdString(item.title).replace("&", "&&");
  if (!item.keyEquivalent.empty()) text += "\tSuper+" + QString::fromStdString(item.keyEquivalent).toUpper();
  return text;
}

}  // namespace

QtMenuHost::QtMenuHost(MainLoop& loop, Screens const& screens, XClient& client, Compositor const& compositor)
    : loop_(loop), screens_(screens), client_(client), compositor_(compositor) {}

QtMenuHost::~QtMenuHost() = default;

void QtMenuHost::popUp(platform::Menu const& menu, BottomLeftPoint at) {
  assertIsMainThread();
  closeOpen();
  showWhenPointerIsFree(menu, at, loop_.now() + kPointerPatience);
}

void QtMenuHost::closeOpen() {
  nextTry_.end();
  if (open_ == nullptr) return;
  open_->close();
  // It may be in the middle of an event of its own.
  open_.release()->deleteLater();
}

void QtMenuHost::showWhenPointerIsFree(platform::Menu const& menu, BottomLeftPoint at, TimePoint deadline) {
  if (client_.canGrabPointer()) {
    show(menu, at);
  } else if (loop_.now() < deadline) {
    nextTry_ = loop_.after(kPointerRetry, [this, menu, at, deadline] { showWhenPointerIsFree(menu, at, deadline); });
  } else {
    log("Menu", "Not shown: another program has the pointer to itself");
  }
}

void QtMenuHost::show(platform::Menu const& menu, BottomLeftPoint at) {
  open_ = std::make_unique<QMenu>();
  bool const isBlended = compositor_.isRunning();
  auto* const style = new MenuStyle(isBlended ? Corners::round : Corners::square);
  style->setParent(open_.get());
  open_->setStyle(style);
  open_->setAttribute(Qt::WA_TranslucentBackground, isBlended);
  // The click that closes the menu does nothing else.
  open_->setAttribute(Qt::WA_NoMouseReplay);
  open_->setWindowTitle("Menu");
  for (auto const& item : menu.items) {
    auto* const action = open_->addAction(textOf(*item));
    action->setCheckable(item->isTicked);
    action->setChecked(item->isTicked);
    // The row keeps its item while the menu is open, and the item's own action is the one of the moment of the choice.
    QObject::connect(action, &QAction::triggered, open_.get(), [this, item] {
      if (item->action) loop_.post(item->action);
    });
  }
  open_->popup(screens_.toQt(screens_.flip().toGlobal(at)));
}

}  // namespace morla::linux
