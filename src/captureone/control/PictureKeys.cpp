#include <algorithm>
#include <cstddef>
#include <utility>

#include "captureone/control/Controls.h"
#include "captureone/control/KeyTexts.h"

namespace morla::captureone {

using namespace keytexts;

namespace {

struct NamedForm {
  std::string_view name;
  CaptureForm form;
};
constexpr NamedForm kForms[] = {{"hfs", CaptureForm::hfs},
                                {"posix", CaptureForm::posix},
                                {"file", CaptureForm::file},
                                {"missing", CaptureForm::missing}};

std::string joined(std::vector<std::string> const& pieces) {
  std::string text;
  for (auto const& each : pieces) text += (text.empty() ? "" : "|") + each;
  return text;
}

/// The recipes that a list joined by `|` names. A name may have that character in it: the longest name that fits is the
/// one that is meant.
std::optional<std::vector<std::string>> handlesIn(std::string_view list, RecipeBook const& recipes) {
  std::vector<std::string> handles;
  while (!list.empty()) {
    Recipe const* best = nullptr;
    for (auto const& each : recipes.all()) {
      bool const fits = list.starts_with(each.name) && !each.name.empty() &&
                        (list.size() == each.name.size() || list[each.name.size()] == '|');
      if (fits && (best == nullptr || each.name.size() > best->name.size())) best = &each;
    }
    if (best == nullptr) return {};
    for (auto const& each : recipes.all()) {
      if (each.name == best->name) handles.push_back(each.handle);
    }
    bool const hasMore = list.size() > best->name.size();
    list.remove_prefix(best->name.size() + (hasMore ? 1 : 0));
    if (hasMore && list.empty()) return {};
  }
  return handles;
}

/// Calls `get` with the current document; without one the answer is empty.
template <typename Get>
auto ofCurrent(Documents const& documents, Get get) {
  return [&documents, get] {
    auto const* current = documents.current();
    return current == nullptr ? std::string() : get(*current);
  };
}

/// Calls `change` with the current document, to change it; `change` answers why it did not.
template <typename Change>
auto inCurrent(Documents& documents, Change change) {
  return [&documents, change](std::string const& text) -> Controls::Refusal {
    auto const* current = documents.current();
    if (current == nullptr) return "there is no document";
    Controls::Refusal refusal;
    documents.change(current->id, [&](Document& document) {
      refusal = change(document, text);
      return !refusal;
    });
    return refusal;
  };
}

Controls::Refusal selectVariants(Document& document, std::string const& text) {
  auto& gallery = document.gallery;
  std::vector<std::size_t> places;
  if (text == "all" || text == "none") {
    gallery.selectAll(text == "all");
    return {};
  }
  for (auto const& id : splitOffer(text)) {
    auto const place = gallery.placeOf(id);
    if (!place) return "there is no variant " + shown(id);
    places.push_back(*place);
  }
  gallery.select(places);
  return {};
}

Controls::Refusal enableRecipes(Document& document, std::string const& text) {
  auto const handles = handlesIn(text, document.recipes);
  if (!handles) return "expected names of recipes joined by |, not " + shown(text);
  for (auto const& each : document.recipes.all()) {
    document.recipes.find(each.handle)->isEnabled = std::ranges::find(*handles, each.handle) != handles->end();
  }
  return {};
}

}  // namespace

void Controls::addVariantKeys() {
  auto& documents = model_.documents();
  entries_.push_back({"variants.count",
                      [&documents] {
                        auto const* current = documents.current();
                        return std::to_string(current == nullptr ? 0 : current->gallery.size());
                      },
                      inCurrent(documents, [](Document& document, std::string const& text) {
                        return withNumber<std::size_t>(text, upTo("a number of variants", Gallery::kMaximum),
                                                       [&](std::size_t count) {
                                                         if (count > Gallery::kMaximum) return false;
                                                         document.gallery.setCount(count);
                                                         return true;
                                                       });
                      })});
  entries_.push_back({"variants.selected",
                      ofCurrent(documents, [](Document const& each) { return joined(each.gallery.selectedIds()); }),
                      inCurrent(documents, selectVariants)});
}

void Controls::addRecipeKeys() {
  auto& documents = model_.documents();
  auto const names = [&documents](bool isOnlyEnabled) {
    return ofCurrent(documents, [isOnlyEnabled](Document const& document) {
      std::vector<std::string> all;
      for (auto const& each : document.recipes.all()) {
        if (each.isEnabled || !isOnlyEnabled) all.push_back(each.name);
      }
      return joined(all);
    });
  };
  entries_.push_back({"recipes", names(false), {}});
  entries_.push_back({"recipes.enabled", names(true), inCurrent(documents, enableRecipes)});
  entries_.push_back(
      {"recipe.add", {}, inCurrent(documents, [](Document& document, std::string const& text) -> Refusal {
         if (text.empty()) return "a recipe needs a name";
         document.recipes.add(text);
         return {};
       })});
  entries_.push_back(
      {"recipe.delete", {}, inCurrent(documents, [](Document& document, std::string const& text) -> Refusal {
         auto const* recipe = document.recipes.findNamed(text);
         if (recipe == nullptr) return "there is no recipe " + shown(text);
         auto const handle = recipe->handle;
         document.recipes.remove(handle);
         return {};
       })});
}

void Controls::addCaptureFolderKeys() {
  auto& documents = model_.documents();
  entries_.push_back({"captures", ofCurrent(documents, [](Document const& each) { return answerOf(each.captures); }),
                      inCurrent(documents, [](Document& document, std::string const& text) -> Refusal {
                        document.captures.text = text;
                        return {};
                      })});
  entries_.push_back({"captures.form",
                      ofCurrent(documents,
                                [](Document const& each) {
                                  return std::string(
                                      std::ranges::find(kForms, each.captures.form, &NamedForm::form)->name);
                                }),
                      inCurrent(documents, [](Document& document, std::string const& text) -> Refusal {
                        auto const named = std::ranges::find(kForms, text, &NamedForm::name);
                        if (named == std::end(kForms)) {
                          return "expected hfs, posix, file or missing, not " + shown(text);
                        }
                        document.captures.form = named->form;
                        return {};
                      })});
}

void Controls::addQueueKeys() {
  auto& queue = model_.queue();
  entries_.push_back({"queue.length", [&queue] { return std::to_string(queue.length()); }, {}});
  entries_.push_back({"process.delay", [&queue] { return textOf(queue.delay().count()); },
                      [&queue](std::string const& text) {
                        return withNumber<double>(text, "seconds from 0 to a day", [&](double seconds) {
                          return queue.setDelay(ProcessingQueue::Seconds(seconds));
                        });
                      }});
  entries_.push_back({"process.stall", [&queue] { return textOf(queue.stall() == ProcessingQueue::Stall::on); },
                      [&queue](std::string const& text) {
                        return withBoolean(text, [&](bool is) -> Refusal {
                          queue.setStall(is ? ProcessingQueue::Stall::on : ProcessingQueue::Stall::off);
                          return {};
                        });
                      }});
}

}  // namespace morla::captureone
