#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/reference.h"
#include "host/value.h"

namespace quantiverse::host {

// A formula that is one call of a function.
struct FormulaCall {
  std::string function;
  std::vector<Value> arguments;  // constants and references; nil where one is left out
};

// Reads a formula such as `=Name(1, "text", A1:B2, TRUE)`. Nothing for any other.
std::optional<FormulaCall> parse_call(std::string_view formula, const Sheet& sheet);

}  // namespace quantiverse::host
