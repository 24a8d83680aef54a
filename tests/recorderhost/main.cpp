// Hosts the three shortcut recorders in a window: a button for each, beside controls that must get none of the keys.
//
//     recorder_host TRACE
//
// TRACE gets the trace. Standard output tells where things are ("at NAME X Y": their centres, from the window's corner)
// and what the other controls got ("edited TEXT", "confirmed", "shortcut").

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "base/Trace.h"
#include "platform/linux/input/QtKeyMonitors.h"
#include "platform/linux/input/X11EventTaps.h"
#include "platform/linux/system/FileUserDefaults.h"
#include "platform/linux/ui/QtMainLoop.h"
#include "shortcuts/ChordHotkeyManager.h"
#include "shortcuts/ShortcutRecorder.h"

namespace {

using namespace morla;

void tell(std::string const& line) {
  std::puts(line.c_str());
  std::fflush(stdout);
}

/// Everything that the recorders need, without the rest of the program.
struct World {
  linux::QtMainLoop loop;
  linux::FileUserDefaults defaults{loop};
  linux::X11EventTaps taps{loop, [] { return true; }};
  linux::QtKeyMonitors monitors{loop};
  NotificationCenter notifications;

  shortcuts::ChordHotkeyManager::Roles hotkeyRoles{loop, taps, defaults, notifications};
  shortcuts::HotkeyManager mirrorKeys{hotkeyRoles};
  shortcuts::CaptureOneFolderHotkeyManager folderKeys{hotkeyRoles};
  shortcuts::AirdropHotkeyManager airdropKeys{hotkeyRoles};
  shortcuts::ShortcutRecorderManager mirror{{loop, monitors, defaults, mirrorKeys}};
  shortcuts::CaptureOneFolderShortcutRecorderManager folder{{loop, monitors, defaults, folderKeys}};
  shortcuts::AirdropShortcutRecorderManager airdrop{{loop, monitors, defaults, airdropKeys}};
};

class Window : public QWidget {
 public:
  explicit Window(World& world) {
    setWindowTitle("Recorders");
    auto* const layout = new QVBoxLayout(this);
    addRow(*layout, "Afficher/Masquer Fenêtre", world.mirror);
    addRow(*layout, "Créer dossier Capture One", world.folder);
    addRow(*layout, "Airdrop", world.airdrop);
    layout->addWidget(&edit_);
    layout->addWidget(&confirm_);
    connect(&edit_, &QLineEdit::textChanged, this, [](QString const& text) { tell("edited " + text.toStdString()); });
    // Not `clicked`, which a shortcut makes come a tenth of a second later, behind what was typed meanwhile.
    connect(&confirm_, &QPushButton::pressed, this, [] { tell("confirmed"); });
    confirm_.setShortcut(QKeySequence(Qt::Key_Return));
    connect(&shortcut_, &QShortcut::activated, this, [] { tell("shortcut"); });
  }

  void tellPlaces() const {
    for (std::size_t i = 0; i < rows_.size(); ++i) tellPlace("button" + std::to_string(i), *rows_[i].button);
    tellPlace("edit", edit_);
    tell("ready");
  }

 private:
  struct Row {
    shortcuts::ShortcutRecorder* recorder;
    QPushButton* button;
    QLabel* error;
  };

  void addRow(QVBoxLayout& layout, char const* title, shortcuts::ShortcutRecorder& recorder) {
    recorder.loadFromDefaults();
    auto* const line = new QHBoxLayout;
    Row const row{&recorder, new QPushButton, new QLabel};
    row.button->setMinimumSize(130, 26);
    line->addWidget(new QLabel(title));
    line->addWidget(row.error);
    line->addStretch();
    line->addWidget(row.button);
    layout.addLayout(line);
    connect(row.button, &QPushButton::clicked, this, [this, &recorder] { toggle(recorder); });
    rows_.push_back(row);
    auto const redraw = [this](auto const&) { QTimer::singleShot(0, this, [this] { update(); }); };
    observations_.push_back(recorder.isRecording().willChange(redraw));
    observations_.push_back(recorder.currentChars().willChange(redraw));
    observations_.push_back(recorder.currentModifiers().willChange(redraw));
    observations_.push_back(recorder.errorMessage().willChange(redraw));
    update();
  }

  void toggle(shortcuts::ShortcutRecorder& recorder) {
    if (recorder.isRecording().get()) {
      recorder.stopRecording();
      return;
    }
    for (auto const& row : rows_) {
      if (row.recorder != &recorder) row.recorder->stopRecording();
    }
    recorder.startRecording();
  }

  void update() {
    for (auto const& row : rows_) {
      auto const text = row.recorder->isRecording().get() ? "Appuyez..." : row.recorder->displayText();
      row.button->setText(QString::fromStdString(text));
      row.error->setText(QString::fromStdString(row.recorder->errorMessage().get()));
    }
  }

  void tellPlace(std::string const& name, QWidget const& widget) const {
    auto const centre = widget.mapTo(this, widget.rect().center());
    tell("at " + name + " " + std::to_string(centre.x()) + " " + std::to_string(centre.y()));
  }

  std::vector<Row> rows_;
  std::vector<Subscription> observations_;
  QLineEdit edit_{this};
  QPushButton confirm_{"Valider", this};
  QShortcut shortcut_{QKeySequence("Ctrl+K"), this};
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  std::FILE* const file = argc == 2 ? std::fopen(argv[1], "we") : nullptr;
  if (file == nullptr) {
    std::fputs("usage: recorder_host TRACE\n", stderr);
    return 2;
  }
  Trace const trace(
      [file](std::string const& line) {
        std::fprintf(file, "%s\n", line.c_str());
        std::fflush(file);
      },
      [] { return std::chrono::milliseconds(0); });
  int status = 0;
  {
    World world;
    for (auto* keys : std::initializer_list<shortcuts::ChordHotkeyManager*>{&world.mirrorKeys, &world.folderKeys,
                                                                            &world.airdropKeys}) {
      keys->registerHotkey();
    }
    Window window(world);
    window.resize(400, 250);
    window.show();
    window.tellPlaces();
    status = QApplication::exec();
    world.loop.end();
  }
  std::fclose(file);
  return status;
}
