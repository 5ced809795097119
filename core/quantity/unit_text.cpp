#include "quantity/unit_text.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "quantity/unit_expression.h"
#include "text/numbers.h"

namespace quantiverse {
namespace {

struct Term {
  std::string_view name;
  double exponent;
};
using Terms = std::array<Term, kSlotCount>;

Terms absolute_terms(std::string_view mass, std::string_view length, std::string_view difference,
                     const Exponents& e) {
  return {{{mass, e[kSlotMass]},
           {length, e[kSlotLength]},
           {"rad", e[kSlotAngle]},
           {"s", e[kSlotTime]},
           {"degK", e[kSlotTemperature]},
           {"mol", e[kSlotAmount]},
           {difference, e[kSlotDifference]},
           {"C", e[kSlotCharge]}}};
}

// Mass is force times time squared over length.
Terms gravitational_terms(std::string_view length, std::string_view difference,
                          const Exponents& e) {
  return {{{"lbf", e[kSlotMass]},
           {length, e[kSlotLength] - e[kSlotMass]},
           {"rad", e[kSlotAngle]},
           {"s", e[kSlotMass] * 2.0 + e[kSlotTime]},
           {"degR", e[kSlotTemperature]},
           {"mol", e[kSlotAmount]},
           {difference, e[kSlotDifference]},
           {"C", e[kSlotCharge]}}};
}

Terms terms_of(UnitSystem system, const Exponents& exps) {
  switch (system) {
    case UnitSystem::kCgs:
      return absolute_terms("g", "cm", "degK", exps);
    case UnitSystem::kFps:
      return gravitational_terms("ft", "degR", exps);
    case UnitSystem::kIps:
      // degF for a difference, though a lone degF reads back with an offset.
      return gravitational_terms("in", "degF", exps);
    case UnitSystem::kMks:
      break;
  }
  return absolute_terms("kg", "m", "degKdiff", exps);
}

// One term of the numerator or the denominator, with a blank behind it, if it belongs there.
void append_one_exponentiated_unit_to_a_string(TextBuf& text, const Term& term, bool numerator) {
  const double exponent = term.exponent;
  if (exponent == 0.0 || (numerator ? exponent < 0.0 : exponent > 0.0)) return;
  text.append_text(term.name);
  const double written = numerator ? exponent : std::fabs(exponent);
  const int whole = truncate_to_int32(written);
  if (written == 1.0) {
    text.append_text(" ");
    return;
  }
  text.append_text("^");
  if (static_cast<double>(whole) == written) {
    text.append_integer(whole);
  } else {
    text.append_double(written);
  }
  text.append_text(" ");
}

bool exactly_same(const Exponents& a, const Exponents& b) {
  return std::equal(a.begin(), a.end(), b.begin(), exponents_match);
}

const std::string_view* find_exception(const Exponents& exps, Units& units) {
  const std::vector<std::string_view>& exceptions = units.systems.exceptions();
  if (exceptions.empty()) return nullptr;
  const UnitSystems::Choice known = units.systems.find_choice(exps, units.users.generation());
  if (known) return *known;

  const std::string_view* choice = nullptr;
  TextBuf ignored;
  for (const std::string_view& exception : exceptions) {
    Cursor start(exception);
    UnitDef unit;
    if (parse_unit_expression(units, start, unit, ignored) && exactly_same(exps, unit.exps)) {
      choice = &exception;
      break;
    }
  }
  units.systems.note_choice(exps, choice);
  return choice;
}

bool all_zero(const Exponents& exps) {
  return std::all_of(exps.begin(), exps.end(), [](double e) { return e == 0.0; });
}

}  // namespace

void render_units(TextBuf& text, const Exponents& exps, UnitSystem system) {
  if (all_zero(exps)) return;
  const Terms terms = terms_of(system, exps);
  for (const Term& term : terms) append_one_exponentiated_unit_to_a_string(text, term, true);
  const auto below = [](const Term& term) { return term.exponent < 0.0; };
  if (std::any_of(terms.begin(), terms.end(), below)) {
    text.append_text("/ ");
    for (const Term& term : terms) append_one_exponentiated_unit_to_a_string(text, term, false);
  }
  if (text.last() == ' ') text.remove_last();
}

void render_units_with_exceptions(TextBuf& text, const Exponents& exps, Units& units) {
  if (const std::string_view* exception = find_exception(exps, units)) {
    text.append_text(*exception);
  } else {
    render_units(text, exps, units.systems.system());
  }
}

void render_dimension_text(TextBuf& text, const Exponents& exps, Units& units) {
  const bool plain = all_zero(exps) && find_exception(exps, units) == nullptr;
  if (plain) {
    text.append_text("Dimensionless");
  } else {
    render_units_with_exceptions(text, exps, units);
  }
}

}  // namespace quantiverse
