#include "host/formula.h"

#include <cstddef>
#include <utility>

#include "host/text.h"

namespace quantiverse::host {
namespace {

bool is_name(std::string_view text) {
  if (text.empty() || (text.front() >= '0' && text.front() <= '9')) return false;
  for (const char c : text) {
    const bool is_sign = static_cast<unsigned char>(c) < 0x80 && !(c >= '0' && c <= '9') &&
                         !(c >= 'A' && c <= 'Z') && !(c >= 'a' && c <= 'z');
    if (is_sign && c != '_' && c != '.') return false;
  }
  return true;
}

// Where the argument at the front of `text` ends: at a comma outside of double quotes.
std::size_t end_of_argument(std::string_view text) {
  bool is_quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') is_quoted = !is_quoted;
    if (text[i] == ',' && !is_quoted) return i;
  }
  return text.size();
}

// A text in double quotes, a quote inside doubled.
std::optional<Value> quoted_text(std::string_view text) {
  if (text.size() < 2 || text.back() != '"') return std::nullopt;
  text = text.substr(1, text.size() - 2);
  std::string inside;
  for (std::size_t i = 0; i < text.size(); ++i) {
    inside += text[i];
    if (text[i] != '"') continue;
    if (i + 1 == text.size() || text[i + 1] != '"') return std::nullopt;
    ++i;
  }
  return Value{inside};
}

std::optional<Value> parse_argument(std::string_view text, const Sheet& sheet) {
  text = trimmed(text);
  if (text.starts_with('"')) return quoted_text(text);
  if (const auto area = sheet.area_of(text, true)) return Value{Reference{*area}};
  Value constant = typed_value(std::string(text));
  if (constant.is<std::string>()) return std::nullopt;
  return constant;
}

}  // namespace

std::optional<FormulaCall> parse_call(std::string_view formula, const Sheet& sheet) {
  formula = trimmed(formula);
  if (!formula.starts_with('=') || !formula.ends_with(')')) return std::nullopt;
  const std::size_t open = formula.find('(');
  if (open == std::string_view::npos) return std::nullopt;
  FormulaCall call;
  call.function = trimmed(formula.substr(1, open - 1));
  if (!is_name(call.function)) return std::nullopt;

  std::string_view rest = formula.substr(open + 1, formula.size() - open - 2);
  if (trimmed(rest).empty()) return call;
  while (true) {
    const std::size_t end = end_of_argument(rest);
    auto argument = parse_argument(rest.substr(0, end), sheet);
    if (!argument) return std::nullopt;
    call.arguments.push_back(std::move(*argument));
    if (end == rest.size()) return call;
    rest.remove_prefix(end + 1);
  }
}

}  // namespace quantiverse::host
