#pragma once

#include <string>
#include <string_view>

// The names that an add-in's macros get from its file.
namespace quantiverse {

// The file's name behind the last backslash or slash, extension and all.
std::u16string_view FileOfPath(std::u16string_view path);

// `text` with "_" in place of all but the letters A to Z, the digits and the characters of
// `allowed`. Letters of national alphabets don't count: a locale mustn't change a macro's name.
std::u16string WithUnderscores(std::u16string_view text, std::u16string_view allowed = {});

// What an add-in's macros have of its file's name: that without its extension, with underscores.
std::u16string MacroBaseName(std::u16string_view path);

}  // namespace quantiverse
