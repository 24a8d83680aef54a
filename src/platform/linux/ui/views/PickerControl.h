#pragma once

#include <QAbstractButton>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class QMenu;

namespace morla::linux {

/// A control that shows one of several options and opens the list of them.
class PickerControl : public QAbstractButton {
 public:
  PickerControl(QWidget* parent, std::function<void(std::size_t)> didChoose);

  void setOptions(std::vector<std::string> const& options);
  /// What is shown when no option is current.
  void setUnlisted(std::string const& text);
  void setCurrent(std::optional<std::size_t> option);

  [[nodiscard]] QString value() const;
  [[nodiscard]] QMenu& list() const { return *list_; }
  [[nodiscard]] int naturalWidth() const { return naturalWidth_; }
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void openList();
  void measure();
  void announceValue();

  std::function<void(std::size_t)> didChoose_;
  QMenu* list_;
  std::vector<QString> options_;
  QString unlisted_;
  std::optional<std::size_t> current_;
  int naturalWidth_ = 0;
};

}  // namespace morla::linux
