// The undo history of a Feldra document, driven through the facade as an
// add-in writes: each kind of change undone and redone exactly, the records
// the add-ins hold kept, no step for no change, the saved state and the
// marker, and when undo is refused.
#include "FeldraFixture.h"
#include "feldra/DocumentFile.h"
#include "addin/host/Simulation.h"
#include "addin/host/Technology.h"
#include "addin/host/TechnologyParameter.h"
#include "addin/host/TechnologyUtility.h"
#include "addin/host/MachineSetup.h"

#include <QApplication>
#include <QDialog>
#include <QTest>

using fixture::LatheHost;
using Act = std::function<void(LatheHost&)>;
Q_DECLARE_METATYPE(Act)

namespace {

QByteArray Text(const LatheHost& h) { return feldra::WriteDocument(h.doc->data); }

// Runs act as one command of the host.
void Command(LatheHost& h, const Act& act, const QString& name = QStringLiteral("Test"))
{
    const feldra::Host::Step step(h.host, name);
    act(h);
}

QString Refusal(const std::function<void()>& action)
{
    try {
        action();
    } catch (const host::HostError& error) {
        return error.Description();
    }
    return {};
}

// An add-in that answers every host event by writing into the document.
struct Writer : host::ApplicationEvents, host::SimulationEvents, host::TechnologyUtilityEvents {
    std::shared_ptr<host::Application> app;
    int writes = 0;
    void write() { app->ActiveDocument()->MachineSetup()->setMachineSetupName(QString::number(++writes)); }
    void AfterDocumentOpen(const QString&) override { write(); }
    void AfterNewDocumentOpen() override { write(); }
    void BeforeCommandRun(int, int, bool&) override { write(); }
    void OnBegin() override { write(); }
    void OnOperationStart(std::shared_ptr<host::Operation>) override { write(); }
    void OnEdit(std::shared_ptr<host::Technology> technology, int, bool&, int&) override
    {
        technology->Parameter("797")->setCaption(QStringLiteral("Relabelled"));
    }
};

struct OpenCounter : host::ApplicationEvents {
    int opened = 0;
    void AfterDocumentOpen(const QString&) override { ++opened; }
};

} // namespace

class tst_DocumentHistory : public QObject {
    Q_OBJECT

private slots:
    void everyKindOfChangeIsUndoneAndRedone_data()
    {
        QTest::addColumn<Act>("act");
        const auto row = [](const char* name, Act act) { QTest::newRow(name) << act; };
        row("a tool's shifts", [](LatheHost& h) {
            h.tool(1)->setXShift(-12.5);
            h.tool(1)->setZShift(3);
        });
        row("a tool added", [](LatheHost& h) { h.document()->Tools()->Add(17); });
        row("setup entries reordered", [](LatheHost& h) {
            auto entries = h.setup()->SetupEntries();
            auto first = entries->Item(1);
            entries->Remove(1);
            entries->Add(first);
        });
        row("setup entries all removed", [](LatheHost& h) {
            auto entries = h.setup()->SetupEntries();
            while (entries->Count() > 0)
                entries->Remove(1);
        });
        row("machine code and setup name", [](LatheHost& h) {
            h.setup()->setMachineCode("7");
            h.setup()->setMachineSetupName("Standard");
        });
        row("synchronisations replaced", [](LatheHost& h) {
            auto syncs = h.document()->Syncs();
            syncs->Remove(1);
            std::array<host::SyncNode, 4> nodes{};
            nodes[0] = {4, h.op(2), 0, 1, 0};
            nodes[1] = {1, h.op(3), 0, 1, 0};
            syncs->Add(2, nodes);
        });
        row("operations rearranged", [](LatheHost& h) { h.document()->Operations()->Rearrange({h.op(3), h.op(1), h.op(2)}, 1, false); });
        row("work planes added and the active one changed", [](LatheHost& h) {
            auto planes = h.document()->WorkPlanes();
            planes->Add("Lathe Main");
            h.document()->setActiveWorkPlane(planes->Item("YZX"));
        });
        row("a custom property added to an operation", [](LatheHost& h) {
            h.op(3)->CustomProperties()->Add("Z2Position", "Z2 Position", 5, 12.5);
        });
        row("a stock and its outline", [](LatheHost& h) { h.addStock()->setSpindle(h.setup()->Spindles()->Item(2)); });
        row("a component moved", [](LatheHost& h) {
            auto component = h.model()->Components()->Item("SubSpindle");
            auto position = component->Position();
            position->setZ(150);
            component->MoveTo(position);
        });
        row("a parameter relabelled", [](LatheHost& h) {
            h.op(1)->Technology()->Parameter("797")->setCaption("Spindle");
        });
        row("a property changed, then taken out", [](LatheHost& h) {
            auto properties = h.op(2)->CustomProperties();
            properties->Item("Comment")->setValue(QStringLiteral("changed"));
            properties->Remove("Comment");
        });
        row("a command stopped by a failing host call", [](LatheHost& h) {
            h.tool(2)->setXShift(4);
            h.host.Faults().Fail("Tools.Add");
            try {
                h.document()->Tools()->Add(16);
            } catch (const host::HostError&) {
            }
            h.host.Faults().HealAll();
        });
    }

