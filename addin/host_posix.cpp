#include <dlfcn.h>
#include <pthread.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "addin/host.h"
#include "addin/message_table.h"
#include "addin/structured_guard.h"

// Where there is no Excel, a program that stands in for it exports the same names.
namespace quantiverse {
namespace {

// Windows-1252 differs from Latin-1 in these 32. The five codes that it leaves undefined stay
// control characters, as Windows has it.
constexpr std::size_t kFirstSpecial = 0x80;
constexpr char16_t kSpecials[] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                  0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                  0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                  0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
constexpr std::size_t kBehindSpecials = kFirstSpecial + sizeof kSpecials / sizeof kSpecials[0];
static_assert(kBehindSpecials == 0xA0);

// REQUIRES: it isn't ASCII.
char NarrowCharacter(char16_t c) {
  if (c >= kBehindSpecials && c <= 0xFF) return static_cast<char>(c);
  for (std::size_t i = kFirstSpecial; i < kBehindSpecials; ++i) {
    if (kSpecials[i - kFirstSpecial] == c) return static_cast<char>(i);
  }
  return '?';
}

char16_t WideCharacter(char c) {
  const auto code = static_cast<unsigned char>(c);
  if (code < kFirstSpecial || code >= kBehindSpecials) return code;
  return kSpecials[code - kFirstSpecial];
}

// Null if the main program has nothing of that name.
template <typename Function>
Function* FindInMainProgram(const char* name) {
  void* const program = dlopen(nullptr, RTLD_LAZY);
  if (program == nullptr) return nullptr;
  void* const address = dlsym(program, name);
  dlclose(program);  // it stays as long as the process
  return reinterpret_cast<Function*>(address);
}

class CXlMainProgram final : public CXlHost {
 public:
  Excel4Entry* Excel4() override { return excel4_; }
  Excel4vEntry* Excel4v() override { return excel4v_; }
  MdCallBack12Entry* FindMdCallBack12() override {
    return FindInMainProgram<MdCallBack12Entry>("MdCallBack12");
  }
  int ShowMessageBox(const char16_t* text, const char16_t* title, unsigned flags) override {
    using Box = int(const char16_t*, const char16_t*, unsigned);
    auto* const box = FindInMainProgram<Box>("XlHostMessageBox");
    return box != nullptr ? box(text, title, flags) : 0;
  }

 private:
  Excel4Entry* excel4_ = FindInMainProgram<Excel4Entry>("Excel4");
  Excel4vEntry* excel4v_ = FindInMainProgram<Excel4vEntry>("Excel4v");
};

// The library gives results of Excel's back until it is gone itself.
static_assert(std::is_trivially_destructible_v<CXlMainProgram>);

}  // namespace

CXlHost& PlatformHost() {
  static CXlMainProgram program;
  return program;
}

std::string NarrowText(std::u16string_view wide) {
  std::string narrow(wide.size(), '\0');
  for (std::size_t i = 0; i < wide.size(); ++i) {
    const char16_t c = wide[i];
    narrow[i] = c < kFirstSpecial ? static_cast<char>(c) : NarrowCharacter(c);
  }
  return narrow;
}

std::u16string WideText(std::string_view narrow) {
  std::u16string wide(narrow.size(), u'\0');
  for (std::size_t i = 0; i < narrow.size(); ++i) wide[i] = WideCharacter(narrow[i]);
  return wide;
}

std::uint16_t ThreadLanguage() { return kEnglish; }

// Files have no resources here. The messages in English are data of the program.
std::vector<StringResource> ModuleStrings(std::uint32_t id) {
  if (id < kMessageResourceBase || id - kMessageResourceBase >= kMessageCount) return {};
  return {{kEnglish, id, ResourceMessage(id - kMessageResourceBase)}};
}

bool ThreadSlot::Allocate(void (*on_thread_end)(void* pointer)) {
  static_assert(sizeof(pthread_key_t) <= sizeof key);
  pthread_key_t created = 0;
  allocated = pthread_key_create(&created, on_thread_end) == 0;
  key = created;
  return allocated;
}

void ThreadSlot::Free() {
  if (allocated) pthread_key_delete(key);
  allocated = false;
}

void* ThreadSlot::Get() const { return allocated ? pthread_getspecific(key) : nullptr; }
bool ThreadSlot::Set(void* pointer) const {
  return allocated && pthread_setspecific(key, pointer) == 0;
}

void RunGuarded(void (*body)(void* argument), void* argument) { body(argument); }

}  // namespace quantiverse
