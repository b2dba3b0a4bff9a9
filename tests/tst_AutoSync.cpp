#include "AutoSyncDocuments.h"
#include "TempStores.h"

#include "addin/host/Document.h"
#include "addin/host/HostError.h"
#include "addin/host/Operation.h"
#include "addin/host/Operations.h"
#include "addin/settings/SettingsStore.h"
#include "addin/ui/UiServices.h"
#include "autosync/frmAutoSync.h"
#include "autosync/modAutoSync.h"
#include "feldra/Host.h"
#include "feldra/MessageBoxRecorder.h"

#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <stdexcept>

using namespace marelon;
using namespace autosynctest;

namespace {

const QString kLSeriesMessage = QStringLiteral("Auto Sync is only supported for L series machines at this time.");
constexpr int kL5 = 7; // "L5-16/20"

// "B=21h2s2": operation B on tool 21 ("T21"), head 2, spindle 2; "=0" no tool
// named, "=-" no "ToolID" at all; "c153", "p207" set the technology type.
OperationPlan Parse(const QString& token)
{
    static const QRegularExpression pattern(QStringLiteral("^([^=]+)=(-|\\d+)(h\\d)?(s\\d)?([cp]\\d+)?$"));
    const auto match = pattern.match(token);
    if (!match.hasMatch())
        throw std::invalid_argument("not an operation: " + token.toStdString());
    OperationPlan plan;
    plan.name = match.captured(1);
    if (match.captured(2) != QLatin1String("-"))
        plan.toolId = match.captured(2) == QLatin1String("0")
                          ? QString()
                          : QStringLiteral("T%1").arg(match.captured(2).toInt(), 2, 10, QLatin1Char('0'));
    if (match.hasCaptured(3))
        plan.headId = match.captured(3).mid(1).toInt();
    if (match.hasCaptured(4))
        plan.spindleId = match.captured(4).mid(1).toInt();
    if (match.hasCaptured(5))
        plan.type = match.captured(5).mid(1).toInt();
    return plan;
}

DocumentBuilder Operations(const QString& tokens)
{
    DocumentBuilder builder;
    builder.StandardTools();
    for (const QString& token : tokens.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        builder.Operation(Parse(token));
    return builder;
}

// The synchronisations without placements and indices: "G821 B/Back, G820 D/Back".
QString Ties(const feldra::DocumentData& document)
{
    static const QRegularExpression node(QStringLiteral(" P\\d+ E\\d+"));
    QStringList ties;
    for (QString sync : SyncsOf(document))
        ties.append(sync.remove(node).replace(QStringLiteral(" / "), QStringLiteral("/")));
    return ties.join(QStringLiteral(", "));
}

} // namespace

class tst_AutoSync : public QObject {
    Q_OBJECT

    std::unique_ptr<TempStores> stores_;
    std::shared_ptr<feldra::MessageBoxRecorder> messages_ = std::make_shared<feldra::MessageBoxRecorder>();
    std::unique_ptr<feldra::Host> host_;
    std::shared_ptr<feldra::DocumentState> document_;

    std::shared_ptr<host::Application> open(std::shared_ptr<feldra::DocumentState> document)
    {
        document_ = std::move(document);
        host_->Activate(document_);
        return host_->ApplicationFor(QStringLiteral("Marelon.Connect"));
    }
    std::unique_ptr<frmAutoSync> dialog(std::shared_ptr<feldra::DocumentState> document)
    {
        return std::make_unique<frmAutoSync>(open(std::move(document)));
    }
    static QListWidget& list(frmAutoSync& form) { return *form.findChild<QListWidget*>("lstOperations"); }
    static QComboBox& machines(frmAutoSync& form) { return *form.findChild<QComboBox*>("cmbMachineName"); }
    static QStringList texts(QListWidget& list)
    {
        QStringList texts;
        for (int i = 0; i < list.count(); ++i)
            texts.append(list.item(i)->text());
        return texts;
    }
    // OK on an L-series machine, with the list in the document's order.
    void autoSync(std::shared_ptr<feldra::DocumentState> document)
    {
        auto form = dialog(std::move(document));
        machines(*form).setCurrentIndex(kL5);
        form->cmdOK_Click();
    }
    // An operation on tool 1 at the end of the document, behind the dialog's back.
    void addOperation(const QString& name, int id)
    {
        auto operation = Operations(name + QStringLiteral("=1")).Build()->data.operations.first();
        operation->id = id;
        document_->data.operations.append(operation);
    }
    static QString storedMachine()
    {
        return GetSetting(kAppName, kAutoSyncSection, kMachineNameKey, QStringLiteral("none"));
    }
    // An L5 part: main-spindle work, a back-tool run of head 1, cut-off, pick-up and back-spindle work.
    static std::shared_ptr<feldra::DocumentState> part()
    {
        return Operations("Face=2 Turn=1 Drill=21 Bore=22 Groove=4 Pick=0s2p207 Cut=5c153 Back=0s2")
            .Sync(1, {{3, 3, 7}, {8, 3, 7}})
            .Sync(0, {{2, 1, 8}})
            .Build();
    }

private slots:
    void initTestCase() { InstallUiServices(nullptr, messages_); }
    void cleanupTestCase() { RemoveUiServices(); }
    void init()
    {
        stores_.reset(); // the old store's end would unset the new one's folders
        stores_ = std::make_unique<TempStores>();
        host_ = std::make_unique<feldra::Host>();
        messages_->Clear();
    }

