#include "host/value.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "host/text.h"
#include "host/xlcall.h"

namespace quantiverse::host {
namespace {

struct ErrorRow {
  int code;
  std::string_view text;
};

constexpr ErrorRow kErrors[] = {{0, "#NULL!"},  {7, "#DIV/0!"}, {15, "#VALUE!"}, {23, "#REF!"},
                                {29, "#NAME?"}, {36, "#NUM!"},  {42, "#N/A"}};

unsigned type_of(const Value& value) {
  constexpr unsigned kTypes[] = {kTypeNil,  kTypeMissing, kTypeNumber, kTypeInteger,
                                 kTypeBool, kTypeError,   kTypeText,   kTypeReference | kTypeSingle,
                                 kTypeArray};
  static_assert(std::size(kTypes) == std::variant_size_v<decltype(Value::held)>);
  return kTypes[value.held.index()];
}

std::optional<double> number_of(const Value& value) {
  if (const auto* text = value.as<std::string>()) return parse_number(*text);
  if (value.is<Nil>()) return 0.0;
  return plain_number(value);
}

std::optional<Value> to_integer(const Value& value) {
  const auto number = number_of(value);
  if (!number) return std::nullopt;
  const double whole = std::trunc(*number);
  using Limits = std::numeric_limits<std::int32_t>;
  if (!(whole >= Limits::min() && whole <= Limits::max())) return std::nullopt;
  return Value{Integer{static_cast<std::int32_t>(whole)}};
}

std::optional<Value> to_bool(const Value& value) {
  if (const auto* text = value.as<std::string>()) {
    if (equal_ignoring_case(*text, "TRUE")) return Value{true};
    if (equal_ignoring_case(*text, "FALSE")) return Value{false};
    return std::nullopt;
  }
  const auto number = number_of(value);
  return number ? std::optional(Value{*number != 0.0}) : std::nullopt;
}

std::optional<Value> to_text(const Value& value) {
  if (value.is<Error>() || value.is<Missing>()) return std::nullopt;
  return Value{constant_text(value)};
}

}  // namespace

Array::Array(int row_count, int column_count, std::vector<Value> row_by_row)
    : rows(row_count), columns(column_count), elements(std::move(row_by_row)) {}

bool Array::operator==(const Array& other) const {
  return rows == other.rows && columns == other.columns && elements == other.elements;
}

const Value& Array::at(int row, int column) const {
  return elements[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
                  static_cast<std::size_t>(column)];
}

std::string_view error_text(int code) {
  for (const auto& row : kErrors) {
    if (row.code == code) return row.text;
  }
  return {};
}

std::string constant_text(const Value& value) {
  if (const auto* number = value.as<Number>()) return number_text(number->value);
  if (const auto* integer = value.as<Integer>()) return std::to_string(integer->value);
  if (const auto* flag = value.as<bool>()) return *flag ? "TRUE" : "FALSE";
  if (const auto* error = value.as<Error>()) return std::string(error_text(error->code));
  if (const auto* text = value.as<std::string>()) return *text;
  return {};
}

Value typed_value(const std::string& text) {
  if (text.empty()) return {};
  if (const auto number = parse_number(text)) return {Number{*number}};
  for (const auto& row : kErrors) {
    if (equal_ignoring_case(text, row.text)) return {Error{row.code}};
  }
  return to_bool({text}).value_or(Value{text});
}

const Value& first_element(const Value& value) {
  const auto* array = value.as<Array>();
  return array != nullptr ? array->elements.front() : value;
}

std::optional<Value> coerced(const Value& value, unsigned types) {
  if ((type_of(value) & types) != 0) return value;
  if (value.is<Array>()) return coerced(first_element(value), types);
  const bool is_cell = !value.is<Error>() && !value.is<Missing>();
  if ((types & kTypeNumber) != 0) {
    if (const auto number = number_of(value)) return Value{Number{*number}};
  }
  if ((types & kTypeText) != 0) {
    if (auto text = to_text(value)) return text;
  }
  if ((types & kTypeBool) != 0) {
    if (auto flag = to_bool(value)) return flag;
  }
  if ((types & kTypeInteger) != 0) {
    if (auto integer = to_integer(value)) return integer;
  }
  if ((types & kTypeArray) != 0 && is_cell) return Value{Array(1, 1, {value})};
  return std::nullopt;
}

std::optional<double> plain_number(const Value& value) {
  if (const auto* number = value.as<Number>()) return number->value;
  if (const auto* integer = value.as<Integer>()) return integer->value;
  if (const auto* flag = value.as<bool>()) return *flag ? 1.0 : 0.0;
  return std::nullopt;
}

}  // namespace quantiverse::host
