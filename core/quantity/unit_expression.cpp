#include "quantity/unit_expression.h"

#include <algorithm>
#include <cmath>

#include "quantity/unit_dictionary.h"
#include "text/numbers.h"
#include "text/scanner.h"

namespace quantiverse {
namespace {

constexpr double kCelsiusOffset = -273.15;
constexpr double kFahrenheitOffset = -459.67;

enum class LoneTemperature { kNone, kCelsius, kFahrenheit };

// A unit is read by recursive descent. What runs through all levels is kept here; `div_flag`
// belongs to one level and is an argument. A routine finds `err` empty on entry and returns false
// with the cursor where it found it.
class UnitReader {
 public:
  UnitReader(Units& units, Cursor& expptr, TextBuf& err)
      : units_(units), expptr_(expptr), err_(err) {}

  bool is_unit_expression(UnitDef& unit, bool nested);

 private:
  bool is_unit_mult(UnitDef& unit, bool& div_flag);
  bool is_more_unit_mult_or_null(UnitDef& unit, bool& div_flag);
  bool is_exponentiated_base_unit_paren_or_null(UnitDef& unit);
  bool is_simple_unit(UnitDef& unit);
  bool is_parenthesis(UnitDef& unit);
  bool is_closed_expression(UnitDef& unit);
  double get_unit_exponent(std::string_view name);
  bool is_unit_exponent(double& result, std::string_view name);
  bool is_unit_exponent_here(double& result, std::string_view name);
  bool is_exponent_parenthesis(double& result, std::string_view name);
  bool is_operated_exponent(char operation, double& result, std::string_view name);
  void note_temperature();
  void apply_temperature_offset(UnitDef& unit, bool nested, bool div_flag) const;
  bool fail(std::string_view message) {
    err_.append_text(message);
    return false;
  }

  bool overflow(const Cursor& here) {
    expptr_ = here;
    return fail("ERROR:  Numerical over or underflow.\n");
  }

