#include <cstdio>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/commands.h"
#include "host/entry_points.h"
#include "host/library.h"
#include "host/message_box.h"
#include "host/text.h"

// The program is built twice, with and without the export MdCallBack12. An export can't be taken
// back, so the first becomes the second where Excel would have none.
namespace quantiverse::host {
namespace {

constexpr int kBadFree = 1;
constexpr int kCannotStart = 2;
constexpr int kOldestVersion = 4;
constexpr int kNewestVersion = 99;

constexpr const char kUsage[] =
    "Usage: xlhost [--version N] [--release TEXT] [--no-callback12] [--file NAME] LIBRARY\n";

using Words = std::vector<std::string>;

struct CommandLine {
  Options options;
  bool has_callback12 = true;
};

std::optional<int> version_from(std::string_view text) {
  const auto number = parse_number(text);
  const bool is_version = number && *number >= kOldestVersion && *number <= kNewestVersion &&
                          std::to_string(static_cast<int>(*number)) == text;
  return is_version ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

// Takes the option at `i` with its value. false: it is none, or has none.
bool take_option(const Words& words, std::size_t& i, CommandLine& line) {
  const std::string& name = words[i];
  if (name == "--no-callback12") {
    line.has_callback12 = false;
    return true;
  }
  if (++i == words.size()) return false;
  if (name == "--release") {
    line.options.release = words[i];
  } else if (name == "--file") {
    line.options.file = words[i];
  } else if (name == "--version") {
    const auto version = version_from(words[i]);
    line.options.version = version.value_or(0);
    return version.has_value();
  } else {
    return false;
  }
  return true;
}

std::optional<CommandLine> read_command_line(const Words& words) {
  CommandLine line;
  for (std::size_t i = 1; i < words.size(); ++i) {
    if (words[i].starts_with('-')) {
      if (!take_option(words, i, line)) return std::nullopt;
    } else if (line.options.library.empty()) {
      line.options.library = words[i];
    } else {
      return std::nullopt;
    }
  }
  if (line.options.library.empty()) return std::nullopt;
  if (line.options.release.empty()) {
    line.options.release = std::to_string(line.options.version) + ".0";
  }
  return line;
}

void complain(const std::string& sentence) {
  std::fprintf(stderr, "xlhost: %s\n", sentence.c_str());
}

void answer_all(Host& host) {
  std::string line;
  while (std::getline(std::cin, line)) {
    if (trimmed(line).empty()) continue;
    std::cout << answer_line(host, line) << std::endl;  // whoever asked waits for it
  }
}

// What went wrong with memory, once nothing of the library is left to give any back.
int settle(Host& host) {
  if (host.library.is_loaded()) host.library.unload();
  const auto faults = host.ledger.faults();
  const auto leaks = host.ledger.leaks();
  for (const auto& fault : faults) complain(fault);
  for (const auto& leak : leaks) complain(leak);
  return faults.empty() && leaks.empty() ? 0 : kBadFree;
}

int run(int argc, char** argv) {
  const auto line = read_command_line(start_program(argc, argv));
  if (!line) {
    std::fputs(kUsage, stderr);
    return kCannotStart;
  }
  const bool wants_callback12 = line->has_callback12 && line->options.version >= kFirstOfForm12;
  if (XLHOST_HAS_CALLBACK12 && !wants_callback12) {
    complain("cannot start " + become_program("xlhost-plain", argv));
    return kCannotStart;
  }
  Host host(line->options);
  serving_host() = &host;
  const BoxWatch boxes;
  std::string error;
  if (!host.library.load(host.options.library, error)) {
    complain("cannot load " + error);
    return kCannotStart;
  }
  answer_all(host);
  const int status = settle(host);
  serving_host() = nullptr;
  return status;
}

}  // namespace
}  // namespace quantiverse::host

int main(int argc, char** argv) { return quantiverse::host::run(argc, argv); }
