#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

namespace marelon {

// The add-in's own key below HKEY_LOCAL_MACHINE and its machine-wide flag.
inline const QString kAddInKey = QStringLiteral("Software\\Orvalen\\FELDRA\\AddIns\\Marelon.Connect\\");
inline const QString kTovricVersionValue = QStringLiteral("TovricVersion");

// True when the TovricVersion flag is nonzero: the Data Page offers the
// reduced list of six machine models. Read from the registry on every call.
bool IsTovricVersion();

// The machine models' display names in list order: the full list of 19
// models, or the six models of the reduced list when reducedList is set.
QStringList MachineModelNames(bool reducedList);
// The names of the list the Data Page offers now (reduced when TovricVersion is set).
QStringList MachineNameList();

// The machine code stored in settings and documents for a position in the
// Data Page's active machine list, and back. A position or code outside the
// active list maps to 0.
int16_t ListIndexToMachineCode(int16_t position);
int16_t MachineCodeToListIndex(int16_t code);

} // namespace marelon
