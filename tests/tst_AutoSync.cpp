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
#include <QGroupBox>
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

    void formShowsMachinesAndOperations()
    {
        auto form = dialog(part());
        QCOMPARE(form->windowTitle(), QStringLiteral("Auto Sync - Operation Order"));
        QCOMPARE(form->findChild<QGroupBox*>("fraMachineName")->title(), QStringLiteral("Machine Name"));
        QStringList shown;
        for (int i = 0; i < machines(*form).count(); ++i)
            shown.append(machines(*form).itemText(i));
        QCOMPARE(shown, AutoSyncMachines());
        QCOMPARE(shown.size(), 13);
        QCOMPARE(shown.first(), QStringLiteral("B12"));
        QCOMPARE(shown.last(), QStringLiteral("R04-VI"));
        QStringList operations;
        for (int i = 0; i < list(*form).count(); ++i)
            operations.append(list(*form).item(i)->text());
        QCOMPARE(operations, OrderOf(document_->data));
        QCOMPARE(list(*form).selectionMode(), QAbstractItemView::ExtendedSelection);
    }

    void savedMachinePosition_data()
    {
        QTest::addColumn<QString>("stored"); // empty: nothing stored
        QTest::addColumn<QString>("shown");
        QTest::newRow("nothing stored") << "" << "B12";
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
        if (!stored.isEmpty())
            SaveSetting(kAppName, kAutoSyncSection, kMachineNameKey, stored);
        auto form = dialog(part());
        QCOMPARE(machines(*form).currentText(), shown);
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
        QTest::newRow("first up stays") << QList<int>{0} << "up" << "ABCDE" << QList<int>{0};
        QTest::newRow("last down stays") << QList<int>{4} << "down" << "ABCDE" << QList<int>{4};
        QTest::newRow("last two down: exchanged, only the last selected")
            << QList<int>{3, 4} << "down" << "ABCED" << QList<int>{4};
        QTest::newRow("apart down twice, the lower one stops at the end")
            << QList<int>{1, 3} << "down down" << "ACEBD" << QList<int>{3, 4};
        QTest::newRow("down and up again") << QList<int>{1} << "down up" << "ABCDE" << QList<int>{1};
        QTest::newRow("nothing selected") << QList<int>{} << "up down" << "ABCDE" << QList<int>{};
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
        QString texts;
        QList<int> selectedNow;
        for (int i = 0; i < list(*form).count(); ++i) {
            texts += list(*form).item(i)->text();
            if (list(*form).item(i)->isSelected())
                selectedNow.append(i);
        }
        QCOMPARE(texts, order);
        QCOMPARE(selectedNow, selectedAfter);
        QCOMPARE(OrderOf(document_->data).join(QString()), QStringLiteral("ABCDE")); // only OK changes the document
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
            QCOMPARE(messages_->Last().icon, host::MsgIcon::None);
            QCOMPARE(messages_->Last().buttons, host::MsgButtons::OK);
            QCOMPARE(OrderOf(document_->data).mid(5), (QStringList{"Pick", "Cut", "Back"}));
            QCOMPARE(SyncsOf(document_->data), syncsBefore);
            QCOMPARE(storedMachine(), QStringLiteral("2"));
        }
    }

    void cancelChangesNothing()
    {
        auto form = dialog(part());
        const QStringList syncsBefore = SyncsOf(document_->data);
        machines(*form).setCurrentIndex(kL5);
        list(*form).item(3)->setSelected(true);
        form->cmdDown_Click();
        form->cmdCancel_Click();
        QVERIFY(!form->isVisible());
        QCOMPARE(OrderOf(document_->data), OrderOf(part()->data));
        QCOMPARE(SyncsOf(document_->data), syncsBefore);
        QCOMPARE(storedMachine(), QStringLiteral("none"));
    }

    void backToolRuns_data()
    {
        QTest::addColumn<QString>("operations"); // in list order
        QTest::addColumn<QString>("ties");
        QTest::newRow("one run ends at the next other tool")
            << "Back=0s2 A=1 B=21 C=22 D=3" << "G821 B/Back, G820 D/Back";
        QTest::newRow("a run closing the list ends at itself") << "Back=0s2 A=1 B=21" << "G821 B/Back, G820 B/Back";
        QTest::newRow("a longer run closing the list ends at its last")
            << "Back=0s2 A=1 B=21 C=22" << "G821 B/Back, G820 C/Back";
        QTest::newRow("head 2 only: no run") << "Back=0s2 A=1 B=21h2 C=22h2 D=3" << "";
        QTest::newRow("head 2 last leaves the run open: nothing") << "Back=0s2 A=21 B=22h2" << "";
        QTest::newRow("head 2 inside a run neither ends nor starts")
            << "Back=0s2 A=21 B=22h2 C=23 D=1" << "G821 A/Back, G820 D/Back";
        QTest::newRow("two runs") << "Back=0s2 A=21 B=1 C=22 D=23 E=2"
                                  << "G821 A/Back, G820 B/Back, G821 C/Back, G820 E/Back";
        QTest::newRow("a tool id of no tool ends a run") << "Back=0s2 A=21 B=99 C=1" << "G821 A/Back, G820 B/Back";
        QTest::newRow("no tool id ends a run") << "Back=0s2 A=21 B=- C=1" << "G821 A/Back, G820 B/Back";
        QTest::newRow("no back-spindle operation: second node empty") << "A=1 B=21 C=2" << "G821 B/-, G820 C/-";
        QTest::newRow("the first back-spindle operation of the whole list")
            << "A=21 B=1 Back=0s2 Later=0s3" << "G821 A/Back, G820 B/Back";
    }
    void backToolRuns()
    {
        QFETCH(QString, operations);
        QFETCH(QString, ties);
        autoSync(Operations(operations).Build());
        QCOMPARE(Ties(document_->data), ties);
    }

    void placementsAndFreshIndices()
    {
        autoSync(Operations("Back=0s2 A=21 B=1 Cut=5c153 Pick=0s2p207").Sync(2, {{1, 1, 40}}).Build());
        QCOMPARE(SyncsOf(document_->data), (QStringList{
                                                "G821 A P3 E0 / Back P3 E0",
                                                "G820 B P3 E1 / Back P3 E1",
                                                "G811 Cut P4 E2 / Pick P1 E2",
                                                "G810 Cut P2 E3 / Pick P2 E3",
                                            }));
        QVERIFY(messages_->Messages().isEmpty());
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

    void syncTypes_data()
    {
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<int>("nodesCount");
        QTest::addColumn<QString>("sync");
        QTest::newRow("first entry of the name") << QStringList{"M77", "G821", "G821"} << 2
                                                 << "G821 A P1 E1 / B P2 E2";
        QTest::newRow("no entry: type 0") << QStringList{"M77"} << 2 << "(0) A P1 E1 / B P2 E2";
        QTest::newRow("three nodes") << QStringList{"G821"} << 3 << "G821 A P1 E1 / B P2 E2 / C P3 E3";
        QTest::newRow("four nodes") << QStringList{"G821"} << 4 << "G821 A P1 E1 / B P2 E2 / C P3 E3 / D P4 E4";
    }
    void syncTypes()
    {
        QFETCH(QStringList, entries);
        QFETCH(int, nodesCount);
        QFETCH(QString, sync);
        auto application = open(Operations("A=1 B=1 C=1 D=1").SetupEntries(entries).Build());
        auto document = application->ActiveDocument();
        AutoSync autoSync(document, OrderOf(document_->data));
        std::array<host::SyncNode, 4> nodes;
        for (int i = 0; i < 4; ++i)
            nodes[i] = {i + 1, document->Operations()->Item(i + 1), 0, i + 1, 0};
        autoSync.MakeSync(QStringLiteral("G821"), int16_t(nodesCount), nodes);
        QCOMPARE(SyncsOf(document_->data), QStringList{sync});
    }

    void nextElementIndex_data()
    {
        QTest::addColumn<QList<int>>("indices"); // of nodes on operation A; 99 marks a deleted operation's node
        QTest::addColumn<double>("next");
        QTest::newRow("no synchronisation") << QList<int>{} << 0.0;
        QTest::newRow("0, 1 and 4") << QList<int>{0, 1, 4} << 5.0;
        QTest::newRow("a deleted operation's node does not count") << QList<int>{2, 99} << 3.0;
        QTest::newRow("negative indices") << QList<int>{-3} << 0.0;
    }
    void nextElementIndex()
    {
        QFETCH(QList<int>, indices);
        QFETCH(double, next);
        DocumentBuilder builder = Operations("A=1 B=21");
        for (int index : indices)
            builder.Sync(1, {index == 99 ? NodeSpec{7, 3, 99} : NodeSpec{1, 3, index}});
        auto form = dialog(builder.Build());
        auto b = host_->DocumentObject(document_)->Operations()->Item(2);
        QCOMPARE(form->GetNextElementIndex(b), next);
        QCOMPARE(form->GetNextElementIndex(nullptr), next);
    }

    void nextSubSpindleOperation_data()
    {
        QTest::addColumn<QString>("operations");
        QTest::addColumn<QString>("moveUp"); // the entry moved one place up first
        QTest::addColumn<QString>("main");
        QTest::addColumn<QString>("found"); // empty: nothing
        QTest::newRow("after the main operation") << "A=21 B=1 Back=0s2" << "" << "A" << "Back";
        QTest::newRow("the first of the list, not the document")
            << "A=21 Back1=0s2 Back2=0s3" << "Back2" << "A" << "Back2";
        QTest::newRow("before the main operation counts too") << "Back=0s2 A=21" << "" << "A" << "Back";
        QTest::newRow("no back-spindle operation") << "A=21 B=1" << "" << "A" << "";
        QTest::newRow("an operation the list does not name") << "A=21 Back=0s2" << "" << "Late" << "";
    }
    void nextSubSpindleOperation()
    {
        QFETCH(QString, operations);
        QFETCH(QString, moveUp);
        QFETCH(QString, main);
        QFETCH(QString, found);
        auto form = dialog(Operations(operations).Build());
        if (!moveUp.isEmpty()) {
            list(*form).findItems(moveUp, Qt::MatchExactly).first()->setSelected(true);
            form->cmdUp_Click();
        }
        addOperation(QStringLiteral("Late"), 50); // after the list was filled
        std::shared_ptr<host::Operation> mainOperation;
        const auto operationsNow = host_->DocumentObject(document_)->Operations();
        for (int j = 1; j <= operationsNow->Count(); ++j)
            if (operationsNow->Item(j)->Name() == main)
                mainOperation = operationsNow->Item(j);
        const auto result = form->GetNextSubSpindleOP(mainOperation);
        QCOMPARE(result ? result->Name() : QString(), found);
    }

    void listNoLongerFitsTheDocument_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<QString>("message");
        const QString outdated = QStringLiteral("The document's operations have changed since Auto Sync was "
                                                "opened. Open Auto Sync again to put them in order.");
        QTest::newRow("renamed") << "rename" << outdated;
        QTest::newRow("added") << "add" << outdated;
        QTest::newRow("deleted") << "delete" << outdated;
        QTest::newRow("two operations of one name")
            << "duplicate"
            << "Auto Sync tells operations apart by their names, and more than one operation is named \"Turn\". "
               "Give each operation a name of its own and open Auto Sync again.";
    }
    void listNoLongerFitsTheDocument()
    {
        QFETCH(QString, change);
        QFETCH(QString, message);
        auto form = dialog(part());
        auto& operations = document_->data.operations;
        if (change == QLatin1String("rename"))
            operations[2]->name = QStringLiteral("Drill 2");
        else if (change == QLatin1String("add"))
            addOperation(QStringLiteral("Extra"), 60);
        else if (change == QLatin1String("delete"))
            operations.removeAt(2);
        else
            operations[0]->name = QStringLiteral("Turn");
        const QStringList orderBefore = OrderOf(document_->data);
        const QStringList syncsBefore = SyncsOf(document_->data);
        machines(*form).setCurrentIndex(kL5);
        list(*form).item(7)->setSelected(true);
        form->cmdUp_Click();
        form->cmdOK_Click();
        QVERIFY(!form->isVisible());
        QCOMPARE(messages_->Messages().size(), 1);
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
        QTest::newRow("reading a technology type") << "Technology.TechnologyType" << true;
        QTest::newRow("reading a parameter value") << "TechnologyParameter.Value" << true;
        QTest::newRow("reading the tools") << "Tools.Item" << true;
        QTest::newRow("reading the synchronisation types") << "SetupEntry.Name" << true;
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

    void twiceGivesTheSameSynchronisations()
    {
        autoSync(part());
        const QStringList order = OrderOf(document_->data);
        const QStringList syncs = SyncsOf(document_->data);
        QCOMPARE(syncs.size(), 4);
        auto again = dialog(document_);
        machines(*again).setCurrentIndex(kL5);
        again->cmdOK_Click();
        QCOMPARE(OrderOf(document_->data), order);
        QCOMPARE(SyncsOf(document_->data), syncs);
    }
};

QTEST_MAIN(tst_AutoSync)
#include "tst_AutoSync.moc"
