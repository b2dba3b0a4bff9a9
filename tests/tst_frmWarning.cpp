#include "addin/frmWarning.h"
#include "addin/modGlobals.h"
#include "addin/settings/SettingsStore.h"
#include "numeric/NumberText.h"

#include <QCheckBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

using namespace marelon;

class tst_frmWarning : public QObject {
    Q_OBJECT

    QTemporaryDir settings_;

    static QString stored()
    {
        return GetSetting(kAppName, kNcCodeDialogSection, kDontShowKey, QStringLiteral("missing"));
    }

private slots:
    void initTestCase() { qputenv("MARELON_SETTINGS_DIR", settings_.path().toUtf8()); }

    void everyCloseStoresTheCheckBox_data()
    {
        QTest::addColumn<QString>("before");  // the stored setting before the dialog opens
        QTest::addColumn<bool>("tick");       // the check box the user leaves
        QTest::addColumn<QString>("close");   // Yes, No, the window's close box or Escape
        QTest::addColumn<bool>("cancel");
        QTest::addColumn<QString>("after");

        QTest::newRow("yes keeps generating") << "" << false << "cmdYes" << false << "0";
        QTest::newRow("close box cancels like no") << "0" << false << "frame" << true << "0";
        QTest::newRow("tick and no: cancel, never again") << "0" << true << "cmdNo" << true << "1";
        QTest::newRow("untick and yes stores 0") << "1" << false << "cmdYes" << false << "0";
        QTest::newRow("stored 1 shows ticked and stays") << "1" << true << "frame" << true << "1";
        QTest::newRow("escape after an earlier yes cancels and keeps the tick")
            << "0" << true << "escape" << true << "1";
        QTest::newRow("escape stores an untick") << "1" << false << "escape" << true << "0";
    }
    void everyCloseStoresTheCheckBox()
    {
        QFETCH(QString, before);
        QFETCH(bool, tick);
        QFETCH(QString, close);
        QFETCH(bool, cancel);
        QFETCH(QString, after);

        if (!before.isEmpty())
            SaveSetting(kAppName, kNcCodeDialogSection, kDontShowKey, before);
        Flags().ncWarningCancel = !cancel; // the flag keeps its last value until an answer

        frmWarning dialog(nullptr);
        auto* check = dialog.findChild<QCheckBox*>("chkDontShow");
        QCOMPARE(check->isChecked(), before == QLatin1String("1"));
        check->setChecked(tick);
        dialog.show();
        if (close == QLatin1String("frame"))
            dialog.close();
        else if (close == QLatin1String("escape"))
            QTest::keyClick(&dialog, Qt::Key_Escape);
        else
            QTest::mouseClick(dialog.findChild<QPushButton*>(close), Qt::LeftButton);

        QVERIFY(!dialog.isVisible());
        QCOMPARE(Flags().ncWarningCancel, cancel);
        QCOMPARE(stored(), after);
    }

    void aSettingThatIsNoNumberKeepsTheDialogFromOpening()
    {
        SaveSetting(kAppName, kNcCodeDialogSection, kDontShowKey, QStringLiteral("yes please"));
        QVERIFY_THROWS_EXCEPTION(numeric::NumberError, frmWarning(nullptr));
    }
};

QTEST_MAIN(tst_frmWarning)
#include "tst_frmWarning.moc"
