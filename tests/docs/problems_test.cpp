// The worksheets of tests/problems/ pose problems that others have published, and say in comments
// where the search starts, what the published answer is, and what each request comes to:
//
//   # start: (-1.2, 1)
//   # published: 0 at (1, 1)
//   # fmin: solved
//   # solve: no solution; there is none
//
// followed by what proves it, in the marks of docs/worksheet.h: an expected `least` of the
// published size for a solved fmin, an expected `rest` of 0 for a solved solve, the error for no
// solution, something for anything else. The table in docs/solving.md is made of these lines.
//
// Most are from More, Garbow and Hillstrom, "Testing Unconstrained Optimization Software", ACM
// Transactions on Mathematical Software 7 (1981), 17-41.

#include <gtest/gtest.h>

#include <algorithm>

#include "docs/files.h"
#include "docs/worksheet.h"

namespace quantiverse::docs_test {
namespace {

constexpr std::string_view kBeginMark = "<!-- problems: begin -->\n";
constexpr std::string_view kEndMark = "<!-- problems: end -->\n";
constexpr const char* kRequests[] = {"fmin", "solve"};

// What stands behind the mark; empty without one.
std::string marked(const std::string& worksheet, const std::string& mark) {
  for (const std::string& line : lines_of(worksheet)) {
    if (const auto text = behind_mark(line, mark)) return *text;
  }
  return {};
}

// The lines that prove what is said of a request: up to the next request or the end.
std::string proof_of(const std::string& worksheet, const std::string& request) {
  std::string proof;
  bool inside = false;
  for (const std::string& line : lines_of(worksheet)) {
    for (const std::string mark : kRequests) {
      if (behind_mark(line, mark)) inside = mark == request;
    }
    if (inside && (behind_mark(line, "expect") || behind_mark(line, "fails"))) proof += line + "\n";
  }
  return proof;
}

// Why the outcome that a worksheet tells isn't proved by it, or nothing.
std::string complaint_about_outcome(const std::string& worksheet, const std::string& request) {
  const std::string outcome = marked(worksheet, request);
  const bool is_made = worksheet.find("\n" + request + "(") != std::string::npos;
  if (is_made != !outcome.empty()) return request + " is made or told, not both\n";
  if (!is_made) return {};

  const std::string published = marked(worksheet, "published");
  const std::string least = published.substr(0, published.find_first_of(" ,;"));
  std::string needed = "# ";
  if (outcome == "solved") {
    needed = request == "solve" ? "# expect: rest = 0\n" : "# expect: least = " + least + "\n";
  } else if (outcome.starts_with("no solution")) {
    needed = "# fails: ";
  }
  const std::string proof = proof_of(worksheet, request);
  if (proof.find(needed) != std::string::npos) return {};
  return request + ": " + outcome + ", without " + needed;
}

std::vector<std::filesystem::path> problems() {
  std::vector<std::filesystem::path> paths;
  for (const auto& entry :
       std::filesystem::directory_iterator(source_dir() / "tests" / "problems")) {
    if (entry.path().extension() == ".txt") paths.push_back(entry.path());
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

class Problems : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(Problems, ComeOutAsTold) {
  const std::string worksheet = read_file(GetParam());
  for (const char* request : kRequests) {
    EXPECT_EQ(complaint_about_outcome(worksheet, request), "");
  }
  EXPECT_EQ(complaints_about(worksheet), "");
}

std::string name_of(const testing::TestParamInfo<std::filesystem::path>& problem) {
  return problem.param.stem().string();
}
INSTANTIATE_TEST_SUITE_P(, Problems, testing::ValuesIn(problems()), name_of);

std::string cell(const std::string& text) { return text.empty() ? "–" : text; }

std::string table() {
  std::string rows =
      "\n| Problem | Start | Published least value | `fmin` | `solve` |\n|---|---|---|---|---|\n";
  for (const std::filesystem::path& path : problems()) {
    const std::string worksheet = read_file(path);
    const std::string title = lines_of(worksheet).front().substr(2);
    rows += "| [" + title + "](../tests/problems/" + path.filename().string() + ")";
    for (const char* mark : {"start", "published", "fmin", "solve"}) {
      rows += " | " + cell(marked(worksheet, mark));
    }
    rows += " |\n";
  }
  return rows + "\n";
}

TEST(ProblemsTable, IsMadeFromTheWorksheets) {
  EXPECT_EQ(check_generated(source_dir() / "docs" / "solving.md", kBeginMark, kEndMark, table()),
            "");
}

// The check above is worth what it finds.
TEST(ProblemsTable, AnOutcomeWithoutProofIsFound) {
  const std::string head = "# published: 3 at (1, 2)\n";
  const struct {
    const char* worksheet;
    bool good;
  } cases[] = {
      {"# fmin: solved\n# expect: least = 3\nx\nfmin(f, x)\n", true},
      {"# fmin: solved\n# expect: least = 4\nx\nfmin(f, x)\n", false},
      {"# fmin: solved\n# solve: solved\n# expect: least = 3\nx\nfmin(f, x)\n", false},
      {"# fmin: solved\n# expect: least = 3\n", false},
      {"x\nfmin(f, x)\n", false},
      {"# fmin: no solution\n# expect: least = 3\nx\nfmin(f, x)\n", false},
      {"# fmin: no solution\n# fails: ERROR\nx\nfmin(f, x)\n", true},
      {"# fmin: something\nx\nfmin(f, x)\n", false},
      {"# fmin: something\n# expect: x = 2\nx\nfmin(f, x)\n", true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(complaint_about_outcome(head + c.worksheet, "fmin").empty(), c.good) << c.worksheet;
  }
}

}  // namespace
}  // namespace quantiverse::docs_test
