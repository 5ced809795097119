#include "udunits_library.h"

#include <cstdio>
#include <cstdlib>
#include <limits>

namespace quantiverse::bench {

UdunitsLibrary::UdunitsLibrary() {
  ut_set_error_message_handler(ut_ignore);
  system_ = ut_read_xml(nullptr);
  if (system_ == nullptr) {
    std::fprintf(stderr, "bench: the database of UDUNITS is missing\n");
    std::exit(2);
  }
}

UdunitsLibrary::~UdunitsLibrary() { ut_free_system(system_); }

double UdunitsLibrary::convert(double value, const char* from, const char* to) const {
  double converted = std::numeric_limits<double>::quiet_NaN();
  ut_unit* const source = ut_parse(system_, from, UT_ASCII);
  ut_unit* const target = ut_parse(system_, to, UT_ASCII);
  if (source != nullptr && target != nullptr) {
    if (cv_converter* const converter = ut_get_converter(source, target)) {
      converted = cv_convert_double(converter, value);
      cv_free(converter);
    }
  }
  ut_free(source);
  ut_free(target);
  return converted;
}

}  // namespace quantiverse::bench
