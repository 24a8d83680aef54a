#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "applescript/Host.h"

namespace morla::applescript::test {

/// A scriptable application in memory: a tree of objects, each with properties, and a dictionary to speak of them. It
/// resolves specifiers and whose clauses as a real one does, and keeps every event that it was sent.
class ToyApplication {
 public:
  struct Object {
    Code type;
    std::int64_t id = 0;
    std::map<Code, Value> properties;
    std::vector<Object> elements;
  };

  ToyApplication(std::string name, std::string identifier, std::string_view dictionaryTable);

  [[nodiscard]] ApplicationInformation const& information() const { return information_; }
  [[nodiscard]] std::shared_ptr<Dictionary const> dictionary() const { return dictionary_; }

  [[nodiscard]] EventReply handle(AppleEvent const& event);

  /// The application object; null properties there mean "no such property".
  Object root;
  std::vector<AppleEvent> events;
  bool isRunning = true;
  /// Answers instead of the application when it returns something; counted from 1.
  std::function<std::optional<EventReply>(std::size_t number, AppleEvent const& event)> intercept;
  std::optional<EventError> tellRefusal;

  Object& add(Object& parent, Code type, std::map<Code, Value> properties);

 private:
  struct Found {
    std::vector<Object*> objects;
    std::optional<EventError> error;
  };
  [[nodiscard]] Found find(Value const& reference);
  [[nodiscard]] Found pick(Specifier const& specifier, std::vector<Object*> const& candidates);
  [[nodiscard]] EventReply get(Value const& reference);
  [[nodiscard]] EventReply set(AppleEvent const& event);
  [[nodiscard]] EventReply count(AppleEvent const& event);
  [[nodiscard]] EventReply make(AppleEvent const& event);
  [[nodiscard]] EventReply remove(Value const& reference);
  [[nodiscard]] EventReply relocate(AppleEvent const& event, bool keepsOriginal);
  [[nodiscard]] Found neighbour(Specifier const& specifier);
  [[nodiscard]] Object& insert(Value const* place, Object object);
  void renumber(Object& object);
  void erase(std::set<std::int64_t> const& ids);
  [[nodiscard]] bool passes(Object& object, Value const& test);
  [[nodiscard]] Value tested(Object& object, Value const& operand);
  [[nodiscard]] Value specifierOf(Object const& object) const;

  ApplicationInformation information_;
  std::shared_ptr<Dictionary const> dictionary_;
  std::int64_t lastId_ = 0;
  static constexpr int kMaximumHops = 100;
  int hops_ = 0;  ///< properties that the event at hand has followed
};

/// Files in memory. A folder is there when a file is in it.
class ToyDisk final : public HostFiles {
 public:
  std::optional<Information> information(std::string const& path) override;
  Bytes read(std::string const& path, std::size_t offset, std::size_t count) override;
  std::int64_t write(std::string const& path, std::size_t offset, std::string const& bytes) override;
  std::int64_t resize(std::string const& path, std::size_t size) override;
  std::optional<std::vector<std::string>> namesIn(std::string const& folder) override;

  std::map<std::string, std::string> contents;  ///< by path
  std::set<std::string> locked;

 private:
  [[nodiscard]] bool isFolder(std::string const& path) const;
};

/// A world of toy applications, a shell that answers what it was told to, and files that a test names.
class ToyHost final : public Host {
 public:
  std::optional<ApplicationInformation> locate(ApplicationReference const& reference) override;
  bool isRunning(ApplicationReference const& reference) override;
  std::shared_ptr<Dictionary const> dictionary(ApplicationInformation const& application) override;
  std::optional<EventError> enterTell(ApplicationInformation const& application) override;
  EventReply send(ApplicationInformation const& application, AppleEvent const& event) override;
  ShellResult runShell(std::string const& command) override;
  void log(std::string const& line) override { logged.push_back(line); }
  FileKind fileKindAt(std::string const& posixPath) override;
  LocalTime now() override { return {clock, 3600}; }
  void wait(std::chrono::milliseconds duration) override { waits.push_back(duration); }
  std::string homeFolder() override { return "/Users/me"; }
  HostFiles* files() override { return hasFiles ? &disk : nullptr; }
  std::optional<std::string> environmentVariable(std::string const& name) override;

  std::int64_t clock = 1'700'000'000;  ///< Tuesday, November 14, 2023 at 10:13:20 PM
  std::vector<std::chrono::milliseconds> waits;
  std::vector<ToyApplication*> applications;
  std::function<ShellResult(std::string const&)> shell;
  std::vector<std::string> commands;  ///< what the shell was asked to run
  std::vector<std::string> logged;
  std::set<std::string> folders;
  ToyDisk disk;
  bool hasFiles = true;
  std::map<std::string, std::string> environment;
  std::vector<std::string> tells;  ///< identifiers of the applications whose tell was entered

 private:
  [[nodiscard]] ToyApplication* find(ApplicationReference const& reference) const;
};

/// An application "Garden" with beds of plants.
[[nodiscard]] std::unique_ptr<ToyApplication> makeGarden();

}  // namespace morla::applescript::test
