#pragma once

#include <optional>
#include <string>

// A worksheet says in comments what has to come out, in the form of the output:
//
//   # expect: power = 14.1074 kW
//   # expect: v0 = [ 22.9813 , 19.2836 , 0 ] m/s
//   # within: 1e-3
//   # fails: ERROR:  Solve no solution found.
//
// expect  The name's last line in the output shows that number in that unit. A unit that was asked
//         for beside others is found among them.
// within  How near the numbers of the following expectations are to be: a fraction of the expected
//         size, or where the expected number is 0, the difference itself. Without it, six digits,
//         and a 0 is exact.
// fails   A line of the output is this error. Any other error is a fault.
namespace quantiverse::docs_test {

// What stands behind "# mark: ", if the line starts with that.
std::optional<std::string> behind_mark(const std::string& line, const std::string& mark);

// All that is wrong with a worksheet, a line each. Empty is good.
std::string complaints_about(const std::string& worksheet);

}  // namespace quantiverse::docs_test
