#pragma once

#include "feldra/JsonRecord.h"

#include <type_traits>

// The fields of every record of a Feldra document under their JSON names: one
// list per record, used for writing and for reading (see JsonRecord.h).
namespace feldra {

template <typename R, typename T>
concept RecordOf = std::same_as<std::remove_const_t<R>, T>;

// Technology and tool parameters: an object keyed by the parameter's number
// as text; a parameter without caption and unknown fields is its bare value,
// any other {"value": ..., "caption": ...}.
void WriteJson(JsonText& text, const Parameters& parameters);
void FromJsonValue(JsonIn value, const JsonPlace& at, Parameters& target);

// ---- machine setup -----------------------------------------------------------

template <typename V, RecordOf<StationData> R> void Fields(V& field, R& station)
{
    field("number", station.number);
}

template <typename V, RecordOf<AxisLimitData> R> void Fields(V& field, R& limit)
{
    field("name", limit.name);
    field("upperLimit", limit.upperLimit);
}

template <typename V, RecordOf<TurretData> R> void Fields(V& field, R& turret)
{
    field("number", turret.number);
    field("zOffset", turret.zOffset);
    field("referenceZ", turret.referenceZ);
    field("stations", turret.stations);
    field("axisLimits", turret.axisLimits);
}

template <typename V, RecordOf<SpindleData> R> void Fields(V& field, R& spindle)
{
    field("number", spindle.number);
    field("name", spindle.name);
    field("workLength", spindle.workLength);
}

template <typename V, RecordOf<NCHeadData> R> void Fields(V& field, R& head)
{
    field("programName", head.programName);
    field("programNumber", head.programNumber);
    field("outputUnit", head.outputUnit);
    field("comment", head.comment);
}

template <typename V, RecordOf<SetupEntryData> R> void Fields(V& field, R& entry)
{
    field("name", entry.name);
}

template <typename V, RecordOf<MachineSetupData> R> void Fields(V& field, R& setup)
{
    field("makerTag", setup.makerTag);
    field("machineCode", setup.machineCode);
    field("machineSetupName", setup.machineSetupName);
    field("stockFrontZ", setup.stockFrontZ);
    field("stockDiameter", setup.stockDiameter);
    field("stockInsideDiameter", setup.stockInsideDiameter);
    field("stockLength", setup.stockLength);
    field("partLength", setup.partLength);
    field("stockCode", setup.stockCode);
    field("programName", setup.programName);
    field("programNumber", setup.programNumber);
    field("parameters", setup.params);
    field("faceAmount", setup.faceAmount);
    field("startupSpindleSpeed", setup.startupSpindleSpeed);
    field("barLoaderDwell", setup.barLoaderDwell);
    field("barLoaderType", setup.barLoaderType);
    field("toolBreakageDetection", setup.toolBreakageDetection);
    field("backSpindleExtension", setup.backSpindleExtension);
    field("barLoaderSubProgram", setup.barLoaderSubProgram);
    field("barLoaderCommand", setup.barLoaderCommand);
    field("setupEntries", setup.setupEntries);
    field("turrets", setup.turrets);
    field("spindles", setup.spindles);
    field("heads", setup.heads);
}

// ---- tools, operations and technologies --------------------------------------

template <typename V, RecordOf<ParameterData> R> void Fields(V& field, R& parameter)
{
    field("value", parameter.value);
    field("caption", parameter.caption);
}

template <typename V, RecordOf<ToolData> R> void Fields(V& field, R& tool)
{
    field("number", tool.number);
    field("toolId", tool.toolId);
    field("comment", tool.comment);
    field("toolType", tool.toolType);
    field("unitSystem", tool.unitSystem);
    field("xShift", tool.xShift);
    field("yShift", tool.yShift);
    field("zShift", tool.zShift);
    field("holderIndex", tool.holderIndex);
    field("gearRatio", tool.gearRatio);
    field("backSpindle", tool.backSpindle);
    field("turretNumber", tool.turretNumber);
    field("stationIndex", tool.stationIndex);
    field("spindleDirection", tool.spindleDirection);
    field("mountCode", tool.mountCode);
    field("centreOffset", tool.centreOffset);
    field("sideCode", tool.sideCode);
    field("cornerCode", tool.cornerCode);
    field("width", tool.width);
    field("zCode", tool.zCode);
    field("length", tool.length);
    field("parameters", tool.parameters);
}

template <typename V, RecordOf<TechnologyData> R> void Fields(V& field, R& technology)
{
    field("type", technology.type);
    field("parameters", technology.parameters);
    field("colletExtension", technology.colletExtension);
    field("spindleCode", technology.spindleCode);
    field("withoutTool", technology.withoutTool);
    field("toolId", technology.toolId);
}

template <typename V, RecordOf<CustomPropertyData> R> void Fields(V& field, R& property)
{
    field("name", property.name);
    field("caption", property.caption);
    field("type", property.type);
    field("value", property.value);
}

template <typename V, RecordOf<GeometryEntryData> R> void Fields(V& field, R& entry)
{
    field("kind", entry.kind);
    field("points", entry.points);
}

template <typename V, RecordOf<OperationData> R> void Fields(V& field, R& operation)
{
    field("id", operation.id);
    field("key", operation.key);
    field("name", operation.name);
    field("suppressed", operation.suppressed);
    field("technology", operation.technology);
    field("featureKey", operation.featureKey);
    field("geometry", operation.geometry);
    field("customProperties", operation.customProperties);
}

template <typename V, RecordOf<FeatureData> R> void Fields(V& field, R& feature)
{
    field("key", feature.key);
    field("layer", feature.layer);
    field("elements", feature.elements);
    field("customProperties", feature.customProperties);
}

template <typename V, RecordOf<SyncNodeData> R> void Fields(V& field, R& node)
{
    field("placement", node.placement);
    field("operationId", node.operationId);
    field("reserved3", node.reserved3);
    field("elementIndex", node.elementIndex);
    field("reserved5", node.reserved5);
}

template <typename V, RecordOf<SyncData> R> void Fields(V& field, R& sync)
{
    field("typeIndex", sync.typeIndex);
    field("nodes", sync.nodes);
}

// ---- document furniture ------------------------------------------------------

template <typename V, RecordOf<WorkPlaneData> R> void Fields(V& field, R& plane)
{
    field("name", plane.name);
    field("u", plane.u);
    field("v", plane.v);
    field("w", plane.w);
    field("origin", plane.origin);
    field("flag", plane.flag);
}

template <typename V, RecordOf<LayerData> R> void Fields(V& field, R& layer)
{
    field("name", layer.name);
}

// ---- simulation --------------------------------------------------------------

template <typename V, RecordOf<AxisData> R> void Fields(V& field, R& axis)
{
    field("name", axis.name);
    field("enabled", axis.enabled);
    field("position", axis.position);
}

template <typename V, RecordOf<AxisGroupData> R> void Fields(V& field, R& group)
{
    field("name", group.name);
    field("axes", group.axes);
}

template <typename V, RecordOf<ComponentData> R> void Fields(V& field, R& component)
{
    field("key", component.key);
    field("position", component.position);
}

template <typename V, RecordOf<MachineModelData> R> void Fields(V& field, R& model)
{
    field("axisGroups", model.axisGroups);
    field("components", model.components);
}

template <typename V, RecordOf<StockData> R> void Fields(V& field, R& stock)
{
    field("name", stock.name);
    field("kind", stock.kind);
    field("featureKey", stock.featureKey);
    field("length", stock.length);
    field("start", stock.start);
    field("colour", stock.colour);
    field("styleCode", stock.styleCode);
    field("optionFlag", stock.optionFlag);
    field("placement", stock.placement);
    field("spindle", stock.spindle);
}

template <typename V, RecordOf<SimulationData> R> void Fields(V& field, R& simulation)
{
    field("machineModel", simulation.machineModel);
    field("stocks", simulation.stocks);
    field("defaultStockColour", simulation.defaultStockColour);
}

// ---- the document ------------------------------------------------------------

template <typename V, RecordOf<DocumentData> R> void Fields(V& field, R& document)
{
    field("title", document.title);
    field("machineType", document.machineType);
    field("unitSystem", document.unitSystem);
    field("machineSetup", document.machineSetup);
    field("tools", document.tools);
    field("operations", document.operations);
    field("features", document.features);
    field("syncs", document.syncs);
    field("workPlanes", document.workPlanes);
    field("activeWorkPlane", document.activeWorkPlane);
    field("layers", document.layers);
    field("simulation", document.simulation);
}

} // namespace feldra
