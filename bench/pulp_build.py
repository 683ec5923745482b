#!/usr/bin/env python3
"""Builds the model-building benchmark's models with PuLP and writes them for Cbc.

The models are the ones bench_build_models builds (see build_models_bench.h):

  basic     for k = i * n + j (i, j < n): x_k (cost 2) and y_k (cost 1) in
            [0, inf), rows x_k - y_k >= i and x_k + y_k >= 0, in that order
  knapsack  binary x_j, one row sum_j w_j x_j <= floor(sum_j w_j / 2) with
            w_j = 1 + (j % 97), no objective

They are written the way PuLP's Cbc back end (COIN_CMD) writes a problem
before it starts cbc: LpProblem.writeMPS(path, rename=1). Nothing is solved.

Variable names carry zero-padded indices, so that PuLP's name-sorted column
order is x_0 .. x_(n^2-1), y_0 .. y_(n^2-1), the same as the other variants.

Prints one line on standard output:
  pulp model=basic size=N build_s=T write_s=T cols=C rows=R
Times exclude the interpreter's start-up and the PuLP import. The knapsack's
variables are created before its timer starts, as in the other variants.
"""
import argparse
import sys
import time

import pulp


def build_basic(n):
    width = len(str(n * n - 1))
    prob = pulp.LpProblem("basic", pulp.LpMinimize)
    pairs = range(n * n)
    x = [pulp.LpVariable("x_%0*d" % (width, k), lowBound=0) for k in pairs]
    y = [pulp.LpVariable("y_%0*d" % (width, k), lowBound=0) for k in pairs]
    prob += pulp.lpSum(2 * v for v in x) + pulp.lpSum(y)
    for i in range(n):
        for j in range(n):
            k = i * n + j
            prob += x[k] - y[k] >= i
            prob += x[k] + y[k] >= 0
    return prob


def knapsack_variables(m):
    width = len(str(m - 1))
    return [pulp.LpVariable("x_%0*d" % (width, j), cat=pulp.LpBinary) for j in range(m)]


def build_knapsack(x):
    w = [1 + j % 97 for j in range(len(x))]
    prob = pulp.LpProblem("knapsack", pulp.LpMinimize)
    prob += pulp.lpSum(w[j] * x[j] for j in range(len(x))) <= sum(w) // 2
    return prob


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--model", choices=("basic", "knapsack"), required=True)
    parser.add_argument("--size", type=int, required=True,
                        help="N of the basic model, or the knapsack's number of terms")
    parser.add_argument("--out", required=True, help="MPS file to write")
    args = parser.parse_args()
    if args.size < (2 if args.model == "basic" else 1):
        parser.error("--size too small for the %s model" % args.model)

    if args.model == "basic":
        start = time.perf_counter()
        prob = build_basic(args.size)
    else:
        x = knapsack_variables(args.size)
        start = time.perf_counter()
        prob = build_knapsack(x)
    built = time.perf_counter()
    # What COIN_CMD does before it runs cbc (the names it returns are kept
    # there to map the solution back).
    variables, _, _, _ = prob.writeMPS(args.out, rename=1)
    written = time.perf_counter()
    print("pulp model=%s size=%d build_s=%.6f write_s=%.6f cols=%d rows=%d"
          % (args.model, args.size, built - start, written - built, len(variables),
             len(prob.constraints)))
    return 0


if __name__ == "__main__":
    sys.exit(main())
