#pragma once

#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>
#include <array>
#include <memory>

// The plain data of a Feldra document: everything the host facade exposes.
// Records that facade objects refer to are held by shared_ptr, so that an object
// the add-in keeps stays valid while the lists around it change. Every record
// keeps the fields the host does not know in `extra`, so that a saved document
// gives them back.
//
// Two records are equal when their own fields are: the records a list holds
// compare by identity (the same shared record), not by their values, so that
// a change to one record is a change of that record only.
namespace feldra {

struct Point3 {
    double x = 0, y = 0, z = 0;
    friend bool operator==(const Point3&, const Point3&) = default;
};

// ---- machine setup -----------------------------------------------------------

struct StationData {
    int number = 0; // key within the turret
    QJsonObject extra;
    friend bool operator==(const StationData&, const StationData&) = default;
};

struct AxisLimitData {
    QString name;
    double upperLimit = 0;
    QJsonObject extra;
    friend bool operator==(const AxisLimitData&, const AxisLimitData&) = default;
};

struct TurretData {
    int number = 0; // key: 1 main, 2 back-spindle turret
    double zOffset = 0;
    double referenceZ = 0;
    QList<std::shared_ptr<StationData>> stations;
    QList<std::shared_ptr<AxisLimitData>> axisLimits;
    QJsonObject extra;
    friend bool operator==(const TurretData&, const TurretData&) = default;
};

struct SpindleData {
    int number = 0; // key: 1 main spindle
    QString name;
    double workLength = 0;
    QJsonObject extra;
    friend bool operator==(const SpindleData&, const SpindleData&) = default;
};

struct NCHeadData {
    QString programName;
    int programNumber = 0;
    int outputUnit = 71; // 70 inches, 71 millimetres
    QString comment;
    QJsonObject extra;
    friend bool operator==(const NCHeadData&, const NCHeadData&) = default;
};

struct SetupEntryData {
    QString name; // the synchronisation types ("G821", ...) among others
    QJsonObject extra;
    friend bool operator==(const SetupEntryData&, const SetupEntryData&) = default;
};

struct MachineSetupData {
    QString makerTag;
    QString machineCode;
    QString machineSetupName;
    double stockFrontZ = 0;
    double stockDiameter = 0;
    double stockInsideDiameter = 0;
    double stockLength = 0;
    double partLength = 0;
    QString stockCode;
    QString programName;
    int programNumber = 0;
    QMap<int, double> params; // the numbered parameters: 813 ... 992, by number
    double faceAmount = 0;
    double startupSpindleSpeed = 0;
    double barLoaderDwell = 0;
    double barLoaderType = 0;
    double toolBreakageDetection = 0;
    QString backSpindleExtension;
    QString barLoaderSubProgram;
    QString barLoaderCommand;
    QList<std::shared_ptr<SetupEntryData>> setupEntries;
    QList<std::shared_ptr<TurretData>> turrets;
    QList<std::shared_ptr<SpindleData>> spindles;
    QList<std::shared_ptr<NCHeadData>> heads;
    QJsonObject extra;
    friend bool operator==(const MachineSetupData&, const MachineSetupData&) = default;
};

// ---- tools, operations and technologies --------------------------------------

struct ParameterData {
    QVariant value;
    QString caption;
    QJsonObject extra;
    friend bool operator==(const ParameterData&, const ParameterData&) = default;
};

using Parameters = QMap<QString, ParameterData>; // by number as text ("797") or name ("ToolID")

struct ToolData {
    int number = 0;
    QString toolId;
    QString comment;
    int toolType = 0; // lathe kinds 16 ... 23
    int unitSystem = 71;
    double xShift = 0, yShift = 0, zShift = 0;
    double holderIndex = 0;
    double gearRatio = 1;
    int backSpindle = 0;
    int turretNumber = 1;
    int stationIndex = 1;
    int spindleDirection = 0;
    // the lathe kind views
    int mountCode = 0;
    double centreOffset = 0;
    int sideCode = 0;
    int cornerCode = 0;
    double width = 0;
    int zCode = 0;
    double length = 0;
    Parameters parameters; // "121" the length-offset number
    QJsonObject extra;
    friend bool operator==(const ToolData&, const ToolData&) = default;
};

struct TechnologyData {
    int type = 0;
    Parameters parameters;
    double colletExtension = 0; // type 207
    int spindleCode = 0;        // type 154
    int withoutTool = 0;        // type 154
    QString toolId;             // type 154
    QJsonObject extra;
    friend bool operator==(const TechnologyData&, const TechnologyData&) = default;
};

struct CustomPropertyData {
    QString name;
    QString caption;
    int type = 5; // 5 double, 8 text
    QVariant value;
    QJsonObject extra;
    friend bool operator==(const CustomPropertyData&, const CustomPropertyData&) = default;
};

using CustomPropertyList = QList<std::shared_ptr<CustomPropertyData>>;

struct GeometryEntryData {
    int kind = 0; // 902, 903 points; 12, 13 curves holding points
    QList<Point3> points;
    QJsonObject extra;
    friend bool operator==(const GeometryEntryData&, const GeometryEntryData&) = default;
};

struct OperationData {
    int id = 0; // unique in the document; synchronisation nodes refer to it
    QString key;
    QString name;
    bool suppressed = false;
    std::shared_ptr<TechnologyData> technology = std::make_shared<TechnologyData>();
    QString featureKey; // into DocumentData::features
    QList<GeometryEntryData> geometry;
    CustomPropertyList customProperties;
    QJsonObject extra;
    friend bool operator==(const OperationData&, const OperationData&) = default;
};

struct FeatureData {
    QString key;
    QString layer;
    QList<Point3> elements; // the chain's points in order
    CustomPropertyList customProperties;
    QJsonObject extra;
    friend bool operator==(const FeatureData&, const FeatureData&) = default;
};

struct SyncNodeData {
    int placement = 0;
    int operationId = 0; // 0: no operation
    int reserved3 = 0;
    int elementIndex = 0;
    int reserved5 = 0;
    QJsonObject extra;
    friend bool operator==(const SyncNodeData&, const SyncNodeData&) = default;
};

struct SyncData {
    int typeIndex = 0; // position among the setup entries, 0 for none
    std::array<SyncNodeData, 4> nodes;
    QJsonObject extra;
    friend bool operator==(const SyncData&, const SyncData&) = default;
};

// ---- document furniture ------------------------------------------------------

struct WorkPlaneData {
    QString name;
    Point3 u{1, 0, 0}, v{0, 1, 0}, w{0, 0, 1};
    Point3 origin;
    int flag = 0;
    QJsonObject extra;
    friend bool operator==(const WorkPlaneData&, const WorkPlaneData&) = default;
};

struct LayerData {
    QString name;
    QJsonObject extra;
    friend bool operator==(const LayerData&, const LayerData&) = default;
};

// ---- simulation --------------------------------------------------------------

struct AxisData {
    QString name;
    bool enabled = true;
    double position = 0;
    QJsonObject extra;
    friend bool operator==(const AxisData&, const AxisData&) = default;
};

struct AxisGroupData {
    QString name;
    QList<std::shared_ptr<AxisData>> axes;
    QJsonObject extra;
    friend bool operator==(const AxisGroupData&, const AxisGroupData&) = default;
};

struct ComponentData {
    QString key;
    Point3 position;
    QJsonObject extra;
    friend bool operator==(const ComponentData&, const ComponentData&) = default;
};

struct MachineModelData {
    QList<std::shared_ptr<AxisGroupData>> axisGroups;
    QList<std::shared_ptr<ComponentData>> components;
    QJsonObject extra;
    friend bool operator==(const MachineModelData&, const MachineModelData&) = default;
};

struct StockData {
    QString name;
    int kind = 1; // 1 swept from a profile feature
    QString featureKey;
    double length = 0;
    double start = 0;
    int colour = 0;
    int styleCode = 0;
    bool optionFlag = false;
    std::array<double, 12> placement{0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};
    int spindle = 0; // key of the machine setup's spindle, 0 for none
    QJsonObject extra;
    friend bool operator==(const StockData&, const StockData&) = default;
};

struct SimulationData {
    MachineModelData machineModel;
    QList<std::shared_ptr<StockData>> stocks;
    int defaultStockColour = 0xc0c0c0;
    QJsonObject extra;
    friend bool operator==(const SimulationData&, const SimulationData&) = default;
};

// ---- the document ------------------------------------------------------------

struct DocumentData {
    QString title;
    int machineType = 1;
    int unitSystem = 71; // 70 inches, 71 millimetres
    MachineSetupData machineSetup;
    QList<std::shared_ptr<ToolData>> tools;
    QList<std::shared_ptr<OperationData>> operations; // document order
    QList<std::shared_ptr<FeatureData>> features;     // features and feature chains, by key
    QList<std::shared_ptr<SyncData>> syncs;
    QList<std::shared_ptr<WorkPlaneData>> workPlanes;
    QString activeWorkPlane;
    QList<std::shared_ptr<LayerData>> layers;
    SimulationData simulation;
    QJsonObject extra;
    friend bool operator==(const DocumentData&, const DocumentData&) = default;
};

} // namespace feldra
