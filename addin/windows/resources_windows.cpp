#include <cstddef>
#include <string_view>

#include "addin/host.h"
#include "addin/language_table.h"
#include "addin/windows/module.h"
#include "addin/windows/windows.h"

namespace quantiverse {
namespace {

LPCWSTR StringType() { return reinterpret_cast<LPCWSTR>(RT_STRING); }

// Strings lie in blocks of so many, each behind its length.
constexpr std::uint32_t kBlockSize = 16;

// As many as a call back from Windows keeps: it can't throw, so it can't ask for memory.
struct Languages {
  std::uint16_t list[64] = {};
  std::size_t count = 0;
};

BOOL CALLBACK KeepLanguage(HMODULE, LPCWSTR, LPCWSTR, WORD language, LONG_PTR languages) {
  auto* const kept = reinterpret_cast<Languages*>(languages);
  kept->list[kept->count++] = language;
  return kept->count < std::size(kept->list) ? TRUE : FALSE;
}

// REQUIRES: the block is there in that language.
// Empty if its string isn't.
std::u16string_view FindInBlock(LPCWSTR block, std::uint16_t language, std::uint32_t place) {
  HMODULE const module = ModuleHandle();
  HRSRC const resource = FindResourceExW(module, StringType(), block, language);
  if (resource == nullptr) return {};
  const auto* text = static_cast<const char16_t*>(LockResource(LoadResource(module, resource)));
  for (; place > 0; --place) text += 1 + *text;
  return {text + 1, *text};
}

}  // namespace

std::uint16_t ThreadLanguage() { return LANGIDFROMLCID(GetThreadLocale()); }

std::vector<StringResource> ModuleStrings(std::uint32_t id) {
  // The number of a block is a word.
  if (id / kBlockSize >= 0xFFFF) return {};
  LPCWSTR const block = MAKEINTRESOURCEW(id / kBlockSize + 1);
  Languages languages;
  EnumResourceLanguagesW(ModuleHandle(), StringType(), block, KeepLanguage,
                         reinterpret_cast<LONG_PTR>(&languages));
  std::vector<StringResource> strings;
  for (std::size_t i = 0; i < languages.count; ++i) {
    const std::u16string_view text = FindInBlock(block, languages.list[i], id % kBlockSize);
    if (!text.empty()) strings.push_back({languages.list[i], id, text});
  }
  return strings;
}

int CountryOfLanguage(std::uint16_t language) {
  if (PRIMARYLANGID(language) == LANG_NEUTRAL) return 0;  // it would be that of the thread
  DWORD country = 0;
  const int length =
      GetLocaleInfoW(MAKELCID(language, SORT_DEFAULT), LOCALE_ICOUNTRY | LOCALE_RETURN_NUMBER,
                     reinterpret_cast<LPWSTR>(&country), sizeof country / sizeof(wchar_t));
  return length != 0 ? static_cast<int>(country) : 0;
}

}  // namespace quantiverse
