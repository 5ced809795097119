#include "line_cases.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string_view>

namespace quantiverse::test {
namespace {

std::string unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      plain += text[i];
      continue;
    }
    const char c = text.at(++i);
    if (c == 'x') {
      plain += static_cast<char>(std::stoi(std::string(text.substr(i + 1, 2)), nullptr, 16));
      i += 2;
    } else {
      plain += c == 't' ? '\t' : c == 'r' ? '\r' : c == 's' ? ' ' : c;
    }
  }
  return plain;
}

void read_cases(const std::filesystem::path& path, std::vector<LineCase>& cases) {
  std::ifstream file(path, std::ios::binary);
  char before = '<';
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line[0] == '#') continue;
    const char kind = line[0];
    const bool begins = kind == '>' && before == '<';
    if ((kind != '>' && kind != '<') || (line.size() > 1 && line[1] != ' ')) {
      throw std::runtime_error(path.string() + ": " + line);
    }
    if (begins) cases.emplace_back();
    std::string& whole = kind == '>' ? cases.back().text : cases.back().report;
    if (kind == before) whole += '\n';
    if (line.size() > 2) whole += unescaped(std::string_view(line).substr(2));
    before = kind;
  }
}

}  // namespace

const std::vector<LineCase>& line_cases() {
  static const std::vector<LineCase> all = [] {
    std::vector<LineCase> cases;
    for (const auto& entry :
         std::filesystem::directory_iterator(QV_SOURCE_DIR "/tests/golden/one_line")) {
      read_cases(entry.path(), cases);
    }
    return cases;
  }();
  return all;
}

}  // namespace quantiverse::test
