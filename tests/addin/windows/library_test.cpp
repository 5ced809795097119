// The add-in as a file that comes and goes. This program knows it by its exports alone.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <thread>
#include <vector>

#include "addin/windows/windows.h"
#include "addin/xlcall.h"
// Knows nothing without windows.h.
#include <psapi.h>

namespace quantiverse {
namespace {

std::filesystem::path Folder() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return std::filesystem::path(path).parent_path();
}

std::filesystem::path Xll() { return Folder() / "Quantiverse.xll"; }

class Loaded {
 public:
  explicit Loaded(const std::filesystem::path& path) : module_(LoadLibraryW(path.c_str())) {}
  Loaded(const Loaded&) = delete;
  Loaded& operator=(const Loaded&) = delete;
  ~Loaded() {
    if (module_ != nullptr) FreeLibrary(module_);
  }
  [[nodiscard]] HMODULE Module() const { return module_; }

  // 5 ft in m, as Excel gets it; 0.0 for anything but an array.
  [[nodiscard]] double Convert() const {
    using Function = XLOPER12* XLCALL_PASCAL(double, const char16_t*, const char16_t*);
    using Free = void XLCALL_PASCAL(XLOPER12*);
    XLOPER12* const result = FunctionFrom<Function>(module_, "Quantiverse_12")(5.0, u"ft", u"m");
    const double value =
        (result->xltype & xltypeMulti) != 0 ? result->val.array.lparray[0].val.num : 0.0;
    FunctionFrom<Free>(module_, "xlAutoFree12")(result);
    return value;
  }

 private:
  HMODULE module_;
};

// Handles are given out lowest first, so this one lies above all that are in use, and counting
// them isn't needed, which not every system of this kind can.
std::uintptr_t FirstFreeHandle() {
  const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  CloseHandle(event);
  return reinterpret_cast<std::uintptr_t>(event);
}

std::size_t MemoryInUse() {
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return counters.PagefileUsage;
}

// Loads, converts on a thread that was there before and on one that comes and goes, unloads.
void LoadOnce() {
  const Loaded xll(Xll());
  ASSERT_NE(xll.Module(), nullptr) << GetLastError();
  ASSERT_DOUBLE_EQ(xll.Convert(), 1.524);
  double elsewhere = 0.0;
  std::thread([&] { elsewhere = xll.Convert(); }).join();
  ASSERT_DOUBLE_EQ(elsewhere, 1.524);
}

TEST(Library, LeavesNothingBehind) {
  // What loading and unloading these takes isn't ours to count.
  for (const char* name : {"comctl32.dll", "oleacc.dll", "oleaut32.dll", "uxtheme.dll"}) {
    ASSERT_NE(LoadLibraryA(name), nullptr);
  }
  for (int i = 0; i < 100 && !HasFatalFailure(); ++i) LoadOnce();
  const std::uintptr_t handles = FirstFreeHandle();
  const std::size_t memory = MemoryInUse();
  for (int i = 0; i < 1000 && !HasFatalFailure(); ++i) LoadOnce();
  EXPECT_EQ(GetModuleHandleW(L"Quantiverse.xll"), nullptr);
  EXPECT_LE(FirstFreeHandle(), handles + 16);
  constexpr std::size_t kSlack = 32 * 1024;  // a few bytes a time
  EXPECT_LE(MemoryInUse(), memory + kSlack);
}

TEST(Library, AThreadThatEndsGivesItsBlockBack) {
  const Loaded xll(Xll());
  const auto convert_on_threads = [&] {
    for (int i = 0; i < 500; ++i) {
      std::thread([&] { ASSERT_DOUBLE_EQ(xll.Convert(), 1.524); }).join();
    }
  };
  convert_on_threads();
  const std::size_t memory = MemoryInUse();
  convert_on_threads();
  EXPECT_LE(MemoryInUse(), memory + 64 * 1024);
}

TEST(Library, LoadsTwiceInOneProcess) {
  const Loaded first(Xll());
  const Loaded again(Xll());
  EXPECT_EQ(first.Module(), again.Module());
  // Another file is another add-in, with a state of its own.
  const auto copy = Folder() / "another.xll";
  std::filesystem::remove(copy);
  std::filesystem::copy_file(Xll(), copy);
  {
    const Loaded other(copy);
    ASSERT_NE(other.Module(), nullptr);
    EXPECT_NE(other.Module(), first.Module());
    EXPECT_DOUBLE_EQ(other.Convert(), 1.524);
  }
  EXPECT_DOUBLE_EQ(first.Convert(), 1.524);
  std::filesystem::remove(copy);
}

TEST(Library, RefusesToLoadWithoutAThreadSlot) {
  std::vector<DWORD> taken;
  for (DWORD index = TlsAlloc(); index != TLS_OUT_OF_INDEXES; index = TlsAlloc()) {
    taken.push_back(index);
  }
  {
    const Loaded refused(Xll());
    EXPECT_EQ(refused.Module(), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_DLL_INIT_FAILED));
  }
  for (const DWORD index : taken) TlsFree(index);
  const Loaded xll(Xll());
  ASSERT_NE(xll.Module(), nullptr);
  EXPECT_DOUBLE_EQ(xll.Convert(), 1.524);
}

TEST(Library, RefusesToLoadWithoutExcelsLibrary) {
  const auto folder = Folder() / "alone";
  std::filesystem::create_directories(folder);
  const auto copy = folder / "alone.xll";
  std::filesystem::remove(copy);  // couldn't be done right after a load has failed
  std::filesystem::copy_file(Xll(), copy);
  const HMODULE module = LoadLibraryExW(
      copy.c_str(), nullptr, LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
  EXPECT_EQ(module, nullptr);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_MOD_NOT_FOUND));
  if (module != nullptr) FreeLibrary(module);
}

}  // namespace
}  // namespace quantiverse