    // Undo gives back the document as it was, byte for byte as it saves, and
    // unmodified; redo the document as the command left it.
    void everyKindOfChangeIsUndoneAndRedone()
    {
        QFETCH(Act, act);
        LatheHost h;
        const QByteArray before = Text(h);

        Command(h, act);
        const QByteArray after = Text(h);
        QVERIFY(after != before);
        QVERIFY(h.doc->modified);
        QCOMPARE(h.host.UndoText(), QStringLiteral("Test"));

        h.host.Undo();
        QCOMPARE(Text(h), before);
        QVERIFY(!h.doc->modified);
        QCOMPARE(h.host.RedoText(), QStringLiteral("Test"));

        h.host.Redo();
        QCOMPARE(Text(h), after);
        QVERIFY(h.doc->modified);
    }

    // An add-in's object still refers to the document's record after undo
    // and redo: what it writes then is in the document.
    void recordsHeldByAnAddInStayTheDocuments()
    {
        LatheHost h;
        const auto tool = h.tool(1);
        const auto entries = h.setup()->SetupEntries();
        const auto entry = entries->Item(1);
        const auto record = h.doc->data.machineSetup.setupEntries.first();
        Command(h, [&](LatheHost&) {
            tool->setXShift(2);
            entries->Remove(1);
        });

        h.host.Undo();
        QCOMPARE(h.doc->data.machineSetup.setupEntries.first(), record);
        tool->setXShift(7.5);
        QCOMPARE(h.doc->data.tools.first()->xShift, 7.5);
        entries->Remove(1);
        entries->Add(entry);
        QCOMPARE(h.doc->data.machineSetup.setupEntries.last(), record);
    }

