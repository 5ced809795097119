// Runs every worksheet of examples/, which says itself what has to come out.

#include <gtest/gtest.h>

#include "docs/files.h"
#include "docs/worksheet.h"

namespace quantiverse::docs_test {
namespace {

TEST(Examples, EveryWorksheetGivesItsRightAnswers) {
  int worksheets = 0;
  for (const auto& entry : std::filesystem::directory_iterator(source_dir() / "examples")) {
    if (entry.path().extension() != ".txt") continue;
    ++worksheets;
    EXPECT_EQ(complaints_about(read_file(entry.path())), "") << "in " << entry.path();
  }
  EXPECT_GE(worksheets, 10);
}

// The check above is worth what it finds.
TEST(Examples, AWrongWorksheetIsFound) {
  const struct {
    const char* worksheet;
    const char* complaint;  // part of it; empty for none
  } cases[] = {
      {"# expect: x = 60 in\nx = 5 ft; m; in\n", ""},
      {"# expect: x = 60.0005 in\nx = 5 ft; in\n", ""},
      {"# expect: x = 60.001 in\nx = 5 ft; in\n", "expected x = 60.001 in, but = 60 in"},
      {"# expect: x = 60 in\nx = 5 ft; in\nx = 6 ft; in\n", "but = 72 in"},
      {"# expect: x = 60 in\nx = 5 ft\n", "not shown in this unit"},
      {"# expect: x = 2\nxx = 2\n", "no result has this name"},
      {"# expect: v = [ 0 , 2 , 0 ] m\nv = [0, 2, 0] m\n", ""},
      {"# expect: v = [ 0 , 2 , 1 ] m\nv = [0, 2, 0] m\n", "expected v"},
      {"# expect: v = 0 m\nv = [0, 2, 0] m\n", "expected v"},
      {"# expect: x = inf\nx = ln(0)\n", "expected x"},
      {"# expect: x = two\nx = 2\n", "not a value"},
      {"# expect x = 2\nx = 2\n", "a mark ends with"},
      {"# expect: x = 2\nx = 2\n3 m + 2 s\n", "ERROR:  Adding"},
      {"# expect: x = 2 m\nx = 2 m; s\n", "ERROR IN REQUESTED OUTPUT"},
      {"x = 2\n", "no expectation"},
      {"# within: 0.1\n# expect: x = 2\nx = 2.19\n", ""},
      {"# expect: x = 2\n# within: 0.1\nx = 2.19\n", "expected x"},
      {"# within: 0.1\n# expect: x = 2\nx = 2.21\n", "expected x"},
      {"# within: 0.1\n# expect: x = 0\nx = -0.09\n", ""},
      {"# within: 0.1\n# expect: x = 0\nx = -0.11\n", "expected x"},
      {"# expect: x = 0\nx = 1e-9\n", "expected x"},
      {"# within: little\n# expect: x = 2\nx = 2\n", "not a number"},
      {"# fails: ERROR: 'x' undefined.\nx\n", ""},
      {"# fails: ERROR: 'x' undefined.\nx = 2\n", "no such error"},
      {"# fails: ERROR: 'x' undefined.\nx\ny\n", "ERROR: 'y' undefined."},
  };
  for (const auto& c : cases) {
    const std::string complaints = complaints_about(c.worksheet);
    EXPECT_NE(complaints.find(c.complaint), std::string::npos) << c.worksheet << complaints;
    EXPECT_EQ(complaints.empty(), *c.complaint == '\0') << c.worksheet << complaints;
  }
}

}  // namespace
}  // namespace quantiverse::docs_test
