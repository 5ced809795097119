#include "child.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "measure.h"

extern char** environ;

namespace quantiverse::bench {
namespace {

[[noreturn]] void give_up(const std::string& what) {
  std::fprintf(stderr, "bench: %s\n", what.c_str());
  std::exit(2);
}

double seconds(const timeval& t) {
  return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
}

std::string read_all(int file) {
  std::string text;
  char block[65536];
  for (ssize_t n = read(file, block, sizeof block); n > 0; n = read(file, block, sizeof block)) {
    text.append(block, static_cast<std::size_t>(n));
  }
  return text;
}

}  // namespace

Finished run_program(const std::vector<std::string>& command, const std::string& input) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) give_up("no pipe");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, input.c_str(), O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);

  std::vector<char*> arguments;
  for (const std::string& argument : command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);

  const double start = wall_seconds();
  pid_t child = 0;
  const int failed =
      posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  if (failed != 0) give_up("cannot run " + command[0]);

  Finished finished{read_all(ends[0]), 0.0, 0.0};
  close(ends[0]);
  int status = 0;
  rusage used{};
  wait4(child, &status, 0, &used);
  finished.wall_seconds = wall_seconds() - start;
  finished.processor_seconds = seconds(used.ru_utime) + seconds(used.ru_stime);
  if (status != 0) give_up(command[0] + " failed");
  return finished;
}

TemporaryFile::TemporaryFile(const std::string& contents) : path_("/tmp/quantiverse_bench_XXXXXX") {
  const int file = mkstemp(path_.data());
  if (file < 0) give_up("no temporary file");
  const bool written =
      write(file, contents.data(), contents.size()) == static_cast<ssize_t>(contents.size());
  close(file);
  if (!written) give_up("cannot write " + path_);
}

TemporaryFile::~TemporaryFile() { unlink(path_.c_str()); }

}  // namespace quantiverse::bench
