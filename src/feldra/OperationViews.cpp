// Operations, their technologies, parameters and geometry, and the
// synchronisations between operations.
#include "addin/host/GeometryList.h"
#include "addin/host/Sync.h"
#include "addin/host/Technology154.h"
#include "addin/host/Technology207.h"
#include "addin/host/TechnologyParameter.h"
#include "feldra/Views.h"

#include <QSet>


namespace feldra {

namespace {

class ParameterView final : public host::TechnologyParameter, public View {
public:
    ParameterView(ContextPtr context, DocumentPtr document, std::shared_ptr<Parameters> parameters,
                  QString number)
        : View(std::move(context), std::move(document)), parameters_(std::move(parameters)),
          number_(std::move(number))
    {
    }

    QVariant Value() override { return data("TechnologyParameter.Value").value; }
    void setValue(const QVariant& value) override { store(data("TechnologyParameter.Value write").value, value); }
    QString Caption() override { return data("TechnologyParameter.Caption").caption; }
    void setCaption(const QString& caption) override
    {
        store(data("TechnologyParameter.Caption write").caption, caption);
    }

private:
    // The parameter's record, once the operation has passed its guard.
    ParameterData& data(const QString& operation) const
    {
        guard(operation);
        auto it = parameters_->find(number_);
        if (it == parameters_->end())
            fail(operation, QStringLiteral("The parameter %1 no longer exists.").arg(number_));
        return *it;
    }

    std::shared_ptr<Parameters> parameters_;
    QString number_;
};

class Technology207View final : public host::Technology207, public View {
public:
    Technology207View(ContextPtr context, DocumentPtr document, std::shared_ptr<TechnologyData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }
    double ColletExtension() override { return get("Technology207.ColletExtension", data_->colletExtension); }
    void setColletExtension(double value) override
    {
        put("Technology207.ColletExtension", data_->colletExtension, value);
    }

private:
    std::shared_ptr<TechnologyData> data_;
};

class Technology154View final : public host::Technology154, public View {
public:
    Technology154View(ContextPtr context, DocumentPtr document, std::shared_ptr<TechnologyData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }
    int SpindleCode() override { return get("Technology154.SpindleCode", data_->spindleCode); }
    int WithoutTool() override { return get("Technology154.WithoutTool", data_->withoutTool); }
    QString ToolID() override { return get("Technology154.ToolID", data_->toolId); }

private:
    std::shared_ptr<TechnologyData> data_;
};

class GeometryListView final : public host::GeometryList, public View {
public:
    GeometryListView(ContextPtr context, DocumentPtr document, std::shared_ptr<OperationData> operation)
        : View(std::move(context), std::move(document)), operation_(std::move(operation))
    {
    }
    int Count() override { return get("GeometryList.Count", int(operation_->geometry.size())); }
    int Kind(int i) override
    {
        guard("GeometryList.Kind");
        return at(operation_->geometry, i, "GeometryList.Kind").kind;
    }
    QList<std::shared_ptr<host::Point>> Points(int i) override
    {
        guard("GeometryList.Points");
        QList<std::shared_ptr<host::Point>> points;
        for (const Point3& point : at(operation_->geometry, i, "GeometryList.Points").points)
            points.append(std::make_shared<PointView>(ctx_, point));
        return points;
    }

private:
    std::shared_ptr<OperationData> operation_;
};

class OperationsView final : public host::Operations, public View {
public:
    using View::View;

    std::shared_ptr<host::Operation> Item(int i) override
    {
        guard("Operations.Item");
        return std::make_shared<OperationView>(ctx_, doc_, at(doc().data.operations, i, "Operations.Item"));
    }
    int Count() override { return get("Operations.Count", int(doc().data.operations.size())); }

    // Mode 1 (the only one Feldra knows) orders from the first position: the
    // listed operations come first, in the list's order; empty positions are
    // skipped and operations the list leaves out follow in their old order. The
    // flag is accepted and has no further meaning here.
    void Rearrange(const QList<std::shared_ptr<host::Operation>>& order, int mode, bool flag) override
    {
        change("Operations.Rearrange");
        Q_UNUSED(flag);
        if (mode != 1)
            fail("Operations.Rearrange", QStringLiteral("Unknown mode %1.").arg(mode));
        // Looked up in sets, not in the lists: a long list is arranged in linear time.
        QSet<const OperationData*> present;
        present.reserve(doc().data.operations.size());
        for (const auto& data : doc().data.operations)
            present.insert(data.get());
        QSet<const OperationData*> listed;
        QList<std::shared_ptr<OperationData>> arranged;
        arranged.reserve(doc().data.operations.size());
        for (const auto& operation : order) {
            if (!operation)
                continue;
            auto data = own<OperationView>(operation, "Operations.Rearrange").Data();
            if (listed.contains(data.get()) || !present.contains(data.get()))
                fail("Operations.Rearrange", QStringLiteral("\"%1\" is listed twice or was deleted.").arg(data->name));
            listed.insert(data.get());
            arranged.append(data);
        }
        for (const auto& data : doc().data.operations)
            if (!listed.contains(data.get()))
                arranged.append(data);
        doc().data.operations = arranged;
    }
};

class SyncView final : public host::Sync, public View {
public:
    SyncView(ContextPtr context, DocumentPtr document, std::shared_ptr<SyncData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data))
    {
    }
    int TypeIndex() override { return get("Sync.TypeIndex", data_->typeIndex); }
    // A node whose operation has been deleted carries no operation.
    std::array<host::SyncNode, 4> Nodes() override
    {
        guard("Sync.Nodes");
        std::array<host::SyncNode, 4> nodes;
        for (size_t i = 0; i < nodes.size(); ++i) {
            const SyncNodeData& node = data_->nodes[i];
            auto operation = doc().OperationById(node.operationId);
            nodes[i] = {node.placement, operation ? std::make_shared<OperationView>(ctx_, doc_, operation) : nullptr,
                        node.reserved3, node.elementIndex, node.reserved5};
        }
        return nodes;
    }

private:
    std::shared_ptr<SyncData> data_;
};

class SyncsView final : public host::Syncs, public View {
public:
    using View::View;

