#include "builtins/function_table.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "builtins/constant.h"
#include "builtins/elementary.h"
#include "builtins/plain.h"
#include "builtins/request.h"
#include "builtins/special.h"
#include "builtins/vector.h"
#include "text/scanner.h"

namespace quantiverse {
namespace {

constexpr bool kExactly = true;
constexpr bool kAtLeast = false;
constexpr int kValues = FunctionSet::kValues;
constexpr int kVariables = FunctionSet::kVariables;
constexpr int kVariablesAndValues = FunctionSet::kVariablesAndValues;

// clang-format off
constexpr FunctionRow kRows[] = {
    {1, "abs", kValues, 1, kExactly, call_abs},
    {2, "acos", kValues, 1, kExactly, call_angular, elementary_acos},
    {3, "acot", kValues, 1, kExactly, call_angular, elementary_acot},
    {4, "acsc", kValues, 1, kExactly, call_angular, elementary_acsc},
    {5, "AiryAi", kValues, 1, kExactly, call_plain, special_airy_ai},
    {6, "AiryBi", kValues, 1, kExactly, call_plain, special_airy_bi},
    {7, "angle", kValues, 2, kExactly, call_angle},
    {8, "asec", kValues, 1, kExactly, call_angular, elementary_asec},
    {9, "asin", kValues, 1, kExactly, call_angular, elementary_asin},
    {10, "atan", kValues, 1, kExactly, call_angular, elementary_atan},
    {11, "atan2", kValues, 2, kExactly, call_atan2},
    {12, "BesselI", kValues, 2, kExactly, call_plain, special_bessel_i},
    {13, "BesselJ", kValues, 2, kExactly, call_plain, special_bessel_j},
    {14, "BesselK", kValues, 2, kExactly, call_plain, special_bessel_k},
    {15, "BesselY", kValues, 2, kExactly, call_plain, special_bessel_y},
    {16, "BetaFunc", kValues, 2, kExactly, call_plain, special_beta},
    {17, "Boltzmann", kValues, 0, kExactly, call_boltzmann},
    {18, "CarlsonRC", kValues, 2, kExactly, call_plain, special_carlson_rc},
    {19, "CarlsonRD", kValues, 3, kExactly, call_plain, special_carlson_rd},
    {20, "CarlsonRF", kValues, 3, kExactly, call_plain, special_carlson_rf},
    {21, "CarlsonRJ", kValues, 4, kExactly, call_plain, special_carlson_rj},
    {22, "ceil", kValues, 1, kExactly, call_rounding, elementary_ceil},
    {23, "CLight", kValues, 0, kExactly, call_clight},
    {24, "component", kValues, 2, kExactly, call_component},
    {25, "cos", kValues, 1, kExactly, call_plain, elementary_cos},
    {26, "cosh", kValues, 1, kExactly, call_plain, elementary_cosh},
    {27, "cot", kValues, 1, kExactly, call_plain, elementary_cot},
    {28, "coth", kValues, 1, kExactly, call_plain, elementary_coth},
    {29, "cross", kValues, 2, kExactly, call_cross},
    {30, "csc", kValues, 1, kExactly, call_plain, elementary_csc},
    {31, "csch", kValues, 1, kExactly, call_plain, elementary_csch},
    {32, "DawsonIntegral", kValues, 1, kExactly, call_plain, special_dawson},
    {33, "dot", kValues, 2, kExactly, call_dot},
    {34, "EllipticE", kValues, 2, kExactly, call_plain, special_elliptic_e},
    {35, "EllipticF", kValues, 2, kExactly, call_plain, special_elliptic_f},
    {36, "EllipticPi", kValues, 3, kExactly, call_plain, special_elliptic_pi},
    {37, "Erf", kValues, 1, kExactly, call_plain, special_erf},
    {38, "Erfc", kValues, 1, kExactly, call_plain, special_erfc},
    {39, "euler", kValues, 0, kExactly, call_euler, nullptr, "pi"},
    {40, "exp", kValues, 1, kExactly, call_plain, elementary_exp},
    {41, "ExpInt", kValues, 1, kExactly, call_plain, special_exp_int},
    {42, "ExpIntEi", kValues, 1, kExactly, call_plain, special_exp_int_ei, "ExpInt"},
    {43, "ExpIntN", kValues, 2, kExactly, call_plain, special_exp_int_n},
    {44, "floor", kValues, 1, kExactly, call_rounding, elementary_floor},
    {45, "fmax", kVariables, 2, kAtLeast, call_fmax, nullptr, "max"},
    {46, "fmin", kVariables, 2, kAtLeast, call_fmin, nullptr, "min"},
    {47, "func", kVariablesAndValues, 0, kAtLeast, call_func},
    {48, "GammaFunc", kValues, 1, kExactly, call_plain, special_gamma},
    {49, "GammaPFunc", kValues, 2, kExactly, call_plain, special_gamma_p},
    {50, "GammaQFunc", kValues, 2, kExactly, call_plain, special_gamma_q},
    {51, "gas", kValues, 0, kExactly, call_gas},
    {52, "GEarth", kValues, 0, kExactly, call_gearth},
    {53, "grav", kValues, 0, kExactly, call_grav},
    {54, "IncBetaFunc", kValues, 3, kExactly, call_plain, special_inc_beta},
    {55, "int", kValues, 1, kExactly, call_rounding, elementary_int},
    {56, "JacobiCN", kValues, 2, kExactly, call_plain, special_jacobi_cn},
    {57, "JacobiDN", kValues, 2, kExactly, call_plain, special_jacobi_dn},
    {58, "JacobiSN", kValues, 2, kExactly, call_plain, special_jacobi_sn},
    {59, "lininterp", kValues, 5, kExactly, call_lininterp, nullptr, "LinInterp"},
    {60, "ln", kValues, 1, kExactly, call_plain, elementary_ln},
    {61, "log", kValues, 1, kExactly, call_plain, elementary_ln},
    {62, "log10", kValues, 1, kExactly, call_plain, elementary_log10},
    {63, "LogGammaFunc", kValues, 1, kExactly, call_plain, special_log_gamma},
    {64, "mag", kValues, 1, kExactly, call_mag},
    {65, "mod", kValues, 2, kExactly, call_mod},
    {66, "Normsdist", kValues, 1, kExactly, call_plain, special_norms_dist},
    {67, "Normsinv", kValues, 1, kExactly, call_plain, special_norms_inv},
    {68, "Number", kValues, 1, kExactly, call_number},
    {69, "pi", kValues, 0, kExactly, call_pi},
    {70, "Planck", kValues, 0, kExactly, call_planck},
    {71, "PolarAngle", kValues, 1, kExactly, call_polar_angle},
    {72, "PolarVec", kValues, 2, kExactly, call_polar_vec},
    {73, "round", kValues, 1, kExactly, call_rounding, elementary_round},
    {74, "sec", kValues, 1, kExactly, call_plain, elementary_sec},
    {75, "sech", kValues, 1, kExactly, call_plain, elementary_sech},
    {76, "sign", kValues, 1, kExactly, call_sign},
    {77, "sin", kValues, 1, kExactly, call_plain, elementary_sin},
    {78, "sinh", kValues, 1, kExactly, call_plain, elementary_sinh},
    {79, "solve", kVariables, 2, kAtLeast, call_solve},
    {80, "sqrt", kValues, 1, kExactly, call_sqrt},
    {81, "StefanBoltzmann", kValues, 0, kExactly, call_stefan_boltzmann, nullptr, "Boltzmann"},
    {82, "tan", kValues, 1, kExactly, call_plain, elementary_tan},
    {83, "tanh", kValues, 1, kExactly, call_plain, elementary_tanh},
    {84, "asinh", kValues, 1, kExactly, call_plain, elementary_asinh},
    {85, "acosh", kValues, 1, kExactly, call_plain_unguarded, elementary_acosh},
    {86, "atanh", kValues, 1, kExactly, call_plain_unguarded, elementary_atanh},
    {87, "asech", kValues, 1, kExactly, call_plain_unguarded, elementary_asech},
    {88, "acsch", kValues, 1, kExactly, call_plain, elementary_acsch},
    {89, "acoth", kValues, 1, kExactly, call_plain, elementary_acoth},
};
// clang-format on

constexpr bool are_numbered_in_order() {
  for (int i = 0; i < kFunctionCount; ++i) {
    if (kRows[i].number != i + 1) return false;
  }
  return true;
}
constexpr bool fit_plain_arguments() {
  for (const FunctionRow& row : kRows) {
    if (row.arguments > kMostPlainArguments) return false;
  }
  return true;
}
static_assert(std::size(kRows) == kFunctionCount);
static_assert(fit_plain_arguments());
static_assert(are_numbered_in_order());

// Open addressing over the folded names; a null row ends a search.
class Index {
 public:
  Index() {
    for (const FunctionRow& row : kRows) {
      std::size_t slot = hash(row.name);
      while (slots_[slot] != nullptr) slot = (slot + 1) % kSlots;
      slots_[slot] = &row;
      longest_ = std::max(longest_, std::string_view(row.name).size());
    }
  }

