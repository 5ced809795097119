#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "host/host.h"

// What an add-in may ask of Excel.
namespace quantiverse::host {

// The arguments of a call. One that isn't there is missing.
class Arguments {
 public:
  explicit Arguments(std::span<const Value> values) : values_(values) {}

  [[nodiscard]] std::size_t size() const { return values_.size(); }
  [[nodiscard]] const Value& at(std::size_t index) const;
  [[nodiscard]] bool is_left_out(std::size_t index) const { return at(index).is<Missing>(); }
  // Nothing for what doesn't convert.
  [[nodiscard]] std::optional<double> number(std::size_t index) const;
  [[nodiscard]] std::optional<std::string> text(std::size_t index) const;
  [[nodiscard]] std::optional<Area> area(std::size_t index) const;

 private:
  std::span<const Value> values_;
};

// What an operation comes back with; the value counts if the code is 0.
struct Outcome {
  int code = kFailed;
  Value value = {};
};
inline Outcome success(Value value) { return {kSuccess, std::move(value)}; }

// form: the generation of the entry that it came through, 4 or 12.
using Handler = Outcome(Host& host, const Arguments& arguments, int form);

struct Operation {
  int code;
  std::string_view name;
  Handler* handler;  // null for xlFree, which works on the records themselves
  // It answers from what nothing changes.
  bool is_constant = false;
};

inline constexpr int kFreeOperation = 16384;

// Null if it isn't known.
const Operation* find_operation(int code);
const Operation* find_operation(std::string_view name);
// Its name, or its code in decimal.
std::string operation_name(int code);

// The operations, by what they work on.
Handler get_formula, get_cell, convert_formula, write_formula, write_array_formula, active_cell;
Handler register_function, unregister_function, set_name;
Handler add_menu, add_command, delete_menu, show_alert;

}  // namespace quantiverse::host
