#include <algorithm>
#include <memory>

#include "ToyApplication.h"

namespace morla::applescript::test {

ToyApplication* ToyHost::find(ApplicationReference const& reference) const {
  for (ToyApplication* application : applications) {
    bool const isByName = reference.kind == ApplicationReference::Kind::name;
    auto const& information = application->information();
    if (reference.text == (isByName ? information.name : information.identifier)) return application;
  }
  return nullptr;
}

std::optional<ApplicationInformation> ToyHost::locate(ApplicationReference const& reference) {
  ToyApplication* application = find(reference);
  if (application == nullptr) return std::nullopt;
  return application->information();
}

bool ToyHost::isRunning(ApplicationReference const& reference) {
  ToyApplication* application = find(reference);
  return application != nullptr && application->isRunning;
}

std::shared_ptr<Dictionary const> ToyHost::dictionary(ApplicationInformation const& application) {
  return find({ApplicationReference::Kind::identifier, application.identifier})->dictionary();
}

std::optional<EventError> ToyHost::enterTell(ApplicationInformation const& application) {
  tells.push_back(application.identifier);
  return find({ApplicationReference::Kind::identifier, application.identifier})->tellRefusal;
}

EventReply ToyHost::send(ApplicationInformation const& application, AppleEvent const& event) {
  return find({ApplicationReference::Kind::identifier, application.identifier})->handle(event);
}

ShellResult ToyHost::runShell(std::string const& command) {
  commands.push_back(command);
  if (shell) return shell(command);
  return {127, "", "no shell in this test"};
}

Host::FileKind ToyHost::fileKindAt(std::string const& posixPath) {
  if (disk.contents.contains(posixPath)) return FileKind::file;
  std::string path = posixPath;
  if (path.ends_with('/')) path.pop_back();
  return folders.contains(path) ? FileKind::folder : FileKind::none;
}

std::optional<std::string> ToyHost::environmentVariable(std::string const& name) {
  auto const found = environment.find(name);
  if (found == environment.end()) return std::nullopt;
  return found->second;
}

bool ToyDisk::isFolder(std::string const& path) const {
  std::string const prefix = path.ends_with('/') ? path : path + "/";
  auto const inside = contents.lower_bound(prefix);
  return inside != contents.end() && inside->first.starts_with(prefix);
}

std::optional<HostFiles::Information> ToyDisk::information(std::string const& path) {
  auto const found = contents.find(path);
  constexpr std::int64_t kMoment = 1'600'000'000;  // Sunday, September 13, 2020 at 12:26:40 PM
  if (found != contents.end()) {
    return Information{false, locked.contains(path), static_cast<std::int64_t>(found->second.size()), kMoment};
  }
  if (!isFolder(path)) return std::nullopt;
  return Information{true, false, 0, kMoment};
}

HostFiles::Bytes ToyDisk::read(std::string const& path, std::size_t offset, std::size_t count) {
  auto const found = contents.find(path);
  if (found == contents.end()) return {"", errors::kFileNotFound};
  if (offset > found->second.size()) return {};
  return {found->second.substr(offset, count), 0};
}

std::int64_t ToyDisk::write(std::string const& path, std::size_t offset, std::string const& bytes) {
  auto const found = contents.find(path);
  if (std::int64_t const problem =
          resize(path, std::max(found == contents.end() ? 0 : found->second.size(), offset + bytes.size()))) {
    return problem;
  }
  contents[path].replace(offset, bytes.size(), bytes);
  return 0;
}

std::int64_t ToyDisk::resize(std::string const& path, std::size_t size) {
  constexpr std::int64_t kNoPermission = -54;
  if (locked.contains(path)) return kNoPermission;
  std::string const folder = path.substr(0, path.rfind('/') + 1);
  if (!contents.contains(path) && (path.ends_with('/') || !isFolder(folder))) return errors::kFileNotFound;
  contents[path].resize(size);
  return 0;
}

std::optional<std::vector<std::string>> ToyDisk::namesIn(std::string const& folder) {
  if (!isFolder(folder)) return std::nullopt;
  std::string const prefix = folder.ends_with('/') ? folder : folder + "/";
  std::set<std::string> names;
  for (auto const& [path, bytes] : contents) {
    if (!path.starts_with(prefix)) continue;
    names.insert(path.substr(prefix.size(), path.find('/', prefix.size()) - prefix.size()));
  }
  return std::vector<std::string>(names.begin(), names.end());
}

std::unique_ptr<ToyApplication> makeGarden() {
  static constexpr std::string_view kTable =
      "class\tapplication\tcapp\n"
      "class\tbed\tgbed\n"
      "class\tplant\tplnt\n"
      "class\tlily\tlily\tlilies\tplant\n"
      "element\tapplication\tbed\n"
      "element\tbed\tplant\n"
      "property\tapplication\tname\tpnam\ttext\tr\n"
      "property\tapplication\tcurrent bed\tCbed\tbed\trw\n"
      "property\tbed\tname\tpnam\ttext\trw\n"
      "property\tplant\tname\tpnam\ttext\trw\n"
      "property\tplant\theight\tPhei\tnumber\trw\n"
      "property\tplant\theight per week\tPhpw\tnumber\trw\n"
      "property\tplant\tmain colour\tPcol\tcolour kind\trw\n"
      "property\tplant\tripe\tPrip\tboolean\tr\n"
      "property\tplant\tbed\tPbed\tbed\tr\n"
      "enumerator\tcolour kind\tred\tRedd\n"
      "enumerator\tcolour kind\tred and white\tRdWh\n"
      "command\twater\tGardWatr\tany\ttext\n"
      "parameter\twater\tamount\tLitr\tnumber\toptional\n"
      "parameter\twater\tgently\tGent\tboolean\toptional\n"
      "command\tend long season\tGardEndS\n";
  auto garden = std::make_unique<ToyApplication>("Garden", "org.example.garden", kTable);
  garden->root.properties["pnam"_code] = "Garden";
  garden->root.elements.reserve(4);
  auto& roses = garden->add(garden->root, "gbed"_code, {{"pnam"_code, "Roses"}});
  auto& herbs = garden->add(garden->root, "gbed"_code, {{"pnam"_code, "Herbs"}});
  auto const plant = [&garden](ToyApplication::Object& bed, char const* name, std::int64_t height, bool ripe) {
    garden->add(bed, "plnt"_code,
                {{"pnam"_code, name},
                 {"Phei"_code, height},
                 {"Prip"_code, ripe},
                 {"Pcol"_code, Enumerator{"Redd"_code}},
                 {"Phpw"_code, Value::missing()}});
  };
  plant(roses, "Damask", 90, false);
  plant(roses, "Alba", 150, true);
  plant(roses, "Gallica", 80, true);
  plant(herbs, "Thyme", 20, true);
  garden->root.properties["Cbed"_code] =
      Value(std::make_shared<Specifier const>(Specifier{"gbed"_code, KeyForm::index, std::int64_t{1}, {}}));
  return garden;
}

}  // namespace morla::applescript::test
