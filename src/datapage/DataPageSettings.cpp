#include "datapage/DataPageSettings.h"

#include "addin/host/MachineSetup.h"
#include "addin/ui/UiServices.h"

#include <stdexcept>

namespace marelon {
namespace {

using MS = host::MachineSetup;
using enum FieldType;
using enum SettingsUse;
using enum Encoding;
using enum Check;
using enum Quantity;

constexpr SetupNumber kNone{};

// clang-format off
constexpr DataPageField kFields[] = {
// field                    control                  label                    par   caption                                        settings key                        use         default type           encoding               property                                                      check            bound  quantity
{"MachineName",             "cmbMachineName",        "lblMachineName",        0,    "Machine Name",                                "Machine Name",                     ReadWrite,  "0",  ListPosition,  MachineCode,           kNone,                                                        NoCheck,         0, NoUnit},
{"BarStockOD",              "txt814",                "lbl814",                814,  "Bar Stock O.D.",                              "",                                 NotStored,  "",   Double,        Number,                {&MS::Param814, &MS::setParam814},                            BarStockOD,      0, Length},
{"ToolPositioningPoint",    "txt815",                "lbl815",                815,  "Tool Positioning Point",                      "Tool Positioning Point",           ReadWrite,  "0",  Double,        Number,                {&MS::Param815, &MS::setParam815},                            NumericOnly,     0, Length},
{"CutOffTool",              "txt816",                "lbl816",                816,  "Cut Off Tool",                                "Cut Off Tool",                     ReadWrite,  "1",  Integer,       Number,                {&MS::Param816, &MS::setParam816},                            AtLeast,         0, Code},
{"CutOffSpeed",             "txt817",                "lbl817",                817,  "Cut Off Speed",                               "Cut Off Speed",                    ReadWrite,  "0",  Double,        Number,                {&MS::Param817, &MS::setParam817},                            GreaterThan,     0, Speed},
{"CutOffFeed",              "txt822",                "lbl822",                822,  "Cut Off Feed",                                "Cut Off Feed",                     ReadWrite,  "0",  Double,        Number,                {&MS::Param822, &MS::setParam822},                            GreaterThan,     0, Feed},
{"CutOffEndPoint",          "txt824",                "lbl824",                824,  "Cut Off End Point",                           "Cut Off End Point",                ReadWrite,  "0",  Double,        Number,                {&MS::Param824, &MS::setParam824},                            CutOffEndPoint,  0, Length},
{"MachiningLength",         "txt818",                "lbl818",                818,  "Machining Length",                            "",                                 NotStored,  "",   Double,        Number,                {&MS::Param818, &MS::setParam818},                            AtLeast,         0, Length},
{"PartsPerChuck",           "txt819",                "lbl819",                819,  "Parts Per/1 Chuck",                           "Parts Per Chuck",                  ReadWrite,  "1",  Integer,       PartsPerChuck,         {&MS::Param819, &MS::setParam819},                            AtLeast,         1, Count},
{"PipeID",                  "txt820",                "lbl820",                820,  "Pipe ID/Tube ID",                             "",                                 NotStored,  "",   Double,        Number,                {&MS::Param820, &MS::setParam820},                            AtLeast,         0, Length},
{"BackSpindleChuckPos",     "txt821",                "lbl821",                821,  "Back Spl Chuck POS",                          "",                                 NotStored,  "",   Double,        Number,                {&MS::Param821, &MS::setParam821},                            AtLeast,         0, Length},
{"CatchingTool",            "txt813",                "lbl813",                813,  "Work Receiver No.(##)",                       "Catching Tool",                    WriteOnly,  "",   Integer,       Number,                {&MS::Param813, &MS::setParam813},                            CatchingTool,    0, Code},
{"GangHolderCode",          "txt990",                "lbl990",                990,  "Gang Holder",                                 "txt990",                           ReadWrite,  "0",  Integer,       Number,                {&MS::Param990, &MS::setParam990},                            NumericOnly,     0, Code},
{"GangHolder",              "cmbGangHolder",         "",                      0,    "",                                            "Gang Holder",                      ReadWrite,  "0",  ListPosition,  GangPattern,           kNone,                                                        NoCheck,         0, NoUnit},
{"FrontDrillHolderCode",    "txt991",                "lbl991",                991,  "Front Drill Holder",                          "txt991",                           ReadWrite,  "0",  Integer,       Number,                {&MS::Param991, &MS::setParam991},                            NumericOnly,     0, Code},
{"FrontDrillHolder",        "cmbFrontDrillHolder",   "",                      0,    "",                                            "Front Drill Holder",               ReadWrite,  "0",  ListPosition,  FrontDrillHolder,      kNone,                                                        NoCheck,         0, NoUnit},
{"BackDrillHolderCode",     "txt992",                "lbl992",                992,  "Back Drill Holder",                           "txt992",                           ReadWrite,  "0",  Integer,       Number,                {&MS::Param992, &MS::setParam992},                            NumericOnly,     0, Code},
{"BackDrillHolder",         "cmbBackDrillHolder",    "",                      0,    "",                                            "Back Drill Holder",                ReadWrite,  "0",  ListPosition,  BackDrillHolder,       kNone,                                                        NoCheck,         0, NoUnit},
{"BackSpindle",             "cmb893",                "lbl893",                893,  "Back Spindle",                                "Back Sp Length",                   ReadWrite,  "0",  ListPosition,  BackSpindleCode,       {&MS::Param893, &MS::setParam893},                            NoCheck,         0, NoUnit},
{"BackSpindleExtension",    "cmbBackSpdlExt",        "lblBackSpdlExt",        0,    "Back Spindle Extension",                      "Back Sp Extension",                WriteOnly,  "",   ListPosition,  BackSpindleExtension,  kNone,                                                        NoCheck,         0, NoUnit},
{"StartupSpindleSpeed",     "txtStartupSpeed",       "lblStartupSpeed",       0,    "Startup Spindle Speed",                       "Startup Spindle Speed",            ReadWrite,  "0",  Double,        Number,                {&MS::StartupSpindleSpeed, &MS::setStartupSpindleSpeed},      AtLeast,         0, Speed},
{"BarLoaderDwell",          "txtDwell",              "lblDwell",              0,    "Dwell For Bar Loader (s)",                    "Dwell For Bar Loader",             ReadWrite,  "0",  Double,        Number,                {&MS::BarLoaderDwell, &MS::setBarLoaderDwell},                AtLeast,         0, Time},
{"ColletExtension",         "txtColletExt",          "lblColletExt",          0,    "Collet Extension",                            "",                                 NotStored,  "",   Double,        NotInDocument,         kNone,                                                        AtLeast,         0, Length},
{"MagazineBarLoader",       "optMagazine",           "",                      0,    "Magazine",                                    "Magazine Bar Loader",              ReadWrite,  "0",  Boolean,       BarLoader,             kNone,                                                        NoCheck,         0, NoUnit},
{"BarLoaderProgType",       "cmbBarLoaderProgType",  "LblBarLoaderProgType",  0,    "Program Type",                                "Magazine Bar Loader Prog Type",    ReadWrite,  "0",  ListPosition,  BarLoader,             kNone,                                                        NoCheck,         0, NoUnit},
{"BarLoaderSubNumber",      "txtBarLoaderSubNum",    "lblBarLoaderSubNum",    0,    "Sub Program Number (P)",                      "Bar Loader Sub Number",            ReadWrite,  "0",  Double,        BarLoader,             kNone,                                                        NoCheck,         0, Code},
{"ChamferDistX",            "TxtChamferDistX",       "LblChamferDist",        0,    "Chamfer Distance X, Z",                       "Chamfer Dist X",                   ReadWrite,  "0",  Double,        BarLoader,             kNone,                                                        AtLeast,         0, Length},
{"ChamferDistZ",            "TxtChamferDistZ",       "LblChamferDist",        0,    "Chamfer Distance X, Z",                       "Chamf Dist Z",                     ReadWrite,  "0",  Double,        BarLoader,             kNone,                                                        AtLeast,         0, Length},
{"PullBackAmount",          "TxtPullBackAmount",     "LblPullBackAmount",     0,    "Pull Back Amount",                            "Pull Back Amount",                 ReadWrite,  "0",  Double,        BarLoader,             kNone,                                                        AtLeast,         0, Length},
{"SpindleStop",             "CmbSpindleStop",        "LblSpindleStop",        0,    "Spindle Stop",                                "Spindle Stop",                     ReadWrite,  "0",  ListPosition,  BarLoader,             kNone,                                                        NoCheck,         0, NoUnit},
{"SpindleRPM",              "TxtSpindleRPM",         "LblSpindleRPM",         0,    "Spindle RPM",                                 "Spindle RPM",                      ReadWrite,  "0",  Double,        BarLoader,             kNone,                                                        AtLeast,         0, Speed},
{"PolarMode",               "CmbPolarMode",          "lblPolarMode",          0,    "Polar Interpolation Mode",                    "Polar Mode",                       ReadWrite,  "0",  ListPosition,  PolarMode,             kNone,                                                        NoCheck,         0, NoUnit},
{"CutOffToolBreakage",      "chkToolBreak",          "",                      0,    "Cut Off Tool Breakage Detection By Spindle",  "Cut Off Tool Breakage Detection",  ReadWrite,  "0",  CheckBox,      CheckBox01,            {&MS::ToolBreakageDetection, &MS::setToolBreakageDetection},  NoCheck,         0, NoUnit},
{"StockType",               "StockTypeC",            "StockTypeTxt",          0,    "Stock Type",                                  "",                                 NotStored,  "",   ListPosition,  Stock,                 kNone,                                                        NoCheck,         0, NoUnit},
{"StockDiameter",           "StockDiameter",         "StockDiameterTxt",      0,    "Stock Diameter",                              "",                                 NotStored,  "",   Double,        Stock,                 {&MS::StockDiameter, &MS::setStockDiameter},                  StockValue,      0, Length},
{"InsideDiameter",          "InsideDiameter",        "InsideDiameterTxt",     0,    "Inside Diameter",                             "",                                 NotStored,  "",   Double,        Stock,                 {&MS::StockInsideDiameter, &MS::setStockInsideDiameter},      StockValue,      0, Length},
{"CircleDiameter",          "CircleDiameter",        "CircleDiameterTxt",     0,    "Diameter",                                    "",                                 NotStored,  "",   Double,        Stock,                 {&MS::StockDiameter, &MS::setStockDiameter},                  StockValue,      0, Length},
{"PolygonSides",            "Sides",                 "SidesTxt",              0,    "Sides",                                       "",                                 NotStored,  "",   ListPosition,  Stock,                 kNone,                                                        NoCheck,         0, NoUnit},
{"PolygonBaseAngle",        "BaseAngle",             "BaseAngleTxt",          0,    "Base Angle",                                  "",                                 NotStored,  "",   Double,        Stock,                 kNone,                                                        StockValue,      0, Angle},
{"PolygonOnOutsideCircle",  "ODCircle",              "",                      0,    "OD",                                          "",                                 NotStored,  "",   Boolean,       Stock,                 kNone,                                                        NoCheck,         0, NoUnit},
{"PolygonOnInsideCircle",   "IDCircle",              "",                      0,    "ID",                                          "",                                 NotStored,  "",   Boolean,       Stock,                 kNone,                                                        NoCheck,         0, NoUnit},
{"StockProfile",            "SelectButton",          "ProfileStockTxt",       0,    "Select Feature for Stock Profile",            "",                                 NotStored,  "",   Text,          Stock,                 kNone,                                                        NoCheck,         0, NoUnit},
{"StockLength",             "StockLength",           "StockLengthTxt",        0,    "Stock Length",                                "",                                 NotStored,  "",   Double,        Stock,                 {&MS::StockLength, &MS::setStockLength},                      StockValue,      0, Length},
{"ZFacingAmount",           "Zamount",               "ZAmountTxt",            0,    "Z Facing Amount",                             "",                                 NotStored,  "",   Double,        Stock,                 {&MS::StockFrontZ, &MS::setStockFrontZ},                      StockValue,      0, Length},
{"PartLength",              "PartLength",            "PartLengthTxt",         0,    "Part Length",                                 "",                                 NotStored,  "",   Double,        Stock,                 {&MS::PartLength, &MS::setPartLength},                        StockValue,      0, Length},
{"ProgramNumber",           "ProgramNumber",         "lblProgramNumber",      0,    "Program Number",                              "",                                 NotStored,  "",   Integer,       NCOutput,              kNone,                                                        ProgramNumber,   0, NoUnit},
{"ProgramName",             "ProgramName",           "lblProgramName",        0,    "Program Name",                                "",                                 NotStored,  "",   Text,          NCOutput,              kNone,                                                        NoCheck,         0, NoUnit},
{"NCCodeUnit",              "NCCodeUnit",            "lblNCCodeUnit",         0,    "Unit for NC Code",                            "",                                 NotStored,  "",   ListPosition,  NCOutput,              kNone,                                                        NoCheck,         0, NoUnit},
{"HeadComment",             "cmbHeadComment",        "lblHeadComment",        0,    "Head ID",                                     "",                                 NotStored,  "",   ListPosition,  NCOutput,              kNone,                                                        NoCheck,         0, NoUnit},
{"Comments",                "Comments",              "lblComments",           0,    "Comments",                                    "",                                 NotStored,  "",   Text,          NCOutput,              kNone,                                                        NoCheck,         0, NoUnit},
};
// clang-format on

} // namespace

std::span<const DataPageField> DataPageFields()
{
    return kFields;
}

const DataPageField& DataPageFieldOf(const QString& control)
{
    for (const DataPageField& field : kFields)
        if (control == QLatin1String(field.control))
            return field;
    throw std::out_of_range("no Data Page field has the control " + control.toStdString());
}

std::optional<double> UpperBound(Quantity quantity, bool inchDocument)
{
    constexpr double kTenMetres = 10000; // mm
    switch (quantity) {
    case Quantity::Length:
    case Quantity::Feed:
        return inchDocument ? kTenMetres / 25.4 : kTenMetres;
    case Quantity::Speed:
        return 100000;
    case Quantity::Time:
        return 3600;
    case Quantity::Count:
        return 999;
    case Quantity::Code:
        return 99999999;
    case Quantity::Angle:
        return 360;
    case Quantity::NoUnit:
        break;
    }
    return std::nullopt;
}

QString ParameterCaption(int parameter, const QString& english)
{
    if (parameter == 0)
        return Tr(english);
    return QStringLiteral("%1 - ").arg(parameter, 3, 10, QLatin1Char('0')) + Tr(english);
}

} // namespace marelon
