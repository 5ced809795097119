#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "addin/string_resources.h"
#include "addin/xlcall.h"

// All that the add-in asks of Excel and of the system below it.
namespace quantiverse {

// The program that has loaded the add-in. Abstract, so that tests can be that program.
class CXlHost {
 public:
  CXlHost() = default;
  CXlHost(const CXlHost&) = delete;
  CXlHost& operator=(const CXlHost&) = delete;
  // The entries of the older generation, which every Excel has. Null outside of Excel.
  virtual Excel4Entry* Excel4() = 0;
  virtual Excel4vEntry* Excel4v() = 0;
  // The entry of the newer generation, if the main program exports it; null otherwise.
  virtual MdCallBack12Entry* FindMdCallBack12() = 0;

  // A message box on Excel's main window.
  // flags: as Windows counts them, such as 52 for yes and no buttons and an exclamation mark.
  // Gives the number of the button, 6 for yes; 0 if no box could be shown.
  virtual int ShowMessageBox(const char16_t* text, const char16_t* title, unsigned flags) = 0;

 protected:
  ~CXlHost() = default;
};

// The program that this library finds itself in.
CXlHost& PlatformHost();

// Between UTF-16 and the system's ANSI code page; Windows-1252 where the system has none.
// A character that the code page lacks becomes "?", never one that only looks like it.
std::string NarrowText(std::u16string_view wide);
std::u16string WideText(std::string_view narrow);

// The language that the thread's user reads; English where threads have none.
std::uint16_t ThreadLanguage();

// The add-in file's own strings of this number, one a language, in the order of the file. An empty
// one counts as none. The texts stay as long as the file is loaded.
std::vector<StringResource> ModuleStrings(std::uint32_t id);

// A pointer for every thread, null until set.
struct ThreadSlot {
  bool allocated = false;
  unsigned key = 0;

  // on_thread_end: given the pointer of a thread that ends, if it isn't null. Where the system
  //                tells the library's entry of ending threads, the entry does this.
  // false: the system has no slot left.
  bool Allocate(void (*on_thread_end)(void* pointer));
  void Free();
  // Null, and false, as long as the slot isn't allocated.
  [[nodiscard]] void* Get() const;
  [[nodiscard]] bool Set(void* pointer) const;
};

}  // namespace quantiverse
