#include "feldra/SetupFile.h"

#include "feldra/DocumentJson.h"
#include "feldra/JsonFile.h"

#include <QSet>

namespace feldra {
namespace {

const JsonFileFormat kSetupFormat{"feldra-machine-setup", 1, "a Feldra machine setup file"};

// What a machine setup file holds. Unknown fields at its top level are
// dropped (the host never writes a setup file back); unknown fields of its
// records stay with the records.
struct SetupFileData {
    QString name;
    QList<std::shared_ptr<TurretData>> turrets;
    QList<std::shared_ptr<SpindleData>> spindles;
    QList<std::shared_ptr<NCHeadData>> heads;
    QList<std::shared_ptr<SetupEntryData>> setupEntries;
    MachineModelData machineModel;
    QJsonObject extra;
};

template <typename V, RecordOf<SetupFileData> R> void Fields(V& field, R& file)
{
    field("name", file.name);
    field("turrets", file.turrets);
    field("spindles", file.spindles);
    field("heads", file.heads);
    field("setupEntries", file.setupEntries);
    field("machineModel", file.machineModel);
}

// Turrets, their stations and spindles are looked up by number: each number once.
template <typename Item>
void checkUniqueNumbers(const QList<std::shared_ptr<Item>>& items, const JsonPlace& at)
{
    QSet<int> seen;
    for (qsizetype i = 0; i < items.size(); ++i) {
        const JsonPlace item(at, i);
        if (seen.contains(items[i]->number))
            FailAt(JsonPlace(item, "number"),
                   QStringLiteral("the number %1 is already used").arg(items[i]->number));
        seen.insert(items[i]->number);
    }
}

void checkKeys(const SetupFileData& file)
{
    const JsonPlace root;
    const JsonPlace turrets(root, "turrets");
    checkUniqueNumbers(file.turrets, turrets);
    for (qsizetype i = 0; i < file.turrets.size(); ++i) {
        const JsonPlace turret(turrets, i);
        checkUniqueNumbers(file.turrets[i]->stations, JsonPlace(turret, "stations"));
    }
    checkUniqueNumbers(file.spindles, JsonPlace(root, "spindles"));
}

} // namespace

void ReadSetupFile(const QByteArray& text, const QString& fileName, MachineSetupData& setup,
                   MachineModelData& model)
{
    const JsonFile file(QStringLiteral("LoadSetupFile"), fileName, kSetupFormat);
    SetupFileData read;
    file.Parse(text, read);
    file.Check([&] { checkKeys(read); });
    if (!read.name.isEmpty())
        setup.machineSetupName = read.name;
    setup.turrets = read.turrets;
    setup.spindles = read.spindles;
    setup.heads = read.heads;
    setup.setupEntries = read.setupEntries;
    model = read.machineModel;
}

void LoadSetupFile(const QString& path, MachineSetupData& setup, MachineModelData& model)
{
    const JsonFile file(QStringLiteral("LoadSetupFile"), path, kSetupFormat);
    ReadSetupFile(file.Read(), path, setup, model);
}

} // namespace feldra
