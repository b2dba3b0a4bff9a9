#include "feldra/HelpLocale.h"

#include "feldra/QtLocalizer.h"

namespace feldra {

int HelpLocale::HelpLanguageNumber(int languageCode)
{
    return languageCode == QtLocalizer::kGerman ? QtLocalizer::kGerman : QtLocalizer::kEnglish;
}

} // namespace feldra
