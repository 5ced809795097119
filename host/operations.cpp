#include "host/operations.h"

#include <utility>

#include "host/text.h"

namespace quantiverse::host {
namespace {

constexpr int kWindowHandle = 4242;
constexpr int kVersionOfWorkspace = 2;
constexpr int kLocaleOfWorkspace = 37;

Outcome coerce(Host& host, const Arguments& arguments, int) {
  const Value& value = arguments.at(0);
  const double wanted = arguments.is_left_out(1) ? kTypeMask : arguments.number(1).value_or(0.0);
  if (!(wanted >= 0.0 && wanted <= kTypeMask)) return {};
  const auto types = static_cast<unsigned>(wanted);
  const unsigned references = types & (kTypeReference | kTypeSingle);
  if (const auto* reference = value.as<Reference>();
      reference != nullptr && references != 0 && !arguments.is_left_out(1)) {
    const bool is_single =
        references == kTypeSingle || (reference->is_single && references != kTypeReference);
    return success({Reference{reference->area, is_single}});
  }
  const auto plain = host.workbook.without_reference(value);
  if (!plain) return {};
  auto result = coerced(*plain, types);
  return result ? success(std::move(*result)) : Outcome{};
}

Outcome get_name(Host& host, const Arguments&, int) { return success({host.options.file}); }

Outcome get_window(Host&, const Arguments&, int) { return success({Integer{kWindowHandle}}); }

Outcome info(Host& host, const Arguments& arguments, int) {
  const auto* what = arguments.at(0).as<std::string>();
  if (what == nullptr || !equal_ignoring_case(*what, "Release")) return {};
  return success({host.options.release});
}

Outcome get_workspace(Host& host, const Arguments& arguments, int) {
  const auto number = arguments.number(0);
  if (number == kVersionOfWorkspace) {
    return success({std::to_string(host.options.version) + ".0"});
  }
  if (number != kLocaleOfWorkspace) return {};
  return success({Array(1, static_cast<int>(host.workspace.size()), host.workspace)});
}

// Screen updating, workbooks and the function wizard: nothing here shows them.
Outcome nothing_to_show(Host&, const Arguments&, int) { return success({true}); }

// There are no servers of real-time data.
Outcome no_server(Host&, const Arguments&, int) { return success({Error{kErrorNotAvailable}}); }

constexpr bool kConstant = true;

// clang-format off
constexpr Operation kOperations[] = {
    {kFreeOperation, "xlFree",            nullptr},
    {16386,          "xlCoerce",          coerce},
    {16393,          "xlGetName",         get_name, kConstant},
    {16392,          "xlGetHwnd",         get_window},
    {244,            "xlfInfo",           info, kConstant},
    {186,            "xlfGetWorkspace",   get_workspace},
    {94,             "xlfActiveCell",     active_cell},
    {106,            "xlfGetFormula",     get_formula},
    {185,            "xlfGetCell",        get_cell},
    {241,            "xlfFormulaConvert", convert_formula},
    {32864,          "xlcFormula",        write_formula},
    {32866,          "xlcFormulaArray",   write_array_formula},
    {32886,          "xlcAlert",          show_alert},
    {33218,          "xlcFunctionWizard", nothing_to_show},
    {149,            "xlfRegister",       register_function},
    {201,            "xlfUnregister",     unregister_function},
    {88,             "xlfSetName",        set_name},
    {152,            "xlfAddMenu",        add_menu},
    {153,            "xlfAddCommand",     add_command},
    {158,            "xlfDeleteMenu",     delete_menu},
    {32909,          "xlcEcho",           nothing_to_show},
    {32887,          "xlcNew",            nothing_to_show},
    {32784,          "xlcClose",          nothing_to_show},
    {379,            "xlfRtd",            no_server},
};
// clang-format on

}  // namespace

const Value& Arguments::at(std::size_t index) const {
  static const Value missing{Missing{}};
  return index < values_.size() ? values_[index] : missing;
}

std::optional<double> Arguments::number(std::size_t index) const {
  if (at(index).is<Reference>()) return std::nullopt;
  const auto value = coerced(at(index), kTypeNumber);
  return value ? plain_number(*value) : std::nullopt;
}

std::optional<std::string> Arguments::text(std::size_t index) const {
  if (const auto* text = at(index).as<std::string>()) return *text;
  if (at(index).is<Reference>()) return std::nullopt;
  const auto value = coerced(at(index), kTypeText);
  return value ? std::optional(*value->as<std::string>()) : std::nullopt;
}

std::optional<Area> Arguments::area(std::size_t index) const {
  const auto* reference = at(index).as<Reference>();
  return reference != nullptr ? std::optional(reference->area) : std::nullopt;
}

const Operation* find_operation(int code) {
  for (const auto& operation : kOperations) {
    if (operation.code == code) return &operation;
  }
  return nullptr;
}

const Operation* find_operation(std::string_view name) {
  for (const auto& operation : kOperations) {
    if (operation.name == name) return &operation;
  }
  return nullptr;
}

std::string operation_name(int code) {
  const Operation* const operation = find_operation(code);
  return operation != nullptr ? std::string(operation->name) : std::to_string(code);
}

}  // namespace quantiverse::host
