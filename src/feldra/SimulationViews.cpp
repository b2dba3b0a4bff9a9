// The simulation: its stocks and the machine model with axes and components.
#include "addin/host/Axis.h"
#include "addin/host/AxisGroup.h"
#include "addin/host/AxisGroups.h"
#include "addin/host/Component.h"
#include "addin/host/Components.h"
#include "addin/host/MachineModel.h"
#include "addin/host/Stock.h"
#include "feldra/Views.h"

namespace feldra {

namespace {

class AxisView final : public host::Axis, public View {
public:
    AxisView(ContextPtr context, DocumentPtr document, std::shared_ptr<AxisData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }
    QString Name() override { return get("Axis.Name", data_->name); }
    void setEnabled(bool enabled) override { put("Axis.Enabled", data_->enabled, enabled); }
    void setPosition(double position) override { put("Axis.Position", data_->position, position); }

private:
    std::shared_ptr<AxisData> data_;
};

class AxisGroupView final : public host::AxisGroup, public View {
public:
    AxisGroupView(ContextPtr context, DocumentPtr document, std::shared_ptr<AxisGroupData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }
    std::shared_ptr<host::Axis> Item(int i) override
    {
        guard("AxisGroup.Item");
        return std::make_shared<AxisView>(ctx_, doc_, at(data_->axes, i, "AxisGroup.Item"));
    }
    int Count() override { return get("AxisGroup.Count", int(data_->axes.size())); }

private:
    std::shared_ptr<AxisGroupData> data_;
};

class AxisGroupsView final : public host::AxisGroups, public View {
public:
    using View::View;
    std::shared_ptr<host::AxisGroup> Item(int i) override
    {
        guard("AxisGroups.Item");
        return std::make_shared<AxisGroupView>(ctx_, doc_, at(groups(), i, "AxisGroups.Item"));
    }
    int Count() override { return get("AxisGroups.Count", int(groups().size())); }

private:
    const QList<std::shared_ptr<AxisGroupData>>& groups() const
    {
        return doc().data.simulation.machineModel.axisGroups;
    }
};

class ComponentView final : public host::Component, public View {
public:
    ComponentView(ContextPtr context, DocumentPtr document, std::shared_ptr<ComponentData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }
    std::shared_ptr<host::Point> Position() override
    {
        guard("Component.Position");
        return std::make_shared<PointView>(ctx_, data_->position);
    }
    void MoveTo(std::shared_ptr<host::Point> position) override
    {
        guard("Component.MoveTo");
        store(data_->position, own<PointView>(position, "Component.MoveTo").Value());
    }

private:
    std::shared_ptr<ComponentData> data_;
};

class ComponentsView final : public host::Components, public View {
public:
    using View::View;
    std::shared_ptr<host::Component> Item(const QString& key) override
    {
        guard("Components.Item");
        auto component = find(doc().data.simulation.machineModel.components,
                              [&key](const auto& c) { return c->key == key; });
        if (!component)
            fail("Components.Item", QStringLiteral("No component with the key \"%1\".").arg(key));
        return std::make_shared<ComponentView>(ctx_, doc_, component);
    }
    int Count() override { return get("Components.Count", int(doc().data.simulation.machineModel.components.size())); }
};

class MachineModelView final : public host::MachineModel, public View {
public:
    using View::View;
    std::shared_ptr<host::AxisGroups> AxisGroups() override
    {
        guard("MachineModel.AxisGroups");
        return std::make_shared<AxisGroupsView>(ctx_, doc_);
    }
    std::shared_ptr<host::Components> Components() override
    {
        guard("MachineModel.Components");
        return std::make_shared<ComponentsView>(ctx_, doc_);
    }
};

class StockView final : public host::Stock, public View {
public:
    StockView(ContextPtr context, DocumentPtr document, std::shared_ptr<StockData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }
    void setColour(int colour) override { put("Stock.Colour", data_->colour, colour); }
    void setStyleCode(int code) override { put("Stock.StyleCode", data_->styleCode, code); }
    void setOptionFlag(bool flag) override { put("Stock.OptionFlag", data_->optionFlag, flag); }
    void setPlacement(const std::array<double, 12>& placement) override
    {
        put("Stock.Placement", data_->placement, placement);
    }
    void setSpindle(std::shared_ptr<host::Spindle> spindle) override
    {
        guard("Stock.Spindle write");
        store(data_->spindle, own<SpindleView>(spindle, "Stock.Spindle write").Data().number);
    }
    std::shared_ptr<host::Feature> Profile() override
    {
        guard("Stock.Profile");
        auto feature = doc().Feature(data_->featureKey);
        if (!feature)
            fail("Stock.Profile", QStringLiteral("The profile of the stock \"%1\" no longer exists.").arg(data_->name));
        return std::make_shared<FeatureView>(ctx_, doc_, feature);
    }

private:
    std::shared_ptr<StockData> data_;
};

class SimulationView final : public host::Simulation, public View {
public:
    using View::View;

