#include "host/commands.h"

#include <cstddef>

namespace quantiverse::host {
namespace {

constexpr std::size_t kAnyNumber = static_cast<std::size_t>(-1);

struct CommandRow {
  std::string_view name;
  std::size_t least;  // arguments
  std::size_t most;
  CommandHandler* handler;
};

// clang-format off
constexpr CommandRow kCommands[] = {
    {"load",       0, 0,          load},
    {"unload",     0, 0,          unload},
    {"open",       0, 0,          open},
    {"close",      0, 0,          close},
    {"add",        0, 0,          add},
    {"remove",     0, 0,          remove},
    {"info",       1, 1,          info},
    {"entrypoint", 0, 0,          set_entry_point},
    {"call",       1, kAnyNumber, call_function},
    {"macro",      1, kAnyNumber, call_command},
    {"callmany",   3, kAnyNumber, call_many},
    {"event",      1, 4,          event},
    {"cell",       1, 2,          cell},
    {"arraycell",  2, 2,          array_cell},
    {"select",     1, 1,          select},
    {"answer",     1, 1,          queue_answer},
    {"alerts",     0, 0,          alerts},
    {"registered", 0, 0,          registered},
    {"names",      0, 0,          names},
    {"menus",      0, 0,          menus},
    {"calls",      0, 0,          calls},
    {"fail",       2, 3,          fail},
    {"reply",      3, 3,          reply},
    {"workspace",  1, 1,          workspace},
    {"ledger",     0, 0,          ledger},
};
// clang-format on

// Deeper than any value goes. Lists of a depth without end would be copied without end.
constexpr int kDeepest = 8;

Json parse(const std::string& line) {
  return Json::parse(line, [](int depth, Json::parse_event_t, Json&) {
    if (depth > kDeepest) throw BadCommand("nested too deeply");
    return true;
  });
}

Json run(Host& host, const Json& command) {
  if (!command.is_array() || command.empty()) throw BadCommand("a command is a list");
  const std::string name = text_of(command.front(), "the name of a command");
  for (const auto& row : kCommands) {
    if (row.name != name) continue;
    Json arguments = command;
    arguments.erase(std::size_t{0});
    if (arguments.size() < row.least || arguments.size() > row.most) {
      throw BadCommand("the number of arguments is wrong for " + name);
    }
    return row.handler(host, arguments);
  }
  throw BadCommand("there is no command " + name);
}

}  // namespace

std::string answer_line(Host& host, const std::string& line) {
  Json answer;
  try {
    answer = run(host, parse(line));
  } catch (const BadCommand& bad) {
    answer = {{"bad", bad.what()}};
  } catch (const Json::exception& bad) {
    answer = {{"bad", bad.what()}};
  }
  return written(answer);
}

Json ok() { return {{"ok", true}}; }

std::string text_of(const Json& json, const char* what) {
  if (!json.is_string()) throw BadCommand(std::string(what) + " is a text");
  return json.get<std::string>();
}

}  // namespace quantiverse::host
