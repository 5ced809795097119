#include "language/variables.h"

#include <limits>

#include "quantity/unit_dictionary.h"

namespace quantiverse {
namespace {

constexpr std::size_t kFirstEntries = 64;  // a power of two

std::uint32_t hash_of(std::string_view name) {
  std::uint32_t h = 2166136261U;  // FNV-1a, and a mix, since names often differ at their end only
  for (const char c : name) h = (h ^ static_cast<unsigned char>(c)) * 16777619U;
  return h ^ (h >> 15U);
}

DimValue missing() {
  DimValue v;
  v.comp.fill(std::numeric_limits<double>::infinity());
  return v;
}

// An assignment to a variable that a request varies stores what is there already.
void keep_independent_value(const Variable& variable, DimValue& value, int& component) {
  if (!variable.held) return;
  value = variable.value;
  component = 0;
}

// What a new variable holds after an assignment to one of its components.
DimValue first_value(const DimValue& value, int component) {
  if (component == 0) return value;
  DimValue v{true, {}, value.exps};
  v.comp[static_cast<std::size_t>(component - 1)] = value.comp[0];
  return v;
}

}  // namespace

Variables::Entry& Variables::entry_of(std::string_view name, std::uint32_t hash) {
  const std::size_t mask = entries_.size() - 1;
  for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
    Entry& entry = entries_[slot];
    if (entry.index == 0) return entry;
    if (entry.hash == hash && records_[entry.index - 1].name == name) return entry;
  }
}

Variable* Variables::find_variable(std::string_view name) {
  if (records_.empty()) return nullptr;
  const Entry& entry = entry_of(name, hash_of(name));
  return entry.index == 0 ? nullptr : &records_[entry.index - 1];
}

void Variables::grow() {
  std::vector<Entry> old(std::max(kFirstEntries, entries_.size() * 2));
  old.swap(entries_);
  const std::size_t mask = entries_.size() - 1;
  for (const Entry& entry : old) {
    if (entry.index == 0) continue;
    std::size_t slot = entry.hash & mask;
    while (entries_[slot].index != 0) slot = (slot + 1) & mask;
    entries_[slot] = entry;
  }
}

Variable& Variables::add_variable(Entry& entry, std::string_view name, std::uint32_t hash,
                                  const DimValue& value) {
  records_.push_back({name, kFirstNumber + static_cast<int>(records_.size()), false, value});
  entry = {hash, static_cast<std::uint32_t>(records_.size())};
  return records_.back();
}

void Variables::expect(std::string_view name) const {
  if (entries_.empty()) return;
  __builtin_prefetch(&entries_[hash_of(name) & (entries_.size() - 1)], 1);
}

Variable* Variables::find_number(int number) {
  if (number < kFirstNumber) return nullptr;
  const auto index = static_cast<std::size_t>(number - kFirstNumber);
  return index < records_.size() ? &records_[index] : nullptr;
}

DimValue Variables::getvar(std::string_view name, TextBuf& err) {
  if (const Variable* variable = find_variable(name)) return variable->value;
  err.append_text("ERROR:  '");
  err.append_until_any(name, " \t");
  err.append_text("' undefined.\n");
  return missing();
}

DimValue Variables::getvar_by_num(int number, TextBuf& err) {
  if (const Variable* variable = find_number(number)) return variable->value;
  err.append_text("ERROR:  Variable number ");
  err.append_integer(number);
  err.append_text(" undefined.\n");
  return missing();
}

std::string_view Variables::varname_by_num(int number, TextBuf& err) {
  if (const Variable* variable = find_number(number)) return variable->name;
  err.append_text("ERROR:  var num '");
  err.append_integer(number);
  err.append_text("' undefined.\n");
  return {};
}

int Variables::varnum_by_name(std::string_view name, TextBuf& err) {
  if (const Variable* variable = find_variable(name)) return variable->number;
  (void)getvar(name, err);
  return 0;
}

void Variables::setvar_by_num(int number, const DimValue& value, TextBuf& err) {
  if (Variable* variable = find_number(number)) {
    variable->value = value;
    return;
  }
  err.append_text("ERROR:  var num '");
  err.append_integer(number);
  err.append_text("' undefined in setvar_by_num.\n");
}

Variable& Variables::setvar(std::string_view name, DimValue& value, int component) {
  if (records_.size() * 4 >= entries_.size() * 3) grow();
  const std::uint32_t hash = hash_of(name);
  Entry& entry = entry_of(name, hash);
  if (entry.index == 0) {
    value = first_value(value, component);
    return add_variable(entry, name, hash, value);
  }
  Variable& variable = records_[entry.index - 1];
  set_variable(variable, value, component);
  return variable;
}

void Variables::set_variable(Variable& variable, DimValue& value, int component) {
  DimValue& stored = variable.value;
  keep_independent_value(variable, value, component);
  if (component == 0) {
    stored = value;
    return;
  }
  stored.vector = true;
  stored.comp[static_cast<std::size_t>(component - 1)] = value.comp[0];
  stored.exps = value.exps;
  value = stored;
}

void Variables::clear() {
  if (records_.empty()) return;
  records_.clear();
  records_.shrink_to_fit();
  if (entries_.size() > kFirstEntries) entries_ = std::vector<Entry>();
  entries_.assign(entries_.size(), Entry());
}

bool is_varname_okay(std::string_view name, const UserUnits& users, const FunctionSet& functions,
                     TextBuf& err) {
  if (!err.is_empty_text()) return false;
  if (is_base_unit_name(users, name)) {
    err.append_three("ERROR: Variable name '", name, "' matches a base unit.\n");
    return false;
  }
  if (functions.lookup_function_name(name).number != 0) {
    err.append_three("ERROR: Variable name '", name, "' matches a pre-programmed function.\n");
    return false;
  }
  return true;
}

}  // namespace quantiverse
