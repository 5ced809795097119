#include "text/scanner.h"

#include <algorithm>

namespace quantiverse {
namespace {

// To the next newline, or to the stop.
void skip_to_newline(Cursor& expptr) {
  const std::string_view rest = expptr.rest();
  const std::size_t newline = rest.find('\n');
  expptr.position = newline == std::string_view::npos ? expptr.stop : expptr.position + newline;
}

// From a backslash to the start of the next line. A text may end before that.
void skip_continuation(Cursor& expptr) {
  skip_to_newline(expptr);
  if (!expptr.at_stop()) expptr.step();
}

void skip_blank_run(Cursor& expptr) {
  while (!expptr.at_stop() && is_blank(*expptr.position)) expptr.step();
}

}  // namespace

void skip_comment_or_continuation(Cursor& expptr) {
  skip_blanks(expptr);
  if (expptr.peek() == '#') skip_to_newline(expptr);
}

void skip_blanks(Cursor& expptr) {
  for (;;) {
    skip_blank_run(expptr);
    if (expptr.peek() != '\\') return;
    skip_continuation(expptr);
  }
}

void skip_to_end_of_line(Cursor& expptr) {
  for (;;) {
    while (!is_end_of_line(expptr) && *expptr.position != '#' && *expptr.position != '\\') {
      expptr.step();
    }
    if (is_end_of_line(expptr)) return;
    if (*expptr.position == '#') return skip_to_newline(expptr);
    skip_continuation(expptr);
  }
}

void skip_to_end_of_statement(Cursor& expptr) {
  skip_blanks_and_comments(expptr);
  while (!is_end_of_statement(expptr)) {
    expptr.step();
    skip_blanks(expptr);
  }
}

bool is_blank_line_ahead(Cursor expptr) {
  skip_blank_run(expptr);
  return is_end_of_line(expptr);
}

bool is_blank_before_comment(Cursor expptr) {
  skip_blank_run(expptr);
  return is_end_of_line(expptr) || *expptr.position == '#';
}

bool is_comment_range(const Cursor& first, const Cursor& last) {
  const std::string_view range = first.until(last);
  const std::size_t found = range.find_first_not_of(" \t\n");
  return found != std::string_view::npos && range[found] == '#';
}

bool next_comment_line(Cursor& expptr) {
  if (is_end_of_text(expptr)) return false;
  Backtrack back(expptr);
  expptr.step();
  skip_blanks_and_comments(expptr);
  return is_comment_range(back.from(), expptr) && back.accept();
}

std::string_view scan_name(Cursor& expptr) {
  if (expptr.at_stop() || !is_name_start(*expptr.position)) return {};
  const Cursor first = expptr;
  while (!expptr.at_stop() && is_name_char(*expptr.position)) expptr.step();
  return first.until(expptr);
}

int scan_component_suffix(Cursor& expptr) {
  Backtrack back(expptr);
  skip_blanks_and_comments(expptr);
  if (!accept_char('[', expptr)) return 0;
  skip_blanks_and_comments(expptr);
  const char digit = expptr.peek();
  if (digit < '1' || digit > '3') return 0;
  expptr.step();
  skip_blanks_and_comments(expptr);
  if (!accept_char(']', expptr)) return 0;
  back.accept();
  return digit - '0';
}

bool equal_nocase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return fold_case(x) == fold_case(y); });
}

}  // namespace quantiverse
