#include "language/result_text.h"

#include <algorithm>

#include "quantity/conversion.h"
#include "quantity/unit_expression.h"
#include "quantity/unit_text.h"
#include "text/scanner.h"

namespace quantiverse {
namespace {

void append_value(TextBuf& result, const DimValue& value) {
  result.append_text(" = ");
  if (!value.vector) {
    result.append_double(value.comp[0]);
    return;
  }
  result.append_text("[ ");
  result.append_double(value.comp[0]);
  result.append_text(" , ");
  result.append_double(value.comp[1]);
  result.append_text(" , ");
  result.append_double(value.comp[2]);
  result.append_text(" ]");
}

void report(TextBuf& err, std::string_view request, std::string_view trouble) {
  err.clear_text();
  err.append_three("ERROR IN REQUESTED OUTPUT: '", request, trouble);
}

// A rendered unit is read back like one that was typed, so that what is shown has always gone
// through the unit reader.
void render_in_rendered_unit(TextBuf& result, const DimValue& value, const TextBuf& unit_text,
                             Units& units, TextBuf& err) {
  Cursor start(unit_text.text());
  render_requested_output(result, value, start, UnitCheck::kSkip, units, err);
}

}  // namespace

bool render_requested_output(TextBuf& result, const DimValue& value, Cursor& expptr,
                             UnitCheck check, Units& units, TextBuf& err) {
  const Cursor first = expptr;
  skip_blanks_and_comments(expptr);
  const Cursor start = expptr;
  UnitDef unit;
  if (!parse_unit_expression(units, expptr, unit, err)) {
    while (!is_end_of_statement(expptr)) expptr.step();
    report(err, start.until(expptr), "' not recognized.\n");
    return false;
  }
  if (!err.is_empty_text()) {  // a good unit with a bad one behind it
    result.append_buffer(err);
    err.clear_text();
    return false;
  }
  // A comment behind the unit is no part of it.
  const std::string_view typed = first.until(expptr).substr(0, first.until(expptr).find('#'));
  const DimValue shown = convert_non_affine_FromMKS_vec_full(value, unit);
  if (check == UnitCheck::kCompare && !dim_same_units(value.exps, shown.exps)) {
    const auto blanks = static_cast<std::size_t>(start.position - first.position);
    report(err, typed.substr(std::min(blanks, typed.size())), "' is incompatible.\n");
    return false;
  }
  append_value(result, shown);
  result.append_text(" ");
  result.append_text(typed);
  return true;
}

void render_system_output(UnitSystem system, TextBuf& result, const DimValue& value, Units& units,
                          TextBuf& err) {
  TextBuf unit_text;
  render_units(unit_text, value.exps, system);
  render_in_rendered_unit(result, value, unit_text, units, err);
}

void render_default_output(TextBuf& result, const DimValue& value, Units& units, TextBuf& err) {
  TextBuf unit_text;
  render_units_with_exceptions(unit_text, value.exps, units);
  render_in_rendered_unit(result, value, unit_text, units, err);
}

}  // namespace quantiverse
