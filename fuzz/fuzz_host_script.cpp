// Scripts for the stand-in for Excel, against an add-in: no line of a script may do harm, and
// every answer is an object of JSON.
//
// The input is commands, one a line. The add-in is opened once: what it keeps from then on is part
// of what is tried. With XLHOST_FUZZ_VERSION in the environment Excel has that version.

#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <iostream>
#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

#include "host/commands.h"
#include "host/text.h"

namespace {

using quantiverse::host::answer_line;
using quantiverse::host::Host;
using quantiverse::host::Json;

[[noreturn]] void stop(const std::string& why) {
  std::cerr << why << '\n';
  std::abort();
}

// As it was right after opening, but for the add-in. What stays behind would be looked through for
// leaks after every input.
void put_back(Host& host) {
  static const auto registry = host.registry;
  static const auto menus = host.menus;
  host.registry = registry;
  host.menus = menus;
  host.ledger.clear();
  host.overrides.clear();
  host.calls.take();
  host.dialogs = {};
  host.selection = quantiverse::host::Area{};
  host.workspace = quantiverse::host::default_workspace();
  const int last_row = host.sheet().rows - 1;
  const int last_column = host.sheet().columns - 1;
  if (!host.workbook.clear({0, 0, last_row, last_column})) stop("the sheet can't be cleared");
}

Host& opened_host() {
  static Host* const opened = [] {
    const char* const version = std::getenv("XLHOST_FUZZ_VERSION");
    quantiverse::host::Options options;
    options.library = XLHOST_FUZZ_LIBRARY;
    if (version != nullptr) options.version = std::atoi(version);
    options.release = std::to_string(options.version) + ".0";
    // It stays: a fuzzer goes on looking at the counters of libraries that it has seen.
    Host* const host = std::make_unique<Host>(options).release();
    quantiverse::host::serving_host() = host;
    std::string error;
    if (!host->library.load(options.library, error)) stop(error);
    answer_line(*host, R"(["open"])");
    put_back(*host);
    return host;
  }();
  return *opened;
}

bool is_one_of(const Json& json, std::initializer_list<std::string_view> texts) {
  if (!json.is_string()) return false;
  for (const auto text : texts) {
    if (quantiverse::host::equal_ignoring_case(json.get<std::string>(), text)) return true;
  }
  return false;
}

// Commands that take the library or its functions away, take very long, or have memory lost on
// purpose.
bool is_left_out(const std::string& line) {
  const Json command = Json::parse(line, nullptr, false);
  if (!command.is_array() || command.empty()) return false;
  if (is_one_of(command[0], {"load", "unload", "remove", "callmany"})) return true;
  return command.size() > 1 && is_one_of(command[1], {"xlFree", "16384", "Misuse", "Ask"});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Host& host = opened_host();
  std::istringstream script(std::string(reinterpret_cast<const char*>(data), size));
  std::string line;
  while (std::getline(script, line)) {
    if (is_left_out(line)) continue;
    const Json answer = Json::parse(answer_line(host, line), nullptr, false);
    if (!answer.is_object() || answer.empty()) stop("no answer to " + line);
  }
  for (const auto& fault : host.ledger.faults()) stop(fault);
  for (const auto& leak : host.ledger.leaks()) stop(leak);
  put_back(host);
  return 0;
}
