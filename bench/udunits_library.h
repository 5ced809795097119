#pragma once

#include <udunits2.h>

namespace quantiverse::bench {

// UDUNITS with its standard database.
class UdunitsLibrary {
 public:
  UdunitsLibrary();
  ~UdunitsLibrary();
  UdunitsLibrary(const UdunitsLibrary&) = delete;
  UdunitsLibrary& operator=(const UdunitsLibrary&) = delete;

  // Parses both units, makes their converter, uses it once and frees it all. A NaN if it can't.
  [[nodiscard]] double convert(double value, const char* from, const char* to) const;

 private:
  ut_system* system_;
};

}  // namespace quantiverse::bench
