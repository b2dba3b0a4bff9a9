#pragma once

#include "addin/host/Fwd.h"

#include <memory>

namespace host {

// The host's help locale: which numbered help folder serves a language.
class HelpLocale {
public:
    virtual ~HelpLocale() = default;
    virtual int HelpLanguageNumber(int languageCode) = 0;
};

} // namespace host
