#include "addin/language_table.h"

namespace quantiverse {
namespace {

struct LanguageRow {
  std::uint16_t language;
  int country;
};

// clang-format off
constexpr LanguageRow kLanguages[] = {
    {0x0401, 966},  // Arabic, Saudi Arabia
    {0x0402, 359},  // Bulgarian
    {0x0404, 886},  // Chinese, Taiwan
    {0x0405, 420},  // Czech
    {0x0406, 45},   // Danish
    {0x0407, 49},   // German, Germany
    {0x0408, 30},   // Greek
    {0x0409, 1},    // English, United States
    {0x040A, 34},   // Spanish, traditional sort
    {0x040B, 358},  // Finnish
    {0x040C, 33},   // French, France
    {0x040D, 972},  // Hebrew
    {0x040E, 36},   // Hungarian
    {0x040F, 354},  // Icelandic
    {0x0410, 39},   // Italian, Italy
    {0x0411, 81},   // Japanese
    {0x0412, 82},   // Korean
    {0x0413, 31},   // Dutch, Netherlands
    {0x0414, 47},   // Norwegian
    {0x0415, 48},   // Polish
    {0x0416, 55},   // Portuguese, Brazil
    {0x0418, 40},   // Romanian
    {0x0419, 7},    // Russian
    {0x041A, 385},  // Croatian
    {0x041B, 421},  // Slovak
    {0x041D, 46},   // Swedish
    {0x041E, 66},   // Thai
    {0x041F, 90},   // Turkish
    {0x0422, 380},  // Ukrainian
    {0x0424, 386},  // Slovenian
    {0x0804, 86},   // Chinese, mainland
    {0x0807, 41},   // German, Switzerland
    {0x0809, 44},   // English, United Kingdom
    {0x080A, 52},   // Spanish, Mexico
    {0x080C, 32},   // French, Belgium
    {0x0810, 41},   // Italian, Switzerland
    {0x0813, 32},   // Dutch, Belgium
    {0x0816, 351},  // Portuguese, Portugal
    {0x0C07, 43},   // German, Austria
    {0x0C09, 61},   // English, Australia
    {0x0C0A, 34},   // Spanish, modern sort
    {0x100C, 41},   // French, Switzerland
    {0x1409, 64},   // English, New Zealand
    {0x1809, 353},  // English, Ireland
};
// clang-format on

}  // namespace

int CountryOfLanguage(std::uint16_t language) {
  for (const LanguageRow& row : kLanguages) {
    if (row.language == language) return row.country;
  }
  return 0;
}

}  // namespace quantiverse
