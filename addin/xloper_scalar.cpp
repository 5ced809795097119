#include "addin/xloper_scalar.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>
#include <system_error>

#include "addin/host.h"
#include "text/scanner.h"

namespace quantiverse {
namespace {

constexpr std::size_t kNumberText = 31;

struct ErrorText {
  XlError error;
  std::string_view text;
};

constexpr ErrorText kErrorTexts[] = {
    {XlError::kNull, "#NULL!"},       {XlError::kDivisionBy0, "#DIV/0!"},
    {XlError::kValue, "#VALUE!"},     {XlError::kReference, "#REF!"},
    {XlError::kName, "#NAME?"},       {XlError::kNumber, "#NUM!"},
    {XlError::kNotAvailable, "#N/A"},
};

constexpr bool IsWhiteSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// Without the white space around it, and without a plus sign, which from_chars doesn't know.
// Empty if what is left has no chance to be a number.
std::string_view TrimNumber(std::string_view text) {
  while (!text.empty() && IsWhiteSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsWhiteSpace(text.back())) text.remove_suffix(1);
  if (text.empty()) return {};
  // A minus sign would do once the plus sign is gone, and both do in a hexadecimal exponent.
  if (text.find("+-") != std::string_view::npos) return {};
  if (text.front() == '+') text.remove_prefix(1);
  return text;
}

template <typename Number, typename... Format>
bool ParseWhole(std::string_view text, Number& result, Format... format) {
  const char* const end = text.data() + text.size();
  Number value{};
  const std::from_chars_result read = std::from_chars(text.data(), end, value, format...);
  if (read.ec != std::errc() || read.ptr != end) return false;
  result = value;
  return true;
}

bool ParseDouble(std::string_view text, double& result) {
  text = TrimNumber(text);
  std::string_view digits = text;
  const bool negative = digits.starts_with('-');
  if (negative) digits.remove_prefix(1);
  if (!digits.starts_with("0x") && !digits.starts_with("0X")) {
    return ParseWhole(text, result, std::chars_format::general);
  }
  digits.remove_prefix(2);
  // Here from_chars takes a sign, infinity and NaN as well.
  if (digits.find_first_of("0123456789abcdefABCDEF.") != 0) return false;
  if (!ParseWhole(digits, result, std::chars_format::hex)) return false;
  if (negative) result = -result;
  return true;
}

bool TruncateDouble(double number, std::int32_t& result) {
  using Limits = std::numeric_limits<std::int32_t>;
  const double whole = std::trunc(number);
  if (!(whole >= Limits::min() && whole <= Limits::max())) return false;
  result = static_cast<std::int32_t>(whole);
  return true;
}

bool ParseText(std::string_view text, double& result) { return ParseDouble(text, result); }

bool ParseText(std::string_view text, std::int32_t& result) {
  if (ParseWhole(TrimNumber(text), result)) return true;
  double number = 0.0;
  return ParseDouble(text, number) && TruncateDouble(number, result);
}

bool ParseText(std::string_view text, bool& result) {
  double number = 0.0;
  result = equal_nocase(text, "true");
  if (result || equal_nocase(text, "false")) return true;
  if (!ParseDouble(text, number)) return false;
  result = number != 0.0;
  return true;
}

bool FromNumber(double number, double& result) {
  result = number;
  return true;
}
bool FromNumber(double number, bool& result) {
  result = number != 0.0;
  return true;
}
bool FromNumber(double number, std::int32_t& result) { return TruncateDouble(number, result); }

std::string Narrowed(std::string_view text) { return std::string(text); }
std::string Narrowed(std::u16string_view text) { return NarrowText(text); }

std::string NumberText(double number) {
  if (std::isnan(number)) return "nan";  // the sign is an accident
  std::array<char, std::numeric_limits<double>::max_exponent10 + 16> digits{};
  const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                     std::chars_format::fixed, 6);
  return std::string(digits.data(), written.ptr).substr(0, kNumberText);
}

template <XlRecord Record, typename Plain>
bool ScalarToPlain(const Record& record, Plain& result) {
  result = Plain{};
  switch (TypeOf(record)) {
    case xltypeNum:
      return FromNumber(record.val.num, result);
    case xltypeBool:
      result = static_cast<Plain>(record.val.xbool != 0);
      return true;
    case xltypeInt:
      return FromNumber(record.val.w, result);
    case xltypeStr:
      return ParseText(Narrowed(TextOf(record)), result);
    default:
      return false;
  }
}

}  // namespace

template <XlRecord Record>
bool ToPlain(const Record& record, double& result) {
  return ScalarToPlain(record, result);
}

template <XlRecord Record>
bool ToPlain(const Record& record, bool& result) {
  return ScalarToPlain(record, result);
}

template <XlRecord Record>
bool ToPlain(const Record& record, std::int32_t& result) {
  return ScalarToPlain(record, result);
}

template <XlRecord Record>
bool ToPlain(const Record& record, std::string& result) {
  result.clear();
  switch (TypeOf(record)) {
    case xltypeNum:
      result = NumberText(record.val.num);
      return true;
    case xltypeBool:
      result = record.val.xbool != 0 ? "TRUE" : "FALSE";
      return true;
    case xltypeInt:
      result = std::to_string(record.val.w);
      return true;
    case xltypeStr:
      result = Narrowed(TextOf(record));
      return true;
    case xltypeErr:
      for (const ErrorText& row : kErrorTexts) {
        if (static_cast<int>(row.error) == record.val.err) result = row.text;
      }
      return !result.empty();
    default:
      return false;
  }
}

template <XlRecord Record>
bool ToPlain(const Record& record, std::u16string& result) {
  // A text that is wide already isn't squeezed through the code page.
  if constexpr (std::same_as<Record, XLOPER12>) {
    if (TypeOf(record) == xltypeStr) {
      result = TextOf(record);
      return true;
    }
  }
  std::string narrow;
  const bool converted = ToPlain(record, narrow);
  result = WideText(narrow);
  return converted;
}

template bool ToPlain(const XLOPER&, double&);
template bool ToPlain(const XLOPER12&, double&);
template bool ToPlain(const XLOPER&, bool&);
template bool ToPlain(const XLOPER12&, bool&);
template bool ToPlain(const XLOPER&, std::int32_t&);
template bool ToPlain(const XLOPER12&, std::int32_t&);
template bool ToPlain(const XLOPER&, std::string&);
template bool ToPlain(const XLOPER12&, std::string&);
template bool ToPlain(const XLOPER&, std::u16string&);
template bool ToPlain(const XLOPER12&, std::u16string&);

}  // namespace quantiverse
