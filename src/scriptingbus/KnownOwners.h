#pragma once

#include <map>
#include <string>

namespace morla::scriptingbus {

/// Who was found to own which bus name, as unique names by bus name: for the time of one script, which would otherwise
/// ask the bus before each of its events. The bus gives a unique name to nobody else, so one that has gone is noticed.
using KnownOwners = std::map<std::string, std::string>;

}  // namespace morla::scriptingbus
