// Sum and Clone over strided 10,000,000-element views, against plain loops
// over a contiguous buffer of the same size; and the cost of making views and
// transposes of a large array, which copy nothing and so do not grow with it.
//
// With Google Benchmark: the usual benchmark program. Without it: a driver
// that prints the best of five runs of each case and the ratios.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <numeric>
#include <vector>

#include "zelq/zelqcpp_ndarray.h"

#ifdef ZELQ_HAVE_BENCHMARK
#include <benchmark/benchmark.h>
#endif

namespace {

constexpr int kRows = 2000;
constexpr int kCols = 10000;
constexpr size_t kElements = size_t{kRows} * kCols / 2;  // 10,000,000

using Zelq::Full;
using Zelq::NdArray;
using Zelq::Slice;

// A 2000 x 10000 store (20,000,000 values) and views of 10,000,000 of them.
struct Data {
  std::vector<double> store = std::vector<double>(size_t{kRows} * kCols);
  std::vector<double> contiguous = std::vector<double>(kElements);
  NdArray<double, 2> base = NdArray<double, 2>::Wrap(store.data(), kRows, kCols);
  // every other column: inner stride 2
  NdArray<double, 2> every_other = base(Full(), Slice().Step(2));
  // half the rows, both axes backwards: strides (-10000, -1)
  NdArray<double, 2> reversed = base(Slice().Start(kRows / 2 - 1).Step(-1), Slice().Step(-1));
  // a transposed view of the reversed one: inner stride -10000
  NdArray<double, 2> transposed = reversed.Transpose();

  Data() {
    std::iota(store.begin(), store.end(), 0.0);
    std::iota(contiguous.begin(), contiguous.end(), 0.0);
  }
};

Data& TheData() {
  static Data data;
  return data;
}

double PlainSum() {
  const std::vector<double>& v = TheData().contiguous;
  double total = 0;
  for (size_t k = 0; k < v.size(); ++k) total += v[k];
  return total;
}

double PlainCopy() {
  const std::vector<double>& v = TheData().contiguous;
  std::unique_ptr<double[]> out(new double[v.size()]);
  for (size_t k = 0; k < v.size(); ++k) out[k] = v[k];
  return out[v.size() - 1];
}

double ViewSum(const NdArray<double, 2>& view) { return view.Sum(); }
double ViewClone(const NdArray<double, 2>& view) { return view.Clone().Item(kElements - 1); }

double MakeViews() {
  Data& d = TheData();
  auto view = d.base(Slice(1, kRows, 3), Slice().Step(-1));
  auto transposed = view.Transpose();
  return static_cast<double>(transposed.Dim(0));
}

struct Case {
  const char* name;
  std::function<double()> run;
};

std::vector<Case> Cases() {
  Data& d = TheData();
  return {
      {"PlainSum/contiguous", PlainSum},
      {"Sum/every_other_column", [&d] { return ViewSum(d.every_other); }},
      {"Sum/reversed", [&d] { return ViewSum(d.reversed); }},
      {"Sum/transposed", [&d] { return ViewSum(d.transposed); }},
      {"PlainCopy/contiguous", PlainCopy},
      {"Clone/every_other_column", [&d] { return ViewClone(d.every_other); }},
      {"Clone/reversed", [&d] { return ViewClone(d.reversed); }},
      {"Clone/transposed", [&d] { return ViewClone(d.transposed); }},
      {"ViewAndTranspose/20M_store", MakeViews},
  };
}

}  // namespace

#ifdef ZELQ_HAVE_BENCHMARK

int main(int argc, char** argv) {
  for (const Case& c : Cases()) {
    benchmark::RegisterBenchmark(c.name, [run = c.run](benchmark::State& state) {
      for (auto _ : state) benchmark::DoNotOptimize(run());
    })->Unit(c.name[0] == 'V' ? benchmark::kMicrosecond : benchmark::kMillisecond);
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

#else

int main() {
  std::vector<Case> cases = Cases();
  std::vector<double> best(cases.size());
  for (size_t k = 0; k < cases.size(); ++k) {
    double fastest = 1e300;
    for (int repeat = 0; repeat < 5; ++repeat) {
      auto start = std::chrono::steady_clock::now();
      volatile double sink = cases[k].run();
      (void)sink;
      std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
      fastest = std::min(fastest, took.count());
    }
    best[k] = fastest;
    std::printf("%-28s %10.3f ms\n", cases[k].name, fastest);
  }
  std::printf("Sum ratios   (every other, reversed, transposed) / plain: %.2f %.2f %.2f\n",
              best[1] / best[0], best[2] / best[0], best[3] / best[0]);
  std::printf("Clone ratios (every other, reversed, transposed) / plain: %.2f %.2f %.2f\n",
              best[5] / best[4], best[6] / best[4], best[7] / best[4]);
  return 0;
}

#endif
