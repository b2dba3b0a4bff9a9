// The document and its furniture: work planes, layers, feature chains, points,
// custom properties and the technology utility.
#include "addin/host/CustomProperties.h"
#include "addin/host/CustomProperty.h"
#include "addin/host/FeatureChains.h"
#include "addin/host/Layers.h"
#include "addin/host/TechnologyUtility.h"
#include "addin/host/WorkPlanes.h"
#include "feldra/Views.h"

#include <algorithm>

namespace feldra {

namespace {

auto named(const QString& name)
{
    return [name](const auto& record) { return record->name == name; };
}

// ---- custom properties -------------------------------------------------------

// A value converted to what a property of the type holds: 5 a double, 8 a text.
QVariant AsPropertyType(const QString& operation, int type, const QVariant& value)
{
    if (type == 5) {
        bool ok = false;
        const double number = value.toDouble(&ok);
        if (!ok)
            throw host::HostError(operation, QStringLiteral("Type mismatch: a number is required."));
        return number;
    }
    if (type == 8)
        return value.toString();
    return value;
}

class CustomPropertyView final : public host::CustomProperty, public View {
public:
    CustomPropertyView(ContextPtr context, DocumentPtr document, std::shared_ptr<CustomPropertyData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }

    QVariant Value() override { return get("CustomProperty.Value", data_->value); }
    void setValue(const QVariant& value) override
    {
        guard("CustomProperty.Value write");
        store(data_->value, AsPropertyType("CustomProperty.Value write", data_->type, value));
    }
    int Type() override { return get("CustomProperty.Type", data_->type); }
    void setCaption(const QString& caption) override { put("CustomProperty.Caption", data_->caption, caption); }

private:
    std::shared_ptr<CustomPropertyData> data_;
};

class CustomPropertiesView final : public host::CustomProperties, public View {
public:
    CustomPropertiesView(ContextPtr context, DocumentPtr document, std::shared_ptr<CustomPropertyList> list)
        : View(std::move(context), std::move(document)), list_(std::move(list))
    {
    }

    std::shared_ptr<host::CustomProperty> Item(const QString& name) override
    {
        guard("CustomProperties.Item");
        auto data = find(*list_, named(name));
        if (!data)
            fail("CustomProperties.Item", QStringLiteral("No custom property \"%1\".").arg(name));
        return std::make_shared<CustomPropertyView>(ctx_, doc_, data);
    }
    int Count() override { return get("CustomProperties.Count", int(list_->size())); }
    void Remove(const QString& name) override
    {
        change("CustomProperties.Remove");
        if (list_->removeIf(named(name)) == 0)
            fail("CustomProperties.Remove", QStringLiteral("No custom property \"%1\".").arg(name));
    }
    std::shared_ptr<host::CustomProperty> Add(const QString& name, const QString& caption, int type,
                                              const QVariant& initialValue) override
    {
        change("CustomProperties.Add");
        if (name.isEmpty() || find(*list_, named(name)))
            fail("CustomProperties.Add", QStringLiteral("The name \"%1\" is empty or taken.").arg(name));
        auto data = std::make_shared<CustomPropertyData>();
        data->name = name;
        data->caption = caption;
        data->type = type;
        data->value = AsPropertyType("CustomProperties.Add", type, initialValue);
        list_->append(data);
        return std::make_shared<CustomPropertyView>(ctx_, doc_, data);
    }

private:
    std::shared_ptr<CustomPropertyList> list_;
};

// ---- work planes, layers, feature chains -------------------------------------

class WorkPlanesView final : public host::WorkPlanes, public View {
public:
    using View::View;

