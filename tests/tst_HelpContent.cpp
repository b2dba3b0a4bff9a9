// What the compiled help of the build holds, in English and German: a topic
// for every Data Page field, every control of Tool Data and its holder
// dialogs and every command; every link and picture resolves; the gang tool
// pattern pictures are the Data Page's own; both languages have the same
// pages and places.
#include "datapage/DataPageSettings.h"
#include "datapage/GangToolPatterns.h"
#include "feldra/QtLocalizer.h"

#include <QFile>
#include <QHelpEngineCore>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

namespace {

const QString kHelp = QStringLiteral(MARELON_HELP_DIR "/");

// Every Data Page field by its control, and the buttons beside the fields.
QStringList DataPageControls()
{
    QStringList controls{"cmbMachineSetup", "cmdRefresh", "CmdUpd816", "CmdUpd818", "CmdUpd821", "CmdUpdColletExt"};
    for (const marelon::DataPageField& field : marelon::DataPageFields())
        controls << QString::fromLatin1(field.control);
    return controls;
}

// The NC parameters of the Data Page's fields.
QStringList ParameterNumbers()
{
    QStringList numbers;
    for (const marelon::DataPageField& field : marelon::DataPageFields())
        if (field.parameter)
            numbers << QString::number(field.parameter);
    return numbers;
}
const QStringList kOtherNumbers{"016", "020", "024", "028", "032", "036", "040", "044", "048",
                                "052", "056", "060", "062", "064", "928", "932"};
const QStringList kCommands{"Tool Data", "Data Page", "Masks", "G-Code List", "Auto Sync",
                            "Marelon Add-In Help", "Marelon G-Code Help"};

// One compiled help file, read through the help engine as the viewer reads it.
class CompiledHelp {
public:
    explicit CompiledHelp(const QString& file)
        : engine_(folder_.filePath(QStringLiteral("collection.qhc")))
    {
        engine_.setReadOnly(false);
        engine_.setupData();
        engine_.registerDocumentation(file);
        namespace_ = QHelpEngineCore::namespaceName(file);
        for (const QUrl& url : engine_.files(namespace_, QString()))
            files_.insert(url.path().section(QLatin1Char('/'), 2, -1), url); // "/<virtual folder>/<file>"
    }

    QStringList Pages() const
    {
        QStringList pages;
        for (const QString& file : files_.keys())
            if (file.endsWith(QLatin1String(".htm")))
                pages << file;
        return pages;
    }
    bool Has(const QString& file) const { return files_.contains(file); }
    QByteArray Data(const QString& file) const { return engine_.fileData(files_.value(file)); }
    QString Text(const QString& page) const { return QString::fromUtf8(Data(page)); }

    // The places of a page: <a name="...">.
    QStringList Places(const QString& page) const
    {
        static const QRegularExpression anchor(QStringLiteral("<a name=\"([^\"]+)\""));
        QStringList places;
        for (const auto& match : anchor.globalMatch(Text(page)))
            places << match.captured(1);
        return places;
    }

    // The text of the pages whose names begin so, tags left out.
    QString Words(const QString& pagesBeginning) const
    {
        static const QRegularExpression tag(QStringLiteral("<[^>]*>"));
        QString words;
        for (const QString& page : Pages())
            if (page.startsWith(pagesBeginning))
                words += Text(page).remove(tag) + QLatin1Char('\n');
        return words;
    }

private:
    QTemporaryDir folder_;
    QHelpEngineCore engine_;
    QString namespace_;
    QMap<QString, QUrl> files_;
};

// The controls of a Designer form (its widgets' object names).
QStringList FormControls(const QString& uiFile)
{
    QFile file(uiFile);
    file.open(QIODevice::ReadOnly);
    QXmlStreamReader xml(&file);
    QStringList names;
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("widget"))
            names << xml.attributes().value(QStringLiteral("name")).toString();
    return names;
}

QString Tr(int language, const QString& english)
{
    feldra::QtLocalizer localizer;
    localizer.setLanguageCode(language);
    localizer.Initialise();
    return localizer.Translate(english);
}

void AddLanguages()
{
    QTest::addColumn<int>("language");
    QTest::newRow("English") << 1033;
    QTest::newRow("German") << 1031;
}

QString Guide(int language) { return kHelp + QStringLiteral("%1/Marelon Help.chm").arg(language); }
QString Reference(int language) { return kHelp + QStringLiteral("%1/G-Code Help.chm").arg(language); }

} // namespace

