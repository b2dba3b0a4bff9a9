#pragma once

#include <QString>

class QWidget;

namespace host {

// The host's localisation object: English text in, the user's language out.
class Localizer {
public:
    virtual ~Localizer() = default;

    virtual int LanguageCode() const = 0;
    virtual void setLanguageCode(int code) = 0;
    virtual void Initialise() = 0;
    virtual QString Translate(const QString& english) const = 0;
    // Translates the captions of a form and of every control on it.
    virtual void TranslateForm(QWidget* form) const = 0;
};

} // namespace host
