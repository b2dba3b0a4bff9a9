// Every help the add-in opens, opened as a user does, in English and German,
// on the compiled help of the build: the viewer shows the topic asked for, from
// the help folder of the user's language; and a machinist's question, looked
// up in the index, leads to the place that answers it.
#include "ConnectFixture.h"
#include "addin/modGlobals.h"
#include "datapage/frmMarelonDataPage.h"
#include "feldra/app/HelpViewer.h"

#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>

#include <functional>

namespace {

// The host's install folder: the compiled help is in its "Help" folder.
const QString kInstallFolder = QDir::cleanPath(QStringLiteral(MARELON_HELP_DIR "/..")) + QLatin1Char('/');

void ClickButton(QWidget& dialog, const char* name)
{
    auto* button = dialog.findChild<QPushButton*>(QString::fromLatin1(name));
    QVERIFY2(button, name);
    QTest::mouseClick(button, Qt::LeftButton);
}

using Opener = std::function<void(ConnectedHost&)>;

void RunCommand(ConnectedHost& h, int id) { QVERIFY(h.host.InvokeCommand(h.addIn.CommandHandle(id))); }

// Tool Data opened by its command; inside it, act on the open dialog.
void InToolData(ConnectedHost& h, const std::function<void(QWidget&)>& act)
{
    AnswerModal([&] { RunCommand(h, 1); },
                [&](QWidget& toolData) {
                    act(toolData);
                    toolData.close();
                });
}

// A holder dialog opened from Tool Data by one of its buttons: its Help, then Cancel.
Opener HolderDialogHelp(const char* opener)
{
    return [opener](ConnectedHost& h) {
        InToolData(h, [opener](QWidget& toolData) {
            AnswerModal([&] { ClickButton(toolData, opener); },
                        [](QWidget& holder) {
                            ClickButton(holder, "cmdHelp");
                            ClickButton(holder, "cmdCancel");
                        });
        });
    };
}

// The Data Page opened by its command on one of its tabs: its Help, then Cancel.
Opener DataPageHelp(int tab)
{
    return [tab](ConnectedHost& h) {
        RunCommand(h, 2);
        QWidget& dataPage = *marelon::DataPageInstance();
        dataPage.findChild<QTabWidget*>(QStringLiteral("MyTabs"))->setCurrentIndex(tab);
        ClickButton(dataPage, "cmdHelp");
        ClickButton(dataPage, "cmdCancel");
    };
}

// The first line of the page the viewer shows, and the page its first link leads to.
struct FirstLine {
    QString text;
    QString link;
};
FirstLine FirstLineShown(feldra::HelpViewer& viewer)
{
    const QTextBlock block = viewer.findChild<QTextBrowser*>(QStringLiteral("txtPage"))->document()->firstBlock();
    for (auto it = block.begin(); !it.atEnd(); ++it)
        if (!it.fragment().charFormat().anchorHref().isEmpty())
            return {block.text().trimmed(), it.fragment().charFormat().anchorHref()};
    return {block.text().trimmed(), QString()};
}

// The host's texts in one language, for a help viewer of that language.
struct ViewerTexts : feldra::QtLocalizer {
    explicit ViewerTexts(int language)
    {
        setLanguageCode(language);
        Initialise();
    }
};

// The add-in connected in a language; the help it opens is shown by a viewer
// of that language.
struct HelpSession {
    explicit HelpSession(int language) : h(language), texts(language), viewer(texts)
    {
        h.host.App().installFolder = kInstallFolder;
        h.host.Services().showHelpTopic = [this](const QString& helpFile, const QString& asked) {
            viewer.ShowTopic(helpFile, asked);
        };
    }
    ~HelpSession() { h.host.Services().showHelpTopic = nullptr; }
    HelpSession(const HelpSession&) = delete;
    HelpSession& operator=(const HelpSession&) = delete;

    void Connect()
    {
        h.Connect();
        h.host.Activate(h.Document());
    }

    ConnectedHost h;
    ViewerTexts texts;
    feldra::HelpViewer viewer;
};

} // namespace

Q_DECLARE_METATYPE(Opener)