class tst_HelpContent : public QObject {
    Q_OBJECT

private slots:
    void everyDataPageFieldHasItsTopic_data() { AddLanguages(); }
    void everyDataPageFieldHasItsTopic()
    {
        QFETCH(int, language);
        const CompiledHelp guide(Guide(language));
        const QString dataPage = guide.Words(QStringLiteral("DataPage"));
        for (const QString& control : DataPageControls())
            QVERIFY2(dataPage.contains(control), qPrintable(control));
        for (const QString& number : ParameterNumbers())
            QVERIFY2(guide.Places(QStringLiteral("DataPageMachine.htm")).contains(QLatin1Char('p') + number)
                         && dataPage.contains(number),
                     qPrintable(number));
        const QString models = guide.Words(QStringLiteral("Models"));
        const QString numbering = CompiledHelp(Reference(language)).Words(QStringLiteral("Numbering"));
        for (const QString& number : kOtherNumbers)
            QVERIFY2(models.contains(number) && numbering.contains(number), qPrintable(number));
    }

    void everyToolDataControlHasItsTopic_data() { AddLanguages(); }
    void everyToolDataControlHasItsTopic()
    {
        QFETCH(int, language);
        const QString toolData = CompiledHelp(Guide(language)).Words(QStringLiteral("TooData"));
        QStringList controls{"MnuContext", "Renumber", "Sort"};
        for (const char* form : {"frmToolData", "frmNewHolder", "frmEditHolder"})
            controls += FormControls(QStringLiteral(MARELON_SOURCE_DIR "/src/tooldata/%1.ui").arg(form));
        QVERIFY(controls.size() > 60);
        for (const QString& control : controls)
            QVERIFY2(toolData.contains(control), qPrintable(control));
    }

    void everyCommandHasItsTopic_data() { AddLanguages(); }
    void everyCommandHasItsTopic()
    {
        QFETCH(int, language);
        const QString commands = CompiledHelp(Guide(language)).Words(QStringLiteral("GettingStarted"));
        for (const QString& command : kCommands)
            QVERIFY2(commands.contains(Tr(language, command)), qPrintable(Tr(language, command)));
    }

    // Every link, picture and style sheet of every page names a file of the
    // compiled help and, after "#", a place on its page; no link leaves it.
    void everyLinkAndPictureResolves_data()
    {
        QTest::addColumn<QString>("file");
        for (int language : {1033, 1031})
            for (const QString& file : {Guide(language), Reference(language)})
                QTest::addRow("%d %s", language, qPrintable(QFileInfo(file).fileName())) << file;
    }
    void everyLinkAndPictureResolves()
    {
        QFETCH(QString, file);
        const CompiledHelp help(file);
        static const QRegularExpression reference(QStringLiteral("\\b(?:href|src)=\"([^\"]*)\""));
        int checked = 0;
        for (const QString& page : help.Pages()) {
            for (const auto& match : reference.globalMatch(help.Text(page))) {
                const QString target = match.captured(1);
                const QString linked = target.section(QLatin1Char('#'), 0, 0);
                const QString place = target.section(QLatin1Char('#'), 1);
                const QString where = page + QStringLiteral(": ") + target;
                QVERIFY2(!target.contains(QLatin1Char(':')), qPrintable(where));
                QVERIFY2(linked.isEmpty() || !help.Data(linked).isEmpty(), qPrintable(where));
                QVERIFY2(place.isEmpty() || help.Places(linked.isEmpty() ? page : linked).contains(place),
                         qPrintable(where));
                ++checked;
            }
        }
        QVERIFY(checked > 10);
    }

    // Every L5 16-20 pattern shows the picture the Data Page shows, in the
    // reference's pattern table and in the guide's gang holder section.
    void patternPicturesAreTheDataPagesOwn_data() { AddLanguages(); }
    void patternPicturesAreTheDataPagesOwn()
    {
        QFETCH(int, language);
        const CompiledHelp guide(Guide(language));
        const CompiledHelp reference(Reference(language));
        marelon::GangToolPatternTable patterns;
        marelon::LoadL5Patterns(patterns);
        for (const marelon::GangToolPattern& pattern : patterns) {
            const QString file = QStringLiteral("patterns/L5-16-20-%1.png").arg(pattern.code);
            QFile picture(marelon::GangPatternPicture(pattern.code));
            QVERIFY2(picture.open(QIODevice::ReadOnly), qPrintable(picture.fileName()));
            const QByteArray own = picture.readAll();
            QVERIFY2(guide.Data(file) == own && reference.Data(file) == own, qPrintable(file));
            QVERIFY2(guide.Text(QStringLiteral("DataPageMachine.htm")).contains(file)
                         && reference.Text(QStringLiteral("GangPatterns.htm")).contains(file),
                     qPrintable(file));
        }
    }

    void bothLanguagesHaveTheSamePagesAndPlaces()
    {
        for (const auto& name : {QStringLiteral("Marelon Help.chm"), QStringLiteral("G-Code Help.chm")}) {
            const CompiledHelp english(kHelp + QStringLiteral("1033/") + name);
            const CompiledHelp german(kHelp + QStringLiteral("1031/") + name);
            QCOMPARE(german.Pages(), english.Pages());
            for (const QString& page : english.Pages())
                QCOMPARE(german.Places(page), english.Places(page));
        }
    }
};

QTEST_MAIN(tst_HelpContent)
#include "tst_HelpContent.moc"
