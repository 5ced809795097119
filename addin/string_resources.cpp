#include "addin/string_resources.h"

#include "addin/message_table.h"

namespace quantiverse {
namespace {

bool HaveSamePrimary(std::uint16_t a, std::uint16_t b) { return ((a ^ b) & 0x3FFU) == 0; }

const char16_t* FindEnglish(std::uint32_t id) {
  const bool is_message = id >= kMessageResourceBase && id - kMessageResourceBase < kMessageCount;
  return is_message ? ResourceMessage(id - kMessageResourceBase) : nullptr;
}

}  // namespace

std::uint16_t StringResources::Language() const {
  return language_override != kNeutralLanguage ? language_override : kEnglish;
}

const char16_t* StringResources::Find(std::uint16_t language, std::uint32_t id) const {
  const char16_t* related = nullptr;
  const char16_t* neutral = nullptr;
  for (const StringResource& row : rows) {
    if (row.id != id) continue;
    if (row.language == language) return row.text;
    if (related == nullptr && HaveSamePrimary(row.language, language)) related = row.text;
    if (neutral == nullptr && row.language == kNeutralLanguage) neutral = row.text;
  }
  if (related != nullptr) return related;
  const char16_t* const english = FindEnglish(id);
  const bool english_first = HaveSamePrimary(language, kEnglish) && english != nullptr;
  return english_first || neutral == nullptr ? english : neutral;
}

}  // namespace quantiverse