  [[nodiscard]] const FunctionRow* find(std::string_view name) const {
    if (name.empty() || name.size() > longest_) return nullptr;
    for (std::size_t slot = hash(name); slots_[slot] != nullptr; slot = (slot + 1) % kSlots) {
      if (equal_nocase(name, slots_[slot]->name)) return slots_[slot];
    }
    return nullptr;
  }

 private:
  static constexpr std::size_t kSlots = 512;

  static std::size_t hash(std::string_view name) {
    std::uint32_t h = 2166136261U;  // FNV-1a
    for (const char c : name) h = (h ^ static_cast<unsigned char>(fold_case(c))) * 16777619U;
    return (h ^ (h >> 15U)) % kSlots;
  }

  std::array<const FunctionRow*, kSlots> slots_{};
  std::size_t longest_ = 0;
};

constexpr int kComponentNumber = 24;
constexpr int kNumberNumber = 68;
static_assert(std::string_view(kRows[kComponentNumber - 1].name) == "component");
static_assert(std::string_view(kRows[kNumberNumber - 1].name) == "Number");

}  // namespace

std::span<const FunctionRow> function_rows() { return kRows; }

FunctionSet::Function lookup_function_name(std::string_view name) {
  static const Index index;
  const FunctionRow* row = index.find(name);
  return row == nullptr ? FunctionSet::Function() : FunctionSet::Function{row->number, row->kind};
}

void call_func_by_number(const FunctionCall& call) {
  if (call.number < 1 || call.number > kFunctionCount) {
    call.err.append_text("ERROR:  Bad function number in call_func_by_number.\n");
    return;
  }
  const FunctionRow& row = kRows[call.number - 1];
  // A request asks for a body before it counts.
  if (row.kind != FunctionSet::kValues || check_arg_count(row, call.count, call.stack, call.err)) {
    row.handler(row, call);
  }
}

bool check_arg_count(const FunctionRow& row, int given, ValueStack& stack, TextBuf& err) {
  if (given == row.arguments || (!row.exact && given > row.arguments)) return true;
  stack.drop(static_cast<std::size_t>(given));
  stack.push_value(DimValue{});
  err.append_three("ERROR:  Function ", row.counted_as(), " takes ");
  err.append_integer(row.arguments);
  // No blank in front of the word.
  err.append_text(row.arguments == 1 ? "argument.\n" : "arguments.\n");
  return false;
}

const FunctionSet& builtin_functions() {
  static constexpr FunctionSet kSet = {lookup_function_name, call_func_by_number, kComponentNumber,
                                       kNumberNumber};
  return kSet;
}

}  // namespace quantiverse
