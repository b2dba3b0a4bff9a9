// The machine setup: its values and numbered parameters, setup entries,
// turrets with stations and axis limits, spindles and NC heads.
#include "addin/host/AxisLimit.h"
#include "addin/host/AxisLimits.h"
#include "addin/host/NCHead.h"
#include "addin/host/NCHeads.h"
#include "addin/host/SetupEntries.h"
#include "addin/host/SetupEntry.h"
#include "addin/host/Spindles.h"
#include "addin/host/Station.h"
#include "addin/host/Stations.h"
#include "addin/host/Turret.h"
#include "addin/host/Turrets.h"
#include "feldra/SetupFile.h"
#include "feldra/Views.h"

#include <type_traits>

namespace feldra {

namespace {

// The record with this integer key in a keyed collection.
template <class Record>
std::shared_ptr<Record> byNumber(const QList<std::shared_ptr<Record>>& list, int key, const QString& operation)
{
    for (const auto& record : list)
        if (record->number == key)
            return record;
    throw host::HostError(operation, QStringLiteral("No item with the key %1.").arg(key));
}

class StationView final : public host::Station, public View {
public:
    StationView(ContextPtr context, DocumentPtr document, std::shared_ptr<StationData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }
    int Number() override { return get("Station.Number", data_->number); }

private:
    std::shared_ptr<StationData> data_;
};

class StationsView final : public host::Stations, public View {
public:
    StationsView(ContextPtr context, DocumentPtr document, std::shared_ptr<TurretData> turret)
        : View(std::move(context), std::move(document)), turret_(std::move(turret))
    {
    }
    std::shared_ptr<host::Station> Item(int key) override
    {
        guard("Stations.Item");
        return std::make_shared<StationView>(ctx_, doc_, byNumber(turret_->stations, key, "Stations.Item"));
    }
    int Count() override { return get("Stations.Count", int(turret_->stations.size())); }

private:
    std::shared_ptr<TurretData> turret_;
};

class AxisLimitView final : public host::AxisLimit, public View {
public:
    AxisLimitView(ContextPtr context, DocumentPtr document, std::shared_ptr<AxisLimitData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }
    QString Name() override { return get("AxisLimit.Name", data_->name); }
    double UpperLimit() override { return get("AxisLimit.UpperLimit", data_->upperLimit); }

private:
    std::shared_ptr<AxisLimitData> data_;
};

class AxisLimitsView final : public host::AxisLimits, public View {
public:
    AxisLimitsView(ContextPtr context, DocumentPtr document, std::shared_ptr<TurretData> turret)
        : View(std::move(context), std::move(document)), turret_(std::move(turret))
    {
    }
    std::shared_ptr<host::AxisLimit> Item(int i) override
    {
        guard("AxisLimits.Item");
        return std::make_shared<AxisLimitView>(ctx_, doc_, at(turret_->axisLimits, i, "AxisLimits.Item"));
    }
    int Count() override { return get("AxisLimits.Count", int(turret_->axisLimits.size())); }

private:
    std::shared_ptr<TurretData> turret_;
};

class TurretView final : public host::Turret, public View {
public:
    TurretView(ContextPtr context, DocumentPtr document, std::shared_ptr<TurretData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }
    double ZOffset() override { return get("Turret.ZOffset", data_->zOffset); }
    double ReferenceZ() override { return get("Turret.ReferenceZ", data_->referenceZ); }
    std::shared_ptr<host::Stations> Stations() override
    {
        guard("Turret.Stations");
        return std::make_shared<StationsView>(ctx_, doc_, data_);
    }
    std::shared_ptr<host::AxisLimits> AxisLimits() override
    {
        guard("Turret.AxisLimits");
        return std::make_shared<AxisLimitsView>(ctx_, doc_, data_);
    }

private:
    std::shared_ptr<TurretData> data_;
};

class TurretsView final : public host::Turrets, public View {
public:
    using View::View;
    std::shared_ptr<host::Turret> Item(int key) override
    {
        guard("Turrets.Item");
        return std::make_shared<TurretView>(ctx_, doc_, byNumber(setup().turrets, key, "Turrets.Item"));
    }
    int Count() override { return get("Turrets.Count", int(setup().turrets.size())); }

private:
    MachineSetupData& setup() const { return doc().data.machineSetup; }
};

class SpindlesView final : public host::Spindles, public View {
public:
    using View::View;
    std::shared_ptr<host::Spindle> Item(int key) override
    {
        guard("Spindles.Item");
        return std::make_shared<SpindleView>(ctx_, doc_,
                                             byNumber(doc().data.machineSetup.spindles, key, "Spindles.Item"));
    }
    int Count() override { return get("Spindles.Count", int(doc().data.machineSetup.spindles.size())); }
};

class NCHeadView final : public host::NCHead, public View {
public:
    NCHeadView(ContextPtr context, DocumentPtr document, std::shared_ptr<NCHeadData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }
    QString ProgramName() override { return get("NCHead.ProgramName", data_->programName); }
    void setProgramName(const QString& name) override { put("NCHead.ProgramName", data_->programName, name); }
    int ProgramNumber() override { return get("NCHead.ProgramNumber", data_->programNumber); }
    void setProgramNumber(int number) override { put("NCHead.ProgramNumber", data_->programNumber, number); }
    int OutputUnit() override { return get("NCHead.OutputUnit", data_->outputUnit); }
    void setOutputUnit(int unit) override
    {
        guard("NCHead.OutputUnit write");
        if (unit != 70 && unit != 71)
            fail("NCHead.OutputUnit write", QStringLiteral("%1 is not a unit code (70 or 71).").arg(unit));
        store(data_->outputUnit, unit);
    }
    QString Comment() override { return get("NCHead.Comment", data_->comment); }
    void setComment(const QString& comment) override { put("NCHead.Comment", data_->comment, comment); }

private:
    std::shared_ptr<NCHeadData> data_;
};

class NCHeadsView final : public host::NCHeads, public View {
public:
    using View::View;
    std::shared_ptr<host::NCHead> Item(int i) override
    {
        guard("NCHeads.Item");
        return std::make_shared<NCHeadView>(ctx_, doc_, at(doc().data.machineSetup.heads, i, "NCHeads.Item"));
    }
    int Count() override { return get("NCHeads.Count", int(doc().data.machineSetup.heads.size())); }
};

class SetupEntryView final : public host::SetupEntry, public View {
public:
    SetupEntryView(ContextPtr context, DocumentPtr document, std::shared_ptr<SetupEntryData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }
    QString Name() override { return get("SetupEntry.Name", data_->name); }
    const std::shared_ptr<SetupEntryData>& Data() const { return data_; }

private:
    std::shared_ptr<SetupEntryData> data_;
};

class SetupEntriesView final : public host::SetupEntries, public View {
public:
    using View::View;
    std::shared_ptr<host::SetupEntry> Item(int i) override
    {
        guard("SetupEntries.Item");
        return std::make_shared<SetupEntryView>(ctx_, doc_, at(entries(), i, "SetupEntries.Item"));
    }
    int Count() override { return get("SetupEntries.Count", int(entries().size())); }
    void Remove(int i) override
    {
        change("SetupEntries.Remove");
        at(entries(), i, "SetupEntries.Remove");
        entries().removeAt(i - 1);
    }
    void Add(std::shared_ptr<host::SetupEntry> entry) override
    {
        change("SetupEntries.Add");
        entries().append(own<SetupEntryView>(entry, "SetupEntries.Add").Data());
    }

private:
    QList<std::shared_ptr<SetupEntryData>>& entries() const { return doc().data.machineSetup.setupEntries; }
};

class MachineSetupView final : public host::MachineSetup, public View {
public:
    using View::View;

#define FELDRA_PROPERTY(Type, Name, field)                                                   \
    Type Name() override { return get("MachineSetup." #Name, setup().field); }               \
    void set##Name(FELDRA_ARG(Type) value) override { put("MachineSetup." #Name, setup().field, value); }
#define FELDRA_ARG(Type) std::conditional_t<std::is_same_v<Type, QString>, const QString&, Type>
#define FELDRA_PARAM(n)                                                                      \
    double Param##n() override { return param("MachineSetup.Param" #n, n); }                \
    void setParam##n(double value) override { setParam("MachineSetup.Param" #n " write", n, value); }

    FELDRA_PROPERTY(QString, MakerTag, makerTag)
    FELDRA_PROPERTY(QString, MachineCode, machineCode)
    FELDRA_PROPERTY(QString, MachineSetupName, machineSetupName)
    FELDRA_PROPERTY(double, StockFrontZ, stockFrontZ)
    FELDRA_PROPERTY(double, StockDiameter, stockDiameter)
    FELDRA_PROPERTY(double, StockInsideDiameter, stockInsideDiameter)
    FELDRA_PROPERTY(double, StockLength, stockLength)
    FELDRA_PROPERTY(double, PartLength, partLength)
    FELDRA_PROPERTY(QString, StockCode, stockCode)
    FELDRA_PROPERTY(QString, ProgramName, programName)
    FELDRA_PROPERTY(int, ProgramNumber, programNumber)
    FELDRA_PROPERTY(double, StartupSpindleSpeed, startupSpindleSpeed)
    FELDRA_PROPERTY(double, BarLoaderDwell, barLoaderDwell)
    FELDRA_PROPERTY(double, BarLoaderType, barLoaderType)
    FELDRA_PROPERTY(double, ToolBreakageDetection, toolBreakageDetection)
    FELDRA_PROPERTY(QString, BackSpindleExtension, backSpindleExtension)
    FELDRA_PROPERTY(QString, BarLoaderSubProgram, barLoaderSubProgram)
    FELDRA_PROPERTY(QString, BarLoaderCommand, barLoaderCommand)
    FELDRA_PARAM(813)
    FELDRA_PARAM(814)
    FELDRA_PARAM(815)
    FELDRA_PARAM(816)
    FELDRA_PARAM(817)
    FELDRA_PARAM(818)
    FELDRA_PARAM(819)
    FELDRA_PARAM(820)
    FELDRA_PARAM(821)
    FELDRA_PARAM(822)
    FELDRA_PARAM(824)
    FELDRA_PARAM(893)
    FELDRA_PARAM(990)
    FELDRA_PARAM(991)
    FELDRA_PARAM(992)
#undef FELDRA_PARAM
#undef FELDRA_ARG
#undef FELDRA_PROPERTY

    void setFaceAmount(double value) override { put("MachineSetup.FaceAmount", setup().faceAmount, value); }

    void LoadSetupFile(const QString& path) override
    {
        change("MachineSetup.LoadSetupFile");
        // A file that fails to load leaves the setup and the machine model as they were.
        try {
            feldra::LoadSetupFile(path, setup(), doc().data.simulation.machineModel);
        } catch (const host::HostError& error) {
            fail("MachineSetup.LoadSetupFile", QString::fromUtf8(error.what()));
        }
    }
    std::shared_ptr<host::SetupEntries> SetupEntries() override
    {
        guard("MachineSetup.SetupEntries");
        return std::make_shared<SetupEntriesView>(ctx_, doc_);
    }
    std::shared_ptr<host::Turrets> Turrets() override
    {
        guard("MachineSetup.Turrets");
        return std::make_shared<TurretsView>(ctx_, doc_);
    }
    std::shared_ptr<host::Spindles> Spindles() override
    {
        guard("MachineSetup.Spindles");
        return std::make_shared<SpindlesView>(ctx_, doc_);
    }
    std::shared_ptr<host::NCHeads> Heads() override
    {
        guard("MachineSetup.Heads");
        return std::make_shared<NCHeadsView>(ctx_, doc_);
    }

private:
    MachineSetupData& setup() const { return doc().data.machineSetup; }
    // A parameter the setup lacks is a change even when written as 0.
    void setParam(const QString& operation, int number, double value) const
    {
        guard(operation);
        const auto it = setup().params.constFind(number);
        if (it != setup().params.cend() && *it == value)
            return;
        touch();
        setup().params.insert(number, value);
    }
    double param(const QString& operation, int number) const
    {
        guard(operation);
        return setup().params.value(number);
    }
};

} // namespace

std::shared_ptr<host::MachineSetup> MakeMachineSetup(ContextPtr context, DocumentPtr document)
{
    return std::make_shared<MachineSetupView>(std::move(context), std::move(document));
}

QString SpindleView::Name() { return get("Spindle.Name", data_->name); }
void SpindleView::setWorkLength(double length) { put("Spindle.WorkLength", data_->workLength, length); }

} // namespace feldra
