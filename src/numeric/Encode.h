#pragma once

#include <QString>

#include <cstdint>

// The expression evaluator of numeric text fields: "2*Sin(Rad(30))",
// "Dms(10;30;0)". Numbers in expressions use "." as decimal point.
namespace numeric {

// Error codes of Evaluate.
enum EvaluateError : int32_t {
    kEvalOk = 0,
    kEvalUnknownToken = 1,       // no token starts at this position
    kEvalNumberNotAllowed = 2,
    kEvalConstantNotAllowed = 3,
    kEvalFunctionNotAllowed = 4,
    kEvalOperatorNotAllowed = 5,
    kEvalOpenNotAllowed = 6,
    kEvalCloseNotAllowed = 7,    // ")" not allowed here, or no "(" open
    kEvalSeparatorNotAllowed = 8,// ";" not allowed here, or none pending
    kEvalUnaryMinusNotAllowed = 9,
    kEvalFailed = 10,            // evaluation failed or working storage exceeded
};

// Evaluates an expression. Returns 0 and sets result on success; otherwise
// returns an error code and sets result to 0.
int32_t Evaluate(const QString& expression, double& result);

} // namespace numeric
