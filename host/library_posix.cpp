#include <dlfcn.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "host/library.h"

namespace quantiverse::host {

Library::~Library() {
  if (is_loaded()) unload();
}

bool Library::load(const std::string& path, std::string& error) {
  // A name without a slash would be looked for in the system's folders.
  std::error_code unknown_folder;
  path_ = std::filesystem::absolute(path, unknown_folder).string();
  handle_ = dlopen(path_.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle_ == nullptr) error = dlerror();
  return is_loaded();
}

bool Library::unload() {
  dlclose(handle_);
  handle_ = nullptr;
  // A library may hold itself, with a unique symbol or a thread's destructor.
  void* const left = dlopen(path_.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (left != nullptr) dlclose(left);
  return left == nullptr;
}

void* Library::find(const char* name) const { return is_loaded() ? dlsym(handle_, name) : nullptr; }

std::vector<std::string> start_program(int argc, char** argv) { return {argv, argv + argc}; }

std::string become_program(const std::string& name, char** argv) {
  std::error_code error;
  const auto self = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return error.message();
  const std::string program = (self.parent_path() / name).string();
  execv(program.c_str(), argv);
  return program + ": " + std::strerror(errno);
}

}  // namespace quantiverse::host
