#pragma once

#include "addin/host/Localizer.h"

#include <QTranslator>
#include <memory>

namespace feldra {

// The host's localiser: English is the key, German comes from the Linguist
// catalogue compiled into the host. Language codes are Windows LCIDs: 1033
// English, 1031 German; any other code shows English.
class QtLocalizer : public host::Localizer {
public:
    static constexpr int kEnglish = 1033;
    static constexpr int kGerman = 1031;

    int LanguageCode() const override;
    void setLanguageCode(int code) override;
    // Loads the catalogue of the current language code; throws host::HostError
    // when the compiled catalogue is missing from the host.
    void Initialise() override;
    QString Translate(const QString& english) const override;
    // Translates the form's window title and every child's text, title, tab
    // texts and tooltip. List entries are left alone: the add-in fills lists
    // itself, and some never translate (gang tool patterns, Auto Sync machines).
    // Texts that begin with a parameter number ("814 - ...") are left alone.
    // Each widget keeps its English source, so a form can be translated again
    // into another language.
    void TranslateForm(QWidget* form) const override;

private:
    int languageCode_ = kEnglish;
    std::unique_ptr<QTranslator> catalogue_;
};

} // namespace feldra
