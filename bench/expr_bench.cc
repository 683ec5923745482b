// Linear expressions: the cost of appending n terms (one at a time through
// the interface, and in bulk), which must grow linearly with n; and the two
// merge strategies on the same row around the point where MergeTerms
// switches from dense to sparse (99 columns per term).
//
// With Google Benchmark: the usual benchmark program, reporting items (terms)
// per second. Without it: a driver printing the best of five runs per case in
// nanoseconds per term.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "scalar/expr_data.h"
#include "scalar/expr_handles.h"
#include "scalar/expr_merge.h"
#include "scalar/handles.h"
#include "zelq/zelqcpp_exports.h"

#ifdef ZELQ_HAVE_BENCHMARK
#include <benchmark/benchmark.h>
#endif

namespace {

using Zelq::ElementRecord;
using Zelq::ElementRef;
using Zelq::ExprData;

ElementRef Column(int32_t index) {
  ElementRef record = ElementRef::Wrap(new ElementRecord);
  record->index = index;
  return record;
}

// `n` handles over columns 0 .. 999 (appending does not look at them).
struct Handles {
  std::vector<ElementRef> records;
  std::vector<std::unique_ptr<Zelq::IVar>> owned;
  std::vector<Zelq::IVar*> vars;
  std::vector<double> coeffs;

  explicit Handles(size_t n) : coeffs(n, 1.5) {
    for (size_t i = 0; i < n; ++i) {
      records.push_back(Column(static_cast<int32_t>(i % 1000)));
      owned.emplace_back(Zelq::NewVarHandle(Zelq::Var(records.back())));
      vars.push_back(owned.back().get());
    }
  }
};

// One AddTerm call per term on a new expression.
double AppendOneByOne(const Handles& h) {
  std::unique_ptr<Zelq::IExpr> expr(CreateExpr(0));
  for (size_t i = 0; i < h.vars.size(); ++i) expr->AddTerm(h.vars[i], h.coeffs[i]);
  return expr->GetSize();
}

// One AddTerms call for all terms.
double AppendBulk(const Handles& h) {
  std::unique_ptr<Zelq::IExpr> expr(CreateExpr(0));
  return expr->AddTerms(h.vars, h.coeffs.data(), static_cast<int>(h.vars.size()));
}

// One AddTerms call taking the variables from a variable array.
double AppendArray(const Zelq::IVarArray* array, const Handles& h) {
  std::unique_ptr<Zelq::IExpr> expr(CreateExpr(0));
  return expr->AddTerms(array, h.coeffs.data(), static_cast<int>(h.coeffs.size()));
}

// A row of `n` distinct columns drawn from 0 .. num_cols - 1, in random order.
// Merging it changes nothing, so one row serves every repetition.
struct Row {
  ExprData expr;
  int num_cols;
  std::vector<double> values;
  std::vector<uint8_t> flags;

  Row(int n, int cols) : num_cols(cols), values(static_cast<size_t>(cols)), flags(values.size()) {
    std::vector<int32_t> all(static_cast<size_t>(cols));
    std::iota(all.begin(), all.end(), 0);
    std::mt19937 random(7);
    std::shuffle(all.begin(), all.end(), random);
    for (int i = 0; i < n; ++i) Zelq::AppendTerm(expr, Zelq::Var(Column(all[i])), 1.0 + i);
  }
};

struct Case {
  std::string name;
  size_t terms;
  std::function<double()> run;
};

std::vector<Case> Cases() {
  std::vector<Case> cases;
  for (size_t n : {size_t{1000}, size_t{10000}, size_t{100000}, size_t{1000000}}) {
    auto handles = std::make_shared<Handles>(n);
    cases.push_back({"AddTerm/" + std::to_string(n), n, [handles] { return AppendOneByOne(*handles); }});
    cases.push_back({"AddTerms/" + std::to_string(n), n, [handles] { return AppendBulk(*handles); }});
    std::shared_ptr<Zelq::IVarArray> array(Zelq::NewVarArray(handles->records));
    cases.push_back({"AddTermsArray/" + std::to_string(n), n,
                     [handles, array] { return AppendArray(array.get(), *handles); }});
  }
  // Around the switch: 99 columns per term picks dense, 100 sparse.
  for (int n : {1000, 10000}) {
    for (int per_term : {99, 100}) {
      auto row = std::make_shared<Row>(n, n * per_term);
      std::string suffix = std::to_string(n) + "_terms/" + std::to_string(n * per_term) + "_cols";
      cases.push_back({"MergeDense/" + suffix, static_cast<size_t>(n), [row] {
                         Zelq::MergeDense(row->expr, row->values, row->flags);
                         return row->expr.coeffs[0];
                       }});
      cases.push_back({"MergeSparse/" + suffix, static_cast<size_t>(n), [row] {
                         Zelq::MergeSparse(row->expr);
                         return row->expr.coeffs[0];
                       }});
      cases.push_back({"MergeTerms/" + suffix, static_cast<size_t>(n), [row] {
                         Zelq::MergeTerms(row->expr, row->num_cols, row->values, row->flags);
                         return row->expr.coeffs[0];
                       }});
    }
  }
  return cases;
}

}  // namespace

#ifdef ZELQ_HAVE_BENCHMARK

int main(int argc, char** argv) {
  for (const Case& c : Cases()) {
    benchmark::RegisterBenchmark(c.name.c_str(), [c](benchmark::State& state) {
      for (auto _ : state) benchmark::DoNotOptimize(c.run());
      state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(c.terms));
    })->Unit(benchmark::kMicrosecond);
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

#else

int main() {
  for (const Case& c : Cases()) {
    double fastest = 1e300;
    for (int repeat = 0; repeat < 5; ++repeat) {
      auto start = std::chrono::steady_clock::now();
      volatile double sink = c.run();
      (void)sink;
      std::chrono::duration<double, std::nano> took = std::chrono::steady_clock::now() - start;
      fastest = std::min(fastest, took.count());
    }
    std::printf("%-40s %10.2f ns/term\n", c.name.c_str(), fastest / static_cast<double>(c.terms));
  }
  return 0;
}

#endif
