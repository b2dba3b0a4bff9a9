// The Feldra help viewer on the compiled help of the build: topics and
// places, the start page, bad files and topics, history, index and search.
#include "feldra/QtLocalizer.h"
#include "feldra/app/HelpViewer.h"

#include <QAction>
#include <QFile>
#include <QHelpIndexWidget>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QTreeView>

using feldra::HelpViewer;

namespace {

const QString kHelp = QStringLiteral(MARELON_HELP_DIR "/");
const QString kGuide = kHelp + QStringLiteral("1033/Marelon Help.chm");
const QString kReference = kHelp + QStringLiteral("1033/G-Code Help.chm");

// The page shown, as the add-in names topics: "TooData.htm#Holder".
QString Shown(const HelpViewer& viewer)
{
    const QUrl url = viewer.CurrentUrl();
    const QString page = url.path().section(QLatin1Char('/'), 2, -1);
    return url.hasFragment() ? page + QLatin1Char('#') + url.fragment() : page;
}

// The viewer's own texts in a language.
struct ViewerTexts : feldra::QtLocalizer {
    explicit ViewerTexts(int language)
    {
        setLanguageCode(language);
        Initialise();
    }
};

} // namespace

class tst_HelpViewer : public QObject {
    Q_OBJECT

private slots:
    void showsTheTopicAskedFor_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("topic");
        QTest::addColumn<QString>("shown");   // page#place shown; empty: none
        QTest::addColumn<QString>("message"); // a part of the message; empty: none

