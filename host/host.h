#pragma once

#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/call_log.h"
#include "host/json_value.h"
#include "host/ledger.h"
#include "host/library.h"
#include "host/menus.h"
#include "host/registry.h"
#include "host/workbook.h"

// The stand-in for Excel: all of its state.
namespace quantiverse::host {

struct Options {
  std::string library;
  int version = 15;
  std::string release;  // what xlfInfo answers
  std::string file = "C:\\AddIns\\Quantiverse.xll";
};

inline constexpr int kFirstOfForm12 = 12;

// Dialogs that add-ins showed, and what the user is going to say.
struct Dialogs {
  std::deque<bool> answers;
  Json shown = Json::array();

  // The next answer that was queued; true if there is none.
  bool next_answer();
  // A message box takes that answer, and is noted.
  // flags: as Windows counts them, such as 52 for yes and no buttons and an exclamation mark.
  bool answer_box(std::u16string_view text, std::u16string_view title, unsigned flags);
};

// What the next calls of an operation do instead of their work.
struct Override {
  std::int64_t times = 0;
  int code = 0;
  std::optional<Value> reply;  // what they answer if the code is 0
};

struct Host {
  explicit Host(Options chosen);
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  [[nodiscard]] bool is_form12() const { return options.version >= kFirstOfForm12; }
  [[nodiscard]] const Sheet& sheet() const { return workbook.sheet(); }

  Options options;
  Ledger ledger;
  Registry registry;
  Menus menus;
  Dialogs dialogs;
  Workbook workbook;
  CallLog calls;  // since last asked
  std::map<int, Override> overrides;
  std::vector<Value> workspace;
  std::optional<Area> selection = Area{};
  // Of all that calls of add-ins change but for the ledger and the log, which lock for themselves.
  // Add-ins call from many threads; a formula's calculation calls from within a call.
  std::recursive_mutex mutex;
  // Last, so that it goes first: what a library does when it is unloaded still finds the rest.
  Library library;
};

// In `overrides`: any operation but xlFree.
inline constexpr int kAnyOperation = -1;

// What 37 answers to xlfGetWorkspace unless told otherwise.
std::vector<Value> default_workspace();

// The host that this process's entry points serve. Null before there is one.
Host*& serving_host();

}  // namespace quantiverse::host
