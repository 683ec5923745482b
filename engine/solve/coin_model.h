// The problem store in the column-major form the COIN libraries load. Used by the Clp and Cbc
// adapters only; keeps COIN headers out of the problem store.
#pragma once

#include <vector>

class ClpSimplex;

namespace zelq::engine {

struct Problem;

// Column-major LP data: the model rows first, then lazy constraints and user cuts as ordinary
// rows. Infinite bounds (magnitude >= 1e30) are COIN_DBL_MAX, binaries are clamped to [0, 1].
struct CoinLpData {
  int cols = 0;
  int rows = 0;       // all rows, extra rows included
  int modelRows = 0;  // rows of the problem itself
  bool negated = false;  // objective negated so that the solver minimises
  std::vector<int> beg, idx;
  std::vector<double> val;
  std::vector<double> colLower, colUpper, obj, rowLower, rowUpper;
  std::vector<char> isInt;  // 1 for 'B' and 'I' columns
};

// Builds the data. With minimiseOnly a maximisation is turned into a minimisation of -c'x
// (data.negated is set); the constant term is not included.
void BuildCoinData(const Problem& problem, bool minimiseOnly, CoinLpData* data);

// Loads the data into a Clp model (continuous columns).
void LoadIntoClp(const CoinLpData& data, ClpSimplex* model);

// Bound conversions between the engine (1e30) and COIN (COIN_DBL_MAX).
double ToCoinBound(double v);
double FromCoinBound(double v);

}  // namespace zelq::engine
