#include "captureone/window/RecipeList.h"

#include <algorithm>

#include "captureone/window/Texts.h"

namespace morla::captureone {

void RecipeList::refresh() {
  auto const* document = documents_.current();
  std::string const id = document == nullptr ? std::string() : document->id;
  std::vector<Recipe> const now = document == nullptr ? std::vector<Recipe>() : document->recipes.all();
  if (id == document_ && now == shown_) return;
  bool const hasSameRows = id == document_ && std::ranges::equal(now, shown_, {}, &Recipe::handle, &Recipe::handle);
  if (!hasSameRows) {
    beginResetModel();
    document_ = id;
    shown_ = now;
    endResetModel();
    return;
  }
  for (std::size_t row = 0; row < now.size(); ++row) {
    if (shown_[row] == now[row]) continue;
    shown_[row] = now[row];
    auto const changed = index(static_cast<int>(row));
    emit dataChanged(changed, changed);
  }
}

std::string RecipeList::handleOf(int row) const {
  return row >= 0 && row < rowCount() ? shown_[static_cast<std::size_t>(row)].handle : std::string();
}

QVariant RecipeList::data(QModelIndex const& index, int role) const {
  if (!index.isValid()) return {};
  auto const& recipe = shown_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return QString::fromStdString(recipe.name);
    case Qt::CheckStateRole:
      return recipe.isEnabled ? Qt::Checked : Qt::Unchecked;
    case Qt::AccessibleDescriptionRole:
    case Qt::ToolTipRole:
      return QString(QString::fromStdString(recipe.name) + QStringLiteral("\n") + texts::format(recipe) +
                     QStringLiteral("\n") + texts::destination(recipe));
    case FormatRole:
      return texts::format(recipe);
    case DestinationRole:
      return texts::destination(recipe);
    default:
      return {};
  }
}

Qt::ItemFlags RecipeList::flags(QModelIndex const& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemIsEditable |
         Qt::ItemNeverHasChildren;
}

bool RecipeList::setData(QModelIndex const& index, QVariant const& value, int role) {
  auto const handle = handleOf(index.isValid() ? index.row() : -1);
  auto const name = value.toString().toStdString();
  if (role != Qt::CheckStateRole && (role != Qt::EditRole || name.empty())) return false;
  // The model tells of the change, and `refresh` shows it.
  return documents_.change(document_, [&](Document& document) {
    auto* recipe = document.recipes.find(handle);
    if (recipe == nullptr) return false;
    auto const before = *recipe;
    if (role == Qt::EditRole) {
      recipe->name = name;
    } else {
      recipe->isEnabled = value.value<Qt::CheckState>() == Qt::Checked;
    }
    return before != *recipe;
  });
}

}  // namespace morla::captureone