    int Count() override { return get("Syncs.Count", int(doc().data.syncs.size())); }
    std::shared_ptr<host::Sync> Item(int i) override
    {
        guard("Syncs.Item");
        return std::make_shared<SyncView>(ctx_, doc_, at(doc().data.syncs, i, "Syncs.Item"));
    }
    void Remove(int i) override
    {
        change("Syncs.Remove");
        at(doc().data.syncs, i, "Syncs.Remove");
        doc().data.syncs.removeAt(i - 1);
    }
    // Type index 0 makes a synchronisation of no known type, which the host keeps.
    std::shared_ptr<host::Sync> Add(int typeIndex, const std::array<host::SyncNode, 4>& nodes) override
    {
        change("Syncs.Add");
        const int types = int(doc().data.machineSetup.setupEntries.size());
        if (typeIndex < 0 || typeIndex > types)
            fail("Syncs.Add", QStringLiteral("Type index %1 is not between 0 and %2.").arg(typeIndex).arg(types));
        auto data = std::make_shared<SyncData>();
        data->typeIndex = typeIndex;
        for (size_t i = 0; i < nodes.size(); ++i) {
            const host::SyncNode& node = nodes[i];
            SyncNodeData& stored = data->nodes[i];
            stored.placement = node.placement;
            stored.reserved3 = node.reserved3;
            stored.elementIndex = node.elementIndex;
            stored.reserved5 = node.reserved5;
            if (node.operation)
                stored.operationId = doc().OperationId(*own<OperationView>(node.operation, "Syncs.Add").Data());
        }
        doc().data.syncs.append(data);
        return std::make_shared<SyncView>(ctx_, doc_, data);
    }
};

} // namespace

std::shared_ptr<host::TechnologyParameter> MakeParameter(ContextPtr context, DocumentPtr document,
                                                         std::shared_ptr<Parameters> parameters,
                                                         const QString& number, const QString& owner)
{
    if (!parameters->contains(number))
        throw host::HostError(owner, QStringLiteral("No parameter %1.").arg(number));
    return std::make_shared<ParameterView>(std::move(context), std::move(document), std::move(parameters), number);
}

std::shared_ptr<host::Operations> MakeOperations(ContextPtr context, DocumentPtr document)
{
    return std::make_shared<OperationsView>(std::move(context), std::move(document));
}

std::shared_ptr<host::Syncs> MakeSyncs(ContextPtr context, DocumentPtr document)
{
    return std::make_shared<SyncsView>(std::move(context), std::move(document));
}

// ---- technology --------------------------------------------------------------

int TechnologyView::TechnologyType() { return get("Technology.TechnologyType", data_->type); }

std::shared_ptr<host::TechnologyParameter> TechnologyView::Parameter(const QString& number)
{
    guard("Technology.Parameter");
    return MakeParameter(ctx_, doc_, std::shared_ptr<Parameters>(data_, &data_->parameters), number,
                         "Technology.Parameter");
}

std::shared_ptr<host::Technology207> TechnologyView::AsTechnology207()
{
    guard("Technology.AsTechnology207");
    if (data_->type != 207)
        fail("Technology.AsTechnology207", QStringLiteral("The technology is of type %1.").arg(data_->type));
    return std::make_shared<Technology207View>(ctx_, doc_, data_);
}

std::shared_ptr<host::Technology154> TechnologyView::AsTechnology154()
{
    guard("Technology.AsTechnology154");
    if (data_->type != 154)
        fail("Technology.AsTechnology154", QStringLiteral("The technology is of type %1.").arg(data_->type));
    return std::make_shared<Technology154View>(ctx_, doc_, data_);
}

// ---- operation ---------------------------------------------------------------

QString OperationView::Key() { return get("Operation.Key", data_->key); }

std::shared_ptr<host::CustomProperties> OperationView::CustomProperties()
{
    guard("Operation.CustomProperties");
    return MakeCustomProperties(ctx_, doc_, std::shared_ptr<CustomPropertyList>(data_, &data_->customProperties));
}

QString OperationView::Name() { return get("Operation.Name", data_->name); }
bool OperationView::Suppressed() { return get("Operation.Suppressed", data_->suppressed); }

std::shared_ptr<host::Technology> OperationView::Technology()
{
    guard("Operation.Technology");
    return std::make_shared<TechnologyView>(ctx_, doc_, data_->technology);
}

std::shared_ptr<host::Feature> OperationView::Feature()
{
    guard("Operation.Feature");
    auto feature = doc().Feature(data_->featureKey);
    if (!feature)
        fail("Operation.Feature", QStringLiteral("The operation \"%1\" has no feature.").arg(data_->name));
    return std::make_shared<FeatureView>(ctx_, doc_, feature);
}

std::shared_ptr<host::GeometryList> OperationView::GeometryList()
{
    guard("Operation.GeometryList");
    return std::make_shared<GeometryListView>(ctx_, doc_, data_);
}

} // namespace feldra
