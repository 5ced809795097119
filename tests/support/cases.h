#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

// Tests whose cases are data. A file has sections, each behind a line with its name in brackets,
// and in a section a case a line: fields with "|" between them. A field is a text in double quotes,
// with the escapes \\ \" \t \n \r \v and \xHH, or anything else up to the next bar, without the
// blanks around it. Empty lines and those that begin with "#" are for readers.
namespace quantiverse {

using Case = std::vector<std::string>;

// Takes a text in quotes off the front of `line`.
inline std::string take_quoted(std::string& line) {
  std::string text;
  std::size_t i = 1;
  for (; i < line.size() && line[i] != '"'; ++i) {
    if (line[i] != '\\' || i + 1 == line.size()) {
      text += line[i];
      continue;
    }
    const std::string letters = "tnrv";
    const std::size_t letter = letters.find(line[++i]);
    if (line[i] == 'x') {
      text += static_cast<char>(std::stoi(line.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else {
      text += letter != letters.npos ? "\t\n\r\v"[letter] : line[i];
    }
  }
  EXPECT_LT(i, line.size()) << "A quote is missing: " << line;
  line.erase(0, i + 1);
  return text;
}

inline Case read_case(std::string line) {
  Case fields;
  for (bool more = true; more;) {
    line.erase(0, line.find_first_not_of(' '));
    std::string field = line.starts_with('"') ? take_quoted(line) : "";
    const std::size_t bar = line.find('|');
    more = bar != line.npos;
    const std::string rest = line.substr(0, bar);
    field += rest.substr(0, rest.find_last_not_of(' ') + 1);
    fields.push_back(std::move(field));
    line.erase(0, more ? bar + 1 : bar);
  }
  return fields;
}

// The cases of a section.
// file:   below the folder of the tests.
// fields: how many every case has.
// Without a case, or with one of another length, the test fails.
inline std::vector<Case> cases(const std::string& file, const std::string& section,
                               std::size_t fields) {
  std::ifstream in(QV_SOURCE_DIR "/tests/" + file);
  std::vector<Case> found;
  std::string current;
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line[0] == '#') continue;
    if (line[0] == '[') {
      current = line.substr(1, line.size() - 2);
    } else if (current == section) {
      found.push_back(read_case(line));
      EXPECT_EQ(found.back().size(), fields) << line;
      found.back().resize(fields);
    }
  }
  EXPECT_FALSE(found.empty()) << file << " [" << section << "]";
  return found;
}

// A field that is a number.
inline double number(const std::string& field) {
  char* end = nullptr;
  const double value = std::strtod(field.c_str(), &end);
  EXPECT_TRUE(!field.empty() && *end == '\0') << field << " is no number";
  return value;
}

}  // namespace quantiverse
