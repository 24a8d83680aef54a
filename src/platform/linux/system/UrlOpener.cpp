#include "platform/linux/system/UrlOpener.h"

#include <QProcess>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <cctype>
#include <optional>

#include "platform/linux/system/ExecLine.h"

namespace morla::linux {
namespace {

/// In lower case; nothing when the address has none.
std::optional<std::string> schemeOf(std::string const& url) {
  std::string scheme = url.substr(0, url.find(':'));
  if (scheme.size() == url.size() || scheme.empty()) return std::nullopt;
  std::ranges::transform(scheme, scheme.begin(),
                         [](unsigned char c) { return static_cast<char>(c < 0x80 ? std::tolower(c) : c); });
  bool const isScheme = scheme[0] >= 'a' && scheme[0] <= 'z' &&
                        scheme.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789+-.") == std::string::npos;
  return isScheme ? std::optional(scheme) : std::nullopt;
}

}  // namespace

bool openUrlWith(DesktopEntries& entries, std::string const& url) {
  auto const scheme = schemeOf(url);
  auto const* handler = scheme ? entries.forScheme(*scheme) : nullptr;
  auto const command = handler != nullptr ? commandFor(*handler, url) : std::vector<std::string>();
  if (command.empty()) return false;
  QStringList arguments;
  for (std::size_t i = 1; i < command.size(); ++i) arguments += QString::fromStdString(command[i]);
  // A started program must not end with this one, nor become its zombie: this forks twice and reports a failed exec.
  return QProcess::startDetached(QString::fromStdString(command[0]), arguments);
}

}  // namespace morla::linux