    void savedMachinePosition_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("shown");
        QTest::newRow("L4 at 6") << "6" << "L4-25/32";
        QTest::newRow("last") << "12" << "R04-VI";
        QTest::newRow("past the end") << "13" << "B12";
        QTest::newRow("negative") << "-1" << "B12";
        QTest::newRow("not a position") << "6.5" << "B12";
        QTest::newRow("not a number") << "L4" << "B12";
    }
    void savedMachinePosition()
    {
        QFETCH(QString, stored);
        QFETCH(QString, shown);
        SaveSetting(kAppName, kAutoSyncSection, kMachineNameKey, stored);
        auto form = dialog(part());
        QCOMPARE(machines(*form).currentText(), shown);
        QCOMPARE(texts(list(*form)), OrderOf(document_->data));
    }

    void moves_data()
    {
        QTest::addColumn<QList<int>>("selected");
        QTest::addColumn<QString>("moves");
        QTest::addColumn<QString>("order");
        QTest::addColumn<QList<int>>("selectedAfter");
        QTest::newRow("two up twice reach the top") << QList<int>{2, 3} << "up up" << "CDABE" << QList<int>{0, 1};
        QTest::newRow("first two up: exchanged, only the first selected")
            << QList<int>{0, 1} << "up" << "BACDE" << QList<int>{0};
        QTest::newRow("last two down: exchanged, only the last selected")
            << QList<int>{3, 4} << "down" << "ABCED" << QList<int>{4};
        QTest::newRow("apart down twice, the lower one stops at the end")
            << QList<int>{1, 3} << "down down" << "ACEBD" << QList<int>{3, 4};
    }
    void moves()
    {
        QFETCH(QList<int>, selected);
        QFETCH(QString, moves);
        QFETCH(QString, order);
        QFETCH(QList<int>, selectedAfter);
        auto form = dialog(Operations("A=1 B=1 C=1 D=1 E=1").Build());
        for (int i : selected)
            list(*form).item(i)->setSelected(true);
        for (const QString& move : moves.split(QLatin1Char(' ')))
            QTest::mouseClick(form->findChild<QPushButton*>(move == QLatin1String("up") ? "cmdUp" : "cmdDown"),
                              Qt::LeftButton);
        QList<int> selectedNow;
        for (int i = 0; i < list(*form).count(); ++i)
            if (list(*form).item(i)->isSelected())
                selectedNow.append(i);
        QCOMPARE(texts(list(*form)).join(QString()), order);
        QCOMPARE(selectedNow, selectedAfter);
        QCOMPARE(OrderOf(document_->data).join(QString()), QStringLiteral("ABCDE")); // only OK changes the document
    }

