#include "models.h"

namespace quantiverse::bench {
namespace {

// From `low` up to but not `high`, a hundred different ones.
std::string between(double low, double high, std::size_t i) {
  return std::to_string(low + (high - low) * static_cast<double>(i % 100) / 100.0);
}

std::string numbered(char letter, int i) { return letter + std::to_string(i); }

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text.append(text.empty() ? "" : ", ").append(name);
  return text;
}

std::string solve_line(const Model& model) {
  return "solve(" + joined(model.dependent) + ", " + joined(model.independent) + ")\n";
}

}  // namespace

Model tank_outlet() {
  return {
      "d = 0.1 m\n"
      "nu = 1e-6 m^2/s\n"
      "ratio = 500\n"
      "gn = 9.81 m/s^2\n"
      "h = 12 m\n"
      "v = 1 m/s\n",
      {"re = v * d / nu", "f = 0.316 / re^0.25", "left = sqrt(2 * gn * h / (f * ratio + 1)) - v"},
      1,
      {"left"},
      {"v"},
      [](const Model&, std::size_t i) { return "h = " + between(2, 30, i) + " m\nv = 1 m/s\n"; }};
}

Model three_reservoirs() {
  return {
      "z1 = 100 m\n"
      "z2 = 85 m\n"
      "z3 = 60 m\n"
      "k1 = 2000 s^2/m^5\n"
      "k2 = 3000 s^2/m^5\n"
      "k3 = 1500 s^2/m^5\n"
      "q1 = 0.1 m^3/s\n"
      "q2 = 0.1 m^3/s\n"
      "q3 = 0.1 m^3/s\n"
      "joint = 80 m\n",
      {"loss1 = z1 - joint - k1 * q1 * abs(q1)", "loss2 = z2 - joint - k2 * q2 * abs(q2)",
       "loss3 = joint - z3 - k3 * q3 * abs(q3)", "rest = q1 + q2 - q3"},
      3,
      {"loss1", "loss2", "loss3", "rest"},
      {"q1", "q2", "q3", "joint"},
      [](const Model&, std::size_t i) {
        return "z1 = " + between(90, 120, i) +
               " m\n"
               "q1 = 0.1 m^3/s\nq2 = 0.1 m^3/s\nq3 = 0.1 m^3/s\njoint = 80 m\n";
      }};
}

Model broyden_tridiagonal(int n) {
  const auto restart = [](const Model& model, std::size_t) {
    std::string text;
    for (const std::string& x : model.independent) text += x + " = -1\n";
    return text;
  };
  // The call is there to be counted.
  Model model{"", {"one = abs(-1)"}, 1, {}, {}, restart};
  for (int i = 1; i <= n; ++i) {
    const std::string x = numbered('x', i);
    std::string line = numbered('f', i) + " = (3 - 2 * " + x + ") * " + x;
    if (i > 1) line += " - " + numbered('x', i - 1);
    if (i < n) line += " - 2 * " + numbered('x', i + 1);
    model.lines.push_back(line + " + one");
    model.dependent.push_back(numbered('f', i));
    model.independent.push_back(x);
  }
  model.given = restart(model, 0);
  return model;
}

std::string model_text(const Model& model) {
  std::string text = model.given + "begin\n";
  for (const std::string& line : model.lines) text.append(line).append("\n");
  return text + "end\n";
}

std::string solves_text(const Model& model, std::size_t solves) {
  std::string text = model_text(model);
  for (std::size_t i = 0; i < solves; ++i) text += model.restart(model, i) + solve_line(model);
  return text;
}

}  // namespace quantiverse::bench
