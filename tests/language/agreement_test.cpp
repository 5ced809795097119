// A line is computed while it is read, and a program is written beside it that computes it again.
// Both have to agree to the last bit.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "builtins/function_table.h"
#include "language/evaluator.h"
#include "language/statement.h"
#include "line_cases.h"

namespace quantiverse::test {
namespace {

using enum OpCode;

bool same_bits(const DimValue& a, const DimValue& b) {
  return a.vector == b.vector && std::memcmp(a.comp.data(), b.comp.data(), sizeof a.comp) == 0 &&
         std::memcmp(a.exps.data(), b.exps.data(), sizeof a.exps) == 0;
}

// A text whose lines are compiled one by one.
class Worksheet {
 public:
  explicit Worksheet(std::string_view text) {
    while (!text.empty()) {
      const std::size_t end = std::min(text.find('\n'), text.size());
      EXPECT_TRUE(compile(text.substr(0, end))) << text << err_.text();
      text.remove_prefix(std::min(end + 1, text.size()));
    }
  }

  bool compile(std::string_view line) {
    lines_.emplace_back(line);  // a variable's name is a view of it
    Cursor expptr(lines_.back());
    return compile_input_line(interpreter_, expptr, compiled_.emplace_back(), value_, err_);
  }
  // Runs the line that was compiled last.
  DimValue run() { return eval_compiled_stck(interpreter_, compiled_.back().program, err_); }

  [[nodiscard]] const DimValue& value() const { return value_; }
  DimValue& held(std::string_view name) {
    return interpreter_.variables.find_variable(name)->value;
  }
  [[nodiscard]] bool failed() const { return !err_.is_empty_text(); }
  [[nodiscard]] std::vector<OpCode> shape() const {
    std::vector<OpCode> codes;
    for (const Program::OpNode& op : compiled_.back().program.ops()) codes.push_back(op.code);
    return codes;
  }

 private:
  Interpreter interpreter_{builtin_functions()};
  std::deque<std::string> lines_;
  std::deque<CompiledStack> compiled_;
  DimValue value_;
  TextBuf err_;
};

TEST(Agreement, ALineRunAgainGivesItsValue) {
  int compared = 0;
  for (const LineCase& c : line_cases()) {
    Worksheet worksheet(kSetup);
    if (c.text.find('\n') != std::string::npos || !worksheet.compile(c.text)) continue;
    ++compared;
    EXPECT_TRUE(same_bits(worksheet.run(), worksheet.value())) << c.text;
    EXPECT_FALSE(worksheet.failed()) << c.text;
  }
  EXPECT_GT(compared, 150);  // most cases are good ones
}

TEST(Agreement, ReadOtherwiseOrRunAgainAVariableCountsAlike) {
  for (const char* line : {"b = a + 1 ft", "a^2 / 3 s", "c = [a, 2 * a, -a]", "Number(a, in) m",
                           "sqrt(a * 2 ft)", "u[2] = a", "atan2(a, 1 m)", "u[3] * a - a^2"}) {
    Worksheet read("a = 7 in\nu = [0, 0, 1] m");
    Worksheet rerun("a = 3 m\nu = [0, 0, 1] m");
    ASSERT_TRUE(rerun.compile(line) && read.compile(line)) << line;
    rerun.held("a") = read.held("a");
    EXPECT_TRUE(same_bits(rerun.run(), read.value())) << line;
  }
}

TEST(Agreement, AnErrorInARunStoresNothing) {
  Worksheet worksheet("a = 2\nb = 8");
  ASSERT_TRUE(worksheet.compile("b = 1 / a"));
  worksheet.held("a").comp[0] = 0.0;
  worksheet.run();
  EXPECT_TRUE(worksheet.failed());
  EXPECT_EQ(worksheet.held("b").comp[0], 0.5);
}

struct Shape {
  const char* line;
  std::vector<OpCode> codes;
};

TEST(Agreement, ProgramsHaveTheirShape) {
  const Shape shapes[] = {
      {"", {OP_CLEAR, OP_RESULT}},
      {"5 ft", {OP_CLEAR, OP_PUSH_VALUE, OP_PUSH_UNIT, OP_UNIT_ASSIGN, OP_RESULT}},
      {"x = y + 1", {OP_CLEAR, OP_PUSH_VAR, OP_PUSH_VALUE, OP_ADD, OP_ASSIGN, OP_RESULT}},
      {"x[3] = -y", {OP_CLEAR, OP_PUSH_VAR, OP_NEG, OP_ASSIGN_3, OP_RESULT}},
      {"[a, 1]", {OP_CLEAR, OP_PUSH_VAR, OP_PUSH_VALUE, OP_PUSH_VALUE, OP_VECTOR, OP_RESULT}},
      {"sqrt(y)", {OP_CLEAR, OP_PUSH_VAR, OP_PUSH_VALUE, OP_CALL, OP_RESULT}},
      {"Number(y, %)",
       {OP_CLEAR, OP_PUSH_VAR, OP_PUSH_UNIT, OP_TO_NUMBER, OP_PUSH_VALUE, OP_CALL, OP_RESULT}},
      {"v[2]", {OP_CLEAR, OP_PUSH_VAR, OP_PUSH_VALUE, OP_PUSH_VALUE, OP_CALL, OP_RESULT}},
      {"2^y * 3 / 4 - 5",
       {OP_CLEAR, OP_PUSH_VALUE, OP_PUSH_VAR, OP_POW, OP_PUSH_VALUE, OP_MUL, OP_PUSH_VALUE, OP_DIV,
        OP_PUSH_VALUE, OP_SUB, OP_RESULT}},
  };
  for (const Shape& shape : shapes) {
    Worksheet worksheet("y = 7\na = 1\nv = [1, 2, 3]");
    ASSERT_TRUE(worksheet.compile(shape.line)) << shape.line;
    EXPECT_EQ(worksheet.shape(), shape.codes) << shape.line;
  }
}

}  // namespace
}  // namespace quantiverse::test