    // The user's clicks after a move: an entry the move took out of the
    // selection stays out, whatever the next click is.
    void clicksAfterAMove_data()
    {
        QTest::addColumn<QString>("move");
        QTest::addColumn<QString>("click"); // the click after the move: a modifier and a row
        QTest::addColumn<QList<int>>("selectedAfter");
        // A B C D E; D and B selected (click D, Ctrl-click B), then moved.
        QTest::newRow("up, then shift-click") << "up" << "shift 0" << QList<int>{0, 1, 2};
        QTest::newRow("up, then ctrl-click") << "up" << "ctrl 4" << QList<int>{0, 2, 4};
        QTest::newRow("down, then shift-click") << "down" << "shift 0" << QList<int>{0, 1, 2, 4};
        QTest::newRow("up, then click") << "up" << "none 4" << QList<int>{4};
    }
    void clicksAfterAMove()
    {
        QFETCH(QString, move);
        QFETCH(QString, click);
        QFETCH(QList<int>, selectedAfter);
        auto form = dialog(Operations("A=1 B=1 C=1 D=1 E=1").Build());
        form->show();
        QListWidget& operations = list(*form);
        const auto clickRow = [&](Qt::KeyboardModifiers modifiers, int row) {
            QTest::mouseClick(operations.viewport(), Qt::LeftButton, modifiers,
                              operations.visualItemRect(operations.item(row)).center());
        };
        clickRow(Qt::NoModifier, 3);
        clickRow(Qt::ControlModifier, 1);
        QTest::mouseClick(form->findChild<QPushButton*>(move == QLatin1String("up") ? "cmdUp" : "cmdDown"),
                          Qt::LeftButton);
        const QStringList parts = click.split(QLatin1Char(' '));
        const Qt::KeyboardModifiers modifiers = parts[0] == QLatin1String("shift") ? Qt::ShiftModifier
            : parts[0] == QLatin1String("ctrl")                                     ? Qt::ControlModifier
                                                                                    : Qt::NoModifier;
        clickRow(modifiers, parts[1].toInt());
        QList<int> selectedNow;
        for (int i = 0; i < operations.count(); ++i)
            if (operations.item(i)->isSelected())
                selectedNow.append(i);
        QCOMPARE(selectedNow, selectedAfter);
    }

    // Escape is Cancel: the dialog closes and neither the document nor the
    // machine choice changes.
    void escapeCancels()
    {
        SaveSetting(kAppName, kAutoSyncSection, kMachineNameKey, QStringLiteral("2"));
        auto form = dialog(part());
        const QStringList syncsBefore = SyncsOf(document_->data);
        form->show();
        machines(*form).setCurrentIndex(kL5);
        list(*form).item(7)->setSelected(true);
        form->cmdUp_Click();
        QTest::keyClick(&list(*form), Qt::Key_Escape);
        QVERIFY(!form->isVisible());
        QCOMPARE(form->result(), int(QDialog::Rejected));
        QCOMPARE(OrderOf(document_->data).mid(5), (QStringList{"Pick", "Cut", "Back"}));
        QCOMPARE(SyncsOf(document_->data), syncsBefore);
        QCOMPARE(storedMachine(), QStringLiteral("2"));
        QVERIFY(messages_->Messages().isEmpty());
    }

