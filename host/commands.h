#pragma once

#include <string>
#include <string_view>

#include "host/host.h"

// The commands of a script: each a JSON array, its first element the name.
namespace quantiverse::host {

// Carries out one line and gives the answer as one line of JSON.
std::string answer_line(Host& host, const std::string& line);

// One command's work. arguments: those behind the name, as many as its row allows.
// Throws BadCommand.
using CommandHandler = Json(Host& host, const Json& arguments);

// The answer of commands that only set.
Json ok();
// Throws BadCommand unless it is a text.
std::string text_of(const Json& json, const char* what);

CommandHandler load, unload, open, close, add, remove, info, set_entry_point;
CommandHandler call_function, call_command, call_many, event;
CommandHandler cell, array_cell, select;
CommandHandler queue_answer, alerts, registered, names, menus, calls, fail, reply, workspace,
    ledger;

}  // namespace quantiverse::host