    // After going back and forth in the history, a command's step is as
    // exact as any: undo gives back the document as it was before it, redo
    // as the command left it, records brought back or taken out on the way
    // among them.
    void stepsAfterGoingThroughTheHistory_data()
    {
        QTest::addColumn<QList<Act>>("steps");
        QTest::addColumn<int>("back");
        QTest::addColumn<int>("forward");
        QTest::addColumn<Act>("later");
        const Act removeComment = [](LatheHost& h) { h.op(2)->CustomProperties()->Remove("Comment"); };
        const Act changeComment = [](LatheHost& h) {
            h.op(2)->CustomProperties()->Item("Comment")->setValue(QStringLiteral("later"));
        };
        const Act addZ2 = [](LatheHost& h) { h.op(3)->CustomProperties()->Add("Z2Position", "Z2 Position", 5, 12.5); };
        const auto shift = [](double x) { return Act([x](LatheHost& h) { h.tool(1)->setXShift(x); }); };
        QTest::newRow("a record brought back by undo, then changed") << QList<Act>{removeComment} << 1 << 0 << changeComment;
        QTest::newRow("a record added, taken out by undo, added anew") << QList<Act>{addZ2} << 1 << 0 << addZ2;
        QTest::newRow("a record added again by redo, then changed")
            << QList<Act>{addZ2} << 1 << 1 << Act([](LatheHost& h) { h.op(3)->CustomProperties()->Item("Z2Position")->setValue(20); });
        QTest::newRow("three steps back at once, then changes to what they touched")
            << QList<Act>{shift(1), removeComment, Act([](LatheHost& h) { h.document()->Syncs()->Remove(1); })} << 3 << 0
            << Act([shift, changeComment](LatheHost& h) {
                   shift(9)(h);
                   changeComment(h);
                   h.document()->Syncs()->Remove(1);
               });
        QTest::newRow("two back and one forward, then changes")
            << QList<Act>{shift(1), shift(2), removeComment} << 2 << 1 << Act([shift, changeComment](LatheHost& h) {
                   shift(5)(h);
                   changeComment(h);
               });
    }
    void stepsAfterGoingThroughTheHistory()
    {
        QFETCH(QList<Act>, steps);
        QFETCH(int, back);
        QFETCH(int, forward);
        QFETCH(Act, later);
        LatheHost h;
        for (const Act& step : steps)
            Command(h, step);
        QUndoStack& stack = h.doc->history.Stack();
        stack.setIndex(stack.count() - back); // a click in the History pane
        stack.setIndex(stack.index() + forward);
        const QByteArray before = Text(h);

        Command(h, later, QStringLiteral("Later"));
        const QByteArray after = Text(h);
        QVERIFY(after != before);
        h.host.Undo();
        QCOMPARE(Text(h), before);
        h.host.Redo();
        QCOMPARE(Text(h), after);
    }

    void noChangeMakesNoStep_data()
    {
        QTest::addColumn<Act>("act");
        QTest::newRow("the value a field has") << Act([](LatheHost& h) { h.tool(1)->setXShift(h.tool(1)->XShift()); });
        QTest::newRow("a synchronisation replaced by an equal one") << Act([](LatheHost& h) {
            auto syncs = h.document()->Syncs();
            syncs->Remove(1);
            std::array<host::SyncNode, 4> nodes{};
            nodes[0] = {4, h.op(1), 0, 1, 0};
            nodes[1] = {1, h.op(2), 0, 1, 0};
            syncs->Add(3, nodes);
        });
        QTest::newRow("a refused request") << Act([](LatheHost& h) {
            try {
                h.document()->WorkPlanes()->Add("XYZ");
            } catch (const host::HostError&) {
            }
        });
        QTest::newRow("a value changed and changed back") << Act([](LatheHost& h) {
            h.setup()->setMachineCode("99");
            h.setup()->setMachineCode(QString());
        });
    }

    void noChangeMakesNoStep()
    {
        QFETCH(Act, act);
        LatheHost h;
        Command(h, act);
        QVERIFY(!h.doc->history.Stack().canUndo());
        QVERIFY(!h.doc->modified);
    }

    // Steps inside a step are the outer one; changes made outside any step
    // become a step of their own, named after the last command, before the next.
    void stepsNestAndChangesOutsideComeFirst()
    {
        LatheHost h;
        Command(h, [](LatheHost& h) {
            const feldra::Host::Step inner(h.host, QStringLiteral("Inner"));
            h.tool(1)->setXShift(1);
        }, QStringLiteral("Outer"));
        h.tool(1)->setXShift(2); // a modeless window's OK
        Command(h, [](LatheHost& h) { h.tool(1)->setXShift(3); }, QStringLiteral("Next"));

        const QUndoStack& stack = h.doc->history.Stack();
        QCOMPARE(stack.count(), 3);
        QCOMPARE(stack.text(0), QStringLiteral("Outer"));
        QCOMPARE(stack.text(1), QStringLiteral("Outer"));
        QCOMPARE(stack.text(2), QStringLiteral("Next"));
        h.host.Undo();
        QCOMPARE(h.doc->data.tools.first()->xShift, 2.0);
    }

