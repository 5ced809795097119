#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace quantiverse::docs_test {

inline std::filesystem::path source_dir() { return QV_SOURCE_DIR; }

// Empty if the file can't be read.
inline std::string read_file(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// With QUANTIVERSE_REWRITE_DOCS in the environment the tests put the real outputs and tables into
// the documents. Read the difference before you keep it.
inline bool may_rewrite() { return std::getenv("QUANTIVERSE_REWRITE_DOCS") != nullptr; }

inline void write_file(const std::filesystem::path& path, std::string_view text) {
  std::ofstream(path, std::ios::binary) << text;
}

// The lines of a text without their newlines.
inline std::vector<std::string> lines_of(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

// Where two texts part, or nothing: a whole document is too much to print.
inline std::string first_difference(const std::string& is, const std::string& should_be) {
  if (is == should_be) return {};
  const std::vector<std::string> left = lines_of(is);
  const std::vector<std::string> right = lines_of(should_be);
  std::size_t at = 0;
  while (at < left.size() && at < right.size() && left[at] == right[at]) ++at;
  return "line " + std::to_string(at + 1) + " is '" + (at < left.size() ? left[at] : "") +
         "' and should be '" + (at < right.size() ? right[at] : "") + "'";
}

// `generated` is what has to stand between the two marks of a document. Empty, or where it doesn't.
inline std::string check_generated(const std::filesystem::path& path, std::string_view begin_mark,
                                   std::string_view end_mark, const std::string& generated) {
  const std::string document = read_file(path);
  const std::size_t begin = document.find(begin_mark);
  const std::size_t end = document.find(end_mark);
  if (begin == std::string::npos || end == std::string::npos) return "a mark is missing";
  const std::size_t from = begin + begin_mark.size();
  const std::string expected = document.substr(0, from) + generated + document.substr(end);
  if (document == expected || !may_rewrite()) return first_difference(document, expected);
  write_file(path, expected);
  return {};
}

// Without the blanks around it.
inline std::string trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

}  // namespace quantiverse::docs_test
