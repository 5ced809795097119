#pragma once

#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

#include "host/reference.h"
#include "host/value.h"

// Values as commands and answers write them.
namespace quantiverse::host {

// Objects keep their keys in the order in which they were put in.
using Json = nlohmann::ordered_json;

// Why a command isn't carried out. The host's own code throws it up to the loop over the lines;
// none crosses an add-in.
class BadCommand : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

Json number_to_json(double number);
Json to_json(const Value& value);
// Throws BadCommand.
Value from_json(const Json& json, const Sheet& sheet);

// Throws BadCommand unless it is a whole number within these bounds.
int whole_number(const Json& json, int least = std::numeric_limits<int>::min(),
                 int most = std::numeric_limits<int>::max());

// One line: a blank behind every colon and comma.
std::string written(const Json& json);

}  // namespace quantiverse::host