class tst_HelpTopics : public QObject {
    Q_OBJECT

private slots:
    void eachHelpShowsItsTopic_data()
    {
        QTest::addColumn<int>("language");
        QTest::addColumn<Opener>("open");
        QTest::addColumn<QString>("file");  // below the install folder
        QTest::addColumn<QString>("topic"); // page#place shown

        const Opener gCodeList = [](ConnectedHost& h) { RunCommand(h, 4); };
        const Opener addInHelp = [](ConnectedHost& h) { RunCommand(h, 5); };
        const Opener toolData = [](ConnectedHost& h) {
            InToolData(h, [](QWidget& dialog) { ClickButton(dialog, "cmdHelp"); });
        };
        const Opener dataPage = DataPageHelp(0);
        const Opener ncWarning = [](ConnectedHost& h) {
            AnswerModal([&] { h.host.BeforeCommandRun(3320); },
                        [](QWidget& warning) {
                            ClickButton(warning, "cmdHelp");
                            ClickButton(warning, "cmdYes");
                        });
        };
        for (int language : {1033, 1031}) {
            const auto row = [language](const char* opener) -> QTestData& {
                return QTest::addRow("%s, %d", opener, language);
            };
            const QString guide = QStringLiteral("Help/%1/Marelon Help.chm").arg(language);
            row("G-Code List (command 4)") << language << gCodeList
                                           << QStringLiteral("Help/%1/G-Code Help.chm").arg(language) << "index.htm";
            row("Marelon Add-In Help (command 5)") << language << addInHelp << guide << "Index.htm";
            row("Tool Data") << language << toolData << guide << "TooData.htm";
            row("Data Page, Part Data") << language << dataPage << guide << "Index.htm#FromDataPagePart";
            row("Data Page, Machine Data") << language << DataPageHelp(1) << guide << "Index.htm#FromDataPageMachine";
            row("Data Page, Miscellaneous") << language << DataPageHelp(2) << guide << "Index.htm#FromDataPageMisc";
            row("New Holder") << language << HolderDialogHelp("cmdNew") << guide << "TooData.htm#Holder";
            row("Edit Holder") << language << HolderDialogHelp("cmdEdit") << guide << "TooData.htm#Holder";
            row("NC warning") << language << ncWarning << guide << "posting.htm#Warning";
        }
        QTest::newRow("a language without help reads English")
            << 1036 << addInHelp << "Help/1033/Marelon Help.chm" << "Index.htm";
    }
    void eachHelpShowsItsTopic()
    {
        QFETCH(int, language);
        QFETCH(Opener, open);
        QFETCH(QString, file);
        QFETCH(QString, topic);

        HelpSession session(language);
        ConnectedHost& h = session.h;
        feldra::HelpViewer& viewer = session.viewer;
        h.host.App().addInFolder = QStringLiteral(MARELON_ADDIN_DIR "/"); // the delivered holder libraries
        session.Connect();

        open(h);

        QCOMPARE(QDir::cleanPath(viewer.HelpFile()), QDir::cleanPath(kInstallFolder + file));
        QCOMPARE(viewer.Message(), QString());
        const QUrl shown = viewer.CurrentUrl();
        const QString page = shown.path().section(QLatin1Char('/'), 2, -1);
        QCOMPARE(shown.hasFragment() ? page + QLatin1Char('#') + shown.fragment() : page, topic);
        QVERIFY(h.host.Log().FailedCallbacks().isEmpty());
    }