        QTest::newRow("a page") << kGuide << "Index.htm" << "Index.htm" << "";
        QTest::newRow("a place on a page") << kGuide << "TooData.htm#Holder" << "TooData.htm#Holder" << "";
        QTest::newRow("the NC warning") << kGuide << "posting.htm#Warning" << "posting.htm#Warning" << "";
        QTest::newRow("the start page") << kReference << "" << "index.htm" << "";
        QTest::newRow("a topic in another case") << kGuide << "toodata.htm" << "TooData.htm" << "";
        QTest::newRow("an unknown topic") << kGuide << "Nowhere.htm" << "Index.htm" << "Nowhere.htm";
        QTest::newRow("an unknown place") << kGuide << "TooData.htm#Nowhere" << "TooData.htm#Nowhere"
                                          << "Nowhere";
        QTest::newRow("a missing file") << kHelp + "1033/Missing.chm" << "Index.htm" << "" << "Missing.chm";
    }
    void showsTheTopicAskedFor()
    {
        QFETCH(QString, file);
        QFETCH(QString, topic);
        QFETCH(QString, shown);
        QFETCH(QString, message);

        const ViewerTexts english(1033);
        HelpViewer viewer(english);
        viewer.ShowTopic(file, topic);

        QVERIFY(viewer.isVisible());
        QCOMPARE(viewer.HelpFile(), file);
        QCOMPARE(Shown(viewer), shown);
        QCOMPARE(viewer.Message().isEmpty(), message.isEmpty());
        QVERIFY2(viewer.Message().contains(message), qPrintable(viewer.Message()));
    }

    // A file that is no compiled help is told in the user's language, and
    // the viewer shows the next good file as if nothing had happened.
    void aBadFileIsToldAndForgotten()
    {
        QTemporaryDir folder;
        const QString empty = folder.filePath(QStringLiteral("Marelon Help.chm"));
        QFile(empty).open(QIODevice::WriteOnly);
        const ViewerTexts german(1031);
        HelpViewer viewer(german);

        viewer.ShowTopic(empty, QStringLiteral("Index.htm"));
        QVERIFY2(viewer.Message().contains(QStringLiteral("keine kompilierte Hilfedatei")),
                 qPrintable(viewer.Message()));
        QVERIFY(viewer.CurrentUrl().isEmpty());

        viewer.ShowTopic(kGuide, QStringLiteral("posting.htm#Warning"));
        QCOMPARE(viewer.Message(), QString());
        QCOMPARE(Shown(viewer), QStringLiteral("posting.htm#Warning"));
    }

    void backForwardAndHome()
    {
        const ViewerTexts english(1033);
        HelpViewer viewer(english);
        auto* back = viewer.findChild<QAction*>("actBack");
        auto* forward = viewer.findChild<QAction*>("actForward");
        viewer.ShowTopic(kGuide, QStringLiteral("GettingStarted.htm"));
        viewer.ShowTopic(kGuide, QStringLiteral("TooData.htm"));
        viewer.ShowTopic(kGuide, QStringLiteral("TooData.htm")); // asked again: no second entry

        back->trigger();
        QCOMPARE(Shown(viewer), QStringLiteral("GettingStarted.htm"));
        QVERIFY(!back->isEnabled());
        forward->trigger();
        QCOMPARE(Shown(viewer), QStringLiteral("TooData.htm"));
        QCOMPARE(viewer.findChild<QTreeView*>("treeContents")->currentIndex().data().toString(),
                 QStringLiteral("Tool Data")); // the contents follow the page
        viewer.findChild<QAction*>("actHome")->trigger();
        QCOMPARE(Shown(viewer), QStringLiteral("Index.htm"));

        viewer.ShowTopic(kReference, QString()); // another file starts its own history
        QVERIFY(!back->isEnabled());
        QVERIFY(!forward->isEnabled());
    }

    void theIndexLeadsToItsPlace()
    {
        const ViewerTexts english(1033);
        HelpViewer viewer(english);
        viewer.ShowTopic(kGuide, QStringLiteral("Index.htm"));

        auto* filter = viewer.findChild<QLineEdit*>("txtIndex");
        filter->setText(QStringLiteral("Set Data"));
        QTest::keyClick(filter, Qt::Key_Return);
        QCOMPARE(Shown(viewer), QStringLiteral("TooData.htm#SetData"));
    }

    // A single click on a result opens it with the searched word marked and
    // the page at its first place; the next file starts with an empty search.
    void theSearchFindsTheWords()
    {
        const ViewerTexts english(1033);
        HelpViewer viewer(english);
        viewer.ShowTopic(kReference, QString());
        viewer.show();
        auto* words = viewer.findChild<QLineEdit*>("txtSearch");
        QVERIFY(words->text().isEmpty());

        words->setText(QStringLiteral("M155"));
        viewer.findChild<QPushButton*>("cmdSearch")->click();
        auto* results = viewer.findChild<QListWidget*>("lstSearchResults");
        QTRY_VERIFY_WITH_TIMEOUT(results->count() > 0, 20000);

        QListWidgetItem* hit = nullptr;
        for (int i = 0; i < results->count() && !hit; ++i)
            if (results->item(i)->data(Qt::UserRole).toUrl().path().endsWith(QStringLiteral("/BarLoader.htm")))
                hit = results->item(i);
        QVERIFY(hit);
        results->scrollToItem(hit);
        QTest::mouseClick(results->viewport(), Qt::LeftButton, {}, results->visualItemRect(hit).center());
        QCOMPARE(Shown(viewer), QStringLiteral("BarLoader.htm"));

        auto* page = viewer.findChild<QTextBrowser*>();
        const QList<QTextEdit::ExtraSelection> marks = page->extraSelections();
        QVERIFY(!marks.isEmpty());
        int first = INT_MAX;
        for (const QTextEdit::ExtraSelection& mark : marks) {
            QCOMPARE(mark.cursor.selectedText().toUpper(), QStringLiteral("M155"));
            first = std::min(first, mark.cursor.selectionStart());
        }
        QCOMPARE(page->textCursor().position(), first);

        viewer.ShowTopic(kGuide, QStringLiteral("Index.htm"));
        QVERIFY(words->text().isEmpty());
        QVERIFY(page->extraSelections().isEmpty());
    }
};

QTEST_MAIN(tst_HelpViewer)
#include "tst_HelpViewer.moc"
