#include "captureone/window/JobList.h"

#include <algorithm>
#include <ranges>
#include <span>
#include <utility>

namespace morla::captureone {

std::vector<JobList::Row> JobList::rowsNow() const {
  auto const& queue = model_.queue();
  auto const row = [](OutputJob const& job, QString const& explanation, State state) {
    return Row{job.id, QString::fromStdString(job.image.name), QString::fromStdString(job.recipe.name), explanation,
               state};
  };
  std::vector<Row> rows;
  auto const& failures = queue.failures();
  for (auto const& each : failures | std::views::drop(std::max(failures.size(), kMostFailures) - kMostFailures)) {
    rows.push_back(row(each.job, QString::fromStdString(each.reason), State::failed));
  }
  auto const* first = queue.next([this](OutputJob const& job) {
    auto const* document = model_.documents().find(job.document);
    return document == nullptr || document->processes;
  });
  for (auto const& each : queue.jobs()) {
    if (rows.size() >= kMostShown) break;
    rows.push_back(row(each, QString::fromStdString(each.folder), &each == first ? State::inWork : State::waiting));
  }
  return rows;
}

void JobList::refresh() {
  auto now = rowsNow();
  if (now == rows_) return;
  // Mostly a file is finished or some are put at the end; the others stay where they are.
  auto const isKnown = [&](Row const& row) { return std::ranges::find(now, row.id, &Row::id) != now.end(); };
  for (std::size_t row = rows_.size(); row-- > 0;) {
    if (isKnown(rows_[row])) continue;
    beginRemoveRows({}, static_cast<int>(row), static_cast<int>(row));
    rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(row));
    endRemoveRows();
  }
  bool const isContinued = rows_.size() <= now.size() &&
                           std::ranges::equal(rows_, std::span(now).first(rows_.size()), {}, &Row::id, &Row::id);
  if (!isContinued) {
    beginResetModel();
    rows_ = std::move(now);
    endResetModel();
    return;
  }
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    if (rows_[row] == now[row]) continue;
    rows_[row] = now[row];
    auto const changed = index(static_cast<int>(row));
    emit dataChanged(changed, changed);
  }
  if (rows_.size() == now.size()) return;
  beginInsertRows({}, static_cast<int>(rows_.size()), static_cast<int>(now.size()) - 1);
  rows_ = std::move(now);
  endInsertRows();
}

QVariant JobList::data(QModelIndex const& index, int role) const {
  if (!index.isValid()) return {};
  auto const& row = rows_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case Qt::DisplayRole:
      return row.name;
    case Qt::AccessibleTextRole:
      return QString(row.name + QStringLiteral(", ") + row.recipe +
                     (row.state == State::failed   ? QStringLiteral(", échec")
                      : row.state == State::inWork ? QStringLiteral(", en cours")
                                                   : QStringLiteral(", en attente")));
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
      return QString(row.name + QStringLiteral(" – ") + row.recipe + QStringLiteral("\n") + row.explanation);
    case StateRole:
      return static_cast<int>(row.state);
    case RecipeRole:
      return row.recipe;
    default:
      return {};
  }
}

}  // namespace morla::captureone