    std::shared_ptr<host::WorkPlane> Item(const QString& name) override
    {
        guard("WorkPlanes.Item");
        auto data = find(doc().data.workPlanes, named(name));
        if (!data)
            fail("WorkPlanes.Item", QStringLiteral("No work plane \"%1\".").arg(name));
        return std::make_shared<WorkPlaneView>(ctx_, doc_, data);
    }
    std::shared_ptr<host::WorkPlane> Item(int position) override
    {
        guard("WorkPlanes.Item");
        return std::make_shared<WorkPlaneView>(ctx_, doc_, at(doc().data.workPlanes, position, "WorkPlanes.Item"));
    }
    int Count() override { return get("WorkPlanes.Count", int(doc().data.workPlanes.size())); }
    std::shared_ptr<host::WorkPlane> Add(const QString& name) override
    {
        change("WorkPlanes.Add");
        if (name.isEmpty() || find(doc().data.workPlanes, named(name)))
            fail("WorkPlanes.Add", QStringLiteral("The name \"%1\" is empty or taken.").arg(name));
        auto data = std::make_shared<WorkPlaneData>();
        data->name = name;
        doc().data.workPlanes.append(data);
        return std::make_shared<WorkPlaneView>(ctx_, doc_, data);
    }
    void Remove(const QString& name) override
    {
        change("WorkPlanes.Remove");
        if (doc().data.workPlanes.removeIf(named(name)) == 0)
            fail("WorkPlanes.Remove", QStringLiteral("No work plane \"%1\".").arg(name));
        if (doc().data.activeWorkPlane == name)
            doc().data.activeWorkPlane.clear();
    }
};

class LayersView final : public host::Layers, public View {
public:
    using View::View;

    std::shared_ptr<host::Layer> Item(const QString& name) override
    {
        guard("Layers.Item");
        auto data = find(doc().data.layers, named(name));
        if (!data)
            fail("Layers.Item", QStringLiteral("No layer \"%1\".").arg(name));
        return std::make_shared<LayerView>(ctx_, doc_, data);
    }
    int Count() override { return get("Layers.Count", int(doc().data.layers.size())); }
    std::shared_ptr<host::Layer> Add(const QString& name) override
    {
        change("Layers.Add");
        if (name.isEmpty() || find(doc().data.layers, named(name)))
            fail("Layers.Add", QStringLiteral("The name \"%1\" is empty or taken.").arg(name));
        auto data = std::make_shared<LayerData>();
        data->name = name;
        doc().data.layers.append(data);
        return std::make_shared<LayerView>(ctx_, doc_, data);
    }
};

class FeatureChainsView final : public host::FeatureChains, public View {
public:
    using View::View;

    std::shared_ptr<host::Feature> Item(const QString& key) override
    {
        guard("FeatureChains.Item");
        auto data = doc().Feature(key);
        if (!data)
            fail("FeatureChains.Item", QStringLiteral("No feature with the key \"%1\".").arg(key));
        return std::make_shared<FeatureView>(ctx_, doc_, data);
    }
    int Count() override { return get("FeatureChains.Count", int(doc().data.features.size())); }
    std::shared_ptr<host::Feature> Add(const host::Segment& first) override
    {
        change("FeatureChains.Add");
        auto data = std::make_shared<FeatureData>();
        data->key = doc().NewKey(QStringLiteral("Chain"));
        data->elements = {{first.x1, first.y1, first.z1}, {first.x2, first.y2, first.z2}};
        doc().data.features.append(data);
        return std::make_shared<FeatureView>(ctx_, doc_, data);
    }
    void Remove(const QString& key) override
    {
        guard("FeatureChains.Remove");
        if (!doc().Feature(key))
            fail("FeatureChains.Remove", QStringLiteral("No feature with the key \"%1\".").arg(key));
        for (const auto& op : doc().data.operations)
            if (op->featureKey == key)
                fail("FeatureChains.Remove",
                     QStringLiteral("The operation \"%1\" is made from the feature \"%2\".").arg(op->name, key));
        for (const auto& stock : doc().data.simulation.stocks)
            if (stock->featureKey == key)
                fail("FeatureChains.Remove",
                     QStringLiteral("The stock \"%1\" is made from the feature \"%2\".").arg(stock->name, key));
        touch();
        doc().data.features.removeIf([&key](const auto& feature) { return feature->key == key; });
    }
};

class TechnologyUtilityView final : public host::TechnologyUtility, public View {
public:
    using View::View;

    void Advise(host::TechnologyUtilityEvents* sink) override
    {
        guard("TechnologyUtility.Advise");
        doc().technologyUtilityEvents.Advise(sink);
    }
    void Unadvise(host::TechnologyUtilityEvents* sink) override
    {
        guard("TechnologyUtility.Unadvise");
        doc().technologyUtilityEvents.Unadvise(sink);
    }
};

// ---- the document ------------------------------------------------------------

class DocumentView final : public host::Document, public View {
public:
    using View::View;

