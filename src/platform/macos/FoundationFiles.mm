#include "platform/macos/FoundationFiles.h"

#import <Foundation/Foundation.h>

#include <utility>

#include "platform/macos/Text.h"

namespace morla::macos {

std::string FoundationFiles::homeFolder() const {
  @autoreleasepool {
    return utf8(NSHomeDirectory());
  }
}

std::optional<std::vector<std::string>> FoundationFiles::visibleEntries(std::string const& folder) const {
  @autoreleasepool {
    NSString* const path = nsString(folder);
    if (path == nil) return std::nullopt;
    // By URL, because hidden is not only what begins with a dot but also what carries the file system's hidden flag.
    NSArray<NSURL*>* const entries =
        [[NSFileManager defaultManager] contentsOfDirectoryAtURL:[NSURL fileURLWithPath:path isDirectory:YES]
                                      includingPropertiesForKeys:nil
                                                         options:NSDirectoryEnumerationSkipsHiddenFiles
                                                           error:nil];
    if (entries == nil) return std::nullopt;
    std::vector<std::string> names;
    names.reserve(entries.count);
    for (NSURL* entry in entries) {
      if (auto name = optionalUtf8(entry.lastPathComponent)) names.push_back(*std::move(name));
    }
    return names;
  }
}

}  // namespace morla::macos
