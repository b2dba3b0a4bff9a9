#pragma once

namespace feldra {

// The host's help folders: "Help\<number>" below the install folder, one per
// language that has help (English and German); other languages use English.
class HelpLocale {
public:
    int HelpLanguageNumber(int languageCode) const;
};

} // namespace feldra
