#include "addin/messages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>

#include "addin/addin_state.h"
#include "addin/host.h"

namespace quantiverse {
namespace {

using psl::FormatFault;

std::u16string Wide(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }

// Arguments are "a", "bb", null and "{0}".
TEST(Format, PutsArgumentsInTheirPlaces) {
  const char* const cases[][2] = {
      {"{0} and {0}", "a and a"},
      {"{1}", "bb"},
      {"{1}{0}{1}", "bbabb"},
      {"[{2}]", "[]"},             // a null argument
      {"[{4}][{65535}]", "[][]"},  // arguments that aren't there
      {"{3}", "{0}"},              // what is put in isn't read again
      {"{{0}}", "{0}"},            // takes no argument
      {"{{{0}}}", "{a}"},
      {"{{{{}}}}", "{{}}"},
      {"{0}}}", "a}"},
      {"{{{1}", "{bb"},
      {"{0000000000000000000000001}", "bb"},
  };
  for (const auto& [format, expected] : cases) {
    EXPECT_EQ(Format(format, "a", "bb", nullptr, "{0}"), expected) << format;
    EXPECT_EQ(Format(Wide(format).c_str(), u"a", u"bb", nullptr, u"{0}"), Wide(expected)) << format;
  }
}

template <typename Char>
FormatFault FaultOf(const Char* format) {
  try {
    Format(format, nullptr);
  } catch (const psl::StringFormatterError& error) {
    EXPECT_STREQ(error.what(), "Error in string format");
    return error.Fault();
  }
  return FormatFault::kNone;
}

TEST(Format, RefusesBadFormats) {
  const struct {
    const char* format;
    FormatFault fault;
  } cases[] = {
      {"{", FormatFault::kBraces},
      {"}", FormatFault::kBraces},
      {"{0", FormatFault::kBraces},
      {"{0{1}}", FormatFault::kBraces},
      {"{{0}", FormatFault::kBraces},
      {"{0}}}}", FormatFault::kBraces},
      {"{}", FormatFault::kNotANumber},
      {"{x}", FormatFault::kNotANumber},
      {"{-1}", FormatFault::kNotANumber},
      {"{70000x}", FormatFault::kNotANumber},
      {"{x}{", FormatFault::kNotANumber},  // the first fault is the one told
      {"{65535}", FormatFault::kNone},
      {"{65536}", FormatFault::kNumberTooLarge},
      {"{4294967296}", FormatFault::kNumberTooLarge},
      {"{18446744073709551616}", FormatFault::kNumberTooLarge},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(FaultOf(c.format), c.fault) << c.format;
    EXPECT_EQ(FaultOf(Wide(c.format).c_str()), c.fault) << c.format;
  }
  EXPECT_EQ(FaultOf<char>(nullptr), FormatFault::kNoFormat);
  EXPECT_EQ(FaultOf<char16_t>(nullptr), FormatFault::kNoFormat);
}

TEST(Messages, FormatInBothWidths) {
  EXPECT_EQ(FormatMessage<char16_t>(58, u"Invoke", u"0x80020009"),
            u"Invoke failed with error code 0x80020009");
  EXPECT_EQ(FormatMessage(12, "x", "a number"), "Expected a number for x");
  // Beyond the last one.
  EXPECT_EQ(FormatMessage(65, "y"), "handle to y");
  EXPECT_EQ(FormatMessage(66, "y"), "Message #66 not found");
  EXPECT_EQ(FormatMessage<char16_t>(4294967295U), u"Message #4294967295 not found");
  EXPECT_EQ(HexText(0), "0x0");
}

TEST(Messages, EveryTextIsAGoodFormat) {
  for (unsigned number = 0; number < kMessageCount; ++number) {
    std::string narrow;
    std::u16string wide;
    ASSERT_TRUE(MessageText(number, narrow));
    ASSERT_TRUE(MessageText(number, wide));
    EXPECT_EQ(Wide(narrow), wide) << number;
    EXPECT_NO_THROW(FormatMessage(number, "a")) << narrow;
    EXPECT_NO_THROW(Format(BuiltInMessage(number), "a")) << number;
    EXPECT_EQ(narrow == BuiltInMessage(number), number != kMessageFailedFunctions) << number;
  }
  std::string text = "kept";
  EXPECT_FALSE(MessageText(kMessageCount, text));
  EXPECT_EQ(text, "kept");
}

// The placeholders of a format, "{0}{1}" of "from {1} to {0}".
std::u16string PlacesOf(std::u16string_view format) {
  std::u16string places;
  for (char16_t digit = u'0'; digit <= u'9'; ++digit) {
    const std::u16string place = {u'{', digit, u'}'};
    if (format.find(place) != format.npos) places += place;
  }
  return places;
}

TEST(Messages, InGermanTakeTheSameArguments) {
  const struct {
    unsigned number;
    std::u16string_view text;
  } german[] = {
#define QV_MESSAGE(number, text) {number, u##text},
#include "addin/windows/messages_german.inc"
#undef QV_MESSAGE
  };
  ASSERT_EQ(std::size(german), kMessageCount);
  for (unsigned i = 0; i < kMessageCount; ++i) {
    const std::u16string_view english = ResourceMessage(i);
    EXPECT_EQ(german[i].number, i);
    EXPECT_EQ(PlacesOf(german[i].text), PlacesOf(english)) << i;
    EXPECT_EQ(std::ranges::count(german[i].text, u'\n'), std::ranges::count(english, u'\n')) << i;
    EXPECT_EQ(german[i].text == english, i == 0) << i;
  }
}

// A row of the messages in English is id 53248 + number.
TEST(Messages, ComeFromTheResourcesOfTheLanguage) {
  constexpr std::uint16_t kGerman = 0x0407;
  constexpr std::uint16_t kSwissGerman = 0x0807;
  constexpr std::uint16_t kFrench = 0x040C;
  constexpr std::uint16_t kBritish = 0x0809;
  static const StringResource rows[] = {
      {kSwissGerman, 53253, u"Zahl (CH)"},        {kGerman, 53253, u"Zahl \u03A9"},
      {kGerman, 53248 + 66, u"beyond the table"}, {kNeutralLanguage, 53255, u"*"},
      {kFrench, 53249, u"#ERREUR: {0}"},          {kBritish, 53252, u"truth"},
  };
  const struct {
    std::uint16_t language;
    std::uint32_t id;
    const char16_t* text;
  } cases[] = {
      {kGerman, 53253, u"Zahl \u03A9"},
      {0x0C07, 53253, u"Zahl (CH)"},  // the first of the same primary language
      {kFrench, 53253, u"number"},    // English is for all that have nothing better
      {kFrench, 53255, u"*"},
      {kEnglish, 53255, u"string"},
      {kEnglish, 53252, u"boolean"},  // the very language, wherever it stands
      {0x0809, 53252, u"truth"},
      {kEnglish, 53248 + 49,
       u"The following functions in {0} failed to register:\n{1}\n"
       u"Do you wish to continue loading the add-in?"},
      {kGerman, 100, u"none"},
      {kEnglish, 53248 + 66, u"none"},
  };
  const StringResources resources{rows, kNeutralLanguage};
  for (const auto& c : cases) {
    EXPECT_EQ(resources.Find(c.language, c.id).value_or(u"none"), c.text) << c.language << c.id;
  }

  std::string narrow;
  std::u16string wide;
  State().resources = {rows, kGerman};
  MessageText(kMessageNumber, narrow);
  MessageText(kMessageNumber, wide);
  EXPECT_FALSE(MessageText(kMessageCount, wide));
  State().resources.language_override = kFrench;
  const std::string formatted = FormatMessage(kMessageError, "x");
  State().resources = {};
  EXPECT_EQ(narrow, "Zahl ?");
  EXPECT_EQ(wide, u"Zahl \u03A9");
  EXPECT_EQ(formatted, "#ERREUR: x");
}

}  // namespace
}  // namespace quantiverse