    // The marker follows the saved state through undo and redo.
    void theMarkerFollowsTheSavedState()
    {
        LatheHost h;
        const auto shift = [&h](double x) { Command(h, [x](LatheHost& h) { h.tool(1)->setXShift(x); }); };
        shift(1);
        h.doc->history.MarkSaved();
        QVERIFY(!h.doc->modified);
        shift(2);
        QVERIFY(h.doc->modified);
        h.host.Undo();
        QVERIFY(!h.doc->modified);
        h.host.Undo();
        QVERIFY(h.doc->modified);
        h.host.Redo();
        QVERIFY(!h.doc->modified);
        h.host.Undo();
        shift(5); // the saved state can no longer be reached
        h.host.Undo();
        QVERIFY(h.doc->modified);
    }

    void hostEventsAnsweredWithWritesAreSteps_data()
    {
        QTest::addColumn<Act>("act");
        QTest::addColumn<QString>("title");
        QTest::newRow("new document") << Act([](LatheHost& h) { h.host.OpenNewDocument(h.doc); }) << "New Document";
        QTest::newRow("NC code") << Act([](LatheHost& h) { h.host.BeforeCommandRun(3320); }) << "Generate NC Code";
        QTest::newRow("simulation") << Act([](LatheHost& h) {
            const feldra::Host::Step step(h.host, QStringLiteral("Simulate"));
            h.host.SimulationBegin(*h.doc);
            for (int position = 1; position <= 3; ++position)
                h.host.OperationStart(h.doc, position);
        }) << "Simulate";
        QTest::newRow("technology edit") << Act([](LatheHost& h) { h.host.EditTechnology(h.doc, 1, 1); })
                                         << "Edit Technology";
    }

    // What the add-ins write in answer to a host event is one step, named
    // after the host's command (the simulation's many events are one).
    void hostEventsAnsweredWithWritesAreSteps()
    {
        QFETCH(Act, act);
        QFETCH(QString, title);
        LatheHost h;
        Writer writer;
        writer.app = h.app;
        h.app->Advise(&writer);
        h.document()->Simulation()->Advise(&writer);
        h.document()->TechnologyUtility()->Advise(&writer);
        const QByteArray before = Text(h);

        act(h);
        QCOMPARE(h.doc->history.Stack().count(), 1);
        QCOMPARE(h.host.UndoText(), title);
        h.app->Unadvise(&writer); // the undo's AfterDocumentOpen would write again
        h.host.Undo();
        QCOMPARE(Text(h), before);
    }

    // The add-ins see the document brought back as they see one opened.
    void addInsSeeTheDocumentAsOpened()
    {
        LatheHost h;
        OpenCounter counter;
        h.app->Advise(&counter);
        Command(h, [](LatheHost& h) { h.tool(1)->setXShift(1); });
        h.host.Undo();
        QCOMPARE(counter.opened, 1);
        h.host.Redo();
        QCOMPARE(counter.opened, 2);
        h.app->Unadvise(&counter);
    }

    void undoIsRefused()
    {
        LatheHost h;
        QCOMPARE(Refusal([&] { h.host.Undo(); }), QStringLiteral("There is nothing to undo."));
        QCOMPARE(Refusal([&] { h.host.Redo(); }), QStringLiteral("There is nothing to redo."));
        Command(h, [](LatheHost& h) { h.tool(1)->setXShift(1); });

        Command(h, [](LatheHost& h) {
            QCOMPARE(Refusal([&] { h.host.Undo(); }), QStringLiteral("A command is running."));
        });
        QDialog dialog;
        dialog.setModal(true);
        dialog.show();
        QCOMPARE(QApplication::activeModalWidget(), &dialog);
        QCOMPARE(Refusal([&] { h.host.Undo(); }), QStringLiteral("A dialog is open."));
        dialog.hide();
        QCOMPARE(Refusal([&] { h.host.Undo(); }), QString());
        QCOMPARE(h.doc->data.tools.first()->xShift, 0.0);
    }
};

QTEST_MAIN(tst_DocumentHistory)
#include "tst_DocumentHistory.moc"
