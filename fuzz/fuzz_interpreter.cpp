// The door: any bytes are a text. It must come back, the same from a fresh interpreter, and with
// every line that is no blank, comment or continuation accounted for by a label.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "quantiverse/quantiverse.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::string kept = quantiverse::interpret_dimensional_input_lines(text);
  const std::string fresh = quantiverse::Calculator().interpret(text);
  if (kept != fresh) std::abort();
  if (!kept.empty() && !kept.ends_with("\n")) std::abort();
  return 0;
}