  Units& units_;
  Cursor& expptr_;
  TextBuf& err_;
  int count_ = 0;  // base units read so far, parentheses included
  LoneTemperature temperature_ = LoneTemperature::kNone;
  const char* reach_ = nullptr;  // the furthest "(" that was opened
};

// A "/" with nothing behind it.
bool is_unfinished_quotient(Cursor expptr) {
  skip_blanks_and_comments(expptr);
  if (!accept_char('/', expptr)) return false;
  skip_blanks_and_comments(expptr);
  return is_end_of_statement(expptr);
}

void multiply(UnitDef& unit, const UnitDef& factor) {
  unit.w0 *= factor.w0;
  for (std::size_t i = 0; i < kSlotCount; ++i) unit.exps[i] += factor.exps[i];
}

void divide(UnitDef& unit, const UnitDef& factor) {
  unit.w0 /= factor.w0;
  for (std::size_t i = 0; i < kSlotCount; ++i) unit.exps[i] -= factor.exps[i];
}

UnitDef empty_unit() {
  UnitDef unit;
  unit.w0 = 1.0;
  return unit;
}

bool UnitReader::is_unit_expression(UnitDef& unit, bool nested) {
  if (is_unfinished_quotient(expptr_)) return fail("ERROR: Math expression incomplete.\n");
  Backtrack back(expptr_);
  unit = empty_unit();
  bool div_flag = false;
  skip_blanks_and_comments(expptr_);
  if (!nested && accept_char('*', expptr_)) skip_blanks_and_comments(expptr_);

  const bool complete = is_unit_mult(unit, div_flag) && is_more_unit_mult_or_null(unit, div_flag) &&
                        err_.is_empty_text();
  apply_temperature_offset(unit, nested, div_flag);
  // The units that were read stand, and so does the error of the factor behind them.
  return (complete || count_ > 0) && back.accept();
}

// A temperature has its offset only as the one unit of the whole expression.
void UnitReader::apply_temperature_offset(UnitDef& unit, bool nested, bool div_flag) const {
  unit.offset = 0.0;
  if (nested || count_ != 1 || div_flag) return;
  if (temperature_ == LoneTemperature::kCelsius) unit.offset = kCelsiusOffset;
  if (temperature_ == LoneTemperature::kFahrenheit) unit.offset = kFahrenheitOffset;
}

bool UnitReader::is_unit_mult(UnitDef& unit, bool& div_flag) {
  Backtrack back(expptr_);
  skip_blanks_and_comments(expptr_);
  // An operator in the place of a factor is an empty factor.
  if (accept_char('*', expptr_)) {
    skip_blanks_and_comments(expptr_);
    return back.accept();
  }
  if (accept_char('/', expptr_)) {
    div_flag = true;
    skip_blanks_and_comments(expptr_);
    return back.accept();
  }
  return is_exponentiated_base_unit_paren_or_null(unit) && err_.is_empty_text() && back.accept();
}

bool UnitReader::is_more_unit_mult_or_null(UnitDef& unit, bool& div_flag) {
  for (;;) {
    const Cursor here = expptr_;
    skip_blanks_and_comments(expptr_);
    if (is_end_of_statement(expptr_)) return true;

    UnitDef factor = empty_unit();
    const bool times = accept_char('*', expptr_);
    const bool over = !times && accept_char('/', expptr_);
    if (!is_unit_mult(factor, div_flag)) {
      expptr_ = here;
      // The operator belongs to the arithmetic around the units, as in `5 m * 3`.
      return times || over;
    }
    if (over && factor.w0 == 0.0) return overflow(here);
    // After a "/" every factor of this level divides, "*" or not: rendered text such as
    // "kg m / s^2 degK" must read back as it was meant.
    if (over) div_flag = true;
    if (div_flag) {
      divide(unit, factor);
    } else {
      multiply(unit, factor);
    }
    if (is_bad_double(unit.w0)) return overflow(here);
  }
}

bool UnitReader::is_exponentiated_base_unit_paren_or_null(UnitDef& unit) {
  Backtrack back(expptr_);
  skip_blanks_and_comments(expptr_);
  if (is_end_of_statement(expptr_)) return back.accept();
  const bool read = expptr_.peek() == '(' ? is_parenthesis(unit) : is_simple_unit(unit);
  return read && back.accept();
}

bool UnitReader::is_parenthesis(UnitDef& unit) {
  const char* const opening = expptr_.position;
  if (const FailedParentheses::Failure* known = units_.failed_parentheses.find(opening)) {
    if (known->had_units) ++count_;
    return fail(units_.failed_parentheses.message(*known));
  }
  const int count_before = count_;
  reach_ = std::max(reach_, opening);
  UnitDef inner;
  const bool closed =
      units_.stack.is_low()
          ? units_.stack.call_on_fresh_stack([this, &inner] { return is_closed_expression(inner); })
          : is_closed_expression(inner);
  if (!closed) {
    units_.failed_parentheses.note(opening, reach_, err_.text(), count_ != count_before);
    return false;
  }
  unit.w0 = inner.w0;
  unit.exps = inner.exps;
  return true;
}

// No exponent is read behind the ")": `(m/s)^2` is not one unit expression.
bool UnitReader::is_closed_expression(UnitDef& unit) {
  const int count_before = count_;
  expptr_.step();
  // Without a unit inside, the parenthesis is arithmetic.
  if (!is_unit_expression(unit, true) || count_ == count_before) return false;
  if (!err_.is_empty_text()) return false;
  skip_blanks_and_comments(expptr_);
  return accept_char(')', expptr_) || fail("ERROR:  Bad parenthesis.\n");
}

// degC and degF are known by their names, the dictionary having no offsets.
void UnitReader::note_temperature() {
  Cursor ahead = expptr_;
  if (accept_keyword("degC", ahead)) {
    temperature_ = LoneTemperature::kCelsius;
  } else if (accept_keyword("degF", ahead)) {
    temperature_ = LoneTemperature::kFahrenheit;
  }
}

bool UnitReader::is_simple_unit(UnitDef& unit) {
  note_temperature();
  const Cursor first = expptr_;
  DimValue record;
  if (!is_unit(units_, expptr_, record)) return false;
  const double exponent = get_unit_exponent(first.until(expptr_));
  if (!err_.is_empty_text()) return false;

  ++count_;
  // x to the power 1 is x to the last bit, and nearly every unit comes without an exponent.
  const double scale = exponent == 1.0 ? record.comp[0] : std::pow(record.comp[0], exponent);
  unit.w0 = scale * unit.w0;
  for (std::size_t i = 0; i < kSlotCount; ++i) unit.exps[i] += record.exps[i] * exponent;
  return !is_bad_double(unit.w0) || overflow(first);
}

// The exponent behind a unit's name, 1.0 if there is none; or a message, and 1.0.
double UnitReader::get_unit_exponent(std::string_view name) {
  Backtrack back(expptr_);
  skip_blanks_and_comments(expptr_);
  if (is_end_of_statement(expptr_)) {
    back.accept();
    return 1.0;
  }
  if (!accept_char('^', expptr_)) return 1.0;
  back.accept();
  double exponent = 1.0;
  if (is_unit_exponent(exponent, name) && err_.is_empty_text()) return exponent;
  if (err_.is_empty_text()) fail("ERROR: Bad units exponent.\n");
  return 1.0;
}

bool UnitReader::is_unit_exponent(double& result, std::string_view name) {
  result = 1.0;
  if (!err_.is_empty_text()) return false;
  if (units_.stack.is_low()) {
    return units_.stack.call_on_fresh_stack(
        [this, &result, name] { return is_unit_exponent_here(result, name); });
  }
  return is_unit_exponent_here(result, name);
}

bool UnitReader::is_unit_exponent_here(double& result, std::string_view name) {
  Backtrack back(expptr_);
  skip_blanks_and_comments(expptr_);
  if (is_end_of_statement(expptr_)) return false;
  if (accept_char('(', expptr_)) return is_exponent_parenthesis(result, name) && back.accept();
  double number = 0.0;
  if (scan_number(expptr_, number)) {
    result = number;
    return back.accept();
  }
  for (const char operation : {'*', '/'}) {
    if (accept_char(operation, expptr_)) {
      return is_operated_exponent(operation, result, name) && back.accept();
    }
  }
  err_.append_three("ERROR: Bad exponent for unit '", name, "'.\n");
  return false;
}

// The items of a parenthesis are multiplied: `m^(1/2)` is 1 times 1/2.
bool UnitReader::is_exponent_parenthesis(double& result, std::string_view name) {
  double product = 1.0;
  do {
    double item = 1.0;
    if (!is_unit_exponent(item, name)) {
      if (err_.is_empty_text()) err_.append_three("ERROR: Bad exponent for unit '", name, "'.\n");
      return false;
    }
    product *= item;
    skip_blanks_and_comments(expptr_);
  } while (!accept_char(')', expptr_));
  result = product;
  return true;
}

bool UnitReader::is_operated_exponent(char operation, double& result, std::string_view name) {
  double operand = 1.0;
  if (!is_unit_exponent(operand, name)) {
    // Said on top of what the operand has said.
    err_.append_three("ERROR: Bad exponent for unit '", name, "' following '");
    err_.append_three({&operation, 1}, "'.\n", "");
    return false;
  }
  if (operation == '/' && operand == 0.0) {
    err_.append_three("ERROR: Divide by zero in exponent for unit '", name, "'.\n");
    return false;
  }
  result = operation == '/' ? 1.0 / operand : operand;
  return true;
}

}  // namespace

bool parse_unit_expression(Units& units, Cursor& expptr, UnitDef& unit, TextBuf& err) {
  err.clear_text();
  return UnitReader(units, expptr, err).is_unit_expression(unit, false);
}

bool is_unit(const Units& units, Cursor& expptr, DimValue& record) {
  if (is_end_of_statement(expptr)) return false;
  Backtrack back(expptr);
  skip_blanks_and_comments(expptr);
  lookup_unit_name(units.users, expptr, record);
  return record.comp[0] != 0.0 && back.accept();
}

}  // namespace quantiverse
