#include "host/call.h"

#include <utility>

namespace quantiverse::host {
namespace {

using FreeEntry = void XLHOST_PASCAL(void* record);

template <class Form>
bool copy_and_free(Host& host, const Callee& callee, void* pointer, Returned& returned) {
  auto* const record = static_cast<Record<Form>*>(pointer);
  const bool is_readable = read_record(*record, returned.value);
  returned.is_freed = false;
  if ((record->type & kExcelFrees) != 0) {
    host.ledger.take_back(*record);
  } else if ((record->type & kAddInFrees) != 0 && callee.free_entry != nullptr) {
    reinterpret_cast<FreeEntry*>(callee.free_entry)(record);
    returned.is_freed = true;
  }
  return is_readable;
}

}  // namespace

std::optional<Callee> find_callee(const Host& host, const char* name, Letter result) {
  void* const address = host.library.find(name);
  if (address == nullptr) return std::nullopt;
  const char* const free_name = result == Letter::kRecord4 ? "xlAutoFree" : "xlAutoFree12";
  return Callee{address, host.library.find(free_name), result};
}

bool call_add_in(Host& host, const Callee& callee, std::span<const Slot> slots,
                 Returned& returned) {
  void* const record = invoke(callee.address, slots);
  if (record == nullptr) return false;
  return callee.result == Letter::kRecord4 ? copy_and_free<Form4>(host, callee, record, returned)
                                           : copy_and_free<Form12>(host, callee, record, returned);
}

std::optional<Returned> call_add_in(Host& host, const Callee& callee, std::span<const Slot> slots) {
  std::optional<Returned> returned(std::in_place);
  if (!call_add_in(host, callee, slots, *returned)) returned.reset();
  return returned;
}

bool prepare(const Host& host, const Signature& signature, const std::vector<Argument>& arguments,
             PreparedArguments& prepared) {
  static const Argument left_out;
  for (std::size_t i = 0; i < signature.arguments.size(); ++i) {
    const Argument& given = i < arguments.size() ? arguments[i] : left_out;
    if (!given.value.is<Reference>()) {
      if (!prepared.add(signature.arguments[i], given)) return false;
      continue;
    }
    auto value = host.workbook.without_reference(given.value);
    if (!value || !prepared.add(signature.arguments[i], {std::move(*value)})) return false;
  }
  return true;
}

Value evaluate(Host& host, const FormulaCall& call) {
  const Registration* const found = host.registry.find(call.function, MacroType::kFunction);
  if (found == nullptr || !found->signature ||
      call.arguments.size() > found->signature->arguments.size()) {
    return {Error{kErrorName}};
  }
  const auto callee = find_callee(host, found->export_name.c_str(), found->signature->result);
  if (!callee) return {Error{kErrorName}};
  std::vector<Argument> arguments;
  for (const Value& value : call.arguments) arguments.push_back({value});
  PreparedArguments prepared;
  if (!prepare(host, *found->signature, arguments, prepared)) return {Error{kErrorValue}};
  const auto returned = call_add_in(host, *callee, prepared.slots());
  return returned ? returned->value : Value{Error{kErrorValue}};
}

}  // namespace quantiverse::host
