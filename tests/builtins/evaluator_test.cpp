#include "language/evaluator.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <deque>
#include <limits>
#include <new>

#include "calls.h"
#include "language/statement.h"

namespace {

std::size_t allocations = 0;
}  // namespace

void* operator new(std::size_t size) {
  ++allocations;
  void* memory = std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
// Inlined, they would look like a mismatch with the `new` of other places.
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace quantiverse::test {
namespace {

// Lines that are compiled one by one, and their programs.
class Bench {
 public:
  explicit Bench(const FunctionSet& functions = builtin_functions()) : interpreter_(functions) {}

  // The line's program, which is also run by being compiled.
  const Program& compile(const std::string& line, DimValue& value) {
    lines_.push_back(line);  // variables refer to the text of their names
    Cursor expptr(lines_.back());
    CompiledStack& compiled = compiled_.emplace_back();
    EXPECT_TRUE(compile_input_line(interpreter_, expptr, compiled, value, err_))
        << line.substr(0, 80) << ": " << err_.text();
    return compiled.program;
  }
  const Program& compile(const std::string& line) {
    DimValue ignored;
    return compile(line, ignored);
  }
  DimValue run(const Program& program) { return eval_compiled_stck(interpreter_, program, err_); }
  Variable& variable(std::string_view name) { return *interpreter_.variables.find_variable(name); }
  double held(std::string_view name) { return variable(name).value.comp[0]; }
  [[nodiscard]] std::string_view err() const { return err_.text(); }

 private:
  Interpreter interpreter_;
  std::deque<std::string> lines_;
  std::deque<CompiledStack> compiled_;
  TextBuf err_;
};

// One line of three is poisoned by the value of `d`: the line behind it doesn't happen any more.
TEST(Evaluator, AnErrorEndsTheRun) {
  Bench bench;
  for (const char* line : {"d = 1", "p = 0", "q = 0"}) bench.compile(line);
  const Exponents mass = slot(kSlotMass);
  struct Case {
    const char* line;
    DimValue poison;
    const char* message;
  };
  const Case cases[] = {
      {"5 + 1 / d", scalar(0), "ERROR: Numerical over or underflow while dividing.\n"},
      {"1 - d", scalar(1, mass),
       "ERROR: Subtracting incompatible units: 'Dimensionless' AND 'kg'.\n"},
      {"acosh(d)", scalar(0), "ERROR:  Arg to acosh() must be greater than one.\n"},
      {"[d, 1]", scalar(1, mass), "ERROR:  All vector components must have same units.\n"},
      {"(d) m", scalar(1, mass),
       "ERROR: Units assignment requires dimensionless value before it.\n"},
      {"Number(d, rad)", scalar(1, mass), "ERROR: Requested units incompatible.\n"},
  };
  for (const Case& c : cases) {
    bench.variable("d").value = scalar(1);
    Program body;
    for (const char* line : {"p = d * 7", c.line, "q = 7"}) body.append(bench.compile(line));
    bench.variable("q").value = scalar(0);
    bench.variable("d").value = c.poison;
    bench.run(body);
    EXPECT_EQ(bench.err(), c.message) << c.line;
    EXPECT_EQ(bench.held("p"), c.poison.comp[0] * 7) << c.line;
    EXPECT_EQ(bench.held("q"), 0) << c.line;
    // Nothing is left behind for the next run: a lone negation has no operand.
    Program lone;
    lone.emit_op(OpCode::OP_NEG);
    lone.emit_op(OpCode::OP_RESULT);
    EXPECT_EQ(bench.run(lone).comp[0], 0) << c.line;
    bench.variable("d").value = scalar(1);
    EXPECT_EQ(bench.run(body).comp[0], 7) << c.line;
    EXPECT_EQ(bench.err(), "");
  }
}

// Plain numbers, values, units and variables lie in pools of their own, which a chain joins.
TEST(Evaluator, RunsChainedPrograms) {
  Bench bench;
  for (const char* line : {"a = 0", "b = 0", "v = [0,0,0]"}) bench.compile(line);
  Program chain;
  DimValue last;
  for (const char* line : {"a = 2 km + 3 ft", "5", "v[3] = a * sin(30 deg)", "v[2] = 7 cm",
                           "b = Number(v[3], in)", "[b, -2, 1]"}) {
    chain.append(bench.compile(line, last));
  }
  Program twice;
  for (const Program& part : {chain, Program(), chain}) twice.append(part);
  const DimValue v = bench.variable("v").value;
  for (const Program& program : {chain, twice}) {
    for (const char* name : {"a", "b", "v"}) bench.variable(name).value = DimValue{};
    EXPECT_TRUE(same_value(bench.run(program), last));
    EXPECT_TRUE(same_value(bench.variable("v").value, v));
  }
}

TEST(Evaluator, RunsWhatNoLineCompilesTo) {
  Bench bench;
  Program program;
  EXPECT_TRUE(same_value(bench.run(program), {}));
  program.emit_number(3);
  for (const OpCode code : {OpCode::OP_SUB, OpCode::OP_SUB, OpCode::OP_RESULT}) {
    program.emit_op(code);
  }
  EXPECT_TRUE(same_value(bench.run(program), scalar(3)));  // 0 - (0 - 3)

  // An assignment leaves the variable's whole value, in the result as on the stack.
  bench.compile("v = [1,2,3] m");
  program.clear();
  program.emit_op(OpCode::OP_PUSH_VALUE, scalar(9, slot(kSlotTime)));
  program.emit_op(OpCode::OP_ASSIGN_2, &bench.variable("v"));
  EXPECT_TRUE(same_value(bench.run(program), vec(1, 9, 3, slot(kSlotTime))));
  program.emit_op(OpCode::OP_NEG);
  program.emit_op(OpCode::OP_RESULT);
  EXPECT_TRUE(same_value(bench.run(program), vec(-1, -9, -3, slot(kSlotTime))));

  // A run that is cut off returns what it has got to: here the description of the call.
  for (const int number : {0, 90, -1, std::numeric_limits<int>::max()}) {
    const DimValue unknown = make_function_descriptor(number, -1, 1000000);
    program.clear();
    program.emit_op(OpCode::OP_PUSH_VALUE, unknown);
    program.emit_op(OpCode::OP_CALL);
    EXPECT_TRUE(same_value(bench.run(program), unknown));
    EXPECT_EQ(bench.err(), "ERROR:  Bad function number in call_func_by_number.\n");
  }
}

TEST(ValueStack, CarriesValuesAndUnits) {
  ValueStack stack;
  stack.push_value(scalar(1));
  const UnitDef unit{-459.67, 1.8, slot(kSlotTemperature, -2)};
  for (int i = 0; i < 2; ++i) stack.push_unit(unit);
  const UnitDef popped = stack.pop_unit();
  EXPECT_TRUE(popped.offset == unit.offset && popped.w0 == 1.8 && popped.exps == unit.exps);
  EXPECT_TRUE(same_value(stack.pop_value(), scalar(1.8, unit.exps)));
  EXPECT_EQ(stack.pop_unit().offset, 0.0);         // a value has none
  EXPECT_TRUE(same_value(stack.pop_value(), {}));  // what isn't there is zero
  const UnitDef none = stack.pop_unit();
  EXPECT_TRUE(none.w0 == 0 && none.offset == 0 && none.exps == Exponents{});
  stack.push_value(scalar(7));
  stack.drop(5);
  EXPECT_TRUE(stack.empty());
}

TEST(Evaluator, AllocatesNothingOnceWarm) {
  Bench bench;
  for (const char* line : {"a = 2 m", "v = [1,2,3] m"}) bench.compile(line);
  std::string line = "b = a";
  for (int i = 0; i < 200; ++i) {
    line += " - mag([a, 1 ft]) * sqrt(dot(v, v)) / (3 m)^2 * -Number(a, in) * v[2]";
  }
  std::size_t before = allocations;
  const Program& program = bench.compile(line);
  EXPECT_GT(allocations, before);
  const DimValue warm = bench.run(program);
  before = allocations;
  const DimValue again = bench.run(program);
  EXPECT_EQ(allocations, before);
  EXPECT_TRUE(same_value(again, warm));
}

// A set of one function, `again`, that runs a program in the middle of everything. Without one, or
// 100 calls deep, it gives its argument.
const Program* rerun = nullptr;
int rerun_depth = 0;

constexpr FunctionSet kRerunning = {
    [](std::string_view name) {
      return FunctionSet::Function{name == "again" ? 7 : 0, FunctionSet::kValues};
    },
    [](const FunctionCall& call) {
      DimValue value = call.stack.pop_value();
      if (rerun != nullptr && rerun_depth < 100) {
        ++rerun_depth;
        value = eval_compiled_stck(call.interpreter, *rerun, call.err);
      }
      call.stack.push_value(value);
    },
    1, 2};

TEST(Evaluator, RunsInsideAFunction) {
  Bench bench(kRerunning);
  rerun = nullptr;
  bench.compile("k = 5");
  const Program& counting = bench.compile("k = k + 1");
  const Program& recursive = bench.compile("1 + again(3)");
  const Program& failing = bench.compile("1 / (k - k + 1)");
  const Program& assigning = bench.compile("z = again(0) + 9");

  // The parser stands in the middle of a line, with operands waiting on its stack.
  rerun = &counting;
  DimValue read;
  const Program& outer = bench.compile("[1000, 100 + again(0) * 2, again(0)]", read);
  EXPECT_TRUE(same_value(read, vec(1000, 114, 8)));
  EXPECT_TRUE(same_value(bench.run(outer), vec(1000, 118, 10)));

  rerun = &recursive;  // it gets to itself, and each depth adds 1 to what lies deeper
  for (int round = 0; round < 2; ++round) {
    const std::size_t before = allocations;
    rerun_depth = 0;
    EXPECT_EQ(bench.run(recursive).comp[0], 1 + 100 + 3);
    if (round == 1) {
      EXPECT_EQ(allocations, before);
    }
  }

  rerun = &failing;  // an error inside ends all of them
  rerun_depth = 0;
  bench.variable("k").value = scalar(std::numeric_limits<double>::infinity());
  bench.run(assigning);
  EXPECT_EQ(bench.err(), "ERROR: Numerical over or underflow while subtracting.\n");
  EXPECT_EQ(bench.held("z"), 9);
}

}  // namespace
}  // namespace quantiverse::test
