#include "addin/string_resources.h"

#include "addin/host.h"
#include "addin/language_table.h"
#include "addin/message_table.h"

namespace quantiverse {
namespace {

constexpr unsigned kTooFar = 4;

bool IsMessage(std::uint32_t id) {
  return id >= kMessageResourceBase && id - kMessageResourceBase < kMessageCount;
}

// How badly a string serves where the one in `language` is wanted.
unsigned Distance(const StringResource& string, std::uint16_t language) {
  if (string.language == language) return 0;
  if (((string.language ^ language) & 0x3FFU) == 0) return 1;
  if (string.language == kNeutralLanguage) return 2;
  if (string.language == kEnglish && IsMessage(string.id)) return 3;
  return kTooFar;
}

}  // namespace

std::uint16_t StringResources::Language() const {
  return language_override != kNeutralLanguage ? language_override : ThreadLanguage();
}

std::optional<std::u16string_view> StringResources::Find(std::uint16_t language,
                                                         std::uint32_t id) const {
  std::optional<std::u16string_view> found;
  unsigned distance = kTooFar;
  const auto offer = [&](const StringResource& string) {
    if (string.id != id || Distance(string, language) >= distance) return;
    distance = Distance(string, language);
    found = string.text;
  };
  for (const StringResource& row : rows) offer(row);
  for (const StringResource& string : ModuleStrings(id)) offer(string);
  return found;
}

std::optional<std::uint16_t> StringResources::FindLanguageOf(int country) const {
  if (country == 0) return {};  // languages may have none too
  for (const StringResource& row : rows) {
    if (CountryOfLanguage(row.language) == country) return row.language;
  }
  // The module has its messages in all its languages.
  for (const StringResource& string : ModuleStrings(kMessageResourceBase + kMessageError)) {
    if (CountryOfLanguage(string.language) == country) return string.language;
  }
  return {};
}

}  // namespace quantiverse
