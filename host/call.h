#pragma once

#include <optional>
#include <span>
#include <vector>

#include "host/function_call.h"
#include "host/host.h"

// How the host calls an add-in's functions.
namespace quantiverse::host {

// A function in the library that returns a pointer to a record.
struct Callee {
  void* address = nullptr;
  void* free_entry = nullptr;  // xlAutoFree or xlAutoFree12, by `result`; null if not exported
  Letter result = Letter::kRecord12;
};

// Nothing if the library doesn't export `name`, or isn't loaded.
std::optional<Callee> find_callee(const Host& host, const char* name, Letter result);

// Calls, copies the result and has it freed as it asks. Nothing if no record came back, or one that
// no value can be read from.
std::optional<Returned> call_add_in(Host& host, const Callee& callee, std::span<const Slot> slots);
// The same in the storage of an earlier result, for many calls. false: nothing.
bool call_add_in(Host& host, const Callee& callee, std::span<const Slot> slots, Returned& returned);

// Converts arguments for a registered function; those that are left out get their defaults, and
// references become values.
// false: one doesn't convert.
// REQUIRES: no more arguments than `signature` has.
bool prepare(const Host& host, const Signature& signature, const std::vector<Argument>& arguments,
             PreparedArguments& prepared);

// The value of a formula that is one call.
Value evaluate(Host& host, const FormulaCall& call);

}  // namespace quantiverse::host
