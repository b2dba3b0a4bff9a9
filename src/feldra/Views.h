#pragma once

#include "addin/host/Document.h"
#include "addin/host/Feature.h"
#include "addin/host/Layer.h"
#include "addin/host/MachineSetup.h"
#include "addin/host/Operation.h"
#include "addin/host/Operations.h"
#include "addin/host/Point.h"
#include "addin/host/Simulation.h"
#include "addin/host/Spindle.h"
#include "addin/host/Syncs.h"
#include "addin/host/Technology.h"
#include "addin/host/Tool.h"
#include "addin/host/Tools.h"
#include "addin/host/WorkPlane.h"
#include "feldra/View.h"

// The Feldra facade objects that other facade objects take as arguments (and
// so must recognise), and the factories of the object families. The classes are
// defined in DocumentViews, MachineSetupViews, ToolViews, OperationViews and
// SimulationViews.
namespace feldra {

using ContextPtr = std::shared_ptr<HostContext>;
using DocumentPtr = std::shared_ptr<DocumentState>;

std::shared_ptr<host::Document> MakeDocument(ContextPtr context, DocumentPtr document);
std::shared_ptr<host::MachineSetup> MakeMachineSetup(ContextPtr context, DocumentPtr document);
std::shared_ptr<host::Tools> MakeTools(ContextPtr context, DocumentPtr document);
std::shared_ptr<host::Operations> MakeOperations(ContextPtr context, DocumentPtr document);
std::shared_ptr<host::Syncs> MakeSyncs(ContextPtr context, DocumentPtr document);
std::shared_ptr<host::Simulation> MakeSimulation(ContextPtr context, DocumentPtr document);
std::shared_ptr<host::CustomProperties> MakeCustomProperties(ContextPtr context, DocumentPtr document,
                                                             std::shared_ptr<CustomPropertyList> list);
// A parameter of a parameter set (a technology's or a tool's); owner names the
// operation that looked it up ("Technology.Parameter").
std::shared_ptr<host::TechnologyParameter> MakeParameter(ContextPtr context, DocumentPtr document,
                                                         std::shared_ptr<Parameters> parameters,
                                                         const QString& number, const QString& owner);

// A free point: a value of its own.
class PointView final : public host::Point, public View {
public:
    PointView(ContextPtr context, Point3 value) : View(std::move(context), nullptr), value_(value) {}

    double X() override;
    void setX(double x) override;
    double Y() override;
    void setY(double y) override;
    double Z() override;
    void setZ(double z) override;

    Point3 Value() const { return value_; }

private:
    Point3 value_;
};

class FeatureView final : public host::Feature, public View {
public:
    FeatureView(ContextPtr context, DocumentPtr document, std::shared_ptr<FeatureData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }

    QString Key() override;
    std::shared_ptr<host::CustomProperties> CustomProperties() override;
    int Count() override;
    std::shared_ptr<host::Point> Element(int i) override;
    void AddSegment(const host::Segment& segment) override;
    std::shared_ptr<host::Layer> Layer() override;
    void setLayer(std::shared_ptr<host::Layer> layer) override;

    FeatureData& Data() const { return *data_; }

private:
    std::shared_ptr<FeatureData> data_;
};

class LayerView final : public host::Layer, public View {
public:
    LayerView(ContextPtr context, DocumentPtr document, std::shared_ptr<LayerData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }

    QString Name() override;

    LayerData& Data() const { return *data_; }

private:
    std::shared_ptr<LayerData> data_;
};

class WorkPlaneView final : public host::WorkPlane, public View {
public:
    WorkPlaneView(ContextPtr context, DocumentPtr document, std::shared_ptr<WorkPlaneData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }

    QString Name() override;
    void setU(double x, double y, double z) override;
    void setV(double x, double y, double z) override;
    void setW(double x, double y, double z) override;
    void setOrigin(double x, double y, double z) override;
    void setFlag(int flag) override;

    WorkPlaneData& Data() const { return *data_; }

private:
    std::shared_ptr<WorkPlaneData> data_;
};

class SpindleView final : public host::Spindle, public View {
public:
    SpindleView(ContextPtr context, DocumentPtr document, std::shared_ptr<SpindleData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }

    QString Name() override;
    void setWorkLength(double length) override;

    SpindleData& Data() const { return *data_; }

private:
    std::shared_ptr<SpindleData> data_;
};

class ToolView final : public host::Tool, public View {
public:
    ToolView(ContextPtr context, DocumentPtr document, std::shared_ptr<ToolData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }

    int Number() override;
    void setNumber(int number) override;
    QString ToolID() override;
    void setToolID(const QString& id) override;
    QString Comment() override;
    void setComment(const QString& comment) override;
    int ToolType() override;
    int UnitSystem() override;
    double XShift() override;
    void setXShift(double value) override;
    double YShift() override;
    void setYShift(double value) override;
    double ZShift() override;
    void setZShift(double value) override;
    double HolderIndex() override;
    void setHolderIndex(double value) override;
    void setGearRatio(double value) override;
    int BackSpindle() override;
    void setBackSpindle(int value) override;
    int TurretNumber() override;
    int StationIndex() override;
    int SpindleDirection() override;
    void setSpindleDirection(int value) override;
    std::shared_ptr<host::TechnologyParameter> Parameter(const QString& number) override;
    std::shared_ptr<host::LatheToolKind16> AsLatheToolKind16() override;
    std::shared_ptr<host::LatheToolKind17> AsLatheToolKind17() override;
    std::shared_ptr<host::LatheToolKind18> AsLatheToolKind18() override;
    std::shared_ptr<host::LatheToolKind19> AsLatheToolKind19() override;
    std::shared_ptr<host::LatheToolKind21> AsLatheToolKind21() override;
    std::shared_ptr<host::LatheToolKind22> AsLatheToolKind22() override;
    std::shared_ptr<host::LatheToolKind23> AsLatheToolKind23() override;

    ToolData& Data() const { return *data_; }

private:
    class KindView;
    std::shared_ptr<KindView> kindView(int kind);

    std::shared_ptr<ToolData> data_;
};

class TechnologyView final : public host::Technology, public View {
public:
    TechnologyView(ContextPtr context, DocumentPtr document, std::shared_ptr<TechnologyData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }

    int TechnologyType() override;
    std::shared_ptr<host::TechnologyParameter> Parameter(const QString& number) override;
    std::shared_ptr<host::Technology207> AsTechnology207() override;
    std::shared_ptr<host::Technology154> AsTechnology154() override;

    TechnologyData& Data() const { return *data_; }

private:
    std::shared_ptr<TechnologyData> data_;
};

class OperationView final : public host::Operation, public View {
public:
    OperationView(ContextPtr context, DocumentPtr document, std::shared_ptr<OperationData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }

    QString Key() override;
    std::shared_ptr<host::CustomProperties> CustomProperties() override;
    QString Name() override;
    std::shared_ptr<host::Technology> Technology() override;
    bool Suppressed() override;
    std::shared_ptr<host::Feature> Feature() override;
    std::shared_ptr<host::GeometryList> GeometryList() override;

    const std::shared_ptr<OperationData>& Data() const { return data_; }

private:
    std::shared_ptr<OperationData> data_;
};

} // namespace feldra
