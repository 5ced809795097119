// Runs the program through a shell, as a user does.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

struct Outcome {
  int status;
  std::string out;
  std::string err;
};

class Cli : public testing::Test {
 protected:
  void SetUp() override {
    std::filesystem::create_directory(folder_);
    write("one", "1+1\n");
    write("two", "5 ft; m");  // no final newline
    write("bad", "1 m + 1 s\n");
    write("-x", "1+1\n");
    std::filesystem::create_directory(folder_ / "folder");
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  void write(const std::string& name, const std::string& text) const {
    std::ofstream(folder_ / name, std::ios::binary) << text;
  }

  // Runs "quantiverse ARGUMENTS", a piece of shell, in the folder of the files above.
  [[nodiscard]] Outcome run(const std::string& arguments, const std::string& input = "") const {
    write("in", input);
    const std::string command =
        "cd '" + folder_.string() + "' && { '" QV_PROGRAM "' " + arguments + "; } <in >out 2>err";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read("out"), read("err")};
  }

 private:
  [[nodiscard]] std::string read(const std::string& name) const {
    std::ifstream file(folder_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  std::filesystem::path folder_ =
      std::filesystem::path(testing::TempDir()) /
      (std::string("quantiverse_") + testing::UnitTest::GetInstance()->current_test_info()->name());
};

constexpr const char* kOne = "[  1 ] 1+1\n        = 2 \n\n";
constexpr const char* kTwo = "[  1 ] 5 ft; m\n        = 1.524 m\n\n";

TEST_F(Cli, WritesTheOutputByteForByte) {
  const std::string one = kOne;
  const std::string two = kTwo;
  const struct {
    const char* arguments;
    const char* input;
    std::string out;
  } cases[] = {
      {"", "1+1\n", one},
      {"-", "5 ft; m", two},
      {"", "", ""},
      {"one", "", one},
      {"one two", "", one + two},  // each has its own count and variables
      {"two - one", "1+1", two + one + one},
      {"- -", "1+1", one},  // the second finds nothing left
      {"-e '5 ft; m'", "", two},
      {"-e ''", "", ""},
      {"-e '-1'", "", "[  1 ] -1\n        = -1 \n\n"},
      {"-e '[1,2]'", "", "[  1 ] [1,2]\n        = [ 1 , 2 , 0 ] \n\n"},
      {"-e --help", "", "[  1 ] --help\n       ERROR: 'help' undefined.\n\n"},
      {"-e1+1", "", one},
      {"-- one", "", one},
      {"-- -x", "", one},
  };
  for (const auto& c : cases) {
    const Outcome outcome = run(c.arguments, c.input);
    EXPECT_EQ(outcome.out, c.out) << c.arguments;
    EXPECT_EQ(outcome.err, "") << c.arguments;
    EXPECT_EQ(outcome.status, 0) << c.arguments;
  }
}

TEST_F(Cli, ErrorsOfTheTextAreOutput) {
  const Outcome outcome = run("bad");
  EXPECT_NE(outcome.out.find("ERROR"), std::string::npos);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.status, 0);
}

// What follows the name of the program on standard error, and what is written all the same.
TEST_F(Cli, TroubleIsOneLineAndStatusTwo) {
  const std::string one = kOne;
  const struct {
    const char* arguments;
    std::string err;
    std::string out;
  } cases[] = {
      {"none", "none: No such file or directory\n", ""},
      {"folder", "folder: Is a directory\n", ""},
      {"one none one", "none: No such file or directory\n", one + one},
      {"folder one", "folder: Is a directory\n", one},
      {"< folder", "standard input: Is a directory\n", ""},
      {"--bogus", "unrecognized option '--bogus'\n", ""},
      {"-x one", "invalid option -- 'x'\n", ""},
      {"-e", "option requires an argument -- 'e'\n", ""},
      {"-e 1 -e 2", "-e can be given only once\n", ""},
      {"-e 1 one", "-e and files can't be given together\n", ""},
      {"one -e 1", "-e and files can't be given together\n", ""},
      {"--help > /dev/full", "standard output: No space left on device\n", ""},
      {"one > /dev/full", "standard output: No space left on device\n", ""},
  };
  for (const auto& c : cases) {
    const Outcome outcome = run(c.arguments, "1+1\n");
    EXPECT_EQ(outcome.err, "quantiverse: " + c.err) << c.arguments;
    EXPECT_EQ(outcome.out, c.out) << c.arguments;
    EXPECT_EQ(outcome.status, 2) << c.arguments;
  }
}

TEST_F(Cli, HelpAndVersion) {
  const Outcome help = run("--help");
  for (const char* word : {"FILE", "-e TEXT", "--version"}) {
    EXPECT_NE(help.out.find(word), std::string::npos) << help.out;
  }
  EXPECT_EQ(help.err, "");
  EXPECT_EQ(help.status, 0);
  const Outcome version = run("--version");
  EXPECT_EQ(version.out, "quantiverse " QV_VERSION "\n");
  EXPECT_EQ(version.status, 0);
}

// Longer than every buffer on the way, from a file and from a pipe.
TEST_F(Cli, ALongText) {
  std::string text;
  for (int i = 0; i < 100000; ++i) text += "# " + std::to_string(i) + "\n\n";
  text += "1+1\n";
  write("long", text);
  for (const char* way : {"long", "< long", "- < long"}) {
    const Outcome outcome = run(way);
    ASSERT_GT(outcome.out.size(), text.size()) << way;
    EXPECT_TRUE(outcome.out.ends_with(kOne)) << way;
  }
  EXPECT_EQ(run("long").out, run("- < /dev/null; cat long | '" QV_PROGRAM "'").out);
}

}  // namespace
