#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <string>

#include "base/Subscription.h"

class QLabel;

namespace morla::linux {

enum class Consent { allow, refuse };

/// Asks whether this program may control an application. Managed by the window manager, unlike the panels, since it has
/// to be found, reached by the keyboard and closed like any other window; it stands above the others. Main thread.
///
/// Escape and the frame's close button close it without an answer. No button has the keyboard at first: a Return or a
/// blank that was meant for the application in front decides nothing.
class ConsentWindow final : public QWidget {
 public:
  /// No consent: closed without an answer. Called once, and never after the window was hidden by its owner.
  using Answered = std::function<void(std::optional<Consent>)>;

  ConsentWindow(std::string const& targetName, Answered answered);

  /// Before other windows, with the keyboard, in the middle of the screen that has the pointer.
  void present();
  /// Takes the window away without telling anybody.
  void withdraw();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void answer(std::optional<Consent> consent);
  void colourTexts();

  QLabel* question_ = nullptr;
  QLabel* explanation_ = nullptr;
  Answered answered_;
};

/// Shows the question until the subscription ends, and never calls `answered` after that. Main thread.
[[nodiscard]] Subscription askForConsent(std::string const& targetName, ConsentWindow::Answered answered);

}  // namespace morla::linux