    int MachineType() override { return get("Document.MachineType", doc().data.machineType); }
    int UnitSystem() override { return get("Document.UnitSystem", doc().data.unitSystem); }
    std::shared_ptr<host::MachineSetup> MachineSetup() override
    {
        guard("Document.MachineSetup");
        return MakeMachineSetup(ctx_, doc_);
    }
    std::shared_ptr<host::Tools> Tools() override
    {
        guard("Document.Tools");
        return MakeTools(ctx_, doc_);
    }
    bool IsToolUsed(std::shared_ptr<host::Tool> tool) override
    {
        guard("Document.IsToolUsed");
        const QString id = own<ToolView>(tool, "Document.IsToolUsed").Data().toolId;
        return std::any_of(doc().data.operations.cbegin(), doc().data.operations.cend(),
                           [&id](const auto& operation) { return UsesTool(*operation->technology, id); });
    }
    std::shared_ptr<host::Operations> Operations() override
    {
        guard("Document.Operations");
        return MakeOperations(ctx_, doc_);
    }
    std::shared_ptr<host::Syncs> Syncs() override
    {
        guard("Document.Syncs");
        return MakeSyncs(ctx_, doc_);
    }
    std::shared_ptr<host::Simulation> Simulation() override
    {
        guard("Document.Simulation");
        return MakeSimulation(ctx_, doc_);
    }
    std::shared_ptr<host::TechnologyUtility> TechnologyUtility() override
    {
        guard("Document.TechnologyUtility");
        return std::make_shared<TechnologyUtilityView>(ctx_, doc_);
    }
    std::shared_ptr<host::WorkPlanes> WorkPlanes() override
    {
        guard("Document.WorkPlanes");
        return std::make_shared<WorkPlanesView>(ctx_, doc_);
    }
    void setActiveWorkPlane(std::shared_ptr<host::WorkPlane> plane) override
    {
        guard("Document.ActiveWorkPlane write");
        store(doc().data.activeWorkPlane, own<WorkPlaneView>(plane, "Document.ActiveWorkPlane write").Data().name);
    }
    std::shared_ptr<host::Layers> Layers() override
    {
        guard("Document.Layers");
        return std::make_shared<LayersView>(ctx_, doc_);
    }
    std::shared_ptr<host::FeatureChains> FeatureChains() override
    {
        guard("Document.FeatureChains");
        return std::make_shared<FeatureChainsView>(ctx_, doc_);
    }
    std::shared_ptr<host::GraphicObject> PickObject(const QString& prompt, int filter) override
    {
        guard("Document.PickObject");
        ctx().log.RecordRequest("Document.PickObject", {prompt, QString::number(filter)});
        const QString key = PickedKey(prompt, filter);
        if (key.isEmpty())
            return nullptr;
        if (auto feature = doc().Feature(key))
            return std::make_shared<FeatureView>(ctx_, doc_, feature);
        auto operation = find(doc().data.operations, [&key](const auto& op) { return op->key == key; });
        if (!operation)
            fail("Document.PickObject", QStringLiteral("No object with the key \"%1\".").arg(key));
        return std::make_shared<OperationView>(ctx_, doc_, operation);
    }
    void RefreshView() override
    {
        guard("Document.RefreshView");
        ctx().log.RecordRequest("Document.RefreshView");
        if (ctx().services.refreshView)
            ctx().services.refreshView();
    }
    std::shared_ptr<host::Point> MakePoint(double x, double y, double z) override
    {
        guard("Document.MakePoint");
        return std::make_shared<PointView>(ctx_, Point3{x, y, z});
    }
    // Whether the view follows the changes is no part of the document.
    void setUpdateState(bool state) override
    {
        guard("Document.UpdateState write");
        doc().updateState = state;
    }
    void setTitle(const QString& title) override { put("Document.Title", doc().data.title, title); }
    void Advise(host::DocumentEvents* sink) override
    {
        guard("Document.Advise");
        doc().documentEvents.Advise(sink);
    }
    void Unadvise(host::DocumentEvents* sink) override
    {
        guard("Document.Unadvise");
        doc().documentEvents.Unadvise(sink);
    }

private:
    // An operation uses a tool when its technology names the tool's identifier.
    static bool UsesTool(const TechnologyData& technology, const QString& toolId)
    {
        if (technology.type == 154)
            return technology.withoutTool == 0 && technology.toolId == toolId;
        for (const char* name : {"498", "ToolID"}) {
            const auto it = technology.parameters.constFind(QString::fromLatin1(name));
            if (it != technology.parameters.cend() && it->value.toString() == toolId)
                return true;
        }
        return false;
    }

