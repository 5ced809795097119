#include "language/evaluator.h"

#include <algorithm>

#include "language/arithmetic.h"

namespace quantiverse {
namespace {

// A stack of its own for one run, lent by the interpreter so that its storage stays warm.
class LentStack {
 public:
  explicit LentStack(std::vector<ValueStack>& spares) : spares_(spares) {
    if (spares_.empty()) return;
    stack_ = std::move(spares_.back());
    spares_.pop_back();
  }
  ~LentStack() {
    stack_.clear();
    spares_.push_back(std::move(stack_));
  }
  LentStack(const LentStack&) = delete;
  LentStack& operator=(const LentStack&) = delete;

  ValueStack& operator*() { return stack_; }

 private:
  std::vector<ValueStack>& spares_;
  ValueStack stack_;
};

}  // namespace

DimValue eval_compiled_stck(Interpreter& interpreter, const Program& program, TextBuf& err) {
  LentStack lent(interpreter.spare_stacks);
  ValueStack& stack = *lent;
  Units& units = interpreter.units;
  DimValue result;
  err.clear_text();
  for (const Program::OpNode& op : program.ops()) {
    switch (op.code) {
      case OpCode::OP_CLEAR:
        result = DimValue{};
        break;
      case OpCode::OP_PUSH_VALUE:
        program.push_operand(op, stack);
        break;
      case OpCode::OP_PUSH_UNIT:
        stack.push_unit(program.unit(op));
        break;
      case OpCode::OP_ADD:
        stack_add(stack, units, err);
        break;
      case OpCode::OP_SUB:
        stack_subtract(stack, units, err);
        break;
      case OpCode::OP_MUL:
        stack_multiply(stack, err);
        break;
      case OpCode::OP_DIV:
        stack_divide(stack, err);
        break;
      case OpCode::OP_POW:
        stack_exponentiate(stack, units, err);
        break;
      case OpCode::OP_NEG:
        stack_negate(stack, err);
        break;
      case OpCode::OP_ASSIGN:
      case OpCode::OP_ASSIGN_1:
      case OpCode::OP_ASSIGN_2:
      case OpCode::OP_ASSIGN_3:
        Variables::set_variable(*program.variable(op), stack.top_value(),
                                static_cast<int>(op.code) - static_cast<int>(OpCode::OP_ASSIGN));
        result = stack.top_value();
        break;
      case OpCode::OP_PUSH_VAR:
        stack.push_value(program.variable(op)->value);
        break;
      case OpCode::OP_CALL: {
        stack.pop_into(result);
        const Ints3 call = dim_unpack_ints3(result);
        interpreter.functions.call_func_by_number({interpreter, call.i, call.k, stack, err});
        break;
      }
      case OpCode::OP_VECTOR:
        stack.pop_into(result);
        stack_build_vector(dim_unpack_ints3(result).k, stack, err);
        break;
      case OpCode::OP_UNIT_ASSIGN:
        stack_assign_units(stack, err);
        break;
      case OpCode::OP_TO_NUMBER:
        stack_to_number(stack, err);
        break;
      case OpCode::OP_RESULT:
        stack.pop_into(result);
        break;
    }
    if (!err.is_empty_text()) return result;
  }
  return result;
}

void request_evaluate(Interpreter& interpreter, const double* x, double* f, TextBuf& err) {
  const Request& request = interpreter.request;
  std::fill_n(f, request.dependent_count(), 0.0);
  if (!err.is_empty_text()) return;
  request.write_x(x);
  eval_compiled_stck(interpreter, interpreter.body.program(), err);
  if (err.is_empty_text()) request.read_f(f);
}

}  // namespace quantiverse
