#pragma once

#include <cstdint>

namespace quantiverse {

// The country of a language as Windows and Excel number countries, by their telephone codes; 0 for
// a language that the system doesn't know. Languages are those of string resources.
int CountryOfLanguage(std::uint16_t language);

}  // namespace quantiverse
