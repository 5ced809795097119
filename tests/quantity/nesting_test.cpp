#include <gtest/gtest.h>

#include <string>

#include "quantity/unit_expression.h"

namespace quantiverse {
namespace {

constexpr std::size_t kDeep = 100000;

std::string repeated(std::string_view s, std::size_t times) {
  std::string text;
  for (std::size_t i = 0; i < times; ++i) text += s;
  return text;
}

// The expression grammar asks for a unit behind each parenthesis that it opens. If each answer
// cost what is nested below it, this would take hours.
TEST(Nesting, AFailedParenthesisIsReadOnce) {
  for (const char* core : {"5", "m + 3", "m^x"}) {
    const std::string text = std::string(kDeep, '(') + core + std::string(kDeep, ')');
    Units units;
    units.stack.begin_call();
    UnitDef unit;
    TextBuf err;
    for (Cursor level{std::string_view(text)}; level.peek() == '('; level.step()) {
      Cursor expptr = level;
      parse_unit_expression(units, expptr, unit, err);
      ASSERT_EQ(expptr.position, level.position);
    }
  }
}

// What is remembered of a parenthesis changes no answer.
TEST(Nesting, MemoryOfFailedParenthesesIsInvisible) {
  for (const char* core : {"5", "m + 3", "m^x", "m (5)", "m", "degC + 1", "/", "m angstrom^9"}) {
    for (const char* link : {"(", "s(", "*("}) {
      const std::string text =
          repeated(link, 90) + core + (core[1] == '\0' ? "" : std::string(90, ')'));
      Units remembering;
      for (std::size_t at = 0; at < text.size(); ++at) {
        Units fresh;
        UnitDef unit;
        TextBuf err;
        TextBuf expected_err;
        Cursor expptr{std::string_view(text).substr(at)};
        Cursor expected = expptr;
        const bool expected_ok = parse_unit_expression(fresh, expected, unit, expected_err);
        ASSERT_EQ(parse_unit_expression(remembering, expptr, unit, err), expected_ok)
            << core << " " << link << " " << at;
        ASSERT_EQ(expptr.position, expected.position) << core << " " << link << " " << at;
        ASSERT_EQ(err.text(), expected_err.text()) << core << " " << link << " " << at;
      }
    }
  }
}

}  // namespace
}  // namespace quantiverse
