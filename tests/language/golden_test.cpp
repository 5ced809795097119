// Whole texts: golden/<topic>/<case>.in gives <case>.out, byte by byte. Cases with an error in
// them are called err_... .
// With QV_APPROVE=1 in the environment the outputs are written instead of compared. Read the
// difference before you keep it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include "quantiverse/quantiverse.h"

namespace quantiverse::test {
namespace {

namespace fs = std::filesystem;

std::string read_file(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

fs::path with_extension(fs::path path, const char* extension) {
  return path.replace_extension(extension);
}

std::vector<fs::path> find_files(const char* extension) {
  std::vector<fs::path> found;
  for (const fs::directory_entry& entry :
       fs::recursive_directory_iterator(QV_SOURCE_DIR "/tests/golden")) {
    if (entry.path().extension() == extension) found.push_back(entry.path());
  }
  std::sort(found.begin(), found.end());
  return found;
}

std::string test_name(const testing::TestParamInfo<fs::path>& info) {
  return info.param.parent_path().filename().string() + "_" + info.param.stem().string();
}

class Golden : public testing::TestWithParam<fs::path> {};

TEST_P(Golden, GivesItsOutput) {
  const fs::path expected = with_extension(GetParam(), ".out");
  const std::string output = interpret_dimensional_input_lines(read_file(GetParam()));
  if (std::getenv("QV_APPROVE") != nullptr) {
    std::ofstream(expected, std::ios::binary) << output;
    GTEST_SKIP() << "wrote " << expected;
  }
  EXPECT_EQ(output, read_file(expected));
  const bool has_error = output.find("ERROR") != std::string::npos;
  EXPECT_EQ(has_error, GetParam().stem().string().starts_with("err_"));
}

INSTANTIATE_TEST_SUITE_P(Files, Golden, testing::ValuesIn(find_files(".in")), test_name);

TEST(GoldenFiles, EveryOutputHasItsInput) {
  for (const fs::path& path : find_files(".out")) {
    EXPECT_TRUE(fs::exists(with_extension(path, ".in"))) << path;
  }
}

// Each thread starts at another text, so that different ones run beside each other; one that sees
// anything of a text before or beside it gives other bytes.
TEST(GoldenFiles, ThreadsGiveTheSameBytes) {
  constexpr std::size_t kThreads = 8;
  constexpr std::size_t kRounds = 5;
  std::vector<std::string> texts;
  std::vector<std::string> outputs;
  for (const fs::path& path : find_files(".in")) {
    texts.push_back(read_file(path));
    outputs.push_back(read_file(with_extension(path, ".out")));
  }
  std::vector<std::size_t> different(kThreads, 0);
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < kThreads; ++t) {
    threads.emplace_back([&texts, &outputs, &different, t] {
      for (std::size_t i = 0; i < kRounds * texts.size(); ++i) {
        const std::size_t which = (t * 7 + i) % texts.size();
        if (interpret_dimensional_input_lines(texts[which]) != outputs[which]) ++different[t];
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(different, std::vector<std::size_t>(kThreads, 0));
}

}  // namespace
}  // namespace quantiverse::test