    QString PickedKey(const QString& prompt, int filter) const
    {
        HostServices& services = ctx().services;
        if (services.pickObject)
            return services.pickObject(prompt, filter);
        return services.pickAnswers.isEmpty() ? QString() : services.pickAnswers.takeFirst();
    }
};

} // namespace

std::shared_ptr<host::Document> MakeDocument(ContextPtr context, DocumentPtr document)
{
    return std::make_shared<DocumentView>(std::move(context), std::move(document));
}

std::shared_ptr<host::CustomProperties> MakeCustomProperties(ContextPtr context, DocumentPtr document,
                                                             std::shared_ptr<CustomPropertyList> list)
{
    return std::make_shared<CustomPropertiesView>(std::move(context), std::move(document), std::move(list));
}

// ---- points, features, layers, work planes -----------------------------------

double PointView::X() { return get("Point.X", value_.x); }
void PointView::setX(double x) { put("Point.X", value_.x, x); }
double PointView::Y() { return get("Point.Y", value_.y); }
void PointView::setY(double y) { put("Point.Y", value_.y, y); }
double PointView::Z() { return get("Point.Z", value_.z); }
void PointView::setZ(double z) { put("Point.Z", value_.z, z); }

QString FeatureView::Key() { return get("Feature.Key", data_->key); }

std::shared_ptr<host::CustomProperties> FeatureView::CustomProperties()
{
    guard("Feature.CustomProperties");
    return MakeCustomProperties(ctx_, doc_, std::shared_ptr<CustomPropertyList>(data_, &data_->customProperties));
}

int FeatureView::Count() { return get("Feature.Count", int(data_->elements.size())); }

std::shared_ptr<host::Point> FeatureView::Element(int i)
{
    guard("Feature.Element");
    return std::make_shared<PointView>(ctx_, at(data_->elements, i, "Feature.Element"));
}

void FeatureView::AddSegment(const host::Segment& segment)
{
    change("Feature.AddSegment");
    if (data_->elements.isEmpty())
        data_->elements.append({segment.x1, segment.y1, segment.z1});
    data_->elements.append({segment.x2, segment.y2, segment.z2});
}

std::shared_ptr<host::Layer> FeatureView::Layer()
{
    guard("Feature.Layer");
    auto layer = find(doc().data.layers, [this](const auto& l) { return l->name == data_->layer; });
    if (!layer)
        fail("Feature.Layer", QStringLiteral("The feature \"%1\" is on no layer.").arg(data_->key));
    return std::make_shared<LayerView>(ctx_, doc_, layer);
}

void FeatureView::setLayer(std::shared_ptr<host::Layer> layer)
{
    guard("Feature.Layer write");
    store(data_->layer, own<LayerView>(layer, "Feature.Layer write").Data().name);
}

QString LayerView::Name() { return get("Layer.Name", data_->name); }

QString WorkPlaneView::Name() { return get("WorkPlane.Name", data_->name); }
void WorkPlaneView::setU(double x, double y, double z) { put("WorkPlane.U", data_->u, Point3{x, y, z}); }
void WorkPlaneView::setV(double x, double y, double z) { put("WorkPlane.V", data_->v, Point3{x, y, z}); }
void WorkPlaneView::setW(double x, double y, double z) { put("WorkPlane.W", data_->w, Point3{x, y, z}); }
void WorkPlaneView::setOrigin(double x, double y, double z)
{
    put("WorkPlane.Origin", data_->origin, Point3{x, y, z});
}
void WorkPlaneView::setFlag(int flag) { put("WorkPlane.Flag", data_->flag, flag); }

} // namespace feldra
