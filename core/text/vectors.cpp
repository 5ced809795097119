#include "text/vectors.h"

#include <cstdio>
#include <cstdlib>
#include <exception>

namespace quantiverse {
namespace {

template <typename T, typename... Bounds>
T made_or_nrerror(std::string_view message, Bounds... bounds) {
  try {
    return T(bounds...);
  } catch (const std::exception&) {  // bad_alloc, or a size beyond any allocation
    nrerror(message);
  }
}

}  // namespace

void nrerror(std::string_view message) {
  std::fprintf(stderr,
               "Numerical Recipes run-time error ...\n%.*s\n... now exiting to system ...\n\n",
               static_cast<int>(message.size()), message.data());
  std::exit(1);
}

IntVector ivector(long first, long last) {
  return made_or_nrerror<IntVector>("Allocation failure in ivector().", first, last);
}

DoubleVector dvector(long first, long last) {
  return made_or_nrerror<DoubleVector>("Allocation failure in dvector().", first, last);
}

DoubleMatrix dmatrix(long first_row, long last_row, long first_column, long last_column) {
  return made_or_nrerror<DoubleMatrix>("Allocation failure 1 in dmatrix().", first_row, last_row,
                                       first_column, last_column);
}

}  // namespace quantiverse
