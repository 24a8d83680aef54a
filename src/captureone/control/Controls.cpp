#include "captureone/control/Controls.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "base/Json.h"
#include "captureone/control/KeyTexts.h"

namespace morla::captureone {

using namespace keytexts;

namespace {

using Refusal = Controls::Refusal;

constexpr char kAutomation[] = "automation";
constexpr char kEvents[] = "events";

Refusal unlessThereIsNoCamera(bool done) {
  if (done) return {};
  return "there is no camera";
}

struct NamedStandIn {
  std::string_view name;
  StandIn standIn;
};
constexpr NamedStandIn kStandIns[] = {{"text", StandIn::text},
                                      {"integer", StandIn::integer},
                                      {"missing", StandIn::missing},
                                      {"nothing", StandIn::nothing}};

std::string_view nameOf(StandIn standIn) {
  return std::ranges::find(kStandIns, standIn, &NamedStandIn::standIn)->name;
}

}  // namespace

Controls::Controls(Model& model, AutomationPermission& automation)
    : model_(model), automation_(automation), automationAtStart_(automation.read()) {
  addDocumentKeys();
  addCameraKeys();
  addVariantKeys();
  addRecipeKeys();
  addCaptureFolderKeys();
  addQueueKeys();
  addFaultKeys();
  addAutomationKey();
  last_ = snapshot();
  modelChanges_ = model_.onChange([this] {
    Snapshot now;
    for (auto const& each : entries_) {
      if (each.isOfModel && each.get) now.emplace(each.key, each.get());
    }
    tellChanges(now);
  });
  modelEvents_ = model_.onEvent([this] { tellChanges({{kEvents, *get(kEvents)}}); });
}

void Controls::addDocumentKeys() {
  auto& documents = model_.documents();
  entries_.push_back({"document.open", [&documents] { return std::to_string(documents.all().size()); },
                      [&documents](std::string const& text) {
                        return withNumber<std::size_t>(text, upTo("a number of documents", Documents::kMaximum),
                                                       [&](std::size_t count) { return documents.setCount(count); });
                      }});
  entries_.push_back({"document.kind",
                      [&documents] { return documents.kind() == DocumentKind::session ? "session" : "catalog"; },
                      [&documents](std::string const& text) -> Refusal {
                        if (text != "session" && text != "catalog") {
                          return "expected session or catalog, not " + shown(text);
                        }
                        documents.setKind(text == "session" ? DocumentKind::session : DocumentKind::catalog);
                        return {};
                      }});
}

void Controls::addCameraKeys() {
  auto& cameras = model_.cameras();
  entries_.push_back({"camera.count", [&cameras] { return std::to_string(cameras.all().size()); },
                      [&cameras](std::string const& text) {
                        return withNumber<std::size_t>(text, upTo("a number of cameras", Cameras::maximum()),
                                                       [&](std::size_t count) { return cameras.setCount(count); });
                      }});
  entries_.push_back(
      {"camera.current", [&cameras] { return std::to_string(cameras.current() ? cameras.currentIndex() + 1 : 0); },
       [&cameras](std::string const& text) {
         return withNumber<std::size_t>(text, "a camera from 1 to " + std::to_string(cameras.all().size()),
                                        [&](std::size_t n) { return n > 0 && cameras.makeCurrent(n - 1); });
       }});
  entries_.push_back({"camera.connected",
                      [&cameras] {
                        auto const* camera = cameras.current();
                        return textOf(camera != nullptr && camera->link == CameraLink::connected);
                      },
                      [&cameras](std::string const& text) {
                        return withBoolean(text, [&](bool is) {
                          return unlessThereIsNoCamera(
                              cameras.setLink(is ? CameraLink::connected : CameraLink::disconnected));
                        });
                      }});
  entries_.push_back({"camera.power",
                      [&cameras] {
                        auto const* camera = cameras.current();
                        return textOf(camera != nullptr && camera->power == CameraPower::on);
                      },
                      [&cameras](std::string const& text) {
                        return withBoolean(text, [&](bool is) {
                          return unlessThereIsNoCamera(cameras.setPower(is ? CameraPower::on : CameraPower::off));
                        });
                      }});
  entries_.push_back({"camera.name",
                      [&cameras] { return cameras.current() == nullptr ? std::string() : cameras.current()->name; },
                      [&cameras](std::string const& text) { return unlessThereIsNoCamera(cameras.setName(text)); }});
  addSettingKeys(CameraSetting::format, "format");
  addSettingKeys(CameraSetting::iso, "iso");
  addSettingKeys(CameraSetting::aperture, "aperture");
  addSettingKeys(CameraSetting::shutterSpeed, "shutter");
}

void Controls::addSettingKeys(CameraSetting which, std::string const& name) {
  auto& cameras = model_.cameras();
  auto const part = [&cameras, which](std::string SettingState::* member) {
    return [&cameras, which, member] {
      auto const* camera = cameras.current();
      return camera == nullptr ? std::string() : camera->setting(which).*member;
    };
  };
  entries_.push_back({"camera." + name, part(&SettingState::value), [&cameras, which](std::string const& text) {
                        return unlessThereIsNoCamera(cameras.setValue(which, text));
                      }});
  entries_.push_back(
      {"camera.available." + name, part(&SettingState::available), [&cameras, which](std::string const& text) {
         return unlessThereIsNoCamera(cameras.setAvailable(which, text));
       }});
}

void Controls::addFaultKeys() {
  auto& faults = model_.faults();
  using Seconds = std::chrono::duration<double>;
  entries_.push_back({"fault.delay", [&faults] { return textOf(faults.delay().count()); },
                      [&faults](std::string const& text) {
                        return withNumber<double>(text, "seconds from 0 to a day",
                                                  [&](double seconds) { return faults.setDelay(Seconds(seconds)); });
                      }});
  entries_.push_back({"fault.silent", [&faults] { return textOf(faults.silence() == Silence::on); },
                      [&faults](std::string const& text) {
                        return withBoolean(text, [&](bool is) -> Refusal {
                          faults.setSilence(is ? Silence::on : Silence::off);
                          return {};
                        });
                      }});
  auto const expected = "the number of an event from now on, or 0";
  entries_.push_back({"fault.quit-at-event", [&faults] { return std::to_string(faults.quitAtEvent()); },
                      [&faults, expected](std::string const& text) {
                        return withNumber<std::int64_t>(text, expected,
                                                        [&](std::int64_t k) { return faults.setQuitAtEvent(k); });
                      }});
  entries_.push_back({"fault.refuse-at-event", [&faults] { return std::to_string(faults.refuseAtEvent()); },
                      [&faults, expected](std::string const& text) {
                        return withNumber<std::int64_t>(text, expected,
                                                        [&](std::int64_t k) { return faults.setRefuseAtEvent(k); });
                      }});
  entries_.push_back({"fault.reply-kind", [&faults] { return std::string(nameOf(faults.standIn())); },
                      [&faults](std::string const& text) -> Refusal {
                        auto const named = std::ranges::find(kStandIns, text, &NamedStandIn::name);
                        if (named == std::end(kStandIns)) {
                          return "expected text, integer, missing or nothing, not " + shown(text);
                        }
                        faults.setStandIn(named->standIn);
                        return {};
                      }});
  entries_.push_back({"fault.reply", [&faults] { return faults.reply(); },
                      [&faults](std::string const& text) -> Refusal {
                        faults.setReply(text);
                        return {};
                      }});
  entries_.push_back({kEvents, [&faults] { return std::to_string(faults.events()); }, {}});
}

void Controls::addAutomationKey() {
  entries_.push_back({kAutomation, [this] { return std::string(captureone::textOf(automation_.read())); },
                      [this](std::string const& text) -> Refusal {
                        auto const decision = automationFrom(text);
                        if (!decision) return "expected allow, deny or undecided, not " + shown(text);
                        if (!automation_.write(*decision)) return "the store of permissions cannot be written";
                        review();
                        return {};
                      },
                      /*isOfModel=*/false});
}

Controls::Entry const* Controls::find(std::string_view key) const {
  auto const found = std::ranges::find(entries_, key, &Entry::key);
  return found == entries_.end() ? nullptr : &*found;
}

std::optional<std::string> Controls::get(std::string_view key) const {
  auto const* entry = find(key);
  return entry == nullptr || !entry->get ? std::nullopt : std::optional(entry->get());
}

std::string Controls::whyUnreadable(std::string_view key) const {
  return find(key) == nullptr ? "unknown key " + shown(key) : shown(key) + " can only be set";
}

Controls::Refusal Controls::set(std::string_view key, std::string const& value) {
  auto const* entry = find(key);
  if (entry == nullptr) return "unknown key " + shown(key);
  if (!entry->set) return shown(key) + " can only be read";
  return entry->set(value);
}

void Controls::reset() {
  if (automation_.read() != automationAtStart_) automation_.write(automationAtStart_);
  review();
  model_.reset();
}

Controls::Snapshot Controls::snapshot() const {
  Snapshot all;
  for (auto const& each : entries_) {
    if (each.get) all.emplace(each.key, each.get());
  }
  return all;
}

std::string Controls::dump() const {
  std::map<std::string, Json> all;
  for (auto const& [key, value] : snapshot()) all.emplace(key, Json(value));
  return Json(all).text();
}

Subscription Controls::onChange(std::function<void(Snapshot const&)> observer) {
  return observers_.add(std::move(observer));
}

void Controls::review() {
  tellChanges({{kAutomation, *get(kAutomation)}});
}

void Controls::tellChanges(Snapshot const& now) {
  Snapshot changed;
  for (auto const& [key, value] : now) {
    if (last_[key] != value) changed.emplace(key, value);
  }
  if (changed.empty()) return;
  for (auto const& [key, value] : changed) last_[key] = value;
  observers_.call(changed);
}

}  // namespace morla::captureone
