#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/operations.h"

// What add-ins register, put on menus and show.
namespace quantiverse::host {
namespace {

constexpr std::size_t kArgumentsOfRegister = 6;
constexpr double kAlertWithErrorSign = 3.0;
constexpr double kAlertWithOk = 2.0;

std::optional<MacroType> macro_type_of(const Arguments& arguments) {
  const double type = arguments.number(5).value_or(NAN);
  if (type == 0.0) return MacroType::kHidden;
  if (type == 1.0) return MacroType::kFunction;
  if (type == 2.0) return MacroType::kCommand;
  return std::nullopt;
}

// A text beside a bar that names the menu: the last of them that isn't empty.
std::optional<std::string> menu_name(const Arguments& arguments, std::size_t menu,
                                     std::size_t submenu) {
  const auto inner = arguments.text(submenu);
  return inner.value_or("").empty() ? arguments.text(menu) : inner;
}

}  // namespace

Outcome register_function(Host& host, const Arguments& arguments, int form) {
  const auto export_name = arguments.text(1);
  const auto type_text = arguments.text(2);
  const auto function_text = arguments.text(3);
  const auto macro_type = macro_type_of(arguments);
  if (arguments.size() < kArgumentsOfRegister || !export_name || !type_text || !function_text ||
      !macro_type) {
    return {};
  }
  // Excel calls it a success, and answers with an error.
  if (host.library.find(export_name->c_str()) == nullptr) return success({Error{kErrorValue}});
  Registration registration;
  registration.form = form;
  registration.export_name = *export_name;
  registration.function_text = *function_text;
  registration.macro_type = *macro_type;
  registration.signature = read_type_text(*type_text);
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    registration.values.push_back(arguments.at(i));
  }
  return success({Number{static_cast<double>(host.registry.add(std::move(registration)))}});
}

Outcome unregister_function(Host& host, const Arguments& arguments, int) {
  const auto id = arguments.number(0);
  if (!id) return {};
  const bool is_id = std::abs(*id) <= 1e9;
  return success({is_id && host.registry.remove(static_cast<int>(*id))});
}

Outcome set_name(Host& host, const Arguments& arguments, int) {
  const auto name = arguments.text(0);
  if (!name || arguments.size() != 1) return {};  // to define one is not for add-ins
  return success({host.registry.remove_name(*name)});
}

Outcome add_menu(Host& host, const Arguments& arguments, int) {
  const auto* table = arguments.at(1).as<Array>();
  if (table == nullptr) return {};
  const Value position = arguments.is_left_out(2) ? Value{} : arguments.at(2);
  host.menus.menus.push_back({arguments.at(0), position, rows_of(*table)});
  return success({Number{static_cast<double>(host.menus.menus.size())}});
}

Outcome add_command(Host& host, const Arguments& arguments, int) {
  const auto name = menu_name(arguments, 1, 3);
  const auto* table = arguments.at(2).as<Array>();
  Menu* const menu = name ? host.menus.find(arguments.at(0), *name) : nullptr;
  if (menu == nullptr || table == nullptr) return {};
  for (auto& row : rows_of(*table)) menu->rows.push_back(std::move(row));
  return success({Number{static_cast<double>(menu->rows.size() - 1)}});
}

Outcome delete_menu(Host& host, const Arguments& arguments, int) {
  const auto name = menu_name(arguments, 1, 2);
  if (!name || !host.menus.remove(arguments.at(0), *name)) return {};
  return success({true});
}

Outcome show_alert(Host& host, const Arguments& arguments, int) {
  const auto text = arguments.text(0);
  const auto type = arguments.is_left_out(1) ? kAlertWithOk : arguments.number(1);
  if (!text || !type) return {};
  const bool answer = *type == kAlertWithErrorSign || host.dialogs.next_answer();
  host.dialogs.shown.push_back(
      {{"text", *text}, {"type", number_to_json(*type)}, {"answer", answer}});
  return success({answer});
}

}  // namespace quantiverse::host
