#pragma once

#include "addin/host/HostError.h"

#include <utility>

namespace marelon {

// Runs one statement of a continue-on-error routine: a failing host call
// skips the rest of the statement, silently, and the routine goes on.
template <class Statement>
void ContinueOnError(Statement&& statement)
{
    try {
        std::forward<Statement>(statement)();
    } catch (const host::HostError&) {
    }
}

} // namespace marelon
