// The main of a fuzz target where there is no fuzzer: runs every file of the folders and files
// that are named on the command line. A fault ends the process.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

bool run_file(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
  return static_cast<bool>(file);
}

}  // namespace

int main(int argc, char** argv) {
  int files = 0;
  for (int i = 1; i < argc; ++i) {
    const std::filesystem::path path(argv[i]);
    if (!std::filesystem::is_directory(path)) {
      files += run_file(path) ? 1 : 0;
      continue;
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
      if (entry.is_regular_file()) files += run_file(entry.path()) ? 1 : 0;
    }
  }
  std::printf("%d files\n", files);
  return files > 0 ? 0 : 1;
}
