#include "addin/host/Application.h"
#include "addin/ui/HelpAccess.h"
#include "addin/ui/UiServices.h"
#include "feldra/Host.h"
#include "feldra/PassThroughLocalizer.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace marelon;

class tst_HelpAccess : public QObject {
    Q_OBJECT

private slots:
    void helpOpensInTheLanguageFolderOrEnglish_data()
    {
        QTest::addColumn<int>("language");
        QTest::addColumn<QStringList>("installed"); // help folders holding the file
        QTest::addColumn<QString>("openedFrom");    // empty: nothing opens

        QTest::newRow("german folder") << 1031 << QStringList{"1031", "1033"} << "1031";
        QTest::newRow("german falls back to english") << 1031 << QStringList{"1033"} << "1033";
        QTest::newRow("a language without help uses english") << 1036 << QStringList{"1033"} << "1033";
        QTest::newRow("missing everywhere") << 1031 << QStringList{} << "";
        QTest::newRow("only another language") << 1033 << QStringList{"1031"} << "";
    }
    void helpOpensInTheLanguageFolderOrEnglish()
    {
        QFETCH(int, language);
        QFETCH(QStringList, installed);
        QFETCH(QString, openedFrom);

        QTemporaryDir install;
        for (const QString& folder : installed) {
            QDir(install.path()).mkpath("Help/" + folder);
            QFile(install.filePath("Help/" + folder + "/" + kAddInHelpFile)).open(QIODevice::WriteOnly);
        }
        feldra::Host host;
        host.App().installFolder = install.path() + "/";
        auto localizer = std::make_shared<feldra::PassThroughLocalizer>();
        localizer->setLanguageCode(language);
        InstallUiServices(localizer, nullptr);

        const bool opened = OpenHelpTopic(*host.ApplicationFor("Marelon.Connect"), kAddInHelpFile,
                                          QStringLiteral("TooData.htm#Holder"));

        const auto requests = host.Log().RequestsOf("Application.ShowHelpTopic");
        QCOMPARE(opened, !openedFrom.isEmpty());
        QCOMPARE(requests.size(), opened ? 1 : 0);
        if (opened)
            QCOMPARE(requests.first().arguments,
                     (QStringList{install.path() + "/Help/" + openedFrom + "/" + kAddInHelpFile,
                                  "TooData.htm#Holder"}));
        RemoveUiServices();
    }
};

QTEST_MAIN(tst_HelpAccess)
#include "tst_HelpAccess.moc"
