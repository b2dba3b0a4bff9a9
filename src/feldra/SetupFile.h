#pragma once

#include "feldra/DocumentData.h"
#include "feldra/DocumentError.h"

#include <QByteArray>
#include <QString>

// Machine setup files ("*.EMS"): the machine a document is programmed for, as
// JSON with "format": "feldra-machine-setup" and "version": 1. A file holds
// the setup's name, turrets (stations, Z offset, reference Z, axis limits),
// spindles, NC heads and setup entries, and the simulation's machine model.
namespace feldra {

// Replaces the turrets, spindles, heads and setup entries of `setup`, its
// machine setup name when the file names one, and the whole machine `model`
// with the file's; the setup's parameters, stock and program stay. All or
// nothing: on any fault a DocumentError naming the file and the place is
// thrown and neither is changed.
void LoadSetupFile(const QString& path, MachineSetupData& setup, MachineModelData& model);

// The same on text in memory; `fileName` names the text in errors.
void ReadSetupFile(const QByteArray& text, const QString& fileName, MachineSetupData& setup,
                   MachineModelData& model);

} // namespace feldra
