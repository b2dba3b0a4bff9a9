#include "feldra/SetupFile.h"

#include <QDir>
#include <QTest>

#include <cmath>

using namespace feldra;

namespace {

// The setups as installed beside the add-in module.
const QString kSetups = QStringLiteral(MARELON_ADDIN_DIR "/MachineSetups/");

struct Machine {
    MachineSetupData setup;
    MachineModelData model;
};

// A machine as what must be equal in both unit systems and its lengths.
struct Described {
    QStringList facts;
    QList<std::pair<QString, double>> lengths;
};

Described describe(const Machine& m)
{
    Described d;
    const auto length = [&](const QString& what, double value) { d.lengths.append({what, value}); };
    for (const auto& entry : m.setup.setupEntries)
        d.facts << QStringLiteral("entry ") + entry->name;
    for (const auto& turret : m.setup.turrets) {
        const QString name = QStringLiteral("turret %1").arg(turret->number);
        d.facts << name;
        for (const auto& station : turret->stations)
            d.facts << QStringLiteral("%1 station %2 %3").arg(name).arg(station->number)
                           .arg(station->extra.value("holder").toString());
        length(name + " Z offset", turret->zOffset);
        length(name + " reference Z", turret->referenceZ);
        for (const auto& limit : turret->axisLimits) {
            d.facts << name + " limit " + limit->name;
            length(name + " limit " + limit->name, limit->upperLimit);
        }
    }
    for (const auto& spindle : m.setup.spindles)
        d.facts << QStringLiteral("spindle %1 %2").arg(spindle->number).arg(spindle->name);
    for (const auto& head : m.setup.heads)
        d.facts << QStringLiteral("head ") + head->comment;
    for (const auto& group : m.model.axisGroups)
        for (const auto& axis : group->axes) {
            d.facts << QStringLiteral("%1 %2 %3").arg(group->name, axis->name).arg(axis->enabled);
            length(group->name + " " + axis->name, axis->position);
        }
    for (const auto& component : m.model.components) {
        d.facts << QStringLiteral("component ") + component->key;
        length(component->key + " X", component->position.x);
        length(component->key + " Y", component->position.y);
        length(component->key + " Z", component->position.z);
    }
    return d;
}

QStringList setupNames(const QString& model, const QString& suffix)
{
    QStringList names = QDir(kSetups + model).entryList({QStringLiteral("*") + suffix}, QDir::Files, QDir::Name);
    for (QString& name : names)
        name.chop(suffix.size());
    return names;
}

int turretCount(const Machine& m, int number)
{
    return int(std::ranges::count_if(m.setup.turrets, [&](const auto& t) { return t->number == number; }));
}

} // namespace

class tst_MachineSetupFiles : public QObject {
    Q_OBJECT

private slots:
    void everyModelInBothUnits_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<int>("heads");
        QTest::addColumn<bool>("backSpindle");
        QTest::addColumn<bool>("turret");
        struct Row {
            const char* model;
            int heads;
            bool backSpindle;
            bool turret;
        };
        for (const Row& row : {Row{"A20", 2, true, false}, {"A32", 2, true, false}, {"B12", 1, false, false},
                               {"B2 12-20", 2, true, false}, {"C12-16", 2, true, false}, {"C20-32", 2, true, false},
                               {"E2 16J", 2, true, true}, {"E2 25J-32", 2, true, true}, {"E2 32IV", 2, true, true},
                               {"K16", 2, true, false}, {"L3 16-20", 1, false, false}, {"L4 25-32", 2, true, false},
                               {"L5 16-20", 2, true, false}, {"L7 16-20", 2, true, false}, {"L6 32", 2, true, false},
                               {"M20", 2, true, true}, {"M2-3 12-16", 2, true, true}, {"M2-3 20-32", 3, true, true},
                               {"R6 04-07", 2, true, false}})
            QTest::newRow(row.model) << row.model << row.heads << row.backSpindle << row.turret;
    }
    // Each setup of a model is there in inches and in millimetres, the host
    // reads both, and both describe the same machine.
    void everyModelInBothUnits()
    {
        QFETCH(QString, model);
        QFETCH(int, heads);
        QFETCH(bool, backSpindle);
        QFETCH(bool, turret);
        const QStringList names = setupNames(model, "_Inch.EMS");
        QVERIFY(!names.isEmpty());
        QCOMPARE(setupNames(model, "_Metric.EMS"), names);

        for (const QString& name : names) {
            Machine inch, metric;
            try {
                LoadSetupFile(kSetups + model + "/" + name + "_Inch.EMS", inch.setup, inch.model);
                LoadSetupFile(kSetups + model + "/" + name + "_Metric.EMS", metric.setup, metric.model);
            } catch (const host::HostError& e) {
                QFAIL(qPrintable(e.Description()));
            }
            QCOMPARE(metric.setup.machineSetupName, name);
            QCOMPARE(inch.setup.machineSetupName, name);

            const Described in = describe(inch);
            const Described mm = describe(metric);
            QCOMPARE(in.facts, mm.facts);
            QCOMPARE(in.lengths.size(), mm.lengths.size());
            for (qsizetype i = 0; i < in.lengths.size(); ++i) // inches to four decimals
                QVERIFY2(std::abs(in.lengths[i].second * 25.4 - mm.lengths[i].second) <= 0.5e-4 * 25.4 + 1e-9,
                         qPrintable(QStringLiteral("%1: %2 in, %3 mm").arg(in.lengths[i].first)
                                        .arg(in.lengths[i].second).arg(mm.lengths[i].second)));

            QCOMPARE(metric.setup.heads.size(), heads);
            for (const auto& [machine, unit] : {std::pair{&inch, 70}, {&metric, 71}})
                for (const auto& head : machine->setup.heads)
                    QCOMPARE(head->outputUnit, unit);
            for (const char* sync : {"G821", "G820", "G811", "G810"})
                QVERIFY2(mm.facts.contains(QStringLiteral("entry ") + sync), sync);

            QCOMPARE(turretCount(metric, 1), 1);
            QCOMPARE(turretCount(metric, 2), backSpindle ? 1 : 0);
            QCOMPARE(turretCount(metric, 3), turret ? 1 : 0);
            QCOMPARE(metric.setup.spindles.size(), backSpindle ? 2 : 1);
            QCOMPARE(mm.facts.contains("turret 2 limit Z2"), backSpindle);
            for (const auto& t : metric.setup.turrets)
                QVERIFY(!t->stations.isEmpty());
        }
    }

    // The add-in limits the machining length by whether the setup name of a
    // "B2 12-20" contains "12": its setups tell the bar capacity.
    void b2SetupsTellTheBarCapacity()
    {
        const QStringList names = setupNames("B2 12-20", "_Metric.EMS");
        QVERIFY(std::ranges::any_of(names, [](const QString& n) { return n.contains("12"); }));
        QVERIFY(std::ranges::any_of(names, [](const QString& n) { return !n.contains("12") && n.contains("20"); }));
    }
};

QTEST_MAIN(tst_MachineSetupFiles)
#include "tst_MachineSetupFiles.moc"
