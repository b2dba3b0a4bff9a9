// Evaluations per second of the expression evaluator (items_per_second).
#include "numeric/Encode.h"

#include <benchmark/benchmark.h>

namespace {

void evaluate(benchmark::State& state, const QString& expression)
{
    double result = 0;
    if (numeric::Evaluate(expression, result) != numeric::kEvalOk) {
        state.SkipWithError("the expression does not evaluate");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(numeric::Evaluate(expression, result));
        benchmark::DoNotOptimize(result);
    }
    state.SetItemsProcessed(state.iterations());
}

// 90 tokens, every function, 61 queue entries.
const QString kLongExpression = QStringLiteral(
    "2*Sin(Rad(30))+Dms(10;30;0)-Sqrt(16)/4^2+(1.5-0.25)*Cos(Pi/3)-Abs(7)"
    "+Log(1000)*Ln(Exp(2))-Tan(Rad(45))+ATan(1)*4-Sqr(3)/9+Deg(ACos(0.5))+12.75");

} // namespace

BENCHMARK_CAPTURE(evaluate, sine_of_radians, QStringLiteral("2*Sin(Rad(30))"));
BENCHMARK_CAPTURE(evaluate, dms, QStringLiteral("Dms(10;30;0)"));
BENCHMARK_CAPTURE(evaluate, ninety_tokens, kLongExpression);

BENCHMARK_MAIN();
