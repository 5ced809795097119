#include "language/compiled_stack.h"

namespace quantiverse {
namespace {

template <typename T>
std::uint32_t add_to(std::vector<T>& pool, const T& operand) {
  pool.push_back(operand);
  return static_cast<std::uint32_t>(pool.size() - 1);
}

// Empties a pool, and gives the memory of an extraordinary line back.
template <typename T>
void clear_pool(std::vector<T>& pool) {
  constexpr std::size_t kKeep = 4096;
  pool.clear();
  if (pool.capacity() > kKeep) pool.shrink_to_fit();
}

template <typename T>
std::uint32_t append_pool(std::vector<T>& pool, const std::vector<T>& other) {
  const auto base = static_cast<std::uint32_t>(pool.size());
  pool.insert(pool.end(), other.begin(), other.end());
  return base;
}

}  // namespace

void ValueStack::supply(std::size_t count) {
  nodes_.insert(nodes_.begin(), count - nodes_.size(), StackNode());
}

void Program::emit_op(OpCode code, const DimValue& value) {
  ops_.push_back({code, add_to(values_, value)});
}

void Program::emit_op(OpCode code, const UnitDef& unit) {
  ops_.push_back({code, add_to(units_, unit)});
}

void Program::emit_op(OpCode code, Variable* variable) {
  ops_.push_back({code, add_to(variables_, variable)});
}

void Program::emit_number(double x) {
  ops_.push_back({OpCode::OP_PUSH_VALUE, add_to(numbers_, x) | kPlainNumber});
}

void Program::clear() {
  clear_pool(ops_);
  clear_pool(numbers_);
  clear_pool(values_);
  clear_pool(units_);
  clear_pool(variables_);
}

void Program::append(const Program& other) {
  const std::uint32_t numbers = append_pool(numbers_, other.numbers_);
  const std::uint32_t values = append_pool(values_, other.values_);
  const std::uint32_t units = append_pool(units_, other.units_);
  const std::uint32_t variables = append_pool(variables_, other.variables_);
  for (OpNode op : other.ops_) {
    switch (op.code) {
      case OpCode::OP_PUSH_VALUE:
        op.operand += (op.operand & kPlainNumber) != 0 ? numbers : values;
        break;
      case OpCode::OP_PUSH_UNIT:
        op.operand += units;
        break;
      case OpCode::OP_ASSIGN:
      case OpCode::OP_ASSIGN_1:
      case OpCode::OP_ASSIGN_2:
      case OpCode::OP_ASSIGN_3:
      case OpCode::OP_PUSH_VAR:
        op.operand += variables;
        break;
      default:
        break;
    }
    ops_.push_back(op);
  }
}

}  // namespace quantiverse
