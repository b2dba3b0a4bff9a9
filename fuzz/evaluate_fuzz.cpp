// Any text given to the evaluator ends in a result or an error code, never a
// crash: the result is finite on success and 0 on failure.
#include "numeric/Encode.h"

#include <QStringDecoder>

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

// The bytes as UTF-8 when they are valid UTF-8, otherwise as Latin-1.
QString decode(const uint8_t* data, size_t size)
{
    const QByteArrayView bytes(data, qsizetype(size));
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(bytes);
    if (utf8.hasError())
        text = QString::fromLatin1(bytes);
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size > 10000)
        return -1;
    double result = -1;
    const int32_t code = numeric::Evaluate(decode(data, size), result);
    const bool valid = code == numeric::kEvalOk ? std::isfinite(result)
                                                : code >= 1 && code <= 10 && result == 0;
    if (!valid)
        std::abort();
    return 0;
}
