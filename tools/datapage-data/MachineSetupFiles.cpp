// Writes the machine setups delivered with the add-in (data/MachineSetups):
// for every model "<model>/<setup>_Metric.EMS" in millimetres and
// "<model>/<setup>_Inch.EMS", the same machine in inches (four decimals).
//
//   machine-setups <folder>           writes the files
//   machine-setups --check <folder>   exits 1 when a file differs from what
//                                     would be written

#include "feldra/DocumentJson.h"
#include "feldra/JsonText.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QTextStream>

#include <cmath>

using namespace feldra;

namespace {

// One machine as equipped by a setup, lengths in millimetres. The gang tool
// post (turret 1) carries the turning tools, the cross rotary tools and the
// front drilling holder; the back-spindle turret (turret 2) the back drilling
// holder; a turret (turret 3) is the third tool carrier of the E2 and M
// models. A machine without a back spindle has no back drilling stations.
struct Machine {
    const char* model;  // the folder: the model's name in the Machine Name list
    const char* setup;  // the setup name
    double x1, y1, z1;  // gang tool post strokes; Z1 the headstock stroke
    int turning, rotary, frontDrilling;
    int backDrilling;          // 0: no back spindle
    double zOffset;            // back-spindle turret Z offset
    double x2, z2, z3;         // back-spindle strokes; Z2 is also its reference Z
    int turretStations;        // 0: no turret
    double x3, z4;             // turret strokes
    int heads;                 // NC heads (paths)
};

// clang-format off
constexpr Machine kMachines[] = {
    // model         setup          X1   Y1   Z1 turn rot front back zOffset  X2   Z2   Z3 turret X3  Z4  heads
    {"A20",        "Standard",    120,  60, 205,  6,  4,  4,  4,  -12.5,  40, 235, 120,  0,   0,   0, 2},
    {"A32",        "Standard",    160,  80, 320,  5,  4,  4,  4,  -15,    60, 300, 150,  0,   0,   0, 2},
    {"B12",        "Standard",    100,  45, 135,  5,  3,  3,  0,    0,     0,   0,   0,  0,   0,   0, 1},
    {"B2 12-20",   "Standard-12", 110,  55, 135,  6,  3,  3,  4,  -10,    35, 180, 100,  0,   0,   0, 2},
    {"B2 12-20",   "Standard-20", 110,  55, 200,  6,  3,  3,  4,  -10,    35, 235, 120,  0,   0,   0, 2},
    {"C12-16",     "Standard",    120,  60, 170,  6,  4,  4,  4,  -12,    40, 210, 110,  0,   0,   0, 2},
    {"C20-32",     "Standard",    160,  80, 320,  6,  4,  4,  4,  -15,    60, 300, 150,  0,   0,   0, 2},
    {"E2 16J",     "Standard",    130,  65, 320,  5,  3,  3,  4,  -12.5,  45, 340, 150,  8, 110, 180, 2},
    {"E2 25J-32",  "Standard",    170,  85, 320,  5,  4,  3,  4,  -15,    60, 350, 160, 10, 140, 200, 2},
    {"E2 32IV",    "Standard",    170,  85, 320,  5,  4,  3,  4,  -15,    60, 350, 160, 10, 140, 200, 2},
    {"K16",        "Standard",    120,  60, 205,  5,  4,  4,  4,  -12.5,  40, 230, 120,  0,   0,   0, 2},
    {"L3 16-20",   "Standard",    120,  60, 205,  5,  3,  3,  0,    0,     0,   0,   0,  0,   0,   0, 1},
    {"L4 25-32",   "Standard",    160,  80, 320,  6,  4,  4,  4,  -15,    60, 300, 150,  0,   0,   0, 2},
    {"L5 16-20",   "Standard",    120,  60, 205,  6,  4,  3,  4,  -12.5,  40, 230, 120,  0,   0,   0, 2},
    {"L7 16-20",   "Standard",    120,  60, 205,  7,  4,  4,  4,  -12.5,  40, 230, 120,  0,   0,   0, 2},
    {"L6 32",      "Standard",    160,  80, 320,  6,  4,  4,  4,  -15,    60, 300, 150,  0,   0,   0, 2},
    {"M20",        "Standard",    130,  65, 205,  5,  3,  3,  4,  -12.5,  45, 240, 120,  8, 110, 180, 2},
    {"M2-3 12-16", "Standard",    130,  65, 200,  5,  4,  3,  4,  -12.5,  45, 240, 120,  8, 110, 180, 2},
    {"M2-3 20-32", "Standard",    160,  80, 320,  5,  4,  3,  4,  -15,    60, 320, 150, 10, 140, 200, 3},
    {"R6 04-07",   "Standard",     80,  40,  80,  5,  3,  3,  3,   -8,    25, 120,  60,  0,   0,   0, 2},
};
// clang-format on

// The synchronisation types and the other codes the machines accept.
const char* const kSetupEntries[] = {"G821", "G820", "G811", "G810", "G814", "G650", "M77"};

constexpr double kGuideBushingZ = -2;
constexpr double kBackToolPostBehind = 50; // the back tool post stands before the back spindle

enum class Units { Metric, Inch };

// A length of the machine in the file's unit: inches to four decimals.
double length(double millimetres, Units units)
{
    return units == Units::Metric ? millimetres : std::round(millimetres / 25.4 * 1e4) / 1e4;
}

template <typename T> std::shared_ptr<T> record(T value)
{
    return std::make_shared<T>(std::move(value));
}

// Stations numbered as the tools they carry: first, first + 1, ...
void addStations(TurretData& turret, int first, int count, const QString& holder)
{
    for (int i = 0; i < count; ++i) {
        StationData station{first + i, {}};
        station.extra.insert(QStringLiteral("holder"), holder);
        turret.stations.append(record(station));
    }
}

std::shared_ptr<TurretData> turret(int number, double zOffset, double referenceZ,
                                   const QList<std::pair<const char*, double>>& limits, Units units)
{
    TurretData data;
    data.number = number;
    data.zOffset = length(zOffset, units);
    data.referenceZ = length(referenceZ, units);
    for (const auto& [name, upper] : limits)
        data.axisLimits.append(record(AxisLimitData{QString::fromLatin1(name), length(upper, units), {}}));
    return record(data);
}

// A simulated axis where the simulation starts.
struct Axis {
    const char* name;
    double position = 0;
    bool enabled = true;
};

std::shared_ptr<AxisGroupData> axisGroup(const char* name, const QList<Axis>& axes, Units units)
{
    AxisGroupData group;
    group.name = QString::fromLatin1(name);
    for (const Axis& axis : axes)
        group.axes.append(
            record(AxisData{QString::fromLatin1(axis.name), axis.enabled, length(axis.position, units), {}}));
    return record(group);
}

std::shared_ptr<ComponentData> component(const char* key, double x, double y, double z, Units units)
{
    return record(ComponentData{QString::fromLatin1(key), {length(x, units), length(y, units), length(z, units)}, {}});
}

QStringList headComments(const Machine& m)
{
    if (m.heads == 1)
        return {QStringLiteral("Head 1: gang tool post and main spindle")};
    if (m.heads == 3)
        return {QStringLiteral("Head 1: gang tool post and main spindle"),
                QStringLiteral("Head 2: back spindle and back tool post"),
                QStringLiteral("Head 3: turret on the main spindle")};
    return {QStringLiteral("Head 1: gang tool post and main spindle"),
            m.turretStations > 0 ? QStringLiteral("Head 2: back spindle, back tool post and turret")
                                 : QStringLiteral("Head 2: back spindle and back tool post")};
}

QByteArray setupFile(const Machine& m, Units units)
{
    const bool backSpindle = m.backDrilling > 0;
    QList<std::shared_ptr<SetupEntryData>> entries;
    for (const char* name : kSetupEntries)
        entries.append(record(SetupEntryData{QString::fromLatin1(name), {}}));

    QList<std::shared_ptr<TurretData>> turrets;
    turrets.append(turret(1, 0, 0, {{"X1", m.x1}, {"Y1", m.y1}, {"Z1", m.z1}}, units));
    addStations(*turrets.last(), 1, m.turning, QStringLiteral("Gang tool post, turning"));
    addStations(*turrets.last(), 11, m.rotary, QStringLiteral("Gang tool post, cross rotary"));
    addStations(*turrets.last(), 31, m.frontDrilling, QStringLiteral("Front drilling holder"));
    if (backSpindle) {
        turrets.append(turret(2, m.zOffset, m.z2, {{"X2", m.x2}, {"Z2", m.z2}, {"Z3", m.z3}}, units));
        addStations(*turrets.last(), 21, m.backDrilling, QStringLiteral("Back drilling holder"));
    }
    if (m.turretStations > 0) {
        turrets.append(turret(3, 0, 0, {{"X3", m.x3}, {"Z4", m.z4}}, units));
        addStations(*turrets.last(), 41, m.turretStations, QStringLiteral("Turret"));
    }

    QList<std::shared_ptr<SpindleData>> spindles{record(SpindleData{1, QStringLiteral("Main Spindle"), 0, {}})};
    if (backSpindle)
        spindles.append(record(SpindleData{2, QStringLiteral("Back Spindle"), 0, {}}));

    QList<std::shared_ptr<NCHeadData>> heads;
    for (const QString& comment : headComments(m))
        heads.append(record(NCHeadData{QString(), 0, units == Units::Inch ? 70 : 71, comment, {}}));

    MachineModelData model;
    model.axisGroups.append(axisGroup("Gang Tool Post", {{"X1"}, {"Y1"}, {"Z1"}}, units));
    model.components = {component("Main Spindle", 0, 0, 0, units),
                        component("Guide Bushing", 0, 0, kGuideBushingZ, units)};
    if (backSpindle) {
        // Z2 waits at its reference, switched off until back-spindle work moves it.
        model.axisGroups.append(axisGroup("Back Spindle", {{"X2"}, {"Z2", m.z2, false}, {"Z3", 0, false}}, units));
        model.components.append(component("Back Spindle", 0, 0, m.z2, units));
    }
    model.components.append(component("Gang Tool Post", m.x1 / 2, 0, 0, units));
    if (backSpindle)
        model.components.append(component("Back Tool Post", -m.x2, 0, m.z2 - kBackToolPostBehind, units));
    if (m.turretStations > 0) {
        model.axisGroups.append(axisGroup("Turret", {{"X3"}, {"Z4"}}, units));
        model.components.append(component("Turret", 0, m.x3 / 2, 30, units));
    }

    JsonText text;
    text.BeginObject();
    text.Key(QLatin1String("format"));
    text.Text(u"feldra-machine-setup");
    text.Key(QLatin1String("version"));
    text.Integer(1);
    text.Key(QLatin1String("name"));
    text.Text(QString::fromLatin1(m.setup));
    text.Key(QLatin1String("setupEntries"));
    WriteJson(text, entries);
    text.Key(QLatin1String("turrets"));
    WriteJson(text, turrets);
    text.Key(QLatin1String("spindles"));
    WriteJson(text, spindles);
    text.Key(QLatin1String("heads"));
    WriteJson(text, heads);
    text.Key(QLatin1String("machineModel"));
    WriteJson(text, model);
    text.EndObject();
    return text.Finish();
}

QString fileName(const Machine& m, Units units)
{
    return QStringLiteral("%1/%2_%3.EMS")
        .arg(QString::fromLatin1(m.model), QString::fromLatin1(m.setup),
             units == Units::Inch ? QStringLiteral("Inch") : QStringLiteral("Metric"));
}

bool write(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit();
}

bool same(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.readAll() == content;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    const bool check = args.removeAll(QStringLiteral("--check")) > 0;
    QTextStream out(stdout);
    QTextStream err(stderr);
    if (args.size() != 1) {
        err << "usage: machine-setups [--check] <folder>\n";
        return 2;
    }
    const QDir folder(args[0]);
    int failures = 0;
    for (const Machine& machine : kMachines) {
        for (const Units units : {Units::Inch, Units::Metric}) {
            const QString path = folder.filePath(fileName(machine, units));
            const QByteArray content = setupFile(machine, units);
            if (check ? same(path, content) : write(path, content)) {
                if (!check)
                    out << path << '\n';
                continue;
            }
            err << path << (check ? ": differs from what the generator writes\n" : ": cannot be written\n");
            ++failures;
        }
    }
    return failures == 0 ? 0 : 1;
}
