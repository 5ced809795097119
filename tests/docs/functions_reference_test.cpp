// docs/functions.md is complete: a row and an example for every function, and the accuracies that
// are measured here and now.

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <map>
#include <set>

#include "accuracy/accuracy.h"
#include "builtins/function_table.h"
#include "docs/files.h"
#include "text/scanner.h"

namespace quantiverse::docs_test {
namespace {

constexpr std::string_view kBeginMark = "<!-- accuracy: begin -->\n";
constexpr std::string_view kEndMark = "<!-- accuracy: end -->\n";

std::filesystem::path page_path() { return source_dir() / "docs" / "functions.md"; }

// The cells of "| a | b |", trimmed. No cell holds a bar.
std::vector<std::string> cells_of(const std::string& line) {
  std::vector<std::string> cells;
  for (std::size_t at = 1; at < line.size();) {
    const std::size_t end = std::min(line.find('|', at), line.size());
    cells.push_back(trimmed(std::string_view(line).substr(at, end - at)));
    at = end + 1;
  }
  return cells;
}

// "sin(x)" in backticks in the first column of a table headed "Function", with its arguments.
struct Entry {
  std::string name;
  int arguments = 0;
  bool open = false;  // "..." ends the list: that many or more
};

Entry entry_of(const std::string& code) {
  Entry entry;
  const std::size_t parenthesis = std::min(code.find('('), code.size());
  entry.name = code.substr(0, parenthesis);
  const std::string list = code.substr(std::min(parenthesis + 1, code.size()));
  entry.open = list.find("...") != std::string::npos;
  if (list != ")")
    entry.arguments = 1 + static_cast<int>(std::count(list.begin(), list.end(), ','));
  if (entry.open) --entry.arguments;
  return entry;
}

std::vector<Entry> entries_of(const std::string& page) {
  std::vector<Entry> entries;
  bool inside = false;
  for (const std::string& line : lines_of(page)) {
    if (line.starts_with("| Function |")) inside = line.find("| Range |") == std::string::npos;
    if (!line.starts_with("|")) inside = false;
    if (!inside || !line.starts_with("| `")) continue;
    const std::string cell = cells_of(line)[0];
    for (std::size_t at = 0; (at = cell.find('`', at)) != std::string::npos;) {
      const std::size_t end = cell.find('`', at + 1);
      if (end == std::string::npos) break;
      entries.push_back(entry_of(cell.substr(at + 1, end - at - 1)));
      at = end + 1;
    }
  }
  return entries;
}

// Every word of the example inputs that a parenthesis follows.
std::set<std::string> called_in_examples(const std::string& page) {
  std::set<std::string> names;
  bool inside = false;
  for (const std::string& line : lines_of(page)) {
    if (line.starts_with("```")) inside = line == "```quantiverse";
    std::string word;
    for (const char c : line) {
      if (inside && c == '(') names.insert(word);
      word = is_name_char(c) ? word + c : "";
    }
  }
  return names;
}

TEST(FunctionsReference, HasEveryFunctionOnceWithItsArguments) {
  const std::string page = read_file(page_path());
  const std::set<std::string> examples = called_in_examples(page);
  std::map<std::string, Entry> found;
  for (const Entry& entry : entries_of(page)) {
    EXPECT_TRUE(found.emplace(entry.name, entry).second) << entry.name << " stands twice";
  }
  for (const FunctionRow& row : function_rows()) {
    EXPECT_TRUE(examples.contains(row.name)) << "no example calls " << row.name;
    const auto entry = found.find(row.name);
    if (entry == found.end()) {
      ADD_FAILURE() << row.name << " is missing";
      continue;
    }
    EXPECT_EQ(entry->second.arguments, row.arguments) << row.name;
    EXPECT_EQ(entry->second.open, !row.exact) << row.name;
  }
  EXPECT_EQ(found.size(), function_rows().size());
}

double number_in(const std::string& cell) {
  double value = std::numeric_limits<double>::quiet_NaN();
  std::from_chars(cell.data(), cell.data() + cell.size(), value);
  return value;
}

// Compilers and C libraries differ in last bits, and an error of a few of them is made of those.
// So an error may be three times as large or small, and where it was found doesn't count.
constexpr double kSlack = 3.0;

std::string difference_of(const std::string& is, const std::string& should_be) {
  const std::vector<std::string> left = cells_of(is);
  const std::vector<std::string> right = cells_of(should_be);
  if (is == should_be) return {};
  if (left.size() != 5 || right.size() != 5) return is + "\n";
  if (left[0] != right[0] || left[1] != right[1] || left[3] != right[3]) return is + "\n";
  const double ratio = number_in(left[2]) / number_in(right[2]);
  return ratio > 1.0 / kSlack && ratio < kSlack ? "" : is + ": measured " + right[2] + "\n";
}

std::string table_difference(const std::string& is, const std::string& should_be) {
  const std::vector<std::string> left = lines_of(is);
  const std::vector<std::string> right = lines_of(should_be);
  if (left.size() != right.size()) return "rows are missing or too many\n";
  std::string differences;
  for (std::size_t i = 0; i < left.size(); ++i) differences += difference_of(left[i], right[i]);
  return differences;
}

TEST(FunctionsReference, HasTheAccuraciesThatAreMeasured) {
  const std::string page = read_file(page_path());
  const std::size_t begin = page.find(kBeginMark);
  const std::size_t end = page.find(kEndMark);
  ASSERT_NE(begin, std::string::npos);
  ASSERT_NE(end, std::string::npos);
  const std::size_t from = begin + kBeginMark.size();

  std::string complaints;
  const std::string table = "\n" + accuracy::accuracy_table(complaints) + "\n";
  EXPECT_EQ(complaints, "");
  const std::string differences = table_difference(page.substr(from, end - from), table);
  if (!differences.empty() && may_rewrite()) {
    write_file(page_path(), page.substr(0, from) + table + page.substr(end));
  } else {
    EXPECT_EQ(differences, "");
  }
}

TEST(FunctionsReference, MeasuresEveryFunctionOfPlainNumbers) {
  std::set<std::string_view> measured;
  for (const accuracy::Range& range : accuracy::ranges()) {
    const FunctionRow* row = nullptr;
    for (const FunctionRow& candidate : function_rows()) {
      if (std::string_view(candidate.name) == range.function) row = &candidate;
    }
    ASSERT_TRUE(row != nullptr && row->routine != nullptr) << range.function;
    EXPECT_EQ(range.axes.size(), static_cast<std::size_t>(row->arguments)) << range.function;
    measured.insert(row->name);
  }
  const std::set<std::string_view> exact = {"floor", "ceil", "int", "round"};
  for (const FunctionRow& row : function_rows()) {
    EXPECT_EQ(measured.contains(row.name), row.routine != nullptr && !exact.contains(row.name))
        << row.name;
  }
}

// The checks above are worth what they find.
TEST(FunctionsReference, AWrongPageIsFound) {
  const std::string row = "| `Erf` | up to 1 | 2.0e-08 | relative | `Erf(1)` |\n";
  EXPECT_EQ(table_difference(row, "| `Erf` | up to 1 | 5.9e-08 | relative | `Erf(0)` |\n"), "");
  for (const char* other : {
           "| `Erf` | up to 1 | 6.1e-08 | relative | `Erf(1)` |\n",
           "| `Erf` | up to 1 | 6.0e-09 | relative | `Erf(1)` |\n",
           "| `Erf` | up to 1 | nan | relative | `Erf(1)` |\n",
           "| `Erf` | up to 1 | 2.0e-08 | absolute | `Erf(1)` |\n",
           "| `Erf` | up to 2 | 2.0e-08 | relative | `Erf(1)` |\n",
           "| `Erfc` | up to 1 | 2.0e-08 | relative | `Erf(1)` |\n",
           "| `Erf` | up to 1 | 2.0e-08 |\n",
           "",
       }) {
    EXPECT_NE(table_difference(row, other), "") << other;
  }
  const std::vector<Entry> entries = entries_of(
      "| Function | It is |\n|---|---|\n| `a(x, y, ...)`, `b()` | `c(x)` |\n\n| `d(x)` |");
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_TRUE(entries[0].name == "a" && entries[0].arguments == 2 && entries[0].open);
  EXPECT_TRUE(entries[1].name == "b" && entries[1].arguments == 0 && !entries[1].open);
  EXPECT_EQ(called_in_examples("f(1)\n```quantiverse\ng(h (2))\n```\nk(1)\n"),
            (std::set<std::string>{"", "g"}));
}

}  // namespace
}  // namespace quantiverse::docs_test
