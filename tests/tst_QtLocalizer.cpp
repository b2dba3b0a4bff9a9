#include "feldra/QtLocalizer.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDirIterator>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>
#include <QSet>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QXmlStreamReader>
#include <QtTest>

using feldra::QtLocalizer;

namespace {

constexpr int kFrench = 1036;

std::unique_ptr<QtLocalizer> LocalizerFor(int languageCode)
{
    auto localizer = std::make_unique<QtLocalizer>();
    localizer->setLanguageCode(languageCode);
    localizer->Initialise();
    return localizer;
}

struct CatalogueEntry {
    QString source;
    QString translation;
    QString type;
};

QList<CatalogueEntry> ReadCatalogue(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot open %s", qPrintable(path));
    QList<CatalogueEntry> entries;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.name() == QLatin1String("message"))
            entries.append(CatalogueEntry{});
        else if (xml.name() == QLatin1String("source"))
            entries.last().source = xml.readElementText();
        else if (xml.name() == QLatin1String("translation")) {
            entries.last().type = xml.attributes().value(QLatin1String("type")).toString();
            entries.last().translation = xml.readElementText();
        }
    }
    if (xml.hasError())
        qFatal("%s: %s", qPrintable(path), qPrintable(xml.errorString()));
    return entries;
}

// A small form shaped like the add-in's dialogs.
struct Form {
    QWidget window;
    QLabel* machine = new QLabel(QStringLiteral("Machine Name"));
    QLabel* parameter = new QLabel(QStringLiteral("814 - Bar Stock O.D."));
    QCheckBox* dontShow = new QCheckBox(QStringLiteral("Don't show me this again."));
    QPushButton* help = new QPushButton(QStringLiteral("Help"));
    QGroupBox* frame = new QGroupBox(QStringLiteral("Bar Loader"));
    QTabWidget* tabs = new QTabWidget;
    QComboBox* machines = new QComboBox;
    QMenu* context = new QMenu;
    QAction* sort = nullptr;

    Form()
    {
        window.setWindowTitle(QStringLiteral("Warning"));
        help->setToolTip(QStringLiteral("Display Help about G codes"));
        tabs->addTab(new QWidget, QStringLiteral("Part Data"));
        tabs->addTab(new QWidget, QStringLiteral("Machine Data"));
        machines->addItems({QStringLiteral("L5-16/20"), QStringLiteral("Bar")});
        context->setParent(&window, Qt::Popup);
        sort = context->addAction(QStringLiteral("Sort"));
        auto* layout = new QVBoxLayout(&window);
        for (QWidget* w : {static_cast<QWidget*>(machine), static_cast<QWidget*>(parameter),
                           static_cast<QWidget*>(dontShow), static_cast<QWidget*>(help),
                           static_cast<QWidget*>(frame), static_cast<QWidget*>(tabs),
                           static_cast<QWidget*>(machines)})
            layout->addWidget(w);
    }

    QStringList Texts() const
    {
        return {window.windowTitle(), machine->text(), parameter->text(), dontShow->text(),
                help->text(), help->toolTip(), frame->title(), tabs->tabText(0), tabs->tabText(1),
                machines->itemText(0), machines->itemText(1), sort->text()};
    }
};

const QStringList kGermanForm = {
    QStringLiteral("Warnung"), QStringLiteral("Maschinenname"), QStringLiteral("814 - Bar Stock O.D."),
    QStringLiteral("Diese Meldung nicht mehr anzeigen."), QStringLiteral("Hilfe"),
    QStringLiteral("Hilfe zu G-Codes anzeigen"), QStringLiteral("Stangenlader"), QStringLiteral("Teiledaten"),
    QStringLiteral("Maschinendaten"), QStringLiteral("L5-16/20"), QStringLiteral("Bar"),
    QStringLiteral("Sortieren")};

} // namespace

class tst_QtLocalizer : public QObject {
    Q_OBJECT

private slots:
    void translate_data();
    void translate();
    void translateFormSwitchesLanguages();
    void translateFormTakesNewEnglishTextsSetByCode();
    void germanCatalogueIsComplete();
    void everyTextTheAddInTranslatesIsInTheCatalogue();
};

void tst_QtLocalizer::translate_data()
{
    QTest::addColumn<int>("languageCode");
    QTest::addColumn<QString>("english");
    QTest::addColumn<QString>("expected");

    // Every German text is checked against the whole catalogue below.
    QTest::newRow("German") << int(QtLocalizer::kGerman) << "Tool Data" << "Werkzeugdaten";
    QTest::newRow("German: trailing blank kept") << int(QtLocalizer::kGerman) << "The file - " << "Die Datei - ";
    QTest::newRow("English") << int(QtLocalizer::kEnglish) << "Tool Data" << "Tool Data";
    QTest::newRow("French falls back to English") << kFrench << "Tool Data" << "Tool Data";
    const QString unknown = QStringLiteral("A text nobody translated");
    QTest::newRow("German: unknown text") << int(QtLocalizer::kGerman) << unknown << unknown;
    QTest::newRow("German: empty text") << int(QtLocalizer::kGerman) << QString() << QString();
    QTest::newRow("German: case matters") << int(QtLocalizer::kGerman) << QStringLiteral("tool data")
                                          << QStringLiteral("tool data");
    QTest::newRow("German: gang tool pattern name")
        << int(QtLocalizer::kGerman) << QStringLiteral("GTF3813 6TURN+4ROTARY")
        << QStringLiteral("GTF3813 6TURN+4ROTARY");
}

