// Units: the reader takes any text, and what the renderer writes of a dimension it reads back.

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "quantity/unit_expression.h"
#include "quantity/unit_text.h"
#include "text/numbers.h"

namespace {

using quantiverse::Cursor;
using quantiverse::Exponents;
using quantiverse::TextBuf;
using quantiverse::UnitDef;
using quantiverse::Units;
using quantiverse::UnitSystem;

// Six digits of an exponent are written, so only those with fewer come back; and in small units
// such as grams a high power is too large a number to be read.
bool is_readable(const Exponents& exps) {
  for (const double e : exps) {
    const double thousandths = e * 1000.0;
    if (!(std::fabs(e) <= 4.0) || std::fabs(thousandths - std::round(thousandths)) > 1e-9) {
      return false;
    }
  }
  return true;
}

void check_rendered(const Exponents& exps, UnitSystem system, Units& units) {
  TextBuf text;
  TextBuf err;
  render_units(text, exps, system);
  Cursor start(text.text());
  UnitDef again;
  if (!parse_unit_expression(units, start, again, err) || !err.is_empty_text()) std::abort();
  if (!start.at_stop() || !quantiverse::dim_same_units(exps, again.exps)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  Units units;
  units.stack.begin_call();
  TextBuf err;

  Cursor list(text);
  read_default_unit_list(units, list, err);

  Cursor expptr(text);
  UnitDef unit;
  const bool read = parse_unit_expression(units, expptr, unit, err);
  if (!read && expptr.position != text.data()) std::abort();
  if (!read || !err.is_empty_text()) return 0;
  if (quantiverse::is_bad_double(unit.w0)) std::abort();
  if (is_readable(unit.exps)) {
    for (const UnitSystem system :
         {UnitSystem::kMks, UnitSystem::kCgs, UnitSystem::kFps, UnitSystem::kIps}) {
      check_rendered(unit.exps, system, units);
    }
  }
  TextBuf shown;
  render_dimension_text(shown, unit.exps, units);
  if (shown.is_empty_text()) std::abort();
  return 0;
}
