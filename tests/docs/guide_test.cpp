// Every example in the documents is real. In a Markdown file a block
//
//   ```quantiverse        the input
//
// is followed by a block
//
//   ```output             what comes back, byte for byte
//
// and a table headed "You write" has rows of an input and a result: text in backticks that the
// output holds, `an error`, or a result as it stands behind the "=".

#include <gtest/gtest.h>

#include "docs/files.h"
#include "quantiverse/quantiverse.h"

namespace quantiverse::docs_test {
namespace {

constexpr std::string_view kInputFence = "```quantiverse";
constexpr std::string_view kOutputFence = "```output";
constexpr std::string_view kEndFence = "```";

struct Checked {
  std::string document;  // with every output block replaced by the real output
  int examples = 0;
  std::string complaints;
};

// Copies lines up to the end of the fence that `at` stands in, and gives them back as one text.
std::string take_block(const std::vector<std::string>& lines, std::size_t& at) {
  std::string block;
  while (at < lines.size() && lines[at] != kEndFence) block += lines[at++] + "\n";
  return block;
}

Checked check_blocks(const std::string& document) {
  Checked checked;
  std::string pending;  // the output that the next block must show
  bool is_pending = false;
  const std::vector<std::string> lines = lines_of(document);
  for (std::size_t at = 0; at < lines.size(); ++at) {
    checked.document += lines[at] + "\n";
    if (!lines[at].starts_with(kEndFence)) continue;

    const std::string fence = lines[at++];
    const std::string block = take_block(lines, at);
    if (is_pending != (fence == kOutputFence)) {
      checked.complaints += "line " + std::to_string(at) + ": input and output don't alternate\n";
    }
    is_pending = fence == kInputFence;
    if (fence == kOutputFence) {
      checked.document += pending;
    } else {
      checked.document += block;
      if (is_pending) pending = interpret_dimensional_input_lines(block);
      if (is_pending) ++checked.examples;
    }
    if (at == lines.size()) checked.complaints += "a block has no end\n";
    checked.document += std::string(kEndFence) + "\n";
  }
  if (is_pending) checked.complaints += "the last input has no output\n";
  return checked;
}

bool holds(const std::string& output, const std::string& result) {
  const auto has = [&](const std::string& text) { return output.find(text) != std::string::npos; };
  if (result == "an error") return has("       ERROR");
  if (result.starts_with("`")) return has(result.substr(1, result.size() - 2));
  return has(" = " + result) && !has("ERROR");
}

// "| `2^3^2` | 64 | why |"; empty if it is true.
std::string check_row(const std::string& line) {
  const std::size_t end_of_code = line.find("` | ");
  const std::size_t end_of_result = line.find(" | ", end_of_code + 4);
  if (end_of_result == std::string::npos) return "not a row: " + line + "\n";
  const std::string input = line.substr(3, end_of_code - 3);
  const std::string result = line.substr(end_of_code + 4, end_of_result - end_of_code - 4);
  const std::string output = interpret_dimensional_input_lines(input + "\n");
  return holds(output, result) ? "" : line + "\n" + output;
}

std::string check_tables(const std::string& document) {
  std::string complaints;
  bool inside = false;
  for (const std::string& line : lines_of(document)) {
    if (line.starts_with("| You write |")) inside = true;
    if (!line.starts_with("|")) inside = false;
    if (inside && line.starts_with("| `")) complaints += check_row(line);
  }
  return complaints;
}

std::vector<std::filesystem::path> documents() {
  std::vector<std::filesystem::path> paths{source_dir() / "README.md"};
  for (const auto& entry : std::filesystem::directory_iterator(source_dir() / "docs")) {
    if (entry.path().extension() == ".md") paths.push_back(entry.path());
  }
  return paths;
}

TEST(Guide, EveryExampleShowsTheRealOutput) {
  int examples = 0;
  for (const auto& path : documents()) {
    const std::string document = read_file(path);
    const Checked checked = check_blocks(document);
    EXPECT_EQ(checked.complaints, "") << path;
    EXPECT_EQ(check_tables(document), "") << path;
    if (checked.complaints.empty() && document != checked.document && may_rewrite()) {
      write_file(path, checked.document);
    } else {
      EXPECT_EQ(first_difference(document, checked.document), "") << path;
    }
    examples += checked.examples;
  }
  EXPECT_GE(examples, 20);
}

// The check above is worth what it finds.
TEST(Guide, AWrongExampleIsFound) {
  const std::string input = "```quantiverse\n5 ft; in\n```\n";
  const std::string right = input + "text\n```output\n[  1 ] 5 ft; in\n        = 60 in\n\n```\n";
  EXPECT_EQ(check_blocks(right).document, right);
  EXPECT_EQ(check_blocks(right).complaints, "");
  EXPECT_EQ(check_blocks(right).examples, 1);
  EXPECT_EQ(check_blocks(input + "text\n```output\n```\n").document, right);
  EXPECT_NE(check_blocks(input).complaints, "");
  EXPECT_NE(check_blocks(input + right).complaints, "");
  EXPECT_NE(check_blocks("```output\n```\n").complaints, "");
  EXPECT_NE(check_blocks("```quantiverse\n").complaints, "");

  const std::string head = "| You write | You get | Because |\n|---|---|---|\n";
  EXPECT_EQ(check_tables(head + "| `2^3^2` | 64 | left |\n| `m = 1` | an error | taken |\n"), "");
  EXPECT_NE(check_tables(head + "| `2^3^2` | 512 | right |\n"), "");
  EXPECT_NE(check_tables(head + "| `2^3^2` | an error | no |\n"), "");
  EXPECT_NE(check_tables(head + "| `m = 1` | `Missing` | no |\n"), "");
  EXPECT_NE(check_tables(head + "| `2` 64\n"), "");
}

}  // namespace
}  // namespace quantiverse::docs_test
