// The library's entry where the system has none for libraries: a static object's life, which is
// the library's.
#include <dlfcn.h>

#include "addin/library_entry.h"

namespace quantiverse {
namespace {

class Library {
 public:
  Library() {
    Dl_info info{};
    const bool is_known = dladdr(&kAnchor, &info) != 0 && info.dli_fname != nullptr;
    LibraryEntry(XlLibraryReason::kAttach, is_known ? info.dli_fname : "");
  }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library() { LibraryEntry(XlLibraryReason::kDetach); }

 private:
  static constexpr char kAnchor = 0;
};

// The build links this source last, so that this is constructed behind all other static objects
// and goes before them.
const Library kLibrary;

}  // namespace
}  // namespace quantiverse
