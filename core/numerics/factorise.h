#pragma once

#include "text/text_buf.h"
#include "text/vectors.h"

// Factors of square matrices, and solutions with them: LU for Newton's method, and QR, which can
// be updated, for Broyden's. n rows and columns, counted from 1.
namespace quantiverse {

// Replaces `a` by its factors: U on and above the diagonal, and below it L, whose own diagonal is
// 1. Their product has the rows of `a` exchanged: at step i, row i and row indx[i].
// d:       +1 or -1, for an even or odd number of exchanges.
// Failure: a row of zeros; d is 1 and indx unset. Any other singular matrix isn't noticed: a
//          zero pivot becomes 1e-20.
void ludcmp(DoubleMatrix& a, int n, IntVector& indx, double& d, TextBuf& err);

// Solves for the right-hand side b with what ludcmp left; b becomes the solution.
void lu_back_substitute(DoubleMatrix& a, int n, const IntVector& indx, DoubleVector& b);

// Replaces `a` by its factors: R above the diagonal and in d, whose n numbers are the diagonal of
// R; on and below the diagonal the vectors u of the n - 1 Householder matrices 1 - u u^T / c[i],
// whose product, the last on the left, is Q transposed.
// True: singular, as far as is noticed: the first columns are all zeros, or the last of d is 0.
// The scale of a column is the largest number so far, so a later column of zeros isn't noticed,
// and gives NaNs.
bool qr_decompose(DoubleMatrix& a, int n, DoubleVector& c, DoubleVector& d);

// Turns the factors R and Q transposed of a matrix into those of Q (R + u v^T); v is kept, u is
// used up. R is whole here, its diagonal in place and zeros below.
void qr_update(DoubleMatrix& r, DoubleMatrix& qt, int n, DoubleVector& u, const DoubleVector& v);

// Rotates the rows i and i + 1 of both, by the angle whose cosine is a over the length of (a, b)
// and whose sine is b over it. For a = b = 0 the sine is -1. Columns of r before i are left alone.
void qr_rotate(DoubleMatrix& r, DoubleMatrix& qt, int n, int i, double a, double b);

// Solves R x = b, with R above the diagonal of `a` and its diagonal in d; b becomes x.
void r_back_substitute(DoubleMatrix& a, int n, const DoubleVector& d, DoubleVector& b);

}  // namespace quantiverse