void tst_QtLocalizer::translate()
{
    QFETCH(int, languageCode);
    QFETCH(QString, english);
    QFETCH(QString, expected);

    QCOMPARE(LocalizerFor(languageCode)->Translate(english), expected);
}

void tst_QtLocalizer::translateFormSwitchesLanguages()
{
    Form form;
    const QStringList english = form.Texts();
    QtLocalizer localizer;

    localizer.setLanguageCode(QtLocalizer::kGerman);
    localizer.Initialise();
    localizer.TranslateForm(&form.window);
    QCOMPARE(form.Texts(), kGermanForm);
    localizer.TranslateForm(&form.window);
    QCOMPARE(form.Texts(), kGermanForm);

    localizer.setLanguageCode(QtLocalizer::kEnglish);
    localizer.Initialise();
    localizer.TranslateForm(&form.window);
    QCOMPARE(form.Texts(), english);
}

void tst_QtLocalizer::translateFormTakesNewEnglishTextsSetByCode()
{
    Form form;
    auto german = LocalizerFor(QtLocalizer::kGerman);
    german->TranslateForm(&form.window);

    form.machine->setText(QStringLiteral("Tool Settings"));
    german->TranslateForm(&form.window);
    QCOMPARE(form.machine->text(), QStringLiteral("Werkzeugeinstellungen"));

    LocalizerFor(QtLocalizer::kEnglish)->TranslateForm(&form.window);
    QCOMPARE(form.machine->text(), QStringLiteral("Tool Settings"));
}

// Every text of the German catalogue is finished, translated, unique and
// reaches the user exactly as written in the catalogue; German texts are
// distinct, because the add-in compares some shown texts with translations.
// A parameter number is never part of a key ("814 - " stays as it is).
void tst_QtLocalizer::germanCatalogueIsComplete()
{
    const QList<CatalogueEntry> entries = ReadCatalogue(QStringLiteral(MARELON_TRANSLATIONS_DIR "/marelon_de.ts"));
    QVERIFY(entries.size() > 100);

    const auto german = LocalizerFor(QtLocalizer::kGerman);
    const QRegularExpression parameterNumber(QStringLiteral("^\\d+ - "));
    QSet<QString> sources;
    QSet<QString> translations;
    for (const CatalogueEntry& entry : entries) {
        QVERIFY2(!entry.source.isEmpty(), "a message without source text");
        QVERIFY2(!parameterNumber.match(entry.source).hasMatch(), qPrintable(entry.source));
        QVERIFY2(entry.type.isEmpty(), qPrintable(entry.source + ": " + entry.type));
        QVERIFY2(!entry.translation.trimmed().isEmpty(), qPrintable(entry.source + ": no translation"));
        QVERIFY2(!sources.contains(entry.source), qPrintable(entry.source + ": twice"));
        QVERIFY2(!translations.contains(entry.translation), qPrintable(entry.translation + ": twice"));
        sources.insert(entry.source);
        translations.insert(entry.translation);
        QCOMPARE(german->Translate(entry.source), entry.translation);
    }
}

// Every text literal the add-in passes through the localiser has its German
// entry: a text missing from the catalogue would reach a German user in English.
void tst_QtLocalizer::everyTextTheAddInTranslatesIsInTheCatalogue()
{
    QSet<QString> sources;
    for (const CatalogueEntry& entry : ReadCatalogue(QStringLiteral(MARELON_TRANSLATIONS_DIR "/marelon_de.ts")))
        sources.insert(entry.source);
    const QRegularExpression literal(QStringLiteral(R"re(\bTr\(QStringLiteral\("((?:[^"\\]|\\.)*)"\))re"));
    int found = 0;
    for (const char* folder : {"addin", "datapage", "tooldata", "autosync"}) {
        QDirIterator files(QStringLiteral(MARELON_SOURCE_DIR "/src/") + QLatin1String(folder), {QStringLiteral("*.cpp")},
                           QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QString text = QString::fromUtf8(file.readAll());
            for (auto match = literal.globalMatch(text); match.hasNext();) {
                const QString english = match.next().captured(1).replace(QStringLiteral("\\\""), QStringLiteral("\""));
                ++found;
                QVERIFY2(sources.contains(english), qPrintable(file.fileName() + ": " + english));
            }
        }
    }
    QVERIFY(found > 50);
}

QTEST_MAIN(tst_QtLocalizer)
#include "tst_QtLocalizer.moc"
