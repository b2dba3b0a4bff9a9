#pragma once

#include "addin/host/HelpLocale.h"

namespace feldra {

// The host's help folders: "Help\<number>" below the install folder, one per
// language that has help (English and German); other languages use English.
class HelpLocale : public host::HelpLocale {
public:
    int HelpLanguageNumber(int languageCode) override;
};

} // namespace feldra
