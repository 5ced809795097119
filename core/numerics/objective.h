#pragma once

#include <functional>

#include "text/text_buf.h"

namespace quantiverse {

// The function that a solver works on, in one or more variables.
// x:   the values of the variables, counted from 0.
// f:   takes the results, as many as whoever made the objective has set up: one where a solver
//      wants a number, one for each variable where it solves a system.
// err: a failed evaluation leaves its message there, and zeros in f. With an error pending
//      already, f becomes zeros and nothing else happens.
// A solver relies on both: some go on after an error, or look at it only later.
using Objective = std::function<void(const double* x, double* f, TextBuf& err)>;

}  // namespace quantiverse
