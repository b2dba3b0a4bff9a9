// Any text read as a bar-loader line gives finite values, and the line built
// from them reads back to the same line: reading never fails, and a value that
// has been through the line once stays as it is.
#include "datapage/BarLoader.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString command = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    const marelon::BarLoaderLine line = marelon::ReadBarLoaderCommand(command);
    for (double value : {line.chamferX, line.chamferZ, line.pullBack, line.spindleRpm})
        if (!std::isfinite(value))
            std::abort();
    if (line.m1)
        std::abort();

    const QString built = marelon::BuildBarLoaderCommand(line);
    const marelon::BarLoaderLine again = marelon::ReadBarLoaderCommand(built);
    if (again.spindleStop != line.spindleStop || marelon::BuildBarLoaderCommand(again) != built)
        std::abort();
    return 0;
}
