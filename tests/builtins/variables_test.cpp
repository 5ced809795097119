#include "language/variables.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "calls.h"

namespace quantiverse::test {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

TEST(Variables, WhatIsMissingIsReported) {
  const DimValue missing{false, {kInf, kInf, kInf}, {}};
  Variables t;
  DimValue value = scalar(1);
  t.setvar("first", value, 0);
  TextBuf err;
  err.append_text("before ");  // messages are appended
  EXPECT_TRUE(same_value(t.getvar("a\tb c", err), missing));
  EXPECT_EQ(t.varnum_by_name("c d", err), 0);
  EXPECT_TRUE(same_value(t.getvar_by_num(200, err), missing));
  EXPECT_TRUE(t.varname_by_num(202, err).empty());
  t.setvar_by_num(std::numeric_limits<int>::min(), value, err);
  EXPECT_FALSE(is_varname_okay("m", {}, builtin_functions(), err));  // adds nothing to an error
  EXPECT_FALSE(is_varname_okay("fine", {}, builtin_functions(), err));
  EXPECT_EQ(err.text(),
            "before ERROR:  'a' undefined.\nERROR:  'c' undefined.\n"
            "ERROR:  Variable number 200 undefined.\nERROR:  var num '202' undefined.\n"
            "ERROR:  var num '-2147483648' undefined in setvar_by_num.\n");
}

TEST(Variables, SetvarHandsBackWhatTheVariableHolds) {
  Variables table;
  DimValue value = scalar(2, slot(kSlotLength));
  EXPECT_EQ(table.setvar("x", value, 3).number, 201);
  EXPECT_TRUE(same_value(value, vec(0, 0, 2, slot(kSlotLength))));
  value = vec(5, 6, 7, slot(kSlotTime));  // only its first component counts
  table.setvar("x", value, 1);
  EXPECT_TRUE(same_value(value, vec(5, 0, 2, slot(kSlotTime))));
  EXPECT_TRUE(same_value(table.find_variable("x")->value, value));
  value = scalar(1);
  table.setvar("x", value, 0);
  EXPECT_TRUE(same_value(table.find_variable("x")->value, scalar(1)));
}

std::string numbered(int i) {
  std::string name(1, 'v');
  return name += std::to_string(i);
}

// Growth moves the index, never a record: compiled programs hold on to records.
TEST(Variables, AreManyAndDoNotMove) {
  Variables table;  // used again and again
  TextBuf err;
  for (const int many : {40, 3, 100000, 2}) {
    std::vector<std::string> names = {"costarring", "liquid"};  // of one hash
    for (int i = 2; i < many; ++i) names.push_back(numbered(i));
    std::vector<const Variable*> records;
    for (const std::string& name : names) {
      DimValue value;
      records.push_back(&table.setvar(name, value, 0));
    }
    for (int i = 0; i < many; ++i) {
      const std::string copy = names[static_cast<std::size_t>(i)];  // found by its text
      ASSERT_EQ(table.find_variable(copy), records[static_cast<std::size_t>(i)]);
      ASSERT_EQ(table.varnum_by_name(copy, err), 201 + i);
      ASSERT_EQ(table.varname_by_num(201 + i, err), copy);
      table.setvar_by_num(201 + i, scalar(-i), err);
    }
    for (int i = 0; i < many; ++i) {
      ASSERT_EQ(table.getvar(names[static_cast<std::size_t>(i)], err).comp[0], -i);
      ASSERT_EQ(table.getvar_by_num(201 + i, err).comp[0], -i);
    }
    for (const int absent : {many, 39}) {  // 39: of the first round
      if (absent < many) continue;
      ASSERT_EQ(table.find_variable(numbered(absent)), nullptr);
    }
    ASSERT_EQ(err.text(), "");
    table.clear();
    ASSERT_EQ(table.find_variable("liquid"), nullptr);
  }
}

}  // namespace
}  // namespace quantiverse::test
