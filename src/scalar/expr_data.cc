#include "scalar/expr_data.h"

#include <cmath>
#include <sstream>
#include <utility>

#include "scalar/handles.h"

namespace Zelq {
namespace {

// Variables taken from an array carry no error of their own.
Var SourceVar(const ElementRef& record) { return record ? Var(record) : Var(InvalidRecord()); }
Var SourceVar(const IVar* var) { return TermVar(var); }

// Appends one term per variable, the coefficient of term i from `coeff_of(i)`.
template <class Source, class CoeffOf>
int AppendEach(ExprData& expr, const std::vector<Source>& vars, CoeffOf coeff_of) {
  ReserveForTerms(expr, vars.size());
  for (size_t i = 0; i < vars.size(); ++i) AppendTerm(expr, SourceVar(vars[i]), coeff_of(i));
  return static_cast<int>(vars.size());
}

}  // namespace

Var TermVar(const Var& var) {
  Var copy(var.record);
  PassError(copy.error, var.error);
  return copy;
}

Var TermVar(const IVar* var) {
  const Var* value = VarOf(var);
  if (value == nullptr) return Var(InvalidRecord());
  return TermVar(*value);
}

void AppendTerm(ExprData& expr, Var var, double coeff) {
  expr.coeffs.push_back(coeff);
  expr.vars.push_back(std::move(var));
}

void ReserveForTerms(ExprData& expr, size_t n) {
  size_t size = expr.vars.size();
  size_t cap = expr.vars.capacity();
  if (size + n >= 2 * cap) {
    expr.coeffs.reserve(cap + n);
    expr.vars.reserve(cap + n);
  }
}

int AppendTerms(ExprData& expr, const std::vector<ElementRef>& vars, const double* coeffs) {
  return AppendEach(expr, vars, [coeffs](size_t i) { return coeffs[i]; });
}

int AppendTerms(ExprData& expr, const std::vector<ElementRef>& vars, double coeff) {
  return AppendEach(expr, vars, [coeff](size_t) { return coeff; });
}

int AppendTerms(ExprData& expr, const std::vector<IVar*>& vars, const double* coeffs) {
  return AppendEach(expr, vars, [coeffs](size_t i) { return coeffs[i]; });
}

int AppendTerms(ExprData& expr, const std::vector<IVar*>& vars, double coeff) {
  return AppendEach(expr, vars, [coeff](size_t) { return coeff; });
}

void AddScaledExpr(ExprData& expr, const ExprData& other, double mult) {
  if (mult == 0.0) return;
  // Taken once, so that adding an expression to itself appends its initial
  // terms exactly once. Each term is copied before the append, which may move
  // the arrays `other` lives in.
  const size_t n = other.vars.size();
  for (size_t i = 0; i < n; ++i) {
    double c = other.coeffs[i];
    if (mult == -1.0) {
      c = 0.0 - c;
    } else if (mult != 1.0) {
      c = c * mult;
    }
    AppendTerm(expr, TermVar(other.vars[i]), c);
  }
  expr.constant = mult * other.constant + expr.constant;
}

void MultiplyExpr(ExprData& expr, double factor) {
  if (factor == 0.0) {
    expr.coeffs.clear();
    expr.vars.clear();
    expr.constant = 0.0;
    return;
  }
  if (factor == 1.0) return;
  for (double& c : expr.coeffs) c *= factor;
  expr.constant *= factor;
}

void DivideExpr(ExprData& expr, double divisor) {
  if (divisor == 0.0) {
    SetError(expr.error, kErrorINVALID, "Linear expression is divided by zero");
    return;
  }
  if (divisor == 1.0) return;
  for (double& c : expr.coeffs) c /= divisor;
  expr.constant /= divisor;
}

void RemoveTermAt(ExprData& expr, size_t i) {
  size_t size = expr.vars.size();
  if (i >= size) return;
  size_t last = size - 1;
  if (i != last) {
    expr.coeffs[i] = expr.coeffs[last];
    expr.vars[i] = std::move(expr.vars[last]);
  }
  expr.coeffs.pop_back();
  expr.vars.pop_back();
}

void RemoveVarTerms(ExprData& expr, int32_t index) {
  if (index < 0) return;
  size_t p = 0;
  while (p < expr.vars.size()) {
    if (expr.vars[p].Index() == index) {
      RemoveTermAt(expr, p);  // position p now holds the former last term
    } else {
      ++p;
    }
  }
}

void ClearExpr(ExprData& expr) {
  expr.coeffs.clear();
  expr.vars.clear();
  expr.constant = 0.0;
}

ExprData CloneExpr(const ExprData& expr) {
  ExprData copy;
  copy.coeffs = expr.coeffs;
  copy.vars.reserve(expr.vars.size());
  for (const Var& var : expr.vars) copy.vars.push_back(TermVar(var));
  copy.constant = expr.constant;
  return copy;
}

double EvaluateExpr(ExprData& expr) {
  double sum = expr.constant;
  for (size_t i = 0; i < expr.vars.size(); ++i) {
    // Checked before the variable's code is taken over, so an earlier
    // failure of the expression stays and keeps the result at infinity.
    if (expr.error.Failed()) return kExprInfinity;
    Var& var = expr.vars[i];
    double value = VarInfo(var, "Value");
    sum += expr.coeffs[i] * value;
    PassError(expr.error, var.error);
  }
  return expr.error.Failed() ? kExprInfinity : sum;
}

std::string PrintExpr(ExprData& expr, size_t width) {
  std::ostringstream out;
  const size_t n = expr.vars.size();
  bool first = true;
  if (expr.constant != 0.0 || n == 0) {
    out << expr.constant;
    if (n == 0) return out.str();
    first = false;
  }
  const size_t max_terms = width / 8;
  if (max_terms == 0) {
    out << " ... ";
    return out.str();
  }
  // The limit is on positions: skipped terms count towards it.
  for (size_t i = 0;;) {
    double c = expr.coeffs[i];
    Var& var = expr.vars[i];
    if (var.Index() >= 0 && c != 0.0) {
      if (c < 0) {
        out << " - ";
      } else if (!first) {
        out << " + ";
      }
      double magnitude = std::fabs(c);
      if (magnitude != 1.0) out << magnitude << " * ";
      const char* name = VarName(var);
      if (name == nullptr) {
        out.setstate(std::ios::failbit);  // the text ends here
        return out.str();
      }
      out << name;
      first = false;
    }
    ++i;
    if (i == n) break;
    if (i == max_terms) {
      out << " ... ";
      break;
    }
  }
  return out.str();
}

}  // namespace Zelq
