// This library beside the program `units` and the library UDUNITS, over the same conversions. All
// three have to agree on every conversion first.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "child.h"
#include "measure.h"
#include "quantiverse/quantiverse.h"
#include "udunits_library.h"
#include "worksheets.h"

namespace {

using namespace quantiverse::bench;

constexpr std::size_t kLines = 100'000;
constexpr double kEnoughSeconds = 0.2;

// Which conversions a comparison runs through.
struct Workload {
  const char* name;
  std::string (*worksheet)(std::size_t lines);
  Conversion (*conversion)(std::size_t i);
};
constexpr Workload kWorkloads[] = {
    {"all conversions", conversion_lines, [](std::size_t i) { return conversion_of(i); }},
    {"`ft; m` alone", feet_lines,
     [](std::size_t) {
       return Conversion{"ft", "m"};
     }},
};

// `units` asks for the two units of a conversion one after the other.
std::string questions_for_units(const Workload& workload, std::size_t lines) {
  std::string text;
  for (std::size_t i = 0; i < lines; ++i) {
    const Conversion conversion = workload.conversion(i);
    text.append(number_of(i)).append(" ").append(conversion.from);
    text.append("\n").append(conversion.to).append("\n");
  }
  return text;
}

// Terse leaves out the prompts, the reciprocal conversion and the second form of a result. No
// other way through one process of `units` is faster.
const std::vector<std::string> kUnits = {"units", "--terse"};

std::vector<std::string_view> lines_of(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size() - 1);
    lines.push_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  return lines;
}

// The number behind the first " = ".
double shown_number(const std::string& output) {
  const std::size_t found = output.find("\n        = ");
  return found == std::string::npos ? NAN : std::strtod(output.c_str() + found + 11, nullptr);
}

// The tables of the three differ in late digits of some units.
bool agrees(double a, double b) { return std::fabs(a - b) <= 2e-5 * std::fabs(b); }

void check_agreement(const UdunitsLibrary& udunits) {
  const std::size_t count = conversions().size();
  const Workload& workload = kWorkloads[0];
  const TemporaryFile questions(questions_for_units(workload, count));
  const std::string answers = run_program(kUnits, questions.path()).output;
  const std::vector<std::string_view> units = lines_of(answers);
  bool all = units.size() == count;
  for (std::size_t i = 0; all && i < count; ++i) {
    const Conversion conversion = workload.conversion(i);
    const std::string line = number_of(i) + " " + conversion.from + "; " + conversion.to;
    const double ours = shown_number(quantiverse::interpret_dimensional_input_lines(line));
    const double theirs =
        udunits.convert(std::strtod(number_of(i).c_str(), nullptr), conversion.from, conversion.to);
    all = agrees(ours, theirs) && agrees(ours, std::strtod(std::string(units[i]).c_str(), nullptr));
    if (!all) std::fprintf(stderr, "  no agreement on %s\n", line.c_str());
  }
  if (!all) {
    std::fprintf(stderr, "compare_bench: the three don't convert alike\n");
    std::exit(2);
  }
}

// Processor time of a program over an input, without that over an empty one.
double program_seconds(const std::vector<std::string>& command, const std::string& input) {
  static const TemporaryFile nothing("");
  const double whole = run_program(command, input).processor_seconds;
  return whole - run_program(command, nothing.path()).processor_seconds;
}

std::size_t output_bytes = 0;
void interpret(const std::string& text) {
  output_bytes += quantiverse::interpret_dimensional_input_lines(text).size();
}

// Seconds that kLines conversions take.
struct Speeds {
  double units, udunits;
  double whole_text, line_by_line, program;
};

// Measures a workload again and again, each time one after the other.
class Comparison {
 public:
  Comparison(const Workload& workload, const UdunitsLibrary& udunits, const char* program)
      : udunits_(udunits),
        program_({program}),
        text_(workload.worksheet(kLines)),
        text_file_(text_),
        questions_(questions_for_units(workload, kLines)) {
    for (std::size_t i = 0; i < kLines; ++i) {
      const Conversion conversion = workload.conversion(i);
      conversions_.push_back(conversion);
      values_.push_back(std::strtod(number_of(i).c_str(), nullptr));
    }
    for (const std::string_view line : lines_of(text_)) lines_.emplace_back(line);
  }

  [[nodiscard]] Speeds measure() const {
    return {program_seconds(kUnits, questions_.path()),
            seconds_per_call([this] { convert_with_udunits(); }, kEnoughSeconds),
            seconds_per_call([this] { interpret(text_); }, kEnoughSeconds),
            seconds_per_call([this] { interpret_lines(); }, kEnoughSeconds),
            program_seconds(program_, text_file_.path())};
  }

