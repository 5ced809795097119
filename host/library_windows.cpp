#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "host/library.h"
#include "host/text.h"
#include "host/windows.h"
// Behind the header that it needs.
#include <shellapi.h>

namespace quantiverse::host {
namespace {

std::wstring wide(const std::string& text) {
  std::u16string utf16(encoded_size(text), u'\0');
  encode<char16_t>(text, utf16);
  return {utf16.begin(), utf16.end()};
}

std::string narrow(std::wstring_view text) {
  return from_utf16(std::u16string(text.begin(), text.end()));
}

// What the system says of the last error, on one line.
std::string system_error() {
  const DWORD code = GetLastError();
  wchar_t text[512] = L"";
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS |
                         FORMAT_MESSAGE_MAX_WIDTH_MASK,  // no line ends
                     nullptr, code, 0, text, static_cast<DWORD>(std::size(text)), nullptr);
  const std::string said = narrow({text, length});
  return length != 0 ? std::string(trimmed(said)) : "error " + std::to_string(code);
}

std::wstring absolute(const std::wstring& path) {
  const DWORD size = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
  std::wstring full(size, L'\0');
  full.resize(GetFullPathNameW(path.c_str(), size, full.data(), nullptr));
  return full;
}

std::wstring own_folder() {
  std::wstring path(32768, L'\0');  // as long as paths get
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path.substr(0, path.find_last_of(L"\\/") + 1);
}

HANDLE lent_stream(DWORD which) {
  const HANDLE stream = GetStdHandle(which);
  SetHandleInformation(stream, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
  return stream;
}

}  // namespace

Library::~Library() {
  if (is_loaded()) unload();
}

bool Library::load(const std::string& path, std::string& error) {
  // A name without a folder would be looked for in the system's.
  const std::wstring full = absolute(wide(path));
  path_ = narrow(full);
  handle_ = LoadLibraryW(full.c_str());
  if (handle_ == nullptr) error = path_ + ": " + system_error();
  return is_loaded();
}

bool Library::unload() {
  FreeLibrary(static_cast<HMODULE>(handle_));
  handle_ = nullptr;
  // A library may hold itself, with a thread of its own or by loading itself.
  return GetModuleHandleW(wide(path_).c_str()) == nullptr;
}

void* Library::find(const char* name) const {
  if (!is_loaded()) return nullptr;
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}

std::vector<std::string> start_program(int, char**) {
  for (std::FILE* const stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
  // No dialog of the system's waits for a user.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
  // The arguments of `main` are in the code page, which lacks most characters.
  int count = 0;
  wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 0; i < count; ++i) arguments.push_back(narrow(words[i]));
  LocalFree(static_cast<void*>(words));
  return arguments;
}

// A program can't be replaced here: this one waits for the other, and ends as it did. The other
// gets the command line as it is.
std::string become_program(const std::string& name, char**) {
  const std::wstring program = own_folder() + wide(name) + L".exe";
  std::wstring command_line = GetCommandLineW();
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = lent_stream(STD_INPUT_HANDLE);
  start.hStdOutput = lent_stream(STD_OUTPUT_HANDLE);
  start.hStdError = lent_stream(STD_ERROR_HANDLE);
  PROCESS_INFORMATION child{};
  if (!CreateProcessW(program.c_str(), command_line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                      nullptr, &start, &child)) {
    return narrow(program) + ": " + system_error();
  }
  WaitForSingleObject(child.hProcess, INFINITE);
  DWORD status = EXIT_FAILURE;
  GetExitCodeProcess(child.hProcess, &status);
  std::exit(static_cast<int>(status));
}

}  // namespace quantiverse::host
