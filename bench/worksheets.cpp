#include "worksheets.h"

#include <algorithm>
#include <random>

namespace quantiverse::bench {
namespace {

constexpr Conversion kConversions[] = {
    {"ft", "m"},          {"inch", "mm"},       {"yard", "ft"},      {"mile", "km"},
    {"gallon", "liter"},  {"g", "grain"},       {"lbf", "N"},        {"psi", "kPa"},
    {"atm", "bar"},       {"mmHg", "Pa"},       {"erg", "eV"},       {"hp", "kW"},
    {"knot", "m/s"},      {"km/hr", "m/s"},     {"mile/hr", "ft/s"}, {"kg m/s^2", "lbf"},
    {"N m", "ft lbf"},    {"kg/m^3", "g/cm^3"}, {"day", "minute"},   {"hr", "s"},
    {"gauss", "tesla"},   {"poise", "Pa s"},    {"weber", "V s"},    {"C", "A s"},
    {"W/m^2", "hp/ft^2"},
};

// Numbers of mt19937 are laid down by the standard; those of the distributions are not.
class Dice {
 public:
  std::size_t below(std::size_t limit) { return engine_() % limit; }

 private:
  std::mt19937 engine_{20231};
};

// The text of `lines` lines, each appended by write(text, i). The space is taken at once, so that
// memory counts as one block and not as what growing leaves behind.
template <typename Write>
std::string write_lines(std::size_t lines, Write write) {
  constexpr std::size_t kLongestLine = 40;
  std::string text;
  text.reserve(lines * kLongestLine);
  for (std::size_t i = 0; i < lines; ++i) {
    write(text, i);
    text += '\n';
  }
  return text;
}

template <typename Choose>
std::string write_variables(std::size_t lines, Choose choose) {
  Dice dice;
  return write_lines(lines, [&](std::string& text, std::size_t i) {
    text += 'x';
    text += std::to_string(i);
    text += " = ";
    if (i != 0) {
      text += 'x';
      text += std::to_string(choose(dice, i));
      text += " + ";
    }
    text += '1';
  });
}

}  // namespace

std::span<const Conversion> conversions() { return kConversions; }

const Conversion& conversion_of(std::size_t i) { return kConversions[i % std::size(kConversions)]; }

std::string number_of(std::size_t i) {
  std::string number = std::to_string(i % 97 + 1);
  if (i % 2 == 1) number += '.' + std::to_string(i % 10);
  return number;
}

std::string feet_lines(std::size_t lines) {
  return write_lines(
      lines, [](std::string& text, std::size_t i) { text.append(number_of(i)).append(" ft; m"); });
}

std::string conversion_lines(std::size_t lines) {
  return write_lines(lines, [](std::string& text, std::size_t i) {
    const Conversion& conversion = conversion_of(i);
    text.append(number_of(i)).append(" ").append(conversion.from);
    text.append("; ").append(conversion.to);
  });
}

std::string arithmetic_lines(std::size_t lines) {
  return write_lines(lines, [](std::string& text, std::size_t i) {
    text += number_of(i);
    text += " * (";
    text += number_of(i + 1);
    text += " + 3) / 4 - 2^3";
  });
}

std::string recent_variables(std::size_t lines) {
  return write_variables(lines, [](Dice& dice, std::size_t i) {
    return i - 1 - dice.below(std::min<std::size_t>(i, 10));
  });
}

std::string scattered_variables(std::size_t lines) {
  return write_variables(lines, [](Dice& dice, std::size_t i) { return dice.below(i); });
}

std::string long_sum(std::size_t terms) {
  std::string text = "1";
  text.reserve(terms * 4 + 1);
  for (std::size_t i = 1; i < terms; ++i) text += i % 2 == 1 ? " + 2" : " - 1";
  text += '\n';
  return text;
}

}  // namespace quantiverse::bench
