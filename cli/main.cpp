// The program `quantiverse`: text in, text out.
#include <getopt.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "quantiverse/quantiverse.h"

namespace {

constexpr const char* kHelp =
    "Usage: quantiverse [FILE...]\n"
    "       quantiverse -e TEXT\n"
    "Runs texts of calculations with units, one statement a line, and writes each line with its\n"
    "result. Each FILE is one text; \"-\", or no FILE at all, is standard input.\n"
    "\n"
    "  -e TEXT    Run TEXT in place of files.\n"
    "  --help     Show this help.\n"
    "  --version  Show the version.\n"
    "\n"
    "Exit status: 0 if every text was run, whatever errors its lines had; 2 for a bad command\n"
    "line, or a file that can't be read.\n";
constexpr int kTrouble = 2;  // a bad command line, a file that can't be read, a failed write
constexpr std::string_view kStandardInput = "-";

int report(const std::string& what) {
  std::fprintf(stderr, "quantiverse: %s\n", what.c_str());
  return kTrouble;
}

// Says what the last call of the C library on `name` failed with.
int report_last_error(const std::string& name) {
  return report(name + ": " + std::generic_category().message(errno));
}

// A whole input. Grown by realloc, which moves the pages of a large block and doesn't touch those
// beyond the text: reading takes no more memory than the text has bytes, from a pipe as well.
class Input {
 public:
  [[nodiscard]] std::string_view text() const { return {bytes_.get(), size_}; }

  // false: `errno` says why.
  bool read_all(std::FILE* file) {
    while (true) {
      if (size_ == capacity_ && !grow()) return false;
      errno = 0;
      size_ += std::fread(bytes_.get() + size_, 1, capacity_ - size_, file);
      if (std::ferror(file) != 0) return false;
      if (std::feof(file) != 0) return true;
    }
  }

 private:
  struct Free {
    void operator()(char* bytes) const { std::free(bytes); }
  };

  bool grow() {
    constexpr std::size_t kFirst = 64UL * 1024;
    const std::size_t capacity = capacity_ == 0 ? kFirst : 2 * capacity_;
    auto* bytes = static_cast<char*>(std::realloc(bytes_.get(), capacity));
    if (bytes == nullptr) return false;
    static_cast<void>(bytes_.release());  // realloc has freed or moved it
    bytes_.reset(bytes);
    capacity_ = capacity;
    return true;
  }

  std::unique_ptr<char, Free> bytes_;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

int write(std::string_view text) {
  const bool written =
      std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
  return written ? EXIT_SUCCESS : report_last_error("standard output");
}

// A fresh calculator each time, so that a text never sees what an earlier one left.
int interpret(std::string_view text) { return write(quantiverse::Calculator().interpret(text)); }

int interpret_file(const std::string& name) {
  Input input;
  if (name == kStandardInput) {
    if (!input.read_all(stdin)) return report_last_error("standard input");
  } else {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(name.c_str(), "rb"),
                                                               std::fclose);
    // A directory opens, but can't be read.
    if (file == nullptr || !input.read_all(file.get())) return report_last_error(name);
  }
  return interpret(input.text());
}

struct Arguments {
  std::optional<std::string_view> text;
  std::vector<std::string> files;
};

// The status to end with at once, if there is one: help, version, or a bad command line.
std::optional<int> read_arguments(int argc, char** argv, Arguments& arguments) {
  constexpr std::array kOptions = {option{"help", no_argument, nullptr, 'h'},
                                   option{"version", no_argument, nullptr, 'v'},
                                   option{nullptr, 0, nullptr, 0}};
  for (int found = 0; (found = getopt_long(argc, argv, "e:", kOptions.data(), nullptr)) != -1;) {
    switch (found) {
      case 'h':
        return write(kHelp);
      case 'v':
        return write(std::string("quantiverse ") + quantiverse::version() + "\n");
      case 'e':
        if (arguments.text) return report("-e can be given only once");
        arguments.text = optarg;
        break;
      default:
        return kTrouble;  // getopt has said why
    }
  }
  arguments.files.assign(argv + optind, argv + argc);
  if (arguments.text && !arguments.files.empty()) {
    return report("-e and files can't be given together");
  }
  return std::nullopt;
}

int run(int argc, char** argv) {
  Arguments arguments;
  if (const std::optional<int> status = read_arguments(argc, argv, arguments)) return *status;
  if (arguments.text) return interpret(*arguments.text);
  if (arguments.files.empty()) arguments.files.emplace_back(kStandardInput);
  int status = EXIT_SUCCESS;
  for (const std::string& file : arguments.files) {
    if (interpret_file(file) != EXIT_SUCCESS) status = kTrouble;
  }
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    std::string name = "quantiverse";
    if (argc > 0) argv[0] = name.data();  // getopt puts it in front of what it reports
    return run(argc, argv);
  } catch (const std::exception& error) {
    return report(error.what());
  }
}
