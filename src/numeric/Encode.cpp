#include "numeric/Encode.h"

#include "numeric/NumberText.h"

#include <QVarLengthArray>

#include <array>
#include <cmath>
#include <numbers>
#include <string_view>

// An expression is read token by token from the front of its text (blanks
// removed). Each token is checked against the follow mask of the token before
// it, then converted to postfix with an operator stack; the postfix queue is
// finally run on a value stack. All working storage is fixed in size: the text
// without blanks sits on the stack up to 256 characters, and names are compared
// in place.
namespace numeric {
namespace {

// The class of a token.
enum class Kind : uint8_t { Constant = 0, Number = 1, Function = 2, Operator = 3, Open = 4, Close = 5 };

// The bits of a follow mask: which token may come next.
enum Follow : uint8_t {
    kFollowSeparator = 1,
    kFollowOpen = 2,
    kFollowClose = 4,
    kFollowOperator = 8,
    kFollowFunction = 16,
    kFollowConstant = 32,
    kFollowNumber = 64,
    kFollowUnaryMinus = 128,
};

// A number, constant, function, "(" or unary minus: the start of an operand.
constexpr uint8_t kOperandStart = 242;
constexpr uint8_t kAfterNumber = 13;

// The operation code of a queue entry or stacked operator.
enum Op : int8_t {
    kValue = -1,
    kSeparator = 0,
    kOpen = 1,
    kClose = 2,
    kPi = 3,
    kCos = 4,
    kSin = 5,
    kTan = 6,
    kACos = 7,
    kASin = 8,
    kATan = 9,
    kAbs = 10,
    kAdd = 11,
    kSubtract = 12,
    kMultiply = 13,
    kDivide = 14,
    kPower = 15,
    kExp = 16,
    kSqr = 17,
    kSqrt = 18,
    kLog = 19,
    kLn = 20,
    kRad = 21,
    kDeg = 22,
    kDms = 23,
};

constexpr int8_t kOpenPrecedence = 1;
constexpr int8_t kMinusPrecedence = 3;

struct TokenDefinition {
    std::string_view name;
    Kind kind;
    int8_t precedence;
    Op code;
    uint8_t follow;
};

// The named tokens in the order they are tried: the first name the text
// begins with wins, so "Sqrt" must come before "Sqr".
constexpr std::array<TokenDefinition, 24> kTokens{{
    {";", Kind::Close, 0, kSeparator, 242},
    {")", Kind::Close, 0, kClose, 13},
    {"(", Kind::Open, 1, kOpen, 242},
    {"+", Kind::Operator, 3, kAdd, 114},
    {"-", Kind::Operator, 3, kSubtract, 114},
    {"*", Kind::Operator, 4, kMultiply, 242},
    {"/", Kind::Operator, 4, kDivide, 242},
    {"^", Kind::Operator, 5, kPower, 242},
    {"Pi", Kind::Constant, 2, kPi, 13},
    {"Cos", Kind::Function, 6, kCos, 2},
    {"Sin", Kind::Function, 6, kSin, 2},
    {"Tan", Kind::Function, 6, kTan, 2},
    {"ACos", Kind::Function, 6, kACos, 2},
    {"ASin", Kind::Function, 6, kASin, 2},
    {"ATan", Kind::Function, 6, kATan, 2},
    {"Abs", Kind::Function, 6, kAbs, 2},
    {"Exp", Kind::Function, 6, kExp, 2},
    {"Sqrt", Kind::Function, 6, kSqrt, 2},
    {"Sqr", Kind::Function, 6, kSqr, 2},
    {"Log", Kind::Function, 6, kLog, 2},
    {"Ln", Kind::Function, 6, kLn, 2},
    {"Rad", Kind::Function, 6, kRad, 2},
    {"Deg", Kind::Function, 6, kDeg, 2},
    {"Dms", Kind::Function, 6, kDms, 2},
}};

// 4 × arctan(1), and arctan(1) for the degree conversions.
constexpr double kPiValue = std::numbers::pi;
constexpr double kQuarterPi = std::numbers::pi / 4;

// Working storage of one evaluation.
constexpr int kQueueCapacity = 101;
constexpr int kOperatorCapacity = 21;
constexpr int kValueCapacity = 20;

struct Token {
    Kind kind = Kind::Number;
    int8_t precedence = 0;
    Op code = kValue;
    uint8_t follow = kAfterNumber;
    bool unaryMinus = false;
    double value = 0;
};

struct QueueEntry {
    Op code;
    double value;
};

struct StackedOperator {
    Op code;
    int8_t precedence;
};

char asciiLower(char16_t c)
{
    return (c >= u'A' && c <= u'Z') ? char(c - u'A' + 'a') : char(c);
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// Whether the text begins with the name, without regard to (ASCII) case.
bool beginsWith(QStringView text, std::string_view name)
{
    if (text.size() < qsizetype(name.size()))
        return false;
    for (size_t i = 0; i < name.size(); ++i) {
        const char16_t c = text[qsizetype(i)].unicode();
        if (c >= 0x80 || asciiLower(c) != asciiLower(char16_t(name[i])))
            return false;
    }
    return true;
}

qsizetype skipDigits(QStringView text, qsizetype pos)
{
    while (pos < text.size() && isDigit(text[pos]))
        ++pos;
    return pos;
}

// The end of the number that starts at pos: digits, then a "." and digits,
// then an exponent "E" or "e" with an optional sign and digits.
// A trailing "." belongs to the number ("5." is 5). An "E" that no digit
// follows does not: the number ends before it, and the "E" then starts no
// token ("2e" and "2e+" fail with code 1), or starts "Exp", which may not
// follow a number (code 4). Returns pos itself when the number has no digit
// before its exponent (".", ".e5").
qsizetype numberEnd(QStringView text, qsizetype pos)
{
    qsizetype end = skipDigits(text, pos);
    const bool hasIntegerDigits = end > pos;
    bool hasFractionDigits = false;
    if (end < text.size() && text[end] == u'.') {
        const qsizetype fractionEnd = skipDigits(text, end + 1);
        hasFractionDigits = fractionEnd > end + 1;
        end = fractionEnd;
    }
    if (!hasIntegerDigits && !hasFractionDigits)
        return pos;
    if (end < text.size() && (text[end] == u'E' || text[end] == u'e')) {
        qsizetype exponent = end + 1;
        if (exponent < text.size() && (text[exponent] == u'+' || text[exponent] == u'-'))
            ++exponent;
        const qsizetype exponentEnd = skipDigits(text, exponent);
        if (exponentEnd > exponent)
            end = exponentEnd;
    }
    return end;
}

// The number of operands an operation takes from the value stack; 0 for an
// entry the machine cannot run (a "(" left open).
int operandCount(Op code)
{
    switch (code) {
    case kAdd:
    case kSubtract:
    case kMultiply:
    case kDivide:
    case kPower:
        return 2;
    case kDms:
        return 3;
    case kCos:
    case kSin:
    case kTan:
    case kACos:
    case kASin:
    case kATan:
    case kAbs:
    case kExp:
    case kSqr:
    case kSqrt:
    case kLog:
    case kLn:
    case kRad:
    case kDeg:
        return 1;
    default:
        return 0;
    }
}

// ACos and ASin give their end values exactly.
double arcCosine(double x)
{
    if (x == 1)
        return 0;
    if (x == -1)
        return kPiValue;
    return std::acos(x);
}

double arcSine(double x)
{
    if (x == 1 || x == -1)
        return x * kPiValue / 2;
    return std::asin(x);
}

// The operation applied to its operands, left to right. Failures (division by
// zero, arguments outside a function's domain, overflow) give an infinite or
// NaN value, which the machine refuses.
double apply(Op code, const double* a)
{
    switch (code) {
    case kAdd: return a[0] + a[1];
    case kSubtract: return a[0] - a[1];
    case kMultiply: return a[0] * a[1];
    case kDivide: return a[0] / a[1];
    case kPower: return std::pow(a[0], a[1]);
    case kCos: return std::cos(a[0]);
    case kSin: return std::sin(a[0]);
    case kTan: return std::tan(a[0]);
    case kACos: return arcCosine(a[0]);
    case kASin: return arcSine(a[0]);
    case kATan: return std::atan(a[0]);
    case kAbs: return std::abs(a[0]);
    case kExp: return std::exp(a[0]);
    case kSqr: return a[0] * a[0];
    case kSqrt: return std::sqrt(a[0]);
    // log10 rather than ln x / ln 10, which misses whole powers of ten (Log(1000)).
    case kLog: return std::log10(a[0]);
    case kLn: return std::log(a[0]);
    case kRad: return a[0] * kQuarterPi / 45;
    case kDeg: return a[0] * 45 / kQuarterPi;
    case kDms: return a[0] + a[1] / 60 + a[2] / 3600;
    default: return std::nan("");
    }
}

class Evaluation {
public:
    int32_t run(QStringView text, double& result);

private:
    bool read(QStringView text, qsizetype& pos, Token& token);
    bool check(Token& token);
    bool convert(const Token& token);
    bool closeGroup(Op code);
    bool append(Op code, double value = 0);
    bool push(Op code, int8_t precedence);
    bool pushOperator(Op code, int8_t precedence);
    bool moveTopToQueue();
    bool execute(double& result);
    bool fail(int32_t error);

    std::array<QueueEntry, kQueueCapacity> queue_;
    int queueSize_ = 0;
    std::array<StackedOperator, kOperatorCapacity> operators_;
    int operatorCount_ = 0;
    int openCount_ = 0;
    int pendingSeparators_ = 0;
    uint8_t follow_ = kOperandStart;
    int32_t error_ = kEvalOk;
};

int32_t Evaluation::run(QStringView text, double& result)
{
    qsizetype pos = 0;
    Token token;
    while (pos < text.size()) {
        if (!read(text, pos, token) || !check(token) || !convert(token))
            return error_;
    }
    while (operatorCount_ > 0) {
        if (!moveTopToQueue())
            return error_;
    }
    if (!execute(result))
        return error_;
    return kEvalOk;
}

bool Evaluation::fail(int32_t error)
{
    error_ = error;
    return false;
}

// Reads the token at pos and moves pos past it.
bool Evaluation::read(QStringView text, qsizetype& pos, Token& token)
{
    token = Token{};
    if (text[pos] == u'.' || isDigit(text[pos])) {
        const qsizetype end = numberEnd(text, pos);
        if (end == pos)
            return fail(kEvalUnknownToken);
        const QString number = QString::fromRawData(text.data() + pos, end - pos);
        token.value = LeadingNumber(number);
        pos = end;
        return true;
    }
    const QStringView rest = text.sliced(pos);
    for (const TokenDefinition& definition : kTokens) {
        if (beginsWith(rest, definition.name)) {
            token.kind = definition.kind;
            token.precedence = definition.precedence;
            token.code = definition.code;
            token.follow = definition.follow;
            token.value = definition.code == kPi ? kPiValue : 0;
            pos += qsizetype(definition.name.size());
            return true;
        }
    }
    return fail(kEvalUnknownToken);
}

// The syntax check against the follow mask of the token before; on success
// the token's mask becomes the current one. Tells a unary minus from a binary one.
bool Evaluation::check(Token& token)
{
    const auto allowed = [this](uint8_t bit) { return (follow_ & bit) != 0; };
    switch (token.kind) {
    case Kind::Number:
        if (!allowed(kFollowNumber))
            return fail(kEvalNumberNotAllowed);
        break;
    case Kind::Constant:
        if (!allowed(kFollowConstant))
            return fail(kEvalConstantNotAllowed);
        break;
    case Kind::Function:
        if (!allowed(kFollowFunction))
            return fail(kEvalFunctionNotAllowed);
        break;
    case Kind::Open:
        if (!allowed(kFollowOpen))
            return fail(kEvalOpenNotAllowed);
        break;
    case Kind::Operator:
        if (token.code == kSubtract && allowed(kFollowUnaryMinus))
            token.unaryMinus = true;
        else if (!allowed(kFollowOperator))
            return fail(token.code == kSubtract ? kEvalUnaryMinusNotAllowed
                                                : kEvalOperatorNotAllowed);
        break;
    case Kind::Close:
        if (token.code == kClose && (!allowed(kFollowClose) || openCount_ == 0))
            return fail(kEvalCloseNotAllowed);
        if (token.code == kSeparator && (!allowed(kFollowSeparator) || pendingSeparators_ == 0))
            return fail(kEvalSeparatorNotAllowed);
        break;
    }
    follow_ = token.follow;
    return true;
}

// The conversion of the token to postfix.
bool Evaluation::convert(const Token& token)
{
    switch (token.kind) {
    case Kind::Number:
    case Kind::Constant:
        return append(kValue, token.value);
    case Kind::Function:
        if (token.code == kDms)
            pendingSeparators_ += 2;
        return pushOperator(token.code, token.precedence);
    case Kind::Open:
        ++openCount_;
        return push(kOpen, kOpenPrecedence);
    case Kind::Operator:
        if (token.unaryMinus)
            return append(kValue, 0) && push(kSubtract, kMinusPrecedence);
        return pushOperator(token.code, token.precedence);
    case Kind::Close:
        return closeGroup(token.code);
    }
    return false;
}

// ")" or ";": the operators since the last "(" go to the queue. ")" then
// drops that "(", unless a "Dms" still expects arguments; ";" keeps it.
bool Evaluation::closeGroup(Op code)
{
    while (operatorCount_ > 0 && operators_[operatorCount_ - 1].precedence != kOpenPrecedence) {
        if (!moveTopToQueue())
            return false;
    }
    if (code == kSeparator) {
        --pendingSeparators_;
        return true;
    }
    if (pendingSeparators_ != 0)
        return fail(kEvalFailed);
    Q_ASSERT(operatorCount_ > 0);
    --openCount_;
    --operatorCount_;
    return true;
}

bool Evaluation::append(Op code, double value)
{
    if (queueSize_ == kQueueCapacity)
        return fail(kEvalFailed);
    queue_[queueSize_++] = QueueEntry{code, value};
    return true;
}

bool Evaluation::push(Op code, int8_t precedence)
{
    if (operatorCount_ == kOperatorCapacity)
        return fail(kEvalFailed);
    operators_[operatorCount_++] = StackedOperator{code, precedence};
    return true;
}

// Pushes an operator after moving every stacked one of the same or a higher
// precedence to the queue: all operators are left-associative.
bool Evaluation::pushOperator(Op code, int8_t precedence)
{
    while (operatorCount_ > 0 && operators_[operatorCount_ - 1].precedence >= precedence) {
        if (!moveTopToQueue())
            return false;
    }
    return push(code, precedence);
}

bool Evaluation::moveTopToQueue()
{
    return append(operators_[--operatorCount_].code);
}

// The stack machine: runs the queue and gives the value at the bottom of the
// value stack. Every value on the stack is finite.
bool Evaluation::execute(double& result)
{
    std::array<double, kValueCapacity> values;
    int count = 0;
    for (int i = 0; i < queueSize_; ++i) {
        const QueueEntry& entry = queue_[i];
        if (entry.code == kValue) {
            if (count == kValueCapacity)
                return fail(kEvalFailed);
            values[count++] = entry.value;
        } else {
            const int operands = operandCount(entry.code);
            if (operands == 0 || count < operands)
                return fail(kEvalFailed);
            count -= operands;
            values[count] = apply(entry.code, &values[count]);
            ++count;
        }
        if (!std::isfinite(values[count - 1]))
            return fail(kEvalFailed);
    }
    if (count == 0)
        return fail(kEvalFailed);
    result = values[0];
    return true;
}

} // namespace

int32_t Evaluate(const QString& expression, double& result)
{
    result = 0;
    QVarLengthArray<QChar, 256> text;
    for (const QChar c : expression) {
        if (c != u' ')
            text.append(c);
    }
    double value = 0;
    Evaluation evaluation;
    const int32_t error = evaluation.run(QStringView(text.constData(), text.size()), value);
    if (error == kEvalOk)
        result = value;
    return error;
}

} // namespace numeric
