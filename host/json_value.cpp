#include "host/json_value.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace quantiverse::host {
namespace {

constexpr int kMostErrorCode = 65535;

Json rows_to_json(const Array& array) {
  Json rows = Json::array();
  for (int r = 0; r < array.rows; ++r) {
    Json row = Json::array();
    for (int c = 0; c < array.columns; ++c) row.push_back(to_json(array.at(r, c)));
    rows.push_back(std::move(row));
  }
  return rows;
}

struct ToJson {
  Json operator()(Nil) const { return nullptr; }
  Json operator()(Missing) const { return {{"missing", true}}; }
  Json operator()(Number number) const { return number_to_json(number.value); }
  Json operator()(Integer integer) const { return {{"int", integer.value}}; }
  Json operator()(bool flag) const { return flag; }
  Json operator()(Error error) const { return {{"error", error.code}}; }
  Json operator()(const std::string& text) const { return text; }
  Json operator()(const Reference& reference) const { return {{"ref", area_text(reference.area)}}; }
  Json operator()(const Array& array) const { return rows_to_json(array); }
};

double special_number(const Json& json) {
  if (json == "inf") return std::numeric_limits<double>::infinity();
  if (json == "-inf") return -std::numeric_limits<double>::infinity();
  if (json == "nan") return std::numeric_limits<double>::quiet_NaN();
  throw BadCommand(R"(a number is "inf", "-inf" or "nan")");
}

Value reference_of(const Json& json, const Sheet& sheet) {
  const auto area = json.is_string() ? sheet.area_of(json.get<std::string>()) : std::nullopt;
  if (!area) throw BadCommand("not a reference");
  return {Reference{*area}};
}

Value from_object(const Json& json, const Sheet& sheet) {
  if (json.size() == 1) {
    const auto& key = json.begin().key();
    const Json& held = *json.begin();
    if (key == "int") return {Integer{whole_number(held)}};
    if (key == "error") return {Error{whole_number(held, 0, kMostErrorCode)}};
    if (key == "number") return {Number{special_number(held)}};
    if (key == "missing" && held == true) return {Missing{}};
    if (key == "ref") return reference_of(held, sheet);
  }
  throw BadCommand("not a value");
}

Value from_rows(const Json& json, const Sheet& sheet) {
  const std::size_t rows = json.size();
  const std::size_t columns = rows > 0 && json.front().is_array() ? json.front().size() : 0;
  if (columns == 0) throw BadCommand("an array is a list of rows, none of them empty");
  if (rows * columns > static_cast<std::size_t>(kMostElements)) {
    throw BadCommand("the array is too large");
  }
  std::vector<Value> elements;
  elements.reserve(rows * columns);
  for (const auto& row : json) {
    if (!row.is_array() || row.size() != columns) {
      throw BadCommand("the rows of an array are lists of one length");
    }
    for (const auto& element : row) {
      if (element.is_array()) throw BadCommand("an element of an array is no array");
      elements.push_back(from_json(element, sheet));
      if (elements.back().is<Reference>()) throw BadCommand("an element is no reference");
    }
  }
  return {Array(static_cast<int>(rows), static_cast<int>(columns), std::move(elements))};
}

}  // namespace

int whole_number(const Json& json, int least, int most) {
  const bool is_within =
      json.is_number_integer() && json.get<double>() >= least && json.get<double>() <= most;
  if (!is_within) {
    throw BadCommand("not a whole number from " + std::to_string(least) + " to " +
                     std::to_string(most));
  }
  return json.get<int>();
}

Json number_to_json(double number) {
  constexpr double kExact = 1e15;
  if (std::isnan(number)) return {{"number", "nan"}};
  if (std::isinf(number)) return {{"number", number > 0.0 ? "inf" : "-inf"}};
  const bool is_whole = std::abs(number) < kExact && std::trunc(number) == number;
  if (is_whole && !(number == 0.0 && std::signbit(number))) {
    return static_cast<std::int64_t>(number);
  }
  return number;
}

Json to_json(const Value& value) { return std::visit(ToJson{}, value.held); }

Value from_json(const Json& json, const Sheet& sheet) {
  switch (json.type()) {
    case Json::value_t::null:
      return {};
    case Json::value_t::boolean:
      return {json.get<bool>()};
    case Json::value_t::string:
      return {json.get<std::string>()};
    case Json::value_t::object:
      return from_object(json, sheet);
    case Json::value_t::array:
      return from_rows(json, sheet);
    default:
      return {Number{json.get<double>()}};
  }
}

std::string written(const Json& json) {
  const std::string compact = json.dump(-1, ' ', false, Json::error_handler_t::replace);
  std::string spaced;
  bool is_text = false;
  for (std::size_t i = 0; i < compact.size(); ++i) {
    const char c = compact[i];
    spaced += c;
    if (is_text && c == '\\') {
      spaced += compact[++i];
    } else if (c == '"') {
      is_text = !is_text;
    } else if (!is_text && (c == ',' || c == ':')) {
      spaced += ' ';
    }
  }
  return spaced;
}

}  // namespace quantiverse::host
