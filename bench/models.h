#pragma once

#include <cstddef>
#include <string>
#include <vector>

// The bodies that the benchmarks run and solve: the same bytes in every run and on every machine.
namespace quantiverse::bench {

struct Model {
  std::string given;               // the lines in front of `begin`, all variables at their start
  std::vector<std::string> lines;  // of the body
  int calls;                       // of functions, in one run of the body
  std::vector<std::string> dependent;
  std::vector<std::string> independent;
  // The lines in front of solve number i: the variables back at their start, another problem.
  std::string (*restart)(const Model& model, std::size_t i);
};

// The speed of the water that leaves a tank through a pipe: ten operations and a square root.
Model tank_outlet();
// Three reservoirs that pipes join: three flows and the head of the joint.
Model three_reservoirs();
// Broyden's tridiagonal system in n variables. What is to be done for an equation doesn't depend
// on n, but for the two at the ends.
Model broyden_tridiagonal(int n);

// The model, up to and with `end`.
std::string model_text(const Model& model);
// The model, and behind it that many solves.
std::string solves_text(const Model& model, std::size_t solves);

}  // namespace quantiverse::bench
