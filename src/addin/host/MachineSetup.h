#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// The machine setup of a document: the machine definition and its numbered parameters.
class MachineSetup {
public:
    virtual ~MachineSetup() = default;
    virtual QString MakerTag() = 0;
    virtual void setMakerTag(const QString& value) = 0;
    virtual QString MachineCode() = 0;
    virtual void setMachineCode(const QString& value) = 0;
    virtual QString MachineSetupName() = 0;
    virtual void setMachineSetupName(const QString& value) = 0;
    // Loads a machine setup file (full path) into this setup.
    virtual void LoadSetupFile(const QString& path) = 0;
    virtual std::shared_ptr<host::SetupEntries> SetupEntries() = 0;
    virtual std::shared_ptr<host::Turrets> Turrets() = 0;
    virtual std::shared_ptr<host::Spindles> Spindles() = 0;
    virtual std::shared_ptr<host::NCHeads> Heads() = 0;
    virtual double StockFrontZ() = 0;
    virtual void setStockFrontZ(double value) = 0;
    virtual double StockDiameter() = 0;
    virtual void setStockDiameter(double value) = 0;
    virtual double StockInsideDiameter() = 0;
    virtual void setStockInsideDiameter(double value) = 0;
    virtual double StockLength() = 0;
    virtual void setStockLength(double value) = 0;
    virtual double PartLength() = 0;
    virtual void setPartLength(double value) = 0;
    virtual QString StockCode() = 0;
    virtual void setStockCode(const QString& value) = 0;
    virtual QString ProgramName() = 0;
    virtual void setProgramName(const QString& value) = 0;
    virtual int ProgramNumber() = 0;
    virtual void setProgramNumber(int value) = 0;
    virtual double Param813() = 0;
    virtual void setParam813(double value) = 0;
    virtual double Param814() = 0;
    virtual void setParam814(double value) = 0;
    virtual double Param815() = 0;
    virtual void setParam815(double value) = 0;
    virtual double Param816() = 0;
    virtual void setParam816(double value) = 0;
    virtual double Param817() = 0;
    virtual void setParam817(double value) = 0;
    virtual double Param818() = 0;
    virtual void setParam818(double value) = 0;
    virtual double Param819() = 0;
    virtual void setParam819(double value) = 0;
    virtual double Param820() = 0;
    virtual void setParam820(double value) = 0;
    virtual double Param821() = 0;
    virtual void setParam821(double value) = 0;
    virtual double Param822() = 0;
    virtual void setParam822(double value) = 0;
    virtual double Param824() = 0;
    virtual void setParam824(double value) = 0;
    virtual double Param893() = 0;
    virtual void setParam893(double value) = 0;
    virtual double Param990() = 0;
    virtual void setParam990(double value) = 0;
    virtual double Param991() = 0;
    virtual void setParam991(double value) = 0;
    virtual double Param992() = 0;
    virtual void setParam992(double value) = 0;
    virtual void setFaceAmount(double value) = 0;
    virtual double StartupSpindleSpeed() = 0;
    virtual void setStartupSpindleSpeed(double value) = 0;
    virtual double BarLoaderDwell() = 0;
    virtual void setBarLoaderDwell(double value) = 0;
    virtual double BarLoaderType() = 0;
    virtual void setBarLoaderType(double value) = 0;
    virtual double ToolBreakageDetection() = 0;
    virtual void setToolBreakageDetection(double value) = 0;
    virtual QString BackSpindleExtension() = 0;
    virtual void setBackSpindleExtension(const QString& value) = 0;
    virtual QString BarLoaderSubProgram() = 0;
    virtual void setBarLoaderSubProgram(const QString& value) = 0;
    virtual QString BarLoaderCommand() = 0;
    virtual void setBarLoaderCommand(const QString& value) = 0;
};

} // namespace host
