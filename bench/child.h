#pragma once

#include <string>
#include <vector>

namespace quantiverse::bench {

// What another program has done.
struct Finished {
  std::string output;
  double processor_seconds;  // its own, user and system
  double wall_seconds;       // from the start to the end of its output and of itself
};

// Runs a program with `input`, the name of a file, as its standard input and gives back what it
// wrote to its standard output. Ends this process if that can't be done or fails.
Finished run_program(const std::vector<std::string>& command, const std::string& input);

// A file of its own name, with `contents`, that goes when the object does.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& contents);
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace quantiverse::bench
