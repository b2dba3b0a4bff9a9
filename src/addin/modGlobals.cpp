#include "addin/modGlobals.h"

namespace marelon {

ProcessFlags& Flags()
{
    static ProcessFlags flags;
    return flags;
}

} // namespace marelon
