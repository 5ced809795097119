#include "accuracy/accuracy.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

#include "text/text_buf.h"

namespace quantiverse::accuracy {
namespace {

// Up to `digits` digits, in scientific notation for an error.
std::string digits_of(double value, int digits, std::chars_format format) {
  char text[64];
  const auto end = std::to_chars(std::begin(text), std::end(text), value, format, digits);
  return {std::begin(text), end.ptr};
}

const FunctionRow& row_of(std::string_view name) {
  return function_rows()[static_cast<std::size_t>(lookup_function_name(name).number - 1)];
}

// Calls `visit` with every pairing of the values on the axes; the last axis runs fastest.
template <typename Visit>
void visit_pairings(const std::vector<std::vector<double>>& axes, const Visit& visit) {
  std::size_t pairings = 1;
  for (const auto& axis : axes) pairings *= axis.size();
  for (std::size_t pairing = 0; pairing < pairings; ++pairing) {
    Arguments x{};
    std::size_t rest = pairing;
    for (std::size_t i = std::min(axes.size(), x.size()); i > 0; --i) {
      x[i - 1] = axes[i - 1][rest % axes[i - 1].size()];
      rest /= axes[i - 1].size();
    }
    visit(x);
  }
}

std::string call_text(const Range& range, const Arguments& x) {
  std::string text = std::string(range.function) + "(";
  for (std::size_t i = 0; i < range.axes.size(); ++i) {
    text += (i == 0 ? "" : ", ") + digits_of(x[i], 6, std::chars_format::general);
  }
  return text + ")";
}

}  // namespace

Measured measure(const Range& range) {
  const Routine routine = row_of(range.function).routine;
  Measured measured;
  TextBuf err;
  visit_pairings(range.axes, [&](const Arguments& x) {
    if (range.only != nullptr && !range.only(x.data())) return;
    ++measured.points;
    const long double value = routine(x.data(), err);
    const long double exact = range.exact(x.data());
    long double error = std::fabs(value - exact);
    if (range.error == Error::kRelative) error /= std::fabs(exact);
    if (std::isnan(measured.largest) || error <= measured.largest) return;  // the first NaN stays
    measured.largest = static_cast<double>(error);
    measured.where = x;
  });
  measured.err = err.text();
  return measured;
}

std::string accuracy_table(std::string& complaints) {
  std::string table =
      "| Function | Range | Largest error | Which is | At |\n"
      "|---|---|---|---|---|\n";
  for (const Range& range : ranges()) {
    const Measured measured = measure(range);
    table += std::string("| `") + range.function + "` | " + range.text + " | " +
             digits_of(measured.largest, 1, std::chars_format::scientific) + " | " +
             (range.error == Error::kAbsolute ? "absolute" : "relative") + " | `" +
             call_text(range, measured.where) + "` |\n";
    if (!std::isfinite(measured.largest) || measured.points == 0 || !measured.err.empty()) {
      complaints += call_text(range, measured.where) + ", " + range.text + ": " +
                    std::to_string(measured.points) + " points. " + measured.err + "\n";
    }
  }
  return table;
}

}  // namespace quantiverse::accuracy
