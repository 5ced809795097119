#pragma once

#include <string>
#include <vector>

// All that the host asks of the system, message boxes apart: libraries that come and go, and
// programs.
namespace quantiverse::host {

class Library {
 public:
  Library() = default;
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library();

  // error: what the system says when it can't.
  bool load(const std::string& path, std::string& error);
  // false: it is still in memory.
  bool unload();
  [[nodiscard]] bool is_loaded() const { return handle_ != nullptr; }
  // Null if the library exports nothing of that name, or isn't loaded.
  [[nodiscard]] void* find(const char* name) const;

 private:
  std::string path_;
  void* handle_ = nullptr;
};

// To be called first of all. Gives the program's arguments, in UTF-8; from then on the standard
// streams carry bytes as they are.
std::vector<std::string> start_program(int argc, char** argv);

// Goes on as the program `name` in the folder of this one, with the same arguments and streams.
// Returns only if that fails, with what the system says.
std::string become_program(const std::string& name, char** argv);

}  // namespace quantiverse::host
