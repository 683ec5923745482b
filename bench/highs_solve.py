#!/usr/bin/python3
"""Solves a problem exported by bench_compare_solve with HiGHS as bundled in scipy.

    highs_solve.py FILE LIMIT lp|mip     prints "<status> <objective> <seconds> <cpu>[ note]"
    highs_solve.py --check               prints "check nan 0 0 scipy-<version>"

FILE is the engine's problem in the layout of bench/compare_solve.h (ExportedProblem).
LPs go to scipy.optimize.linprog(method="highs"), MIPs to scipy.optimize.milp, both with
the time limit LIMIT (seconds). The seconds (wall clock, then CPU) are those of the solve call alone: reading the
file, building the scipy arguments and one untimed 1x1 warm-up call come before the clock
starts. status is one of
optimal, time, infeasible, unbounded, other or error.
"""
import sys
import time

import numpy as np

MAGIC = b"ZQLPBIN1"


def load(path):
    """Returns a dict of the exported arrays; raises ValueError on a malformed file."""
    with open(path, "rb") as f:
        data = f.read()
    if data[:8] != MAGIC:
        raise ValueError(f"{path}: not an exported problem")
    rows, cols, nnz, sense = (int(v) for v in np.frombuffer(data, np.int64, 4, 8))
    if min(rows, cols, nnz) < 0 or sense not in (1, -1):
        raise ValueError(f"{path}: bad header")
    pos = 40
    out = {"rows": rows, "cols": cols, "sense": sense}
    out["const"] = float(np.frombuffer(data, np.float64, 1, pos)[0])
    pos += 8
    for name, dtype, count in (
        ("obj", np.float64, cols), ("col_lower", np.float64, cols),
        ("col_upper", np.float64, cols), ("row_lower", np.float64, rows),
        ("row_upper", np.float64, rows), ("row_beg", np.int64, rows + 1),
        ("col_idx", np.int32, nnz), ("val", np.float64, nnz), ("integer", np.uint8, cols),
    ):
        size = np.dtype(dtype).itemsize * count
        if pos + size > len(data):
            raise ValueError(f"{path}: data cut short in {name}")
        out[name] = np.frombuffer(data, dtype, count, pos)
        pos += size
    if pos != len(data):
        raise ValueError(f"{path}: data after the last array")
    return out


def matrix(p):
    from scipy.sparse import csr_matrix
    return csr_matrix((p["val"], p["col_idx"], p["row_beg"]), shape=(p["rows"], p["cols"]))


def linprog_args(p):
    """linprog takes A_ub x <= b_ub and A_eq x = b_eq: a row with both sides finite and
    different becomes two <= rows, a free row is left out."""
    from scipy.sparse import vstack
    a = matrix(p)
    lo, up = p["row_lower"], p["row_upper"]
    eq = np.isfinite(lo) & (lo == up)
    upper = np.isfinite(up) & ~eq
    lower = np.isfinite(lo) & ~eq
    parts, rhs = [], []
    if upper.any():
        parts.append(a[upper])
        rhs.append(up[upper])
    if lower.any():
        parts.append(-a[lower])
        rhs.append(-lo[lower])
    args = {"c": p["sense"] * p["obj"], "bounds": np.column_stack((p["col_lower"], p["col_upper"]))}
    if parts:
        args["A_ub"] = vstack(parts).tocsr()
        args["b_ub"] = np.concatenate(rhs)
    if eq.any():
        args["A_eq"] = a[eq]
        args["b_eq"] = up[eq]
    return args


def warm_up(kind):
    """One 1x1 solve through the same scipy function, not timed: scipy's first call pays for
    imports and set-up that are no part of solving."""
    from scipy.optimize import Bounds, LinearConstraint, linprog, milp
    if kind == "mip":
        milp(c=[1.0], integrality=[1], bounds=Bounds([0], [1]),
             constraints=[LinearConstraint(np.ones((1, 1)), [0.5], [np.inf])])
    else:
        linprog(c=[1.0], A_ub=-np.ones((1, 1)), b_ub=[-0.5], method="highs")


def solve(path, limit, kind):
    p = load(path)
    warm_up(kind)
    if kind == "mip":
        from scipy.optimize import Bounds, LinearConstraint, milp
        cons = [LinearConstraint(matrix(p), p["row_lower"], p["row_upper"])] if p["rows"] else []
        args = {"c": p["sense"] * p["obj"], "integrality": p["integer"].astype(np.int64),
                "bounds": Bounds(p["col_lower"], p["col_upper"]), "constraints": cons,
                "options": {"time_limit": limit, "disp": False, "mip_rel_gap": 1e-4}}
        start, cpu = time.perf_counter(), time.process_time()
        res = milp(**args)
        seconds, cpu = time.perf_counter() - start, time.process_time() - cpu
    else:
        from scipy.optimize import linprog
        args = linprog_args(p)
        start, cpu = time.perf_counter(), time.process_time()
        res = linprog(method="highs", options={"time_limit": limit, "disp": False}, **args)
        seconds, cpu = time.perf_counter() - start, time.process_time() - cpu
    # linprog and milp: 0 optimal, 1 iteration or time limit, 2 infeasible, 3 unbounded.
    status = {0: "optimal", 1: "time", 2: "infeasible", 3: "unbounded"}.get(res.status, "other")
    has_value = res.x is not None and res.fun is not None
    obj = p["sense"] * float(res.fun) + p["const"] if has_value else float("nan")
    note = "" if status == "optimal" else " " + " ".join(str(res.message).split())
    return f"{status} {obj!r} {seconds!r} {cpu!r}{note}"


def main(argv):
    if len(argv) >= 2 and argv[1] == "--check":
        import scipy
        import scipy.optimize  # noqa: F401  (fails here when HiGHS is missing)
        return f"check nan 0 0 scipy-{scipy.__version__}"
    if len(argv) != 4 or argv[3] not in ("lp", "mip"):
        return "error nan 0 0 usage: highs_solve.py FILE LIMIT lp|mip"
    try:
        return solve(argv[1], float(argv[2]), argv[3])
    except Exception as e:  # reported to the driver as a failed run
        return "error nan 0 0 " + " ".join(f"{type(e).__name__}: {e}".split())


if __name__ == "__main__":
    print(main(sys.argv), flush=True)
