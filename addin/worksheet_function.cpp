#include "addin/worksheet_function.h"

#include <quantiverse/quantiverse.h>

#include <array>
#include <string_view>

#include "addin/addin_state.h"
#include "addin/excel_call.h"
#include "addin/exceptions.h"
#include "addin/return_block.h"
#include "text/numbers.h"
#include "text/scanner.h"

namespace quantiverse {
namespace {

constexpr double kLastSupportedRelease = 15.0;
constexpr const char* kRefusal =
    "This version of Excel is not supported.  Check https://quantiverse.example";

// What the output shows in front of a result: this many places with the blank of " = ".
constexpr std::size_t kIndent = 8;

// Where a search in the output finds nothing, the processor would fault further on; no cell may
// tell the difference.
std::size_t Found(std::size_t position) {
  if (position == std::string::npos) throw CXlStructuredException(kAccessViolation);
  return position;
}

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// The first place of `word` with a blank in front; npos if there is none. The word is sought first:
// blanks are many, and every call of the function looks for an error in vain.
std::size_t FindMessage(std::string_view output, std::string_view word) {
  std::size_t place = output.find(word);
  while (place != std::string::npos && (place == 0 || output[place - 1] != ' ')) {
    place = output.find(word, place + 1);
  }
  return place;
}

// The message of a request that failed, which begins at `first`. The value in other units follows
// and is cut off. An "=" among the units stands ahead of the message and cuts nothing of it.
std::string_view FailedRequest(std::string_view output, std::size_t first) {
  const std::size_t equals = Found(output.find('='));
  if (equals < kIndent) throw CXlStructuredException(kAccessViolation);
  const std::size_t last = equals - kIndent;
  return last >= first ? output.substr(first, last - first) : output.substr(first);
}

// The unit in what the output shows behind its "=": the first blank, but for one that comes at
// once, becomes an "&", and the unit is what stands behind the first of those.
std::string UnitIn(std::string_view shown) {
  std::string marked(shown);
  const std::size_t blank = marked.find(' ', 1);
  if (blank != std::string::npos) marked[blank] = '&';
  return marked.substr(Found(marked.find('&')) + 1);
}

int CallExcel(int function, XLOPER& result, XLOPER* argument) {
  return Excel4v(function, &result, 1, &argument);
}
int CallExcel(int function, XLOPER12& result, XLOPER12* argument) {
  return Excel12v(function, &result, 1, &argument);
}

// Every call of the function comes this way, so it is short: the item is ready, counted as Excel
// counts texts, and an answer that is known goes back at once.
template <XlRecord Record>
double AskForRelease(const typename XlForm<Record>::Char* item, KnownRelease<Record>& known) {
  Record argument{};
  // Excel reads arguments only. NOLINTNEXTLINE(*-const-cast)
  argument.val.str = const_cast<typename XlForm<Record>::Char*>(item);
  SetType(argument, xltypeStr);
  Record answer{};
  if (CallExcel(xlfInfo, answer, &argument) != xlretSuccess) return 0.0;
  if (TypeOf(answer) == xltypeStr && TextOf(answer) == known.text) {
    FreeExcelResult(answer);
    return known.number;
  }
  CXlOper release;
  release.TakeFromExcel(answer);
  const double number = release.ToDouble();
  if (release.IsString()) known = {typename KnownRelease<Record>::Text(TextOf(answer)), number};
  return number;
}

// The output for the block's line, good until the next call. A cell depends on its arguments alone.
std::string_view Calculate(XlReturnBlock& block) {
  // A fault of the processor has left the last call, and whatever it was about to do. What the
  // calculator holds since isn't to be trusted, not even to be freed.
  if (block.is_calculating) ::new (static_cast<void*>(&block.calculator)) Calculator;
  block.is_calculating = true;
  block.calculator.reset();
  const std::string_view output = block.calculator.interpret_in_place(block.line);
  block.is_calculating = false;
  return output;
}

double ReleaseOfExcel(XlReturnBlock& block) {
  return IsExcel12() ? AskForRelease(u"\7Release", block.release12)
                     : AskForRelease("\7Release", block.release4);
}

std::string UpperCase(std::string text) {
  for (char& c : text) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return text;
}

}  // namespace

void ConversionLine(double value, const CXlDualString& in_units, const CXlDualString& out_units,
                    std::string& line) {
  std::array<char, kFormattedDoubleSize> digits;
  line.assign(digits.data(), format_double(value, digits));
  line.push_back(' ');
  in_units.AppendNarrow(line);
  line.append("; ");
  out_units.AppendNarrow(line);
}

CXlScrape ScrapeOutput(std::string_view output) {
  const std::size_t error = FindMessage(output, "ERROR");
  if (error != std::string_view::npos) {
    // A message with a colon counts for more than a request that failed ahead of it.
    const std::size_t message = FindMessage(output, "ERROR:");
    if (message != std::string_view::npos) return {true, 0.0, std::string(output.substr(message))};
    return {true, 0.0, std::string(FailedRequest(output, error))};
  }
  const std::string_view shown = output.substr(Found(output.find('=')) + 1);
  std::size_t first = 0;
  while (first < shown.size() && IsSpace(shown[first])) ++first;
  // Without a number it is zero. Infinities and NaN are no numbers here.
  double value = 0.0;
  Cursor cursor(shown.substr(first));
  scan_number(cursor, value);
  const auto end = static_cast<std::size_t>(cursor.position - shown.data());
  // Nearly always the number stands between two blanks, and the unit behind them.
  if (first == 1 && end > first && end < shown.size() && shown[end] == ' ') {
    return {false, value, std::string(shown.substr(end + 1))};
  }
  return {false, value, UnitIn(shown)};
}

const CXlOper* QuantiverseBody(CXlOper& result, double value, const CXlDualString& in_units,
                               const CXlDualString& out_units) {
  XlReturnBlock& block = ReturnBlock();
  if (ReleaseOfExcel(block) > kLastSupportedRelease) {
    result = kRefusal;
    return nullptr;
  }
  ConversionLine(value, in_units, out_units, block.line);
  const CXlScrape scrape = ScrapeOutput(Calculate(block));
  if (scrape.is_error) {
    result.AssignPair(scrape.text, "");
  } else {
    result.AssignPair(scrape.value, scrape.text);
  }
  return nullptr;
}

double GetExcelRelease() { return ReleaseOfExcel(ReturnBlock()); }

const CXlOper* QuantiverseMacroBody(CXlOper&) {
  InsertFunctionInActiveCell("Quantiverse");
  return nullptr;
}

bool InsertFunctionInActiveCell(const std::string& name) {
  CXlOper cell;
  if (!cell.GetActiveCell()) {
    XlAlert("Please select a cell for the result and try again.", 3);
    return false;
  }
  CXlOper formula;
  bool in_array = false;
  const bool is_read = cell.GetFormula(true, formula, in_array, true);
  const bool calls_it =
      is_read && UpperCase(formula.ToText()).find(UpperCase(name)) != std::string::npos;
  if (!calls_it) {
    if (!cell.GetFormula(true, formula, in_array, true)) return true;
    if (!formula.ToText().empty() && !XlAlert("Delete existing contents in cell?", 1)) return false;
    // The dialog opens whether or not the cell could be written.
    static_cast<void>(cell.SetFormula(true, "=" + name + "()", false, true));
  }
  XlCommand(xlcFunctionWizard);
  return true;
}

}  // namespace quantiverse
