#include "feldra/QtLocalizer.h"

#include "addin/host/HostError.h"
#include "feldra/InstallLayout.h"

#include <QAbstractButton>
#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QRegularExpression>
#include <QTabWidget>
#include <QWidget>

namespace feldra {

namespace {

// Every English key lives in this one context: the add-in names a text only
// by its English form.
constexpr const char* kContext = "Marelon";

// The compiled catalogue of a language: the installed one (translations/ in
// the host's install folder), else the one embedded in the host; none for English.
QString CatalogueFor(int languageCode)
{
    if (languageCode != QtLocalizer::kGerman)
        return {};
    const QString name = QStringLiteral("marelon_de.qm");
    const QString installed = QDir::fromNativeSeparators(HostInstallFolder(QCoreApplication::applicationDirPath()))
                              + QStringLiteral("translations/") + name;
    return QFileInfo(installed).isFile() ? installed : QStringLiteral(":/i18n/") + name;
}

// "814 - Bar Stock O.D.": the form builds such captions from a fixed number and
// a translated text, so the caption as a whole is never a key.
bool StartsWithParameterNumber(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral("^\\d+ - "));
    return pattern.match(text).hasMatch();
}

// The text to show for one text slot of an object ("text", "toolTip", "tab2").
// The object keeps the slot's English source and the text last shown in two
// dynamic properties; when the displayed text is still the one last shown,
// the source is translated again, otherwise code has put a new English text
// there and that text becomes the source.
QString Retranslate(const host::Localizer& localizer, QObject* owner, const QByteArray& slot,
                    const QString& displayed)
{
    const QByteArray sourceKey = "marelonEnglish_" + slot;
    const QByteArray shownKey = "marelonShown_" + slot;
    const QVariant source = owner->property(sourceKey.constData());
    const QVariant shown = owner->property(shownKey.constData());
    const QString english = source.isValid() && shown.toString() == displayed ? source.toString() : displayed;
    if (english.isEmpty() || StartsWithParameterNumber(english))
        return displayed;

    const QString text = localizer.Translate(english);
    owner->setProperty(sourceKey.constData(), english);
    owner->setProperty(shownKey.constData(), text);
    return text;
}

void TranslateWidget(const host::Localizer& localizer, QWidget* widget)
{
    widget->setToolTip(Retranslate(localizer, widget, "toolTip", widget->toolTip()));
    if (auto* label = qobject_cast<QLabel*>(widget))
        label->setText(Retranslate(localizer, label, "text", label->text()));
    else if (auto* button = qobject_cast<QAbstractButton*>(widget))
        button->setText(Retranslate(localizer, button, "text", button->text()));
    else if (auto* frame = qobject_cast<QGroupBox*>(widget))
        frame->setTitle(Retranslate(localizer, frame, "title", frame->title()));
    else if (auto* menu = qobject_cast<QMenu*>(widget))
        menu->setTitle(Retranslate(localizer, menu, "title", menu->title()));
    else if (auto* tabs = qobject_cast<QTabWidget*>(widget)) {
        for (int i = 0; i < tabs->count(); ++i)
            tabs->setTabText(i, Retranslate(localizer, tabs, "tab" + QByteArray::number(i), tabs->tabText(i)));
    }
}

} // namespace

int QtLocalizer::LanguageCode() const
{
    return languageCode_;
}

void QtLocalizer::setLanguageCode(int code)
{
    languageCode_ = code;
}

void QtLocalizer::Initialise()
{
    catalogue_.reset();
    const QString file = CatalogueFor(languageCode_);
    if (file.isEmpty())
        return;
    auto catalogue = std::make_unique<QTranslator>();
    if (!catalogue->load(file))
        throw host::HostError(QStringLiteral("Localizer.Initialise"),
                              QStringLiteral("The catalogue %1 is missing from the host.").arg(file));
    catalogue_ = std::move(catalogue);
}

QString QtLocalizer::Translate(const QString& english) const
{
    if (!catalogue_)
        return english;
    const QString text = catalogue_->translate(kContext, english.toUtf8().constData());
    return text.isEmpty() ? english : text;
}

void QtLocalizer::TranslateForm(QWidget* form) const
{
    if (!form)
        return;
    form->setWindowTitle(Retranslate(*this, form, "windowTitle", form->windowTitle()));
    TranslateWidget(*this, form);
    for (QWidget* child : form->findChildren<QWidget*>())
        TranslateWidget(*this, child);
    for (QAction* action : form->findChildren<QAction*>())
        action->setText(Retranslate(*this, action, "text", action->text()));
}

} // namespace feldra
