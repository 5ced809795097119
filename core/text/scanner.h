#pragma once

#include <string_view>

#include "text/cursor.h"

// The steps that move the cursor over the text, and the tests that look at it. None of them
// reports: they answer true or false, and on false the cursor has not moved. Tests and steps
// that take a Cursor& and are called is_... leave it alone unless they say otherwise.
namespace quantiverse {

// A carriage return is an ordinary character.
constexpr bool is_blank(char c) { return c == ' ' || c == '\t'; }
constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }
constexpr bool is_name_start(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
constexpr bool is_name_char(char c) { return is_name_start(c) || is_digit(c) || c == '_'; }
constexpr char fold_case(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

inline bool is_end_of_text(const Cursor& expptr) { return expptr.at_stop(); }
inline bool is_end_of_line(const Cursor& expptr) {
  return expptr.at_stop() || *expptr.position == '\n';
}
inline bool is_end_of_statement(const Cursor& expptr) {
  if (expptr.at_stop()) return true;
  const char c = *expptr.position;
  return c == '\n' || c == ';' || c == '#';
}

// Steps over blanks, comments (up to their newline) and continuations: a backslash, whatever
// stands behind it on its line, and the newline.
void skip_comment_or_continuation(Cursor& expptr);
inline void skip_blanks_and_comments(Cursor& expptr) {
  while (!expptr.at_stop() && is_blank(*expptr.position)) expptr.step();
  const char c = expptr.peek();
  if (c == '#' || c == '\\') skip_comment_or_continuation(expptr);
}
// The same, but stops at a comment.
void skip_blanks(Cursor& expptr);

// To the newline, over comments and continuations.
void skip_to_end_of_line(Cursor& expptr);
// To the newline, ";" or "#", over continuations.
void skip_to_end_of_statement(Cursor& expptr);

// Nothing but blanks from here to the end of the line; a comment or continuation is something.
bool is_blank_line_ahead(Cursor expptr);
// Nothing but blanks from here to the end of the line or its comment.
bool is_blank_before_comment(Cursor expptr);
// The first character other than blank and newline in the range is a "#".
bool is_comment_range(const Cursor& first, const Cursor& last);

// From the end of a comment line to the end of the next line if that is a comment too.
bool next_comment_line(Cursor& expptr);

// Steps over `c`, if it is next.
inline bool accept_char(char c, Cursor& expptr) {
  if (expptr.at_stop() || *expptr.position != c) return false;
  expptr.step();
  return true;
}

// Takes a name: a letter, then letters, digits and underscores.
// Gives the empty text, and the cursor has not moved, if no name is here.
std::string_view scan_name(Cursor& expptr);

// Takes "[", one digit from 1 to 3, and "]", blanks between them allowed.
// Gives the digit, or 0 if that is not here; then the cursor has not moved.
int scan_component_suffix(Cursor& expptr);

// Takes `keyword` if it stands here in this case and no name goes on behind it.
inline bool accept_keyword(std::string_view keyword, Cursor& expptr) {
  if (expptr.peek() != keyword.front()) return false;
  const std::string_view rest = expptr.rest();
  if (!rest.starts_with(keyword)) return false;
  if (rest.size() > keyword.size() && is_name_char(rest[keyword.size()])) return false;
  expptr.position += keyword.size();
  return true;
}

// Equal but for the case of ASCII letters.
bool equal_nocase(std::string_view a, std::string_view b);

}  // namespace quantiverse
