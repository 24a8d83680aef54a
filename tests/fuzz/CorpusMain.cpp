#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "Fuzz.h"

/// Stands where the fuzzer's own `main` would: feeds the files of a corpus to the target, so that every build tests
/// them with its own compiler and flags. Arguments: files, and folders whose files are all meant. A file that cannot be
/// read and a folder without one are failures.
namespace {

namespace fs = std::filesystem;

int fail(char const* what, fs::path const& path) {
  std::fprintf(stderr, "%s: %s\n", what, path.c_str());
  return EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return fail("usage: FILE-OR-FOLDER...", argv[0]);
  std::vector<fs::path> files;
  for (fs::path const argument : std::vector<std::string>(argv + 1, argv + argc)) {
    std::error_code error;
    auto const before = files.size();
    if (fs::is_directory(argument, error)) {
      for (auto const& entry : fs::directory_iterator(argument, error)) files.push_back(entry.path());
      if (error || files.size() == before) return fail("no files in", argument);
    } else {
      files.push_back(argument);
    }
  }
  std::ranges::sort(files);
  for (auto const& path : files) {
    std::ifstream stream(path, std::ios::binary);
    std::string const bytes{std::istreambuf_iterator<char>(stream), {}};
    if (!stream.good() && !stream.eof()) return fail("cannot be read", path);
    // Said before, so that the last line names the file that ended the program.
    std::fprintf(stderr, "%s\n", path.c_str());
    LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const*>(bytes.data()), bytes.size());
  }
  std::printf("%zu inputs\n", files.size());
  return EXIT_SUCCESS;
}
