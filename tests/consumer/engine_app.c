/* engine_app: the engine's C interface from a C program.
 *
 *   maximise   x + 2y
 *   subject to x +  y <= 4
 *              x + 3y <= 6,   x, y >= 0
 *
 * The optimum is 5 at x = 3, y = 1. Exits 0 only when the engine finds it. */
#include <stdio.h>

#include <zelq/zelq.h>

static int Near(double value, double expected) {
  double diff = value - expected;
  return diff < 1e-6 && diff > -1e-6;
}

static int Fail(ZELQprob *prob, int rc, const char *what) {
  char detail[512] = {0};
  if (prob) ZELQ_GetLastError(prob, detail, (int)sizeof detail);
  fprintf(stderr, "engine_app: %s failed with code %d %s\n", what, rc, detail);
  return 1;
}

static int Build(ZELQprob *prob) {
  const int both[2] = {0, 1};
  const double row1[2] = {1.0, 1.0}, row2[2] = {1.0, 3.0};
  int rc = ZELQ_SetIntParam(prob, "Logging", 0);
  if (!rc) rc = ZELQ_AddCol(prob, 1.0, 0, NULL, NULL, ZELQ_CONTINUOUS, 0.0, ZELQ_INFINITY, "x");
  if (!rc) rc = ZELQ_AddCol(prob, 2.0, 0, NULL, NULL, ZELQ_CONTINUOUS, 0.0, ZELQ_INFINITY, "y");
  if (!rc) rc = ZELQ_AddRow(prob, 2, both, row1, ZELQ_LESS_EQUAL, 4.0, 0.0, "c1");
  if (!rc) rc = ZELQ_AddRow(prob, 2, both, row2, ZELQ_LESS_EQUAL, 6.0, 0.0, "c2");
  if (!rc) rc = ZELQ_SetObjSense(prob, ZELQ_MAXIMIZE);
  return rc;
}

static int SolveAndCheck(ZELQprob *prob) {
  int rc, status = 0;
  double obj = 0.0, values[2] = {0.0, 0.0};
  if ((rc = Build(prob)) != 0) return Fail(prob, rc, "building");
  if ((rc = ZELQ_Solve(prob)) != 0) return Fail(prob, rc, "solving");
  rc = ZELQ_GetIntAttr(prob, "Status", &status);
  if (!rc) rc = ZELQ_GetDblAttr(prob, "ObjVal", &obj);
  if (!rc) rc = ZELQ_GetColInfo(prob, "Value", 2, NULL, values);
  if (rc) return Fail(prob, rc, "reading the solution");
  printf("engine_app: status %d, objective %g, x = %g, y = %g\n", status, obj, values[0],
         values[1]);
  if (status != ZELQ_OPTIMAL || !Near(obj, 5.0) || !Near(values[0], 3.0) || !Near(values[1], 1.0)) {
    fprintf(stderr, "engine_app: expected an optimal objective 5 at x = 3, y = 1\n");
    return 1;
  }
  return 0;
}

int main(void) {
  ZELQenvconfig *config = NULL;
  ZELQenv *env = NULL;
  ZELQprob *prob = NULL;
  int rc = ZELQ_CreateEnvConfig(&config);
  if (!rc) rc = ZELQ_SetEnvConfig(config, "Logging", "0");
  if (!rc) rc = ZELQ_CreateEnvWithConfig(config, &env);
  if (!rc) rc = ZELQ_CreateProb(env, &prob);
  int exitCode = rc ? Fail(NULL, rc, "creating the problem") : SolveAndCheck(prob);
  ZELQ_DeleteProb(&prob);
  ZELQ_DeleteEnv(&env);
  ZELQ_DeleteEnvConfig(&config);
  return exitCode;
}
