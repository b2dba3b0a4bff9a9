#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The host's configuration object: the user-interface language.
class Configuration {
public:
    virtual ~Configuration() = default;
    virtual int LanguageCode() = 0;
};

} // namespace host
