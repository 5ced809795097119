#include "addin/services/names.h"

namespace quantiverse {
namespace {

bool IsLetterOrDigit(char16_t c) {
  return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9');
}

}  // namespace

std::u16string_view FileOfPath(std::u16string_view path) {
  return path.substr(path.find_last_of(u"\\/") + 1);  // npos + 1 is the whole path
}

std::u16string WithUnderscores(std::u16string_view text, std::u16string_view allowed) {
  std::u16string name(text);
  for (char16_t& c : name) {
    if (!IsLetterOrDigit(c) && allowed.find(c) == std::u16string_view::npos) c = u'_';
  }
  return name;
}

std::u16string MacroBaseName(std::u16string_view path) {
  const std::u16string_view file = FileOfPath(path);
  return WithUnderscores(file.substr(0, file.rfind(u'.')));
}

}  // namespace quantiverse
