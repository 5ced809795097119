#pragma once

#include <bit>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

// What travels between Excel and an add-in, free of either generation's records.
namespace quantiverse::host {

// Rows and columns count from 0; both ends belong to the area.
struct Area {
  int first_row = 0;
  int first_column = 0;
  int last_row = 0;
  int last_column = 0;

  bool operator==(const Area&) const = default;
  [[nodiscard]] int rows() const { return last_row - first_row + 1; }
  [[nodiscard]] int columns() const { return last_column - first_column + 1; }
  [[nodiscard]] std::int64_t size() const { return std::int64_t{rows()} * columns(); }
  [[nodiscard]] bool holds(const Area& other) const {
    return first_row <= other.first_row && other.last_row <= last_row &&
           first_column <= other.first_column && other.last_column <= last_column;
  }
  [[nodiscard]] bool meets(const Area& other) const {
    return first_row <= other.last_row && other.first_row <= last_row &&
           first_column <= other.last_column && other.first_column <= last_column;
  }
};

struct Nil {
  bool operator==(const Nil&) const = default;
};
struct Missing {
  bool operator==(const Missing&) const = default;
};
// Equal by bits: a NaN is the same as itself.
struct Number {
  double value = 0.0;
  bool operator==(const Number& other) const {
    return std::bit_cast<std::uint64_t>(value) == std::bit_cast<std::uint64_t>(other.value);
  }
};
struct Integer {
  std::int32_t value = 0;
  bool operator==(const Integer&) const = default;
};
struct Error {
  int code = 0;
  bool operator==(const Error&) const = default;
};
struct Reference {
  Area area;
  bool is_single = true;  // on the current sheet, as opposed to any
  bool operator==(const Reference&) const = default;
};

struct Value;

// Never empty, and its elements are neither arrays nor references.
struct Array {
  int rows = 0;
  int columns = 0;
  std::vector<Value> elements;  // row by row

  Array() = default;
  Array(int row_count, int column_count, std::vector<Value> row_by_row);
  bool operator==(const Array& other) const;
  [[nodiscard]] const Value& at(int row, int column) const;
};

struct Value {
  std::variant<Nil, Missing, Number, Integer, bool, Error, std::string, Reference, Array> held;

  bool operator==(const Value& other) const { return held == other.held; }
  template <class Kind>
  [[nodiscard]] const Kind* as() const {
    return std::get_if<Kind>(&held);
  }
  template <class Kind>
  [[nodiscard]] bool is() const {
    return std::holds_alternative<Kind>(held);
  }
};

// An array is never larger than this: what the newer generation's column can hold.
inline constexpr std::int64_t kMostElements = 1048576;
// So many formulas may be written at once: each is looked at beside each of the others.
inline constexpr std::int64_t kMostFormulas = 1000;

// The text of an error value, such as "#N/A"; empty for a code that has none.
std::string_view error_text(int code);

// As the cell editor shows a constant.
std::string constant_text(const Value& value);
// What typing `text` into a cell makes of it: a number, TRUE or FALSE, an error or a text; nil for
// an empty one.
Value typed_value(const std::string& text);

// The first element of an array; any other value is itself.
const Value& first_element(const Value& value);

// Excel's own conversion to one of the types of the mask `types`, a mask of record types.
// A value that is of such a type already stays as it is. Nothing if there is no way.
// REQUIRES: `value` holds no reference.
std::optional<Value> coerced(const Value& value, unsigned types);

// A number, a bool or an integer, as a number.
std::optional<double> plain_number(const Value& value);

}  // namespace quantiverse::host
