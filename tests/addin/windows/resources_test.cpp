#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "addin/addin_state.h"
#include "addin/exceptions.h"
#include "addin/language_table.h"
#include "addin/message_table.h"
#include "addin/messages.h"
#include "addin/windows/module.h"
#include "addin/windows/windows.h"

// The resources of this program are those of the add-in's library.
namespace quantiverse {
namespace {

constexpr std::uint16_t kGerman = 0x0407;
constexpr std::uint16_t kSwissGerman = 0x0807;
constexpr std::uint16_t kFrench = 0x040C;

constexpr const char16_t* kGermanMessages[] = {
#define QV_MESSAGE(number, text) u##text,
#include "addin/windows/messages_german.inc"
#undef QV_MESSAGE
};

class Resources : public ::testing::Test {
 protected:
  ~Resources() override {
    SetThreadLocale(thread_locale_);
    State().resources = {};
  }

 private:
  LCID thread_locale_ = GetThreadLocale();
};

std::u16string TextIn(std::uint16_t language, unsigned number) {
  State().resources.language_override = language;
  std::u16string text;
  EXPECT_TRUE(MessageText(number, text));
  return text;
}

TEST_F(Resources, HoldEveryMessageInBothLanguages) {
  for (unsigned i = 0; i < kMessageCount; ++i) {
    EXPECT_EQ(TextIn(kEnglish, i), ResourceMessage(i)) << i;
    EXPECT_EQ(TextIn(kGerman, i), kGermanMessages[i]) << i;
    // The first message is the empty text, which files don't hold.
    EXPECT_EQ(ModuleStrings(kMessageResourceBase + i).size(), i == 0 ? 0U : 2U) << i;
  }
  for (const std::uint32_t id : {0U, 7U, 53247U, 53248U + kMessageCount, 1048576U, 4294967295U}) {
    EXPECT_TRUE(ModuleStrings(id).empty()) << id;
  }
}

TEST_F(Resources, AreThoseOfTheThreadsLanguage) {
  const struct {
    std::uint16_t thread, language_override;
    const char* text;
  } cases[] = {
      {kGerman, kNeutralLanguage,
       "Index au\xDF"
       "erhalb des g\xFCltigen Bereichs"},
      {kSwissGerman, kNeutralLanguage,
       "Index au\xDF"
       "erhalb des g\xFCltigen Bereichs"},
      {kEnglish, kNeutralLanguage, "Index out of range"},
      {kFrench, kNeutralLanguage, "Index out of range"},
      {kGerman, kEnglish, "Index out of range"},
      {kEnglish, kGerman,
       "Index au\xDF"
       "erhalb des g\xFCltigen Bereichs"},
  };
  for (const auto& c : cases) {
    SetThreadLocale(MAKELCID(c.thread, SORT_DEFAULT));
    EXPECT_EQ(ThreadLanguage(), c.thread);
    State().resources.language_override = c.language_override;
    EXPECT_STREQ(CXlOutOfRangeException().what(), c.text) << c.thread << c.language_override;
  }
}

TEST_F(Resources, AreFoundByCountry) {
  const StringResources& resources = State().resources;
  EXPECT_EQ(resources.FindLanguageOf(49), kGerman);
  EXPECT_EQ(resources.FindLanguageOf(1), kEnglish);
  for (const int country : {0, 33, 41, 999}) EXPECT_FALSE(resources.FindLanguageOf(country));
  EXPECT_EQ(CountryOfLanguage(0x0C07), 43);
  EXPECT_EQ(CountryOfLanguage(kNeutralLanguage), 0);
}

// What Windows shows of the file as it ships.
std::u16string VersionText(std::vector<char>& version, const std::wstring& name) {
  void* text = nullptr;
  UINT length = 0;
  if (VerQueryValueW(version.data(), (L"\\StringFileInfo\\" + name).c_str(), &text, &length) == 0) {
    return u"none";
  }
  return static_cast<const char16_t*>(text);
}

TEST(LibraryFile, NamesItsVersion) {
  std::wstring folder(MAX_PATH, L'\0');
  folder.resize(GetModuleFileNameW(nullptr, folder.data(), MAX_PATH));
  const std::wstring file = folder.substr(0, folder.rfind(L'\\') + 1) + L"Quantiverse.xll";
  std::vector<char> version(GetFileVersionInfoSizeW(file.c_str(), nullptr));
  ASSERT_NE(
      GetFileVersionInfoW(file.c_str(), 0, static_cast<DWORD>(version.size()), version.data()), 0);
  EXPECT_EQ(VersionText(version, L"040904B0\\OriginalFilename"), u"Quantiverse.xll");
  EXPECT_EQ(VersionText(version, L"040904B0\\ProductVersion"), u"" QV_VERSION);
  EXPECT_EQ(VersionText(version, L"040704B0\\FileDescription"),
            u"Einheiten in der Tabellenkalkulation");
  EXPECT_EQ(VersionText(version, L"040704B0\\LegalCopyright").front(), u'\u00A9');

  HMODULE const library = LoadLibraryExW(file.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
  ASSERT_NE(library, nullptr);
  for (const std::uint16_t language : {kEnglish, kGerman}) {
    for (int block = 53248 / 16; block <= (53248 + 65) / 16; ++block) {
      EXPECT_NE(FindResourceExW(library, reinterpret_cast<LPCWSTR>(RT_STRING),
                                MAKEINTRESOURCEW(block + 1), language),
                nullptr)
          << block;
    }
  }
  FreeLibrary(library);
}

}  // namespace
}  // namespace quantiverse
