#include "host/reference.h"

#include <algorithm>

#include "host/text.h"
#include "host/xlcall.h"

namespace quantiverse::host {
namespace {

constexpr int kLettersOfColumn = 26;
constexpr int kOldRows = 65536;
constexpr int kOldColumns = 256;
constexpr int kFirstWithLargeSheets = 12;

bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
// Bytes beyond ASCII are letters of names.
bool is_of_name(char c) {
  return is_digit(c) || is_letter(c) || c == '_' || c == '.' || c == '$' || (c & 0x80) != 0;
}

char at_or_nul(std::string_view text, std::size_t at) { return at < text.size() ? text[at] : '\0'; }

// A reference ends where a name would; before "(" it would be the name of a function.
bool is_end_of_reference(std::string_view text, std::size_t at) {
  const char next = at_or_nul(text, at);
  return !is_of_name(next) && next != '(' && next != '!' && next != '[';
}

bool take(std::string_view text, std::size_t& at, char c) {
  if (at_or_nul(text, at) != c) return false;
  ++at;
  return true;
}

// Digits as a number from 0 to `most`; nothing without digits or beyond.
std::optional<int> take_digits(std::string_view text, std::size_t& at, int most) {
  if (!is_digit(at_or_nul(text, at))) return std::nullopt;
  std::int64_t number = 0;
  for (; is_digit(at_or_nul(text, at)); ++at) {
    number = std::min<std::int64_t>(number * 10 + (text[at] - '0'), std::int64_t{most} + 1);
  }
  return number <= most ? std::optional(static_cast<int>(number)) : std::nullopt;
}

// The part behind R or C: nothing, a number from 1, or a distance in brackets.
// Gives the place, counted from 0.
std::optional<int> take_part(std::string_view text, std::size_t& at, int here, int extent,
                             bool& is_absolute) {
  if (take(text, at, '[')) {
    const bool is_negative = take(text, at, '-');
    const auto distance = take_digits(text, at, extent - 1);
    if (!distance || !take(text, at, ']')) return std::nullopt;
    return (here + (is_negative ? extent - *distance : *distance)) % extent;
  }
  if (!is_digit(at_or_nul(text, at))) return here;
  const auto number = take_digits(text, at, extent);
  if (!number || *number == 0) return std::nullopt;
  is_absolute = true;
  return *number - 1;
}

std::string column_text(int column) {
  std::string letters;
  for (int left = column + 1; left > 0; left = (left - 1) / kLettersOfColumn) {
    letters += static_cast<char>('A' + (left - 1) % kLettersOfColumn);
  }
  return {letters.rbegin(), letters.rend()};
}

std::string a1_text(const CellName& name) {
  return (name.is_column_absolute ? "$" : "") + column_text(name.column) +
         (name.is_row_absolute ? "$" : "") + std::to_string(name.row + 1);
}

std::string part_text(char letter, int place, bool is_absolute, int here) {
  if (is_absolute) return letter + std::to_string(place + 1);
  if (place == here) return {letter};
  return letter + ("[" + std::to_string(place - here) + "]");
}

std::string r1c1_text(const CellName& name, int row, int column) {
  return part_text('R', name.row, name.is_row_absolute, row) +
         part_text('C', name.column, name.is_column_absolute, column);
}

// Where the text in quotes that starts at `at` ends.
std::size_t end_of_text(std::string_view formula, std::size_t at) {
  const std::size_t end = formula.find('"', at + 1);
  return end == std::string_view::npos ? formula.size() : end + 1;
}

// Copies a formula and has `replace` try each place where a name may begin: it appends the
// reference and goes behind it, or gives false.
template <class Replace>
std::string with_references(std::string_view formula, Replace replace) {
  if (!formula.starts_with('=')) return std::string(formula);
  std::string out;
  std::size_t at = 0;
  while (at < formula.size()) {
    const std::size_t start = at;
    if (formula[at] == '"') {
      at = end_of_text(formula, at);
    } else if (!is_of_name(formula[at])) {
      ++at;
    } else if (replace(at, out)) {
      continue;
    } else {
      while (at < formula.size() && is_of_name(formula[at])) ++at;
    }
    out += formula.substr(start, at - start);
  }
  return out;
}

}  // namespace

Sheet Sheet::of_version(int version) {
  if (version < kFirstWithLargeSheets) return {kOldRows, kOldColumns};
  return {Form12::kMostRows, Form12::kMostColumns};
}

std::optional<CellName> Sheet::read_a1(std::string_view text, std::size_t& at) const {
  std::size_t next = at;
  CellName name;
  name.is_column_absolute = take(text, next, '$');
  int column = 0;
  for (; is_letter(at_or_nul(text, next)) && column <= columns; ++next) {
    column = column * kLettersOfColumn + ((text[next] & 0x1F));
  }
  name.is_row_absolute = take(text, next, '$');
  const auto row = take_digits(text, next, rows);
  const bool is_inside = column >= 1 && column <= columns && row.value_or(0) >= 1;
  if (!is_inside || !is_end_of_reference(text, next)) return std::nullopt;
  name.column = column - 1;
  name.row = *row - 1;
  at = next;
  return name;
}

std::optional<CellName> Sheet::read_r1c1(std::string_view text, std::size_t& at, int row,
                                         int column) const {
  std::size_t next = at;
  CellName name;
  if (!take(text, next, 'R') && !take(text, next, 'r')) return std::nullopt;
  const auto found_row = take_part(text, next, row, rows, name.is_row_absolute);
  if (!found_row || (!take(text, next, 'C') && !take(text, next, 'c'))) return std::nullopt;
  const auto found_column = take_part(text, next, column, columns, name.is_column_absolute);
  if (!found_column || !is_end_of_reference(text, next)) return std::nullopt;
  name.row = *found_row;
  name.column = *found_column;
  at = next;
  return name;
}

std::optional<Area> Sheet::area_of(std::string_view text, bool may_be_absolute) const {
  if (!may_be_absolute && text.find('$') != std::string_view::npos) return std::nullopt;
  std::size_t at = 0;
  const auto first = read_a1(text, at);
  if (!first) return std::nullopt;
  const auto last = take(text, at, ':') ? read_a1(text, at) : first;
  if (!last || at != text.size()) return std::nullopt;
  const auto [top, bottom] = std::minmax(first->row, last->row);
  const auto [left, right] = std::minmax(first->column, last->column);
  return Area{top, left, bottom, right};
}

std::string Sheet::to_r1c1(std::string_view formula, int row, int column) const {
  return with_references(formula, [&](std::size_t& at, std::string& out) {
    const auto name = read_a1(formula, at);
    if (name) out += r1c1_text(*name, row, column);
    return name.has_value();
  });
}

std::string Sheet::to_a1(std::string_view formula, int row, int column) const {
  return with_references(formula, [&](std::size_t& at, std::string& out) {
    const auto name = read_r1c1(formula, at, row, column);
    if (name) out += a1_text(*name);
    return name.has_value();
  });
}

std::string area_text(const Area& area) {
  std::string first = a1_text({area.first_row, area.first_column});
  if (area.size() == 1) return first;
  return first + ":" + a1_text({area.last_row, area.last_column});
}

}  // namespace quantiverse::host
