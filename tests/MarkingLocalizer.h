#pragma once

#include "feldra/QtLocalizer.h"

// The host's German localiser, with every text it was asked for between « and
// »: a test sees which texts were translated and that each was translated once.
class MarkingLocalizer : public feldra::QtLocalizer {
public:
    MarkingLocalizer()
    {
        setLanguageCode(kGerman);
        Initialise();
    }
    QString Translate(const QString& english) const override
    {
        return u'«' + QtLocalizer::Translate(english) + u'»';
    }
};
