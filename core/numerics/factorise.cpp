#include "numerics/factorise.h"

#include <cmath>
#include <utility>

#include "numerics/sign_of.h"

namespace quantiverse {
namespace {

constexpr double kTinyPivot = 1e-20;

// Crout's step: the element without what the rows above and the columns before it account for.
void reduce(DoubleMatrix& a, int i, int j, int terms) {
  double sum = 0.0;
  for (int k = 1; k <= terms; ++k) sum += a[i][k] * a[k][j];
  a[i][j] = a[i][j] - sum;
}

// The length of (a, b), for a not 0.
double length(double a, double b) {
  const double x = std::fabs(a);
  const double y = std::fabs(b);
  if (x > y) return x * std::sqrt(1.0 + (b / a) * (b / a));
  return y * std::sqrt(1.0 + (a / b) * (a / b));
}

}  // namespace

void ludcmp(DoubleMatrix& a, int n, IntVector& indx, double& d, TextBuf& err) {
  d = 1.0;
  DoubleVector vv = dvector(1, n);  // what scales the largest element of each row to 1
  for (int i = 1; i <= n; ++i) {
    double big = 0.0;
    for (int j = 1; j <= n; ++j) {
      const double element = std::fabs(a[i][j]);
      if (element > big) big = element;
    }
    if (big == 0.0) {
      err.append_text("ERROR:  Singular matrix in routine ludcmp.\n");
      return;
    }
    vv[i] = 1.0 / big;
  }
  for (int j = 1; j <= n; ++j) {
    for (int i = 1; i < j; ++i) reduce(a, i, j, i - 1);
    double big = 0.0;
    int imax = j;  // stays in a column of NaNs
    for (int i = j; i <= n; ++i) {
      reduce(a, i, j, j - 1);
      const double dum = vv[i] * std::fabs(a[i][j]);
      if (dum >= big) {  // the later of two equals
        big = dum;
        imax = i;
      }
    }
    if (j != imax) {
      for (int k = 1; k <= n; ++k) std::swap(a[imax][k], a[j][k]);
      d = -d;
      vv[imax] = vv[j];
    }
    indx[j] = imax;
    if (a[j][j] == 0.0) a[j][j] = kTinyPivot;
    const double reciprocal = 1.0 / a[j][j];
    for (int i = j + 1; i <= n; ++i) a[i][j] = a[i][j] * reciprocal;
  }
}

void lu_back_substitute(DoubleMatrix& a, int n, const IntVector& indx, DoubleVector& b) {
  int ii = 0;  // where b begins to differ from 0
  for (int i = 1; i <= n; ++i) {
    double sum = b[indx[i]];
    b[indx[i]] = b[i];
    if (ii != 0) {
      for (int j = ii; j < i; ++j) sum -= a[i][j] * b[j];
    } else if (sum != 0.0) {
      ii = i;
    }
    b[i] = sum;
  }
  for (int i = n; i >= 1; --i) {
    double sum = b[i];
    for (int j = i + 1; j <= n; ++j) sum -= a[i][j] * b[j];
    b[i] = sum / a[i][i];
  }
}

bool qr_decompose(DoubleMatrix& a, int n, DoubleVector& c, DoubleVector& d) {
  bool sing = false;
  double scale = 0.0;  // not set back from column to column
  for (int k = 1; k < n; ++k) {
    for (int i = k; i <= n; ++i) {
      const double element = std::fabs(a[i][k]);
      scale = scale > element ? scale : element;
    }
    if (scale == 0.0) {
      sing = true;
      c[k] = d[k] = 0.0;
      continue;
    }
    double sum = 0.0;
    for (int i = k; i <= n; ++i) {
      a[i][k] = a[i][k] / scale;
      sum += a[i][k] * a[i][k];
    }
    const double sigma = sign_of(std::sqrt(sum), a[k][k]);
    a[k][k] = a[k][k] + sigma;
    c[k] = sigma * a[k][k];
    d[k] = -scale * sigma;
    for (int j = k + 1; j <= n; ++j) {
      double product = 0.0;
      for (int i = k; i <= n; ++i) product += a[i][k] * a[i][j];
      const double tau = product / c[k];
      for (int i = k; i <= n; ++i) a[i][j] = a[i][j] - tau * a[i][k];
    }
  }
  d[n] = a[n][n];
  return sing || d[n] == 0.0;
}

void qr_update(DoubleMatrix& r, DoubleMatrix& qt, int n, DoubleVector& u, const DoubleVector& v) {
  int k = n;
  while (k > 1 && u[k] == 0.0) --k;
  // Rotations that leave of u its first element alone; r gets elements below the diagonal.
  for (int i = k - 1; i >= 1; --i) {
    qr_rotate(r, qt, n, i, u[i], -u[i + 1]);
    u[i] = u[i] == 0.0 ? std::fabs(u[i + 1]) : length(u[i], u[i + 1]);
  }
  for (int j = 1; j <= n; ++j) r[1][j] = r[1][j] + u[1] * v[j];
  // Rotations that take those elements out again.
  for (int i = 1; i < k; ++i) qr_rotate(r, qt, n, i, r[i][i], -r[i + 1][i]);
}

void qr_rotate(DoubleMatrix& r, DoubleMatrix& qt, int n, int i, double a, double b) {
  double c = 0.0;
  double s = 0.0;
  if (a == 0.0) {
    s = b > 0.0 ? 1.0 : -1.0;
  } else if (std::fabs(a) > std::fabs(b)) {
    const double fact = b / a;
    c = sign_of(1.0 / std::sqrt(1.0 + fact * fact), a);
    s = fact * c;
  } else {
    const double fact = a / b;
    s = sign_of(1.0 / std::sqrt(1.0 + fact * fact), b);
    c = fact * s;
  }
  const auto rotate = [c, s, i](DoubleMatrix& m, int j) {
    const double y = m[i][j];
    const double w = m[i + 1][j];
    m[i][j] = c * y - s * w;
    m[i + 1][j] = s * y + c * w;
  };
  for (int j = i; j <= n; ++j) rotate(r, j);
  for (int j = 1; j <= n; ++j) rotate(qt, j);
}

void r_back_substitute(DoubleMatrix& a, int n, const DoubleVector& d, DoubleVector& b) {
  b[n] = b[n] / d[n];
  for (int i = n - 1; i >= 1; --i) {
    double sum = 0.0;
    for (int j = i + 1; j <= n; ++j) sum += a[i][j] * b[j];
    b[i] = (b[i] - sum) / d[i];
  }
}

}  // namespace quantiverse
