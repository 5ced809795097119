#pragma once

#include <string>

// All that the host asks of the system: libraries that come and go, and programs.
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

// Goes on as the program `name` in the folder of this one, with the same arguments.
// Returns only if that fails, with what the system says.
std::string become_program(const std::string& name, char** arguments);

}  // namespace quantiverse::host
