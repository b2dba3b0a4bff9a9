#pragma once

#include "addin/host/HostError.h"

#include <utility>

namespace marelon {

// Runs one statement of a continue-on-error routine (loaders, writers, hooks,
// shutdown): a failing host call ends the statement, silently, and the
// routine goes on with the next one.
template <class F>
void ContinueOnError(F&& statement)
{
    try {
        std::forward<F>(statement)();
    } catch (const host::HostError&) {
    }
}

} // namespace marelon