 private:
  void convert_with_udunits() const {
    double sum = 0.0;
    for (std::size_t i = 0; i < kLines; ++i) {
      sum += udunits_.convert(values_[i], conversions_[i].from, conversions_[i].to);
    }
    if (!std::isfinite(sum)) std::abort();
  }
  void interpret_lines() const {
    for (const std::string& line : lines_) interpret(line);
  }

  const UdunitsLibrary& udunits_;
  std::vector<std::string> program_;
  std::string text_;
  TemporaryFile text_file_;
  TemporaryFile questions_;
  std::vector<Conversion> conversions_;
  std::vector<double> values_;
  std::vector<std::string> lines_;
};

double median_of(const std::vector<Speeds>& speeds, double (*of)(const Speeds&)) {
  std::vector<double> samples;
  for (const Speeds& s : speeds) samples.push_back(of(s));
  return median(samples);
}

// A million of them a second.
void print_speed(const char* what, double seconds) {
  std::printf("| %s | %.3f |\n", what, static_cast<double>(kLines) / seconds / 1e6);
}

void print_speeds(const char* name, const std::vector<Speeds>& speeds) {
  std::printf("| Conversions, %s | million per second |\n|---|---:|\n", name);
  print_speed("units, one process", median_of(speeds, [](const Speeds& s) { return s.units; }));
  print_speed("UDUNITS, one call each",
              median_of(speeds, [](const Speeds& s) { return s.udunits; }));
  print_speed("quantiverse, one process",
              median_of(speeds, [](const Speeds& s) { return s.program; }));
  print_speed("quantiverse, one call each",
              median_of(speeds, [](const Speeds& s) { return s.line_by_line; }));
  print_speed("quantiverse, one call in all",
              median_of(speeds, [](const Speeds& s) { return s.whole_text; }));
  std::printf("\n");
}

void add_ratios(TargetTable& table, const std::string& name, const std::vector<Speeds>& speeds) {
  table.at_least("lines of units, one call in all, " + name,
                 median_of(speeds, [](const Speeds& s) { return s.units / s.whole_text; }), 20.0);
  table.at_least("calls of UDUNITS, one call in all, " + name,
                 median_of(speeds, [](const Speeds& s) { return s.udunits / s.whole_text; }), 3.0);
  table.at_least("calls of UDUNITS, one call each, " + name,
                 median_of(speeds, [](const Speeds& s) { return s.udunits / s.line_by_line; }),
                 3.0);
}

// A fresh process for one conversion, the two programs in turn.
double fresh_process_ratio(const std::string& program, int pairs) {
  std::vector<double> ours;
  std::vector<double> theirs;
  for (int i = 0; i < pairs; ++i) {
    theirs.push_back(run_program({"units", "--terse", "5 ft", "m"}, "/dev/null").wall_seconds);
    ours.push_back(run_program({program, "-e", "5 ft; m"}, "/dev/null").wall_seconds);
  }
  std::printf("| One conversion in a fresh process | milliseconds |\n|---|---:|\n");
  std::printf("| units | %.2f |\n| quantiverse | %.2f |\n\n", median(theirs) * 1e3,
              median(ours) * 1e3);
  return median(ours) / median(theirs);
}

}  // namespace

int main(int argc, char** argv) {
  const int repetitions = argc > 2 ? std::atoi(argv[2]) : 7;
  if (argc < 2 || repetitions < 1) {
    std::fprintf(stderr, "usage: compare_bench PROGRAM [REPETITIONS]\n");
    return 2;
  }
  const UdunitsLibrary udunits;
  check_agreement(udunits);

  std::vector<std::vector<Speeds>> results;
  for (const Workload& workload : kWorkloads) {
    const Comparison comparison(workload, udunits, argv[1]);
    std::vector<Speeds>& speeds = results.emplace_back();
    for (int i = 0; i < repetitions; ++i) speeds.push_back(comparison.measure());
    print_speeds(workload.name, speeds);
  }
  const double fresh = fresh_process_ratio(argv[1], 30 * repetitions);

  TargetTable table("Beside others, as a multiple of");
  for (std::size_t i = 0; i < results.size(); ++i) {
    add_ratios(table, kWorkloads[i].name, results[i]);
  }
  table.at_most("time of units, one conversion in a fresh process", fresh, 1.0 / 3.0);
  return table.exit_status();
}
