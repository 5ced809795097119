#pragma once

#include "builtins/function_table.h"

// Handlers of the functions that know about vectors, or that keep the dimension of an argument.
namespace quantiverse {

// Two vectors of any dimensions; the result has their product.
void call_dot(const FunctionRow&, const FunctionCall&);
void call_cross(const FunctionRow&, const FunctionCall&);
// A vector to its length, in its dimension.
void call_mag(const FunctionRow&, const FunctionCall&);
// Two vectors of one dimension. Beware: the arc tangent of the cosine of the angle between them,
// so parallel vectors give 0.785 rad.
void call_angle(const FunctionRow&, const FunctionCall&);
// A length in any dimension and an angle, which a plain number is not, to a vector in the plane.
void call_polar_vec(const FunctionRow&, const FunctionCall&);
// A vector to the angle of its projection on the plane, in radians.
void call_polar_angle(const FunctionRow&, const FunctionCall&);
// A vector and 1, 2 or 3 to a scalar of its dimension.
void call_component(const FunctionRow&, const FunctionCall&);

// x1, y1, x2, y2, x to y on the line through both points.
void call_lininterp(const FunctionRow&, const FunctionCall&);
// Two scalars of one dimension; the remainder has the sign of the first.
void call_mod(const FunctionRow&, const FunctionCall&);
// A scalar of any dimension, which stays.
void call_abs(const FunctionRow&, const FunctionCall&);
// A scalar of any dimension to -1, 0 or 1.
void call_sign(const FunctionRow&, const FunctionCall&);
// Anything to the plain number or vector of its MKS value.
void call_number(const FunctionRow&, const FunctionCall&);

}  // namespace quantiverse
