#include <quantiverse/c.h>
#include <quantiverse/quantiverse.h>

#include <iostream>
#include <string_view>

int main() {
  const std::string output = quantiverse::interpret_dimensional_input_lines("5 ft; m\n");
  std::cout << output << quantiverse::version() << '\n';
  const bool right = output == "[  1 ] 5 ft; m\n        = 1.524 m\n\n" &&
                     std::string_view(quantiverse::version()) == EXPECTED_VERSION;
  return right ? 0 : 1;
}
