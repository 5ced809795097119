// Worksheet calls through the stand-in for Excel beside the bare interpreter, on one thread and on
// two. Both have to agree on every conversion first.

#include <barrier>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "host/call.h"
#include "host/commands.h"
#include "host/entry_points.h"
#include "measure.h"
#include "quantiverse/quantiverse.h"
#include "worksheets.h"

namespace {

using namespace quantiverse;

constexpr std::size_t kConversions = 1'000;
// Of each thread at a time. Few, so that a machine that changes its pace changes it for both sides
// of nearly all pairs.
constexpr std::size_t kCalls = 20'000;
constexpr int kThreads[] = {1, 2};

[[noreturn]] void give_up(const std::string& why) {
  std::fprintf(stderr, "worksheet_bench: %s\n", why.c_str());
  std::exit(2);
}

// The same conversions as lines and as the arguments of a worksheet function.
struct Conversions {
  Conversions() {
    for (std::size_t i = 0; i < kConversions; ++i) {
      const std::string number = bench::number_of(i);
      const bench::Conversion units = bench::conversion_of(i);
      lines.push_back(number + ' ' + units.from + "; " + units.to);
      arguments.push_back({{{host::Number{std::strtod(number.c_str(), nullptr)}}},
                           {{std::string(units.from)}},
                           {{std::string(units.to)}}});
    }
  }

  std::vector<std::string> lines;
  std::vector<std::vector<host::Argument>> arguments;
};

// What the formula of each cell passes.
using Cells = std::vector<host::PreparedArguments>;

// What Excel does for a cell whose formula it has read: the call of the export with the arguments,
// which a cell keeps as the add-in wants them, the result copied and given back.
class Worksheet {
 public:
  explicit Worksheet(const std::string& library) : host_(options_for(library)) {
    host::serving_host() = &host_;
    std::string error;
    if (!host_.library.load(library, error)) give_up("cannot load " + error);
    host::answer_line(host_, R"(["open"])");
    const host::Registration* const found =
        host_.registry.find("Quantiverse", host::MacroType::kFunction);
    if (found == nullptr) give_up("the add-in registered no function");
    signature_ = *found->signature;
    callee_ = *host::find_callee(host_, found->export_name.c_str(), signature_.result);
  }
  Worksheet(const Worksheet&) = delete;
  Worksheet& operator=(const Worksheet&) = delete;
  ~Worksheet() {
    host::answer_line(host_, R"(["close"])");
    host_.library.unload();
    host::serving_host() = nullptr;
  }

  // As `callmany` does before its calls.
  void prepare(const std::vector<host::Argument>& arguments, host::PreparedArguments& prepared) {
    if (!host::prepare(host_, signature_, arguments, prepared)) give_up("bad arguments");
  }

  // The same. false: nothing came back.
  bool call(const host::PreparedArguments& arguments, host::Returned& returned) {
    return host::call_add_in(host_, callee_, arguments.slots(), returned);
  }

  [[nodiscard]] bool is_settled() const {
    return host_.ledger.faults().empty() && host_.ledger.leaks().empty();
  }

 private:
  static host::Options options_for(const std::string& library) {
    host::Options options;
    options.library = library;
    options.release = "15.0";
    return options;
  }

  host::Host host_;
  host::Signature signature_;
  host::Callee callee_;
};

// The cell's two values as the interpreter's output shows them.
std::string shown(const host::Value& value) {
  const auto* row = value.as<host::Array>();
  if (row == nullptr || row->elements.size() != 2) return "";
  const auto* number = row->elements[0].as<host::Number>();
  const auto* unit = row->elements[1].as<std::string>();
  if (number == nullptr || unit == nullptr) return "";
  char digits[32];
  std::snprintf(digits, sizeof digits, "%.6g", number->value);
  return std::string(" = ") + digits + ' ' + *unit;
}

void check_agreement(const Conversions& conversions, const Cells& cells, Worksheet& worksheet) {
  Calculator calculator;
  for (std::size_t i = 0; i < kConversions; ++i) {
    const std::string output = calculator.interpret(conversions.lines[i]);
    host::Returned returned;
    const bool is_good = worksheet.call(cells[i], returned) && returned.is_freed;
    const std::string cell = is_good ? shown(returned.value) : "";
    if (cell.empty() || !output.ends_with(cell)) give_up("no agreement on " + conversions.lines[i]);
  }
}

// Calls per second of all threads together, by the clock on the wall. Each makes a worker of its
// own, which is then called with the numbers of the conversions in turn.
template <typename MakeWorker>
double calls_per_second(int threads, MakeWorker make_worker) {
  double start = 0.0;
  std::barrier all_are_warm(threads, [&start]() noexcept { start = bench::wall_seconds(); });
  std::vector<std::thread> running;
  for (int thread = 0; thread < threads; ++thread) {
    running.emplace_back([&] {
      auto worker = make_worker();
      for (std::size_t i = 0; i < kConversions; ++i) worker(i);
      all_are_warm.arrive_and_wait();
      for (std::size_t i = 0; i < kCalls; ++i) worker(i % kConversions);
    });
  }
  for (std::thread& thread : running) thread.join();
  return static_cast<double>(kCalls) * threads / (bench::wall_seconds() - start);
}

struct Rates {
  std::vector<double> bare, worksheet, ratio;
};

Rates measure(const Conversions& conversions, const Cells& cells, Worksheet& worksheet, int threads,
              int repetitions) {
  Rates rates;
  for (int i = 0; i < repetitions; ++i) {
    rates.bare.push_back(calls_per_second(threads, [&] {
      return [&lines = conversions.lines, calculator = Calculator()](std::size_t line) mutable {
        if (calculator.interpret(lines[line]).empty()) std::abort();
      };
    }));
    rates.worksheet.push_back(calls_per_second(threads, [&] {
      return [&, returned = host::Returned()](std::size_t cell) mutable {
        if (!worksheet.call(cells[cell], returned)) std::abort();
      };
    }));
    rates.ratio.push_back(rates.worksheet.back() / rates.bare.back());
  }
  return rates;
}

const char* threads_text(int threads) { return threads == 1 ? "one thread" : "two threads"; }

}  // namespace

int main(int argc, char** argv) {
  const int repetitions = argc > 2 ? std::atoi(argv[2]) : 75;
  if (argc < 2 || repetitions < 1) {
    std::fprintf(stderr, "usage: worksheet_bench ADD-IN [REPETITIONS]\n");
    return 2;
  }
  const Conversions conversions;
  std::vector<Rates> results;
  {
    Worksheet worksheet(argv[1]);
    Cells cells(kConversions);
    for (std::size_t i = 0; i < kConversions; ++i) {
      worksheet.prepare(conversions.arguments[i], cells[i]);
    }
    check_agreement(conversions, cells, worksheet);
    for (const int threads : kThreads) {
      results.push_back(measure(conversions, cells, worksheet, threads, repetitions));
    }
    if (!worksheet.is_settled()) give_up("the add-in leaks");
  }

  std::printf("| Conversions a second, in millions | interpreter | worksheet |\n|---|---:|---:|\n");
  for (std::size_t i = 0; i < results.size(); ++i) {
    std::printf("| %s | %.3f | %.3f |\n", threads_text(kThreads[i]),
                bench::median(results[i].bare) / 1e6, bench::median(results[i].worksheet) / 1e6);
  }
  std::printf("\n");

  bench::TargetTable table("Worksheet calls, of the interpreter's");
  for (std::size_t i = 0; i < results.size(); ++i) {
    table.at_least(threads_text(kThreads[i]), bench::median(results[i].ratio), 0.5);
  }
  return table.exit_status();
}