    std::shared_ptr<host::MachineModel> MachineModel() override
    {
        guard("Simulation.MachineModel");
        return std::make_shared<MachineModelView>(ctx_, doc_);
    }
    std::shared_ptr<host::Stock> AddStock(const QString& name, int kind, std::shared_ptr<host::Feature> profile,
                                          double length, double start) override
    {
        change("Simulation.AddStock");
        if (kind != 1)
            fail("Simulation.AddStock", QStringLiteral("Unknown stock kind %1.").arg(kind));
        if (stock(name))
            fail("Simulation.AddStock", QStringLiteral("A stock \"%1\" exists already.").arg(name));
        if (length <= 0)
            fail("Simulation.AddStock", QStringLiteral("The stock length must be positive."));
        auto data = std::make_shared<StockData>();
        data->name = name;
        data->kind = kind;
        data->featureKey = own<FeatureView>(profile, "Simulation.AddStock").Data().key;
        data->length = length;
        data->start = start;
        data->colour = simulation().defaultStockColour;
        simulation().stocks.append(data);
        return std::make_shared<StockView>(ctx_, doc_, data);
    }
    std::shared_ptr<host::Stock> Stock(const QString& name) override
    {
        guard("Simulation.Stock");
        auto data = stock(name);
        if (!data)
            fail("Simulation.Stock", QStringLiteral("No stock \"%1\".").arg(name));
        return std::make_shared<StockView>(ctx_, doc_, data);
    }
    void DeleteStock(const QString& name) override
    {
        change("Simulation.DeleteStock");
        if (simulation().stocks.removeIf([&name](const auto& s) { return s->name == name; }) == 0)
            fail("Simulation.DeleteStock", QStringLiteral("No stock \"%1\".").arg(name));
    }
    int DefaultStockColour() override { return get("Simulation.DefaultStockColour", simulation().defaultStockColour); }
    // Rebuilds the simulated stocks: each needs its profile feature.
    void Update(bool full) override
    {
        guard("Simulation.Update");
        Q_UNUSED(full);
        for (const auto& stock : simulation().stocks)
            if (!doc().Feature(stock->featureKey))
                fail("Simulation.Update",
                     QStringLiteral("The profile of the stock \"%1\" no longer exists.").arg(stock->name));
    }
    void Advise(host::SimulationEvents* sink) override
    {
        guard("Simulation.Advise");
        doc().simulationEvents.Advise(sink);
    }
    void Unadvise(host::SimulationEvents* sink) override
    {
        guard("Simulation.Unadvise");
        doc().simulationEvents.Unadvise(sink);
    }

private:
    SimulationData& simulation() const { return doc().data.simulation; }
    std::shared_ptr<StockData> stock(const QString& name) const
    {
        return find(simulation().stocks, [&name](const auto& s) { return s->name == name; });
    }
};

} // namespace

std::shared_ptr<host::Simulation> MakeSimulation(ContextPtr context, DocumentPtr document)
{
    return std::make_shared<SimulationView>(std::move(context), std::move(document));
}

} // namespace feldra
