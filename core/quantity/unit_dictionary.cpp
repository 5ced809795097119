#include "quantity/unit_dictionary.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "text/scanner.h"

namespace quantiverse {
namespace {

constexpr std::size_t kSlots = 1024;  // a power of two, well above the number of names

constexpr std::size_t hash(std::string_view name) {
  std::uint32_t h = 2166136261U;  // FNV-1a
  for (const char c : name) h = (h ^ static_cast<unsigned char>(c)) * 16777619U;
  return (h ^ (h >> 15U)) % kSlots;
}

// Open addressing over the table's names; a null name ends a search.
struct Entry {
  const char* name = nullptr;
  std::uint8_t length = 0;
  const UnitRow* row = nullptr;
};

struct Index {
  std::array<Entry, kSlots> entries;
  std::size_t longest = 0;

  Index() {
    for (const UnitRow& row : unit_rows()) {
      for (const char* name : row.names) {
        if (name != nullptr) insert(name, row);
      }
    }
  }

  void insert(std::string_view name, const UnitRow& row) {
    std::size_t slot = hash(name);
    while (entries[slot].name != nullptr) slot = (slot + 1) % kSlots;
    entries[slot] = {name.data(), static_cast<std::uint8_t>(name.size()), &row};
    longest = std::max(longest, name.size());
  }

  [[nodiscard]] const UnitRow* find(std::string_view name) const {
    if (name.empty() || name.size() > longest) return nullptr;
    for (std::size_t slot = hash(name); entries[slot].name != nullptr; slot = (slot + 1) % kSlots) {
      const Entry& entry = entries[slot];
      if (name == std::string_view(entry.name, entry.length)) return entry.row;
    }
    return nullptr;
  }
};

// The characters at the cursor that a built-in name would have to be: "%" or a run of name
// characters.
std::string_view candidate(const Cursor& expptr) {
  Cursor end = expptr;
  if (accept_char('%', end)) {
    return is_name_char(end.peek()) ? std::string_view() : expptr.until(end);
  }
  return scan_name(end);
}

bool lookup_user_unit(const UserUnits& users, Cursor& expptr, DimValue& record) {
  if (users.empty()) return false;
  Backtrack back(expptr);
  skip_blanks_and_comments(expptr);
  const DimValue* value = users.find_user_unit(scan_name(expptr));
  if (value == nullptr) return false;
  record = *value;
  record.comp[0] = 1.0 / value->comp[0];
  return back.accept();
}

}  // namespace

const UnitRow* find_unit(std::string_view name) {
  static const Index index;
  return index.find(name);
}

bool lookup_unit_name(const UserUnits& users, Cursor& expptr, DimValue& record) {
  record = DimValue{};
  if (lookup_user_unit(users, expptr, record)) return true;
  const std::string_view name = candidate(expptr);
  const UnitRow* row = find_unit(name);
  if (row == nullptr) return false;
  record.comp[0] = row->per_base;
  record.exps = row->dimension->exps;
  expptr.position += name.size();
  return true;
}

bool is_base_unit_name(const UserUnits& users, std::string_view text) {
  Cursor start(text);
  DimValue record;
  return lookup_unit_name(users, start, record) && record.comp[0] != 0.0;
}

}  // namespace quantiverse
