#include "text/scanner.h"

#include <gtest/gtest.h>

#include <string>

namespace quantiverse {
namespace {

// Each text has a '|' where the step has to stop.
template <std::size_t N>
void expect_stops(void (*step)(Cursor&), const char* const (&cases)[N]) {
  for (const char* marked : cases) {
    std::string text = marked;
    const std::size_t mark = text.find('|');
    text.erase(mark, 1);
    Cursor expptr{std::string_view(text)};
    step(expptr);
    EXPECT_EQ(expptr.rest(), text.substr(mark)) << marked;
  }
}

TEST(Skip, BlanksAndComments) {
  const char* const cases[] = {"|", " \t |x ", "|\n x", "|\r\n", " |\v", "|\xff", " |\x80 x",
                               "# all of it \\ |\n x", "  # to the end of the text|",
                               // The rest of a continued line is thrown away, comment or not.
                               " \\ junk # junk\n \t|x", "\\\n\\\n  |\nx", "\\\n # comment|\n x",
                               " \\|", " \\ # no newline|", "\\\n|"};
  expect_stops([](Cursor& expptr) { skip_blanks_and_comments(expptr); }, cases);
}

TEST(Skip, BlanksOnly) {
  const char* const cases[] = {" \t|# comment\n", "\\ #\n |# comment", " \\|", " |\n",
                               "|x \\\n",         "\\\n\\x\n|\xe9"};
  expect_stops(skip_blanks, cases);
}

TEST(Skip, ToTheEndOfTheLine) {
  const char* const cases[] = {
      "|",     "|\nx",       "a ; b|\nx", "a # ; \\|\nx", "a \\ b\n c|\nx", "a \\\n\\\n|\nx",
      "a \\|", "a \xff\r|\n"};
  expect_stops(skip_to_end_of_line, cases);
}

TEST(Skip, ToTheEndOfTheStatement) {
  const char* const cases[] = {
      "|",
      "a b|;c",
      "a |# b",
      "a|\nb",
      " # b ; c|\n",  // in front of the statement a comment is skipped, inside it ends it
      "a \\ ; \n b|; c",
      "a \\\n|# b",
      "a\\|",
      "|; b"};
  expect_stops(skip_to_end_of_statement, cases);
}

TEST(LineTests, Blank) {
  const struct {
    const char* text;
    bool blank_line;
    bool blank_before_comment;
  } cases[] = {{"", true, true},        {" \t\nx", true, true},  {" x", false, false},
               {" # x", false, true},   {"#", false, true},      {"\\\n\n", false, false},
               {" \\ #", false, false}, {"x # x", false, false}, {"\r\n", false, false},
               {"\xa0\n", false, false}};
  for (const auto& c : cases) {
    const Cursor expptr{std::string_view(c.text)};
    EXPECT_EQ(is_blank_line_ahead(expptr), c.blank_line) << c.text;
    EXPECT_EQ(is_blank_before_comment(expptr), c.blank_before_comment) << c.text;
  }
}

TEST(LineTests, NothingBehindTheStopIsSeen) {
  Cursor stopped{std::string_view("ab", 1)};
  EXPECT_EQ(stopped.peek_next(), '\0');
  stopped.step();
  EXPECT_TRUE(is_end_of_text(stopped) && is_end_of_line(stopped) && is_end_of_statement(stopped));
  EXPECT_FALSE(accept_char('b', stopped));
  EXPECT_EQ(stopped.peek(), '\0');
}

TEST(Comments, NextLine) {
  // clang-format off
  // From the end of a comment line.
  const struct { const char* text; bool found; const char* rest; } cases[] = {
      {"", false, ""}, {"\n", false, "\n"}, {"\n# b\nc", true, "\nc"}, {"\n \t# b", true, ""},
      {"\n b # c", false, "\n b # c"}, {"\n\n# b", false, "\n\n# b"},
      {"\n\\\n# b\n", false, "\n\\\n# b\n"}, {"\n\\", false, "\n\\"},
  };
  // clang-format on
  for (const auto& c : cases) {
    Cursor expptr{std::string_view(c.text)};
    EXPECT_EQ(next_comment_line(expptr), c.found) << c.text;
    EXPECT_EQ(expptr.rest(), c.rest) << c.text;
  }
}

TEST(Comments, Range) {
  const struct {
    const char* text;
    bool comment;
  } cases[] = {{"", false},      {" \n\t", false}, {" \n\t# x", true}, {"#", true},
               {"x # y", false}, {"\r#", false},   {"\\\n#", false}};
  for (const auto& c : cases) {
    const Cursor first{std::string_view(c.text)};
    Cursor last = first;
    last.position = last.stop;
    EXPECT_EQ(is_comment_range(first, last), c.comment) << c.text;
  }
}

TEST(Names, Scan) {
  const struct {
    const char* text;
    const char* name;
  } cases[] = {{"", ""},           {"a", "a"},   {"Z9_z-1", "Z9_z"}, {"_a", ""},   {"9a", ""},
               {" a", ""},         {"a b", "a"}, {"a\xe9", "a"},     {"\xe9", ""}, {"a\\\nb", "a"},
               {"a__1.2", "a__1"}, {"@", ""},    {"[", ""},          {"`", ""},    {"{", ""},
               {"a@", "a"},        {"a:", "a"}};
  for (const auto& c : cases) {
    Cursor expptr{std::string_view(c.text)};
    EXPECT_EQ(scan_name(expptr), c.name) << c.text;
    EXPECT_EQ(expptr.rest(), std::string(c.text).substr(std::string(c.name).size()));
  }
  const std::string longest(100000, 'x');
  Cursor expptr{std::string_view(longest)};
  EXPECT_EQ(scan_name(expptr), longest);
}

TEST(Names, ComponentSuffix) {
  const struct {
    const char* text;
    int component;
    const char* rest;
  } cases[] = {{"[1]", 1, ""},          {" [ 2 ] x", 2, " x"}, {"\\\n[\\\n3\t]]", 3, "]"},
               {"[4]", 0, "[4]"},       {"[0]", 0, "[0]"},     {"[12]", 0, "[12]"},
               {"[1", 0, "[1"},         {" [", 0, " ["},       {"[]", 0, "[]"},
               {"[ # 1]", 0, "[ # 1]"}, {"(1)", 0, "(1)"},     {"", 0, ""},
               {"[1#]", 0, "[1#]"},     {" [1;]", 0, " [1;]"}, {"[\xb2]", 0, "[\xb2]"}};
  for (const auto& c : cases) {
    Cursor expptr{std::string_view(c.text)};
    EXPECT_EQ(scan_component_suffix(expptr), c.component) << c.text;
    EXPECT_EQ(expptr.rest(), c.rest) << c.text;
  }
}

TEST(Names, Keyword) {
  for (const char* text : {"end", "end ", "end(", "end\xe9", "end-1"}) {
    Cursor expptr{std::string_view(text)};
    EXPECT_TRUE(accept_keyword("end", expptr)) << text;
    EXPECT_EQ(expptr.rest(), std::string_view(text).substr(3));
  }
  for (const char* text : {"", "en", "End", "endx", "end_", "end1", " end"}) {
    Cursor expptr{std::string_view(text)};
    EXPECT_FALSE(accept_keyword("end", expptr)) << text;
    EXPECT_EQ(expptr.rest(), text);
  }
}

TEST(Names, CaseIsFoldedForAsciiLettersOnly) {
  EXPECT_TRUE(equal_nocase("", ""));
  EXPECT_TRUE(equal_nocase("mKs_AZaz", "MkS_azAZ"));
  EXPECT_FALSE(equal_nocase("MKS", "MKSx"));
  EXPECT_FALSE(equal_nocase("@[", "`{"));      // the neighbours of the letters
  EXPECT_FALSE(equal_nocase("\xc9", "\xe9"));  // a capital and a small letter of Latin-1
}

}  // namespace
}  // namespace quantiverse
