// Any bytes read as a holder library give at most 101 holders with finite
// values, never a crash; and what is read, written back and read again is
// written the same way (the reader and the writer agree on every holder).
#include "tooldata/HolderLibrary.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

QByteArray written(const QList<marelon::HolderRecord>& records)
{
    QByteArray text;
    for (const auto& record : records)
        text += marelon::HolderLine(record);
    return text;
}

void check(bool condition)
{
    if (!condition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const auto records = marelon::ParseHolderRecords(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    check(records.size() <= marelon::kHolderCapacity);
    for (const auto& r : records) {
        check(std::isfinite(r.xShift) && std::isfinite(r.zShift) && std::isfinite(r.yShift));
        check(std::isfinite(r.gearRatio1) && std::isfinite(r.gearRatio2));
        check(!r.name.contains(QLatin1Char('"')) && !r.description.contains(QLatin1Char('"')));
    }
    const QByteArray once = written(records);
    const auto again = marelon::ParseHolderRecords(once);
    check(again.size() == records.size());
    check(written(again) == once);
    return 0;
}
