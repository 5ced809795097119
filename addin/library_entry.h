#pragma once

#include <string>

namespace quantiverse {

// What the system tells a library of.
enum class XlLibraryReason {
  kAttach,        // loaded; all static objects are constructed
  kThreadDetach,  // a thread ends; only Windows tells
  kDetach,        // about to go; all static objects are still there
};

// Where the life of the library begins and ends.
// path: of the library's file, for kAttach.
// false: it can't be used.
bool LibraryEntry(XlLibraryReason reason, const std::string& path = {});

}  // namespace quantiverse
