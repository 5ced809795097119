#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "quantity/dimvalue.h"

namespace quantiverse {

struct Variable;

// The operands of an expression, the last on top: values, and units on their way to the
// operation that uses them. Popping an empty stack gives zero, and the grammar rests on that:
// an operand that isn't there counts as nothing.
class ValueStack {
 public:
  void push_value(const DimValue& value) { nodes_.emplace_back(value); }
  void push_number(double x) { nodes_.emplace_back().value.comp[0] = x; }
  void push_unit(const UnitDef& unit) {
    StackNode& node = nodes_.emplace_back();
    node.value.comp[0] = unit.w0;
    node.value.exps = unit.exps;
    node.offset = unit.offset;
  }
  DimValue pop_value() {
    const DimValue value = top_value();
    nodes_.pop_back();
    return value;
  }
  void pop_into(DimValue& value) {
    value = top_value();
    nodes_.pop_back();
  }
  UnitDef pop_unit() {
    if (nodes_.empty()) return {};
    const StackNode& top = nodes_.back();
    const UnitDef unit{top.offset, top.value.comp[0], top.value.exps};
    nodes_.pop_back();
    return unit;
  }
  // The value on top, to be changed where it is. A value is a hundred bytes: copying the operands
  // of an operation takes longer than computing with them.
  DimValue& top_value() {
    need(1);
    nodes_.back().offset = 0.0;
    return nodes_.back().value;
  }
  // Runs operation(left, right) on the two values on top; the left one is left as the result.
  template <typename Operation>
  void combine(Operation operation) {
    need(2);
    StackNode& right = nodes_.back();
    StackNode& left = *(&right - 1);
    operation(left.value, right.value);
    left.offset = 0.0;
    nodes_.pop_back();
  }
  void drop(std::size_t count) { nodes_.resize(nodes_.size() - std::min(count, nodes_.size())); }
  void clear() { nodes_.clear(); }
  [[nodiscard]] bool empty() const { return nodes_.empty(); }
  [[nodiscard]] std::size_t size() const { return nodes_.size(); }

 private:
  // A value or a unit: they have the same tail, and a unit's w0 stands in comp[0].
  struct StackNode {
    StackNode() = default;
    explicit StackNode(const DimValue& v) : value(v) {}

    DimValue value;
    double offset = 0.0;
  };
  void need(std::size_t count) {
    if (nodes_.size() < count) supply(count);
  }
  // Puts zeros in the place of operands that aren't there.
  void supply(std::size_t count);

  std::vector<StackNode> nodes_;
};

// What a compiled operation does to the stack; a two-operand operation has its right operand on
// top.
enum class OpCode : std::uint32_t {
  OP_CLEAR,        // result = 0
  OP_PUSH_VALUE,   // [] -> [value]
  OP_PUSH_UNIT,    // [] -> [unit]
  OP_ADD,          // [a, b] -> [a + b]
  OP_SUB,          // [a, b] -> [a - b]
  OP_MUL,          // [a, b] -> [a * b]
  OP_DIV,          // [a, b] -> [a / b]
  OP_POW,          // [a, b] -> [a ^ b]
  OP_NEG,          // [a] -> [-a]
  OP_ASSIGN,       // [a] -> [the variable's whole value]
  OP_ASSIGN_1,     // the same, a goes to the x component
  OP_ASSIGN_2,     // to y
  OP_ASSIGN_3,     // to z
  OP_PUSH_VAR,     // [] -> [the variable's value at the time of the run]
  OP_CALL,         // [arguments, descriptor] -> [result]
  OP_VECTOR,       // [components, descriptor] -> [vector]
  OP_UNIT_ASSIGN,  // [number, unit] -> [value]
  OP_TO_NUMBER,    // [value, unit] -> [number]
  OP_RESULT,       // [a] -> [], result = a
};

// A postfix program: what the parser did while it computed, to be done again with other values in
// the variables. Operands lie in pools of their own kind, so that an operation is small and a
// literal number takes eight bytes.
class Program {
 public:
  void emit_op(OpCode code) { ops_.push_back({code, 0}); }
  void emit_op(OpCode code, const DimValue& value);
  void emit_op(OpCode code, const UnitDef& unit);
  void emit_op(OpCode code, Variable* variable);
  // OP_PUSH_VALUE with a plain number.
  void emit_number(double x);

  void clear();
  // Appends the operations of `other`, to be run behind the ones that are here.
  void append(const Program& other);

  struct OpNode {
    OpCode code;
    std::uint32_t operand;  // an index into the pool of this operation's operands
  };
  [[nodiscard]] const std::vector<OpNode>& ops() const { return ops_; }
  // What OP_PUSH_VALUE does.
  void push_operand(const OpNode& op, ValueStack& stack) const {
    if ((op.operand & kPlainNumber) == 0) {
      stack.push_value(values_[op.operand]);
    } else {
      stack.push_number(numbers_[op.operand & ~kPlainNumber]);
    }
  }
  [[nodiscard]] const UnitDef& unit(const OpNode& op) const { return units_[op.operand]; }
  [[nodiscard]] Variable* variable(const OpNode& op) const { return variables_[op.operand]; }

 private:
  static constexpr std::uint32_t kPlainNumber = 0x80000000U;

  std::vector<OpNode> ops_;
  std::vector<double> numbers_;
  std::vector<DimValue> values_;
  std::vector<UnitDef> units_;
  std::vector<Variable*> variables_;
};

// What a statement is read into: its value so far, and the program that would compute it again.
struct CompiledStack {
  ValueStack value_stack;
  Program program;

  void clear() {
    value_stack.clear();
    program.clear();
  }
};

// A call travels to its handler, and a vector to its builder, as a value that describes it.
inline DimValue make_function_descriptor(int number, int kind, int count) {
  return dim_pack_ints3(number, kind, count);
}
// A variable that is handed over by name, with the component meant (0 for the whole).
inline DimValue make_variable_reference(int number, int component) {
  return dim_pack_ints2(number, component);
}

}  // namespace quantiverse
