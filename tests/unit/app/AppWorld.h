#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/FeatureHooks.h"
#include "app/MainApp.h"
#include "platform/Environment.h"
#include "platform/NotificationNames.h"
#include "platform/fake/FakePlatform.h"

namespace morla::app {

/// Every feature as a line in the journal.
struct JournalFeatures {
  explicit JournalFeatures(fake::Journal& journal) : journal_(journal) {}

  struct Hotkeys : HotkeyRegistration {
    Hotkeys(fake::Journal& journal, std::string name) : journal_(journal), name_(std::move(name)) {}
    void registerHotkey() override { journal_.add(name_ + ".registerHotkey"); }
    fake::Journal& journal_;
    std::string name_;
  };
  struct Scripts : ScriptListener {
    Scripts(fake::Journal& journal, std::string name) : journal_(journal), name_(std::move(name)) {}
    void startListening() override { journal_.add(name_ + ".startListening"); }
    fake::Journal& journal_;
    std::string name_;
  };
  struct Airdrop : AirdropFolders {
    explicit Airdrop(fake::Journal& journal) : journal_(journal) {}
    void cleanupAirdropFolders() override { journal_.add("airdropFolders.cleanup"); }
    fake::Journal& journal_;
  };
  struct Mirror : MirrorWindow {
    explicit Mirror(fake::Journal& journal) : journal_(journal) {}
    bool toggleWindow(platform::Panel&) override {
      journal_.add("mirror.toggleWindow");
      return toggleResult;
    }
    platform::Panel* secondaryWindow() override { return window; }
    void setUserWantsWindowVisible(bool value) override {
      journal_.add(std::string("mirror.userWantsWindowVisible ") + (value ? "true" : "false"));
    }
    void handleFrontAppChange(std::string const& name, bool isOurAppFront) override {
      journal_.add("mirror.handleFrontAppChange " + name + (isOurAppFront ? " ours" : ""));
    }
    fake::Journal& journal_;
    platform::Panel* window = nullptr;
    bool toggleResult = true;
  };
  struct CreateFolder : CreateFolderWindow {
    bool isVisible() const override { return visible; }
    bool visible = false;
  };
  struct BarPanel : MenuBarPanel {
    explicit BarPanel(fake::Journal& journal) : journal_(journal) { journal_.add("menuBarPanel made"); }
    void togglePanel(platform::StatusItemButton&) override { journal_.add("menuBarPanel.togglePanel"); }
    fake::Journal& journal_;
  };
  struct Settings : SettingsWindow {
    Settings(fake::Journal& journal, std::string name) : journal_(journal), name_(std::move(name)) {}
    void showSettings() override { journal_.add(name_ + ".showSettings"); }
    fake::Journal& journal_;
    std::string name_;
  };
  struct Updates : UpdateCheck {
    explicit Updates(fake::Journal& journal) : journal_(journal) {}
    void checkForUpdates() override { journal_.add("update.checkForUpdates"); }
    fake::Journal& journal_;
  };

  void install(FeatureHooks& hooks) {
    hooks.hotkeys = [this]() -> HotkeyRegistration& { return hotkeys; };
    hooks.captureOneFolderHotkeys = [this]() -> HotkeyRegistration& { return folderHotkeys; };
    hooks.airdropHotkeys = [this]() -> HotkeyRegistration& { return airdropHotkeys; };
    hooks.captureOneFolderScripts = [this]() -> ScriptListener& { return folderScripts; };
    hooks.airdropScripts = [this]() -> ScriptListener& { return airdropScripts; };
    hooks.airdropFolders = [this]() -> AirdropFolders& { return airdropFolders; };
    hooks.mirrorWindow = [this]() -> MirrorWindow& { return mirror; };
    hooks.createFolderWindow = [this]() -> CreateFolderWindow& { return createFolder; };
    hooks.makeMenuBarPanel = [this] { return std::make_unique<BarPanel>(journal_); };
    hooks.settings = [this]() -> SettingsWindow& { return settings; };
    hooks.menuSettings = [this]() -> SettingsWindow& { return menuSettings; };
    hooks.airdropSettings = [this]() -> SettingsWindow& { return airdropSettings; };
    hooks.updateCheck = [this]() -> UpdateCheck& { return updates; };
  }

  fake::Journal& journal_;
  Hotkeys hotkeys{journal_, "hotkeys"};
  Hotkeys folderHotkeys{journal_, "captureOneFolderHotkeys"};
  Hotkeys airdropHotkeys{journal_, "airdropHotkeys"};
  Scripts folderScripts{journal_, "captureOneFolderScripts"};
  Scripts airdropScripts{journal_, "airdropScripts"};
  Airdrop airdropFolders{journal_};
  Mirror mirror{journal_};
  CreateFolder createFolder;
  Settings settings{journal_, "settings"};
  Settings menuSettings{journal_, "menuSettings"};
  Settings airdropSettings{journal_, "airdropSettings"};
  Updates updates{journal_};
};

enum class WithFeatures { yes, no };

/// The program on a fake desktop where Capture One runs and is in front.
struct AppWorld {
  explicit AppWorld(WithFeatures withFeatures = WithFeatures::yes) {
    fake.workspace.running = {captureOne()};
    fake.workspace.userActivates(captureOne());
    fake.scripts.answersText("OK");
    if (withFeatures == WithFeatures::yes) features.install(FeatureHooks::shared());
  }

  static platform::RunningApplication captureOne() { return {10, "Capture One", "com.captureone.captureone16"}; }
  static platform::RunningApplication notes() { return {11, "Notes", "com.example.notes"}; }

  /// Starts the program and lets the first turns of its loop pass.
  void start() {
    app = std::make_unique<MainApp>(environment);
    app->main();
    fake.loop.advance(Duration::zero());
    fake.journal.clear();
  }
  void turn() { fake.loop.runReady(); }

  [[nodiscard]] fake::FakePanel& button() { return *fake.panels.panels.at(0); }

  fake::FakePlatform fake;
  platform::Environment environment{fake.platform()};
  JournalFeatures features{fake.journal};
  std::unique_ptr<MainApp> app;
};

}  // namespace morla::app
