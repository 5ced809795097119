#include "quantity/unit_systems.h"

#include <string_view>
#include <utility>

#include "quantity/unit_expression.h"
#include "text/scanner.h"

namespace quantiverse {
namespace {

std::string_view bytes(const Exponents& exps) {
  return {reinterpret_cast<const char*>(exps.data()), sizeof exps};
}

// The items from behind the "(" up to its ")"; with a message in `err` they are of no use.
std::vector<std::string_view> read_items(Units& units, Cursor& expptr, TextBuf& err) {
  std::vector<std::string_view> items;
  skip_blanks_and_comments(expptr);
  for (;;) {  // a later item starts right behind its comma, so its text may begin with blanks
    const Cursor first = expptr;
    for (;;) {
      skip_blanks_and_comments(expptr);
      if (accept_char(')', expptr)) return items;
      if (accept_char(',', expptr)) break;
      if (is_end_of_line(expptr)) {
        err.append_text(" Argument list not terminated");
        return items;
      }
      const char* const before = expptr.position;
      UnitDef unit;
      // What takes no character, such as a ";" or a unit that was given up half-way, is no unit.
      if (!parse_unit_expression(units, expptr, unit, err) || expptr.position == before) {
        err.append_text(" Argument not a proper unit");
        return items;
      }
      items.push_back(first.until(expptr));
    }
  }
}

}  // namespace

void UnitSystems::replace_exceptions(std::vector<std::string_view> exceptions) {
  exceptions_ = std::move(exceptions);
  choices_ = Choices();  // clear() would take as long as the longest list of an earlier line
}

UnitSystems::Choice UnitSystems::find_choice(const Exponents& exps, std::uint64_t user_units) {
  if (user_units_ != user_units) {
    choices_ = Choices();
    user_units_ = user_units;
  }
  const auto found = choices_.find(exps);
  return found == choices_.end() ? Choice() : Choice(found->second);
}

void UnitSystems::note_choice(const Exponents& exps, const std::string_view* exception) {
  choices_.emplace(exps, exception);
}

std::size_t UnitSystems::HashBytes::operator()(const Exponents& exps) const {
  return std::hash<std::string_view>()(bytes(exps));
}

bool UnitSystems::EqualBytes::operator()(const Exponents& a, const Exponents& b) const {
  return bytes(a) == bytes(b);
}

void read_default_unit_list(Units& units, Cursor& expptr, TextBuf& err) {
  err.clear_text();
  skip_blanks_and_comments(expptr);
  if (!accept_char('(', expptr)) return;
  std::vector<std::string_view> items = read_items(units, expptr, err);
  // `MKS()` keeps the exceptions, as `MKS` without parentheses does.
  if (err.is_empty_text() && !items.empty()) units.systems.replace_exceptions(std::move(items));
}

}  // namespace quantiverse
