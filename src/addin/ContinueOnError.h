#pragma once

#include "addin/host/HostError.h"
#include "numeric/NumberText.h"

#include <utility>

namespace marelon {

// Runs one statement of a continue-on-error routine (loaders, writers, hooks,
// shutdown): a failing host call or a value that does not convert to a number
// ends the statement, silently, and the routine goes on with the next one.
// Returns whether the statement ran to its end.
template <class F>
bool ContinueOnError(F&& statement)
{
    try {
        std::forward<F>(statement)();
        return true;
    } catch (const host::HostError&) {
    } catch (const numeric::NumberError&) {
    }
    return false;
}

} // namespace marelon
