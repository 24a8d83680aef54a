#pragma once

#include <string>

#include "CameraWatchWorld.h"
#include "camerawatch/AlerteWindow.h"
#include "view/View.h"

namespace morla::camerawatch {

/// The alert settings in their window, on a desktop where Capture One is in front.
struct SettingsWindowWorld : CameraWatchWorld {
  explicit SettingsWindowWorld(bool isEnabled = false) : CameraWatchWorld(isEnabled) {
    fake.workspace.userActivates(captureOne());
  }

  std::optional<AlerteWindowController> controller;

  /// Opens the window of a watch whose permission is not known yet.
  fake::FakePanel& open() {
    if (monitor == nullptr) start();
    controller.emplace(AlerteWindowController::Roles{fake.loop, fake.workspace, fake.panels}, *monitor);
    controller->showSettings();
    fake.loop.runReady();
    return window();
  }
  /// As above, with the permission given and this reply to the status script.
  fake::FakePanel& openReady(std::string reply = kFullReply) {
    start();
    fake.scripts.answers([this](std::string const& source) {
      return platform::ScriptReply{source.find("count of documents") == std::string::npos ? "OK" : statusReply,
                                   std::nullopt};
    });
    statusReply = std::move(reply);
    detach(monitor->checkAndStartIfNeeded());
    fake.loop.advance(0s);
    return open();
  }

  [[nodiscard]] fake::FakePanel& window() const { return fake.panels.panel("AlertePanel"); }
  [[nodiscard]] bool shows(std::string_view name) const { return window().find(name) != nullptr; }
  template <typename Content>
  [[nodiscard]] Content control(std::string_view name) const {
    auto const* node = window().findControl(name);
    if (node == nullptr) fake::failLoudly("a control that is not there: " + std::string(name));
    return std::get<Content>(node->content);
  }

  std::string statusReply;
};

}  // namespace morla::camerawatch
