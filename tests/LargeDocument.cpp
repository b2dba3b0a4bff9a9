#include "LargeDocument.h"

using namespace feldra;

DocumentData LargeDocument(int scale)
{
    DocumentData document;
    const int tools = 1000 * scale;
    for (int i = 1; i <= tools; ++i) {
        auto tool = std::make_shared<ToolData>();
        tool->number = i;
        tool->toolId = QStringLiteral("T%1").arg(i);
        tool->comment = QStringLiteral("Tool %1, 0.4 corner radius").arg(i);
        tool->toolType = 16 + i % 8;
        tool->xShift = -20.5 + i * 0.001;
        tool->zShift = i / 3.0;
        tool->turretNumber = 1 + i % 2;
        tool->stationIndex = 1 + i % 8;
        tool->parameters[QStringLiteral("121")].value = double(i);
        document.tools.append(tool);
    }
    for (int i = 1; i <= tools; ++i) {
        auto feature = std::make_shared<FeatureData>();
        feature->key = QStringLiteral("F%1").arg(i);
        feature->layer = QStringLiteral("Geometry");
        feature->elements = {{0, 0, 0}, {5, 0, -i * 0.1}, {8, 0, -i * 0.2}, {8, 0, -40}};
        document.features.append(feature);
    }
    for (int i = 1; i <= 2 * tools; ++i) {
        auto op = std::make_shared<OperationData>();
        op->id = i;
        op->key = QStringLiteral("OP%1").arg(i);
        op->name = QStringLiteral("Operation %1").arg(i);
        op->featureKey = QStringLiteral("F%1").arg(1 + i % tools);
        op->technology->type = i % 7 == 0 ? 154 : 145;
        Parameters& p = op->technology->parameters;
        p[QStringLiteral("ToolID")].value = QStringLiteral("T%1").arg(1 + i % tools);
        p[QStringLiteral("498")].value = QStringLiteral("T%1").arg(1 + i % tools);
        p[QStringLiteral("HeadID")].value = 1.0 + i % 2;
        p[QStringLiteral("SpindleID")].value = 1.0 + i % 2;
        for (int n : {232, 233, 239, 497, 631, 778, 792, 793})
            p[QString::number(n)].value = n / 7.0;
        p[QStringLiteral("631")].caption = QStringLiteral("Chamfer Distance X");
        op->geometry = {{903, {{8, 0, -i * 0.01}}, {}}};
        op->customProperties = {std::make_shared<CustomPropertyData>()};
        *op->customProperties[0] = {QStringLiteral("Z2Position"), QStringLiteral("Z2 Position"), 5, 180.5, {}};
        document.operations.append(op);
    }
    for (int i = 0; i < 500 * scale; ++i) {
        auto sync = std::make_shared<SyncData>();
        sync->typeIndex = 1 + i % 4;
        sync->nodes[0] = {3, 1 + 2 * i, 0, 2 * i, 0, {}};
        sync->nodes[1] = {3, 2 + 2 * i, 0, 2 * i + 1, 0, {}};
        document.syncs.append(sync);
    }
    return document;
}