    // The index opened from the Data Page begins with the way to the topic of
    // the tab shown, one click away; opened by the help command, or reached
    // again from another page, it begins with its title.
    void theIndexLeadsBackToTheDataPageTab_data()
    {
        QTest::addColumn<int>("language");
        QTest::addColumn<Opener>("open");
        QTest::addColumn<QString>("link"); // of the first line; empty: the line is the title
        for (int language : {1033, 1031}) {
            QTest::addRow("Part Data, %d", language) << language << DataPageHelp(0) << "DataPagePart.htm";
            QTest::addRow("Machine Data, %d", language) << language << DataPageHelp(1) << "DataPageMachine.htm";
            QTest::addRow("Miscellaneous, %d", language) << language << DataPageHelp(2) << "DataPageMisc.htm";
            QTest::addRow("help command, %d", language) << language << Opener([](ConnectedHost& h) { RunCommand(h, 5); })
                                                        << QString();
        }
    }
    void theIndexLeadsBackToTheDataPageTab()
    {
        QFETCH(int, language);
        QFETCH(Opener, open);
        QFETCH(QString, link);
        HelpSession session(language);
        ConnectedHost& h = session.h;
        feldra::HelpViewer& viewer = session.viewer;
        session.Connect();
        const QString title = language == 1033 ? QStringLiteral("Marelon Add-In Help") : QStringLiteral("Marelon Add-In-Hilfe");

        open(h);
        FirstLine first = FirstLineShown(viewer);
        if (link.isEmpty()) {
            QCOMPARE(first.text, title);
        } else {
            QCOMPARE(first.link, link);
            // the index reached from another page has no line of where one came from
            viewer.ShowTopic(viewer.HelpFile(), link);
            viewer.ShowTopic(viewer.HelpFile(), QStringLiteral("Index.htm"));
            QCOMPARE(FirstLineShown(viewer).text, title);
            // and asked for from the Data Page once more, it has it again
            open(h);
            QCOMPARE(FirstLineShown(viewer).link, link);
        }
    }

    // What a value means, its unit, what a code in the NC program does: each
    // index entry leads to the place that answers it, in both languages.
    void theIndexAnswersAMachinistsQuestion_data()
    {
        QTest::addColumn<int>("language");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("topic");
        const QString guide = QStringLiteral("Help/%1/Marelon Help.chm");
        const QString reference = QStringLiteral("Help/%1/G-Code Help.chm");
        const struct {
            const char* english;
            const char* german;
            bool inReference;
            const char* topic;
        } questions[] = {
            {"units of the Data Page fields", "Einheiten der Datenblattfelder", false, "DataPageMachine.htm#Parameters"},
            {"With Basket", "Mit Korb", false, "DataPageMachine.htm#p893"},
            {"Free Tool", "Freies Werkzeug", false, "DataPageMachine.htm#p991"},
            {"Pull Back Amount", "Rückzugsweg", false, "DataPageMisc.htm#PullBack"},
            {"worked example (Tool Data)", "Beispiel Schritt für Schritt (Werkzeugdaten)", false, "TooData.htm#Example"},
            {"worked example (Auto Sync)", "Beispiel Schritt für Schritt (Auto-Sync)", false, "AutoSync.htm#Example"},
            {"M155 in the NC listing", "M155 im NC-Listing", true, "BarLoader.htm#Listing"},
            {"synchronisation in the NC program", "Synchronisation im NC-Programm", true, "Sync.htm#Reading"},
        };
        for (const auto& q : questions)
            for (int language : {1033, 1031}) {
                const QString entry = QString::fromUtf8(language == 1033 ? q.english : q.german);
                QTest::addRow("%s, %d", qPrintable(entry), language)
                    << language << (q.inReference ? reference : guide).arg(language) << entry << QString::fromLatin1(q.topic);
            }
    }
    void theIndexAnswersAMachinistsQuestion()
    {
        QFETCH(int, language);
        QFETCH(QString, file);
        QFETCH(QString, entry);
        QFETCH(QString, topic);
        ViewerTexts viewerTexts(language);
        feldra::HelpViewer viewer(viewerTexts);
        viewer.ShowTopic(kInstallFolder + file, QString());

        auto* filter = viewer.findChild<QLineEdit*>(QStringLiteral("txtIndex"));
        QVERIFY(filter);
        filter->setText(entry);
        QTest::keyClick(filter, Qt::Key_Return);
        const QUrl shown = viewer.CurrentUrl();
        QCOMPARE(shown.path().section(QLatin1Char('/'), 2, -1) + QLatin1Char('#') + shown.fragment(), topic);
    }
};

QTEST_MAIN(tst_HelpTopics)
#include "tst_HelpTopics.moc"
