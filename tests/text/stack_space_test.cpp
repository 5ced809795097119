#include "text/stack_space.h"

#include <gtest/gtest.h>

#include <cstring>

namespace quantiverse {
namespace {

struct Descent {
  StackSpace stack;
  int fresh_stacks = 0;

  // Each level has a frame of a good kilobyte, and writes into it again on the way back.
  bool go(int levels) {
    volatile char frame[1024];
    frame[0] = static_cast<char>(levels);
    frame[1023] = frame[0];
    if (levels == 0) return true;
    bool deeper = false;
    if (stack.is_low()) {
      ++fresh_stacks;
      deeper = stack.call_on_fresh_stack([this, levels] { return go(levels - 1); });
    } else {
      deeper = go(levels - 1);
    }
    return deeper && frame[0] == static_cast<char>(levels) && frame[1023] == frame[0];
  }
};

TEST(StackSpace, NestingIsBoundedByMemoryOnly) {
  Descent descent;
  descent.stack.begin_call();
  EXPECT_TRUE(descent.go(100000));
  EXPECT_GE(descent.fresh_stacks, 2);
  // Back at the top the first stack's own limit holds again.
  EXPECT_FALSE(descent.stack.is_low());
  const int before = descent.fresh_stacks;
  EXPECT_TRUE(descent.go(100000));
  EXPECT_EQ(descent.fresh_stacks, 2 * before);
  EXPECT_TRUE(descent.go(10));
  EXPECT_EQ(descent.fresh_stacks, 2 * before);
}

TEST(StackSpace, HandsTheAnswerBack) {
  StackSpace stack;
  stack.begin_call();
  EXPECT_TRUE(stack.call_on_fresh_stack([] { return true; }));
  EXPECT_FALSE(stack.call_on_fresh_stack([] { return false; }));
  EXPECT_FALSE(stack.is_low());
}

}  // namespace
}  // namespace quantiverse
