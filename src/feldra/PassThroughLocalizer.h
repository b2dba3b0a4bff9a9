#pragma once

#include "addin/host/Localizer.h"

namespace feldra {

// A localiser that shows every text in English, as given (language 1033).
class PassThroughLocalizer : public host::Localizer {
public:
    int LanguageCode() const override { return languageCode_; }
    void setLanguageCode(int code) override { languageCode_ = code; }
    void Initialise() override {}
    QString Translate(const QString& english) const override { return english; }
    void TranslateForm(QWidget*) const override {}

private:
    int languageCode_ = 1033;
};

} // namespace feldra
