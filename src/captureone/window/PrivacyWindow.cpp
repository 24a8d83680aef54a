#include "captureone/window/PrivacyWindow.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QListWidget>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdio>
#include <iterator>
#include <utility>

#include "captureone/window/Style.h"

namespace morla::captureone {
namespace {

using privacy::Permission;

constexpr int kPagesWidth = 208;
constexpr int kChoiceWidth = 128;
constexpr int kMargin = 20;

QString text(std::string const& utf8) {
  return QString::fromStdString(utf8);
}

bool isSameQuestion(PrivacyRow const& a, PrivacyRow const& b) {
  return a.question == b.question;
}

QLabel* wrapped(QLabel* label) {
  label->setWordWrap(true);
  return label;
}

}  // namespace

PrivacyWindow::PrivacyWindow(privacy::PermissionStore store) : store_(std::move(store)) {
  setObjectName(QStringLiteral("window"));
  setAttribute(Qt::WA_StyledBackground);
  auto* columns = new QHBoxLayout(this);
  columns->setContentsMargins(0, 0, 0, 0);
  columns->setSpacing(0);
  columns->addWidget(makePages());
  columns->addWidget(makePage(), 1);
  setMinimumSize(560, 260);
  resize(640, 320);
  show(page_);
}

QWidget* PrivacyWindow::makePages() {
  pages_ = style::named(new QListWidget(this), QStringLiteral("Rubriques"));
  pages_->setObjectName(QStringLiteral("pages"));
  pages_->setFixedWidth(kPagesWidth);
  pages_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  for (auto const page : kPrivacyPages) pages_->addItem(text(titleOf(page)));
  connect(pages_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row >= 0) show(kPrivacyPages[row]);
  });
  return pages_;
}

QWidget* PrivacyWindow::makePage() {
  auto* page = new QWidget(this);
  auto* rows = new QVBoxLayout(page);
  rows->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  rows->setSpacing(6);
  title_ = style::label({}, style::Tone::title, page);
  explanation_ = wrapped(style::label({}, style::Tone::secondary, page));
  problem_ = wrapped(style::label({}, style::Tone::secondary, page));
  problem_->setObjectName(QStringLiteral("problem"));
  rows->addWidget(title_);
  rows->addWidget(explanation_);
  rows->addSpacing(8);
  auto* scroll = new QScrollArea(page);
  scroll->setObjectName(QStringLiteral("permissions"));
  scroll->setWidgetResizable(true);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  auto* content = new QWidget(scroll);
  listPlace_ = new QVBoxLayout(content);
  listPlace_->setContentsMargins(0, 0, 0, 0);
  listPlace_->addStretch();
  scroll->setWidget(content);
  rows->addWidget(scroll, 1);
  rows->addWidget(problem_);
  return page;
}

void PrivacyWindow::show(PrivacyPage page) {
  page_ = page;
  pages_->setCurrentRow(static_cast<int>(std::ranges::find(kPrivacyPages, page) - std::begin(kPrivacyPages)));
  title_->setText(text(titleOf(page)));
  explanation_->setText(text(explanationOf(page)));
  setWindowTitle(QStringLiteral("Confidentialité : ") + title_->text());
  refresh();
}

void PrivacyWindow::present() {
  QWidget::show();
  setWindowState(windowState() & ~Qt::WindowMinimized);
  raise();
  activateWindow();
}

void PrivacyWindow::refresh() {
  auto const contents = store_.read();
  auto rows = rowsOf(page_, contents.decisions);
  // Rows that stay keep their controls, with the keyboard and whatever is open.
  if (!std::ranges::equal(rows, rows_, isSameQuestion)) makeRows(rows);
  rows_ = std::move(rows);
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    choices_[i]->setCurrentIndex(choices_[i]->findData(static_cast<int>(rows_[i].permission)));
  }
  problem_->setVisible(!contents.problem.empty());
  problem_->setText(
      QStringLiteral("Une partie des autorisations enregistrées est illisible. Elle sera mise de côté au "
                     "prochain changement."));
  problem_->setToolTip(text(contents.problem));
}

void PrivacyWindow::makeRows(std::vector<PrivacyRow> const& rows) {
  delete list_;
  choices_.clear();
  list_ = new QWidget;
  auto* layout = new QVBoxLayout(list_);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(8);
  std::string client;
  for (auto const& row : rows) {
    bool const isGroup = !row.target.empty();
    if (isGroup && row.client != client) layout->addWidget(style::label(text(row.client), style::Tone::heading, list_));
    client = row.client;
    layout->addWidget(makeRow(row));
  }
  listPlace_->insertWidget(0, list_);
}

QWidget* PrivacyWindow::makeRow(PrivacyRow const& row) {
  auto* line = new QWidget(list_);
  auto* columns = new QHBoxLayout(line);
  columns->setContentsMargins(0, 0, 0, 0);
  columns->setSpacing(12);
  auto const name = text(row.target.empty() ? row.client : row.target);
  auto* label = wrapped(style::label(name, style::Tone::primary, line));
  auto* choice = style::combo(row.target.empty() ? name : text(row.client) + QStringLiteral(" : ") + name, line);
  choice->setFixedWidth(kChoiceWidth);
  for (auto const& [title, permission] :
       {std::pair(QStringLiteral("Autorisé"), Permission::allow), std::pair(QStringLiteral("Refusé"), Permission::deny),
        std::pair(QStringLiteral("À demander"), Permission::undecided)}) {
    choice->addItem(title, static_cast<int>(permission));
  }
  connect(choice, &QComboBox::activated, this, [this, choice, question = row.question] {
    decide(question, static_cast<Permission>(choice->currentData().toInt()));
  });
  label->setBuddy(choice);
  columns->addWidget(label, 1);
  columns->addWidget(choice);
  choices_.push_back(choice);
  return line;
}

void PrivacyWindow::decide(privacy::PermissionQuestion const& question, Permission permission) {
  auto const failure = store_.set(question, permission);
  refresh();
  if (!failure) return;
  std::fprintf(stderr, "captureone-sim: %s\n", failure->c_str());
  problem_->setText(QStringLiteral("Votre choix n’a pas pu être enregistré."));
  problem_->setToolTip(text(*failure));
  problem_->setVisible(true);
}

void PrivacyWindow::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Cancel) || event->matches(QKeySequence::Close)) {
    close();
    return;
  }
  QWidget::keyPressEvent(event);
}

}  // namespace morla::captureone
