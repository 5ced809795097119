#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "host/commands.h"
#include "host/operations.h"
#include "host/text.h"

// Commands that look at the host, and tell it how to behave.
namespace quantiverse::host {
namespace {

bool flag_of(const Json& json) {
  if (!json.is_boolean()) throw BadCommand("an answer is true or false");
  return json.get<bool>();
}

Json list_of(const std::vector<Value>& values) {
  Json list = Json::array();
  for (const Value& value : values) list.push_back(to_json(value));
  return list;
}

// The code of an operation that a script names, "*" standing for any.
int operation_code(const Json& json) {
  const std::string name = text_of(json, "the name of an operation");
  if (name == "*") return kAnyOperation;
  if (const Operation* const operation = find_operation(name)) return operation->code;
  const auto number = parse_number(name);
  const bool is_code = number && *number >= 0 && *number <= std::numeric_limits<int>::max() &&
                       std::to_string(static_cast<int>(*number)) == name;
  if (!is_code) throw BadCommand("there is no operation " + name);
  return static_cast<int>(*number);
}

Json set_override(Host& host, const Json& arguments, int code, std::optional<Value> value) {
  host.overrides[operation_code(arguments[0])] = {whole_number(arguments[1], 0), code,
                                                  std::move(value)};
  return ok();
}

const char* entry_name(EntryPoint entry) {
  constexpr const char* kNames[] = {"Excel4", "Excel4v", "MdCallBack12"};
  return kNames[static_cast<int>(entry)];
}

}  // namespace

Json queue_answer(Host& host, const Json& arguments) {
  host.dialogs.answers.push_back(flag_of(arguments[0]));
  return ok();
}

Json alerts(Host& host, const Json&) {
  return {{"alerts", std::exchange(host.dialogs.shown, Json::array())}};
}

Json registered(Host& host, const Json&) {
  Json list = Json::array();
  for (const auto& row : host.registry.registrations()) {
    list.push_back({{"id", row.id}, {"form", row.form}, {"values", list_of(row.values)}});
  }
  return {{"registered", std::move(list)}};
}

Json names(Host& host, const Json&) { return {{"names", host.registry.names()}}; }

Json menus(Host& host, const Json&) {
  Json list = Json::array();
  for (const auto& menu : host.menus.menus) {
    Json rows = Json::array();
    for (const auto& row : menu.rows) rows.push_back(list_of(row));
    list.push_back({{"bar", to_json(menu.bar)},
                    {"position", to_json(menu.position)},
                    {"table", std::move(rows)}});
  }
  return {{"menus", std::move(list)}};
}

Json calls(Host& host, const Json&) {
  Json list = Json::array();
  for (const auto& call : host.calls.take()) {
    const Json entry = {{"name", operation_name(call.request.function)},
                        {"entry", entry_name(call.request.entry)},
                        {"intl", call.request.is_intl},
                        {"args", list_of(call.arguments)},
                        {"code", call.code}};
    for (std::int64_t i = 0; i < call.times; ++i) list.push_back(entry);
  }
  return {{"calls", std::move(list)}};
}

Json fail(Host& host, const Json& arguments) {
  const int code = arguments.size() > 2 ? whole_number(arguments[2], 1) : kFailed;
  return set_override(host, arguments, code, std::nullopt);
}

Json reply(Host& host, const Json& arguments) {
  return set_override(host, arguments, kSuccess, from_json(arguments[2], host.sheet()));
}

Json workspace(Host& host, const Json& arguments) {
  const Json& list = arguments[0];
  std::vector<Value> values = default_workspace();
  if (!list.is_null()) {
    if (!list.is_array() || list.empty()) throw BadCommand("a workspace is a list of values");
    values.clear();
    for (const auto& json : list) {
      values.push_back(from_json(json, host.sheet()));
      if (values.back().is<Array>() || values.back().is<Reference>()) {
        throw BadCommand("a value of the workspace is neither array nor reference");
      }
    }
  }
  host.workspace = std::move(values);
  return ok();
}

Json ledger(Host& host, const Json&) {
  return {{"out", host.ledger.handed_out()}, {"returned", host.ledger.returned()}};
}

}  // namespace quantiverse::host
