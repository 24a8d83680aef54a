#include "applescript/ErrorTexts.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace morla::applescript {
namespace {

/// Sorted by number.
constexpr auto kTexts = std::to_array<std::pair<std::int64_t, std::string_view>>({
    {-30720, "Invalid date and time."},
    {-10025, "Illegal combination of properties settings for Set Data, make new, or duplicate."},
    {-10024, "Class can’t be an element of container."},
    {-10023, "Enumerated value isn’t allowed for this property."},
    {-10014, "Handler only handles single objects."},
    {-10008, "The specified object is a property, not an element."},
    {-10007, "The index of the event is too large to be valid."},
    {-10006, "Can’t set some object to some value."},
    {-10005, "The read operation wasn’t allowed."},
    {-10004, "A privilege violation occurred."},
    {-10003, "Access not allowed."},
    {-10002, "Invalid key form."},
    {-10001, "Type mismatch."},
    {-10000, "AppleEvent handler failed."},
    {-2763, "No result was returned from some part of this expression."},
    {-2755, "Exit statement was not in a repeat loop."},
    {-2753, "A variable is not defined."},
    {-2708, "Attempt to create a value larger than the allowable size."},
    {-2707, "Internal table overflow."},
    {-2706, "Stack overflow."},
    {-2702, "The result of a numeric operation was too large."},
    {-2701, "Can’t divide by zero."},
    {-2700, "Unknown error."},
    {-1730, "Container specified was an empty list."},
    {-1728, "Can’t get some object."},
    {-1727, "Expected a reference."},
    {-1721, "Wrong number of parameters."},
    {-1720, "Invalid range."},
    {-1719, "Invalid index."},
    {-1717, "The handler is not defined."},
    {-1715, "Some parameter wasn’t understood."},
    {-1713, "No user interaction allowed."},
    {-1712, "AppleEvent timed out."},
    {-1711, "User canceled out of wait loop for reply or receipt."},
    {-1708, "Event not handled."},
    {-1705, "Operation involving a list item failed."},
    {-1704, "Some parameter was invalid."},
    {-1703, "Some data was the wrong type."},
    {-1702, "Some data could not be read."},
    {-1701, "Some parameter is missing."},
    {-1700, "Can’t make some data into the expected type."},
    {-609, "Connection is invalid."},
    {-606, "Application is background-only."},
    {-600, "Application isn’t running."},
    {-192, "A resource wasn’t found."},
    {-128, "User canceled."},
    {-120, "Folder wasn’t found."},
    {-108, "Out of memory."},
    {-61, "File not open with write permission."},
    {-54, "File permission error."},
    {-51, "File reference number error."},
    {-50, "Parameter error."},
    {-49, "File is already open."},
    {-48, "Duplicate file name."},
    {-47, "File is busy."},
    {-45, "File is locked."},
    {-44, "Disk is write protected."},
    {-43, "File wasn’t found."},
    {-42, "Too many files open."},
    {-39, "End of file error."},
    {-38, "File wasn’t open."},
    {-37, "Bad name for file."},
    {-35, "Disk wasn’t found."},
    {-34, "Disk is full."},
});
static_assert(std::ranges::is_sorted(kTexts, {}, &std::pair<std::int64_t, std::string_view>::first));

}  // namespace

std::string errorText(std::int64_t number) {
  auto const found = std::ranges::lower_bound(kTexts, number, {}, &std::pair<std::int64_t, std::string_view>::first);
  if (found != kTexts.end() && found->first == number) return std::string(found->second);
  return "An error of type " + std::to_string(number) + " has occurred.";
}

}  // namespace morla::applescript