    void onlyLSeriesMachinesSync_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<bool>("supported");
        for (int position = 0; position < AutoSyncMachines().size(); ++position) {
            const QString machine = AutoSyncMachines()[position];
            const bool lSeries = machine == QLatin1String("L3-16/20") || machine == QLatin1String("L4-25/32")
                                 || machine == QLatin1String("L5-16/20");
            QTest::newRow(qPrintable(machine)) << position << lSeries;
        }
    }
    void onlyLSeriesMachinesSync()
    {
        QFETCH(int, position);
        QFETCH(bool, supported);
        SaveSetting(kAppName, kAutoSyncSection, kMachineNameKey, QStringLiteral("2"));
        auto form = dialog(part());
        const QStringList syncsBefore = SyncsOf(document_->data);
        form->show();
        machines(*form).setCurrentIndex(position);
        list(*form).item(7)->setSelected(true); // "Back" one place up
        form->cmdUp_Click();
        QTest::mouseClick(form->findChild<QPushButton*>("cmdOK"), Qt::LeftButton);

        QVERIFY(!form->isVisible());
        if (supported) {
            QCOMPARE(OrderOf(document_->data).mid(5), (QStringList{"Pick", "Back", "Cut"}));
            QVERIFY(SyncsOf(document_->data) != syncsBefore);
            QCOMPARE(storedMachine(), QString::number(position));
            QVERIFY(messages_->Messages().isEmpty());
        } else {
            QCOMPARE(messages_->Messages().size(), 1);
            QCOMPARE(messages_->Last().prompt, kLSeriesMessage);
            QCOMPARE(messages_->Last().title, kDefaultTitle);
            QCOMPARE(OrderOf(document_->data).mid(5), (QStringList{"Pick", "Cut", "Back"}));
            QCOMPARE(SyncsOf(document_->data), syncsBefore);
            QCOMPARE(storedMachine(), QStringLiteral("2"));
        }
    }

    // The rules in a few readable cases; the oracle holds them on many documents.
    void backToolRuns_data()
    {
        QTest::addColumn<QString>("operations"); // in list order
        QTest::addColumn<QString>("ties");
        QTest::newRow("one run ends at the next other tool")
            << "Back=0s2 A=1 B=21 C=22 D=3" << "G821 B/Back, G820 D/Back";
        QTest::newRow("a run closing the list ends at itself") << "Back=0s2 A=1 B=21" << "G821 B/Back, G820 B/Back";
        QTest::newRow("head 2 last leaves the run open: nothing") << "Back=0s2 A=21 B=22h2" << "";
        QTest::newRow("head 2 inside a run neither ends nor starts")
            << "Back=0s2 A=21 B=22h2 C=23 D=1" << "G821 A/Back, G820 D/Back";
        QTest::newRow("no back-spindle operation: second node empty") << "A=1 B=21 C=2" << "G821 B/-, G820 C/-";
    }
    void backToolRuns()
    {
        QFETCH(QString, operations);
        QFETCH(QString, ties);
        autoSync(Operations(operations).Build());
        QCOMPARE(Ties(document_->data), ties);
    }

    void cutoffAndPickup_data()
    {
        QTest::addColumn<QString>("operations");
        QTest::addColumn<QStringList>("syncs");
        QTest::addColumn<QString>("message");
        QTest::newRow("the last of each kind, type 398 and 207")
            << "Cut1=5c153 Pick1=0s2p207 Cut2=5c398 Pick2=0s2p207 Face=2"
            << QStringList{"G811 Cut2 P4 E0 / Pick2 P1 E0", "G810 Cut2 P2 E1 / Pick2 P2 E1"} << "";
        QTest::newRow("no cut-off") << "Pick=0s2p207 Face=2" << QStringList{}
                                    << "The document has no cut-off operation, so no cut-off and pick-up "
                                       "synchronisations were made.";
        QTest::newRow("no pick-up") << "Cut=5c398" << QStringList{}
                                    << "The document has no pick-up operation, so no cut-off and pick-up "
                                       "synchronisations were made.";
        QTest::newRow("neither") << "Face=2" << QStringList{}
                                 << "The document has neither a cut-off nor a pick-up operation, so no cut-off "
                                    "and pick-up synchronisations were made.";
    }
    void cutoffAndPickup()
    {
        QFETCH(QString, operations);
        QFETCH(QStringList, syncs);
        QFETCH(QString, message);
        autoSync(Operations(operations).Sync(3, {{1, 4, 0}}).Build());
        QCOMPARE(SyncsOf(document_->data), syncs);
        if (message.isEmpty()) {
            QVERIFY(messages_->Messages().isEmpty());
        } else {
            QCOMPARE(messages_->Messages().size(), 1);
            QCOMPARE(messages_->Last().prompt, message);
        }
        QCOMPARE(storedMachine(), QString::number(kL5));
    }

    // Nodes beyond the count stay empty (Auto Sync itself ties two).
    void syncNodes_data()
    {
        QTest::addColumn<int>("nodesCount");
        QTest::addColumn<QString>("sync");
        QTest::newRow("three nodes") << 3 << "G821 A P1 E1 / B P2 E2 / C P3 E3";
        QTest::newRow("four nodes") << 4 << "G821 A P1 E1 / B P2 E2 / C P3 E3 / D P4 E4";
    }
    void syncNodes()
    {
        QFETCH(int, nodesCount);
        QFETCH(QString, sync);
        auto document = open(Operations("A=1 B=1 C=1 D=1").Build())->ActiveDocument();
        AutoSync autoSync(document, OrderOf(document_->data));
        std::array<host::SyncNode, 4> nodes;
        for (int i = 0; i < 4; ++i)
            nodes[i] = {i + 1, document->Operations()->Item(i + 1), 0, i + 1, 0};
        autoSync.MakeSync(QStringLiteral("G821"), int16_t(nodesCount), nodes);
        QCOMPARE(SyncsOf(document_->data), QStringList{sync});
    }

    // The dialog's look-ups go by its list as it stands, against the document as it is now.
    void lookUpsFollowTheList()
    {
        auto form = dialog(Operations("A=21 Back1=0s2 Back2=0s3").Sync(1, {{1, 3, 2}}).Sync(1, {{7, 3, 99}}).Build());
        list(*form).item(2)->setSelected(true);
        form->cmdUp_Click();
        addOperation(QStringLiteral("Late"), 50); // after the list was filled
        const auto operations = host_->DocumentObject(document_)->Operations();
        QCOMPARE(form->GetNextSubSpindleOP(operations->Item(1))->Name(), QStringLiteral("Back2"));
        QVERIFY(!form->GetNextSubSpindleOP(operations->Item(4))); // "Late" is not in the list
        QCOMPARE(form->GetNextElementIndex(nullptr), 3.0); // the node of a deleted operation does not count
        QCOMPARE(form->GetNextElementIndex(operations->Item(2)), 3.0);
    }

    // Cancel, or OK on a list that no longer describes the document, changes nothing.
    void nothingChangesWithoutAFittingList_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<QString>("message"); // empty: none
        const QString outdated = QStringLiteral("The document's operations have changed since Auto Sync was "
                                                "opened. Open Auto Sync again to put them in order.");
        QTest::newRow("cancelled") << "cancel" << "";
        QTest::newRow("renamed") << "rename" << outdated;
        QTest::newRow("added") << "add" << outdated;
        QTest::newRow("two operations of one name")
            << "duplicate"
            << "Auto Sync tells operations apart by their names, and more than one operation is named \"Turn\". "
               "Give each operation a name of its own and open Auto Sync again.";
    }
    void nothingChangesWithoutAFittingList()
    {
        QFETCH(QString, change);
        QFETCH(QString, message);
        auto form = dialog(part());
        auto& operations = document_->data.operations;
        if (change == QLatin1String("rename"))
            operations[2]->name = QStringLiteral("Drill 2");
        else if (change == QLatin1String("add"))
            addOperation(QStringLiteral("Extra"), 60);
        else if (change == QLatin1String("duplicate"))
            operations[0]->name = QStringLiteral("Turn");
        const QStringList orderBefore = OrderOf(document_->data);
        const QStringList syncsBefore = SyncsOf(document_->data);
        machines(*form).setCurrentIndex(kL5);
        list(*form).item(7)->setSelected(true);
        form->cmdUp_Click();
        if (change == QLatin1String("cancel"))
            form->cmdCancel_Click();
        else
            form->cmdOK_Click();
        QVERIFY(!form->isVisible());
        QCOMPARE(messages_->Messages().size(), message.isEmpty() ? 0 : 1);
        if (!message.isEmpty())
            QCOMPARE(messages_->Last().prompt, message);
        QCOMPARE(OrderOf(document_->data), orderBefore);
        QCOMPARE(SyncsOf(document_->data), syncsBefore);
        QCOMPARE(storedMachine(), QStringLiteral("none"));
    }

    void hostFailures_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<bool>("unchanged"); // the failure comes before the first change
        QTest::newRow("reading a name") << "Operation.Name" << true;
        QTest::newRow("reading a parameter value") << "TechnologyParameter.Value" << true;
        QTest::newRow("rearranging") << "Operations.Rearrange" << true;
        QTest::newRow("removing a synchronisation") << "Syncs.Remove" << false;
        QTest::newRow("adding a synchronisation") << "Syncs.Add" << false;
    }
    void hostFailures()
    {
        QFETCH(QString, operation);
        QFETCH(bool, unchanged);
        auto form = dialog(part());
        const QStringList syncsBefore = SyncsOf(document_->data);
        machines(*form).setCurrentIndex(kL5);
        list(*form).item(7)->setSelected(true);
        form->cmdUp_Click();
        host_->Faults().Fail(operation);
        QVERIFY_THROWS_EXCEPTION(host::HostError, form->cmdOK_Click());
        host_->Faults().HealAll();
        QCOMPARE(storedMachine(), QStringLiteral("none"));
        if (unchanged) {
            QCOMPARE(OrderOf(document_->data), OrderOf(part()->data));
            QCOMPARE(SyncsOf(document_->data), syncsBefore);
        }
    }
};

QTEST_MAIN(tst_AutoSync)
#include "tst_AutoSync.moc"
