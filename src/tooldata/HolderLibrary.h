#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <cstdint>

// The holder library: one text file per machine model listing the tool holders
// that can be mounted on it. A line holds one holder, eight comma-separated
// fields in this order, ended by CR LF:
//
//   "GTF3110","Gang holder 1",0,1.25,-.5,-1,1,1
//    name      description    X  Z    Y   rotation gear1 gear2
//
// Strings are in double quotes without escaping (names and descriptions never
// hold a quote), in the Windows-1252 code page; numbers use "." and no
// grouping. Shifts are in inches.
namespace marelon {

struct HolderRecord {
    QString name;
    QString description;
    double xShift = 0; // inches, a diameter
    double zShift = 0; // inches
    double yShift = 0; // inches
    int16_t spindleRotation = 0; // -1 forward, 1 reverse, 0 not applicable
    double gearRatio1 = 0;
    double gearRatio2 = 0;

    friend bool operator==(const HolderRecord&, const HolderRecord&) = default;
};

// The most holders a library file gives: reading stops after this many.
inline constexpr int kHolderCapacity = 101;

// The display text of a spindle rotation ("Forward", "N/A", "Reverse"), in
// English; an empty text for a value without one.
QString SpindleRotationText(int rotation);

// The library file of a machine model ("B2 12-20" has "B2-12-20 ToolHolders.txt"),
// or an empty text for a name that is not a Marelon model.
QString HolderFileName(const QString& machineName);

// The folder of the library files below the add-in's folder, with its separator.
inline const QString kHolderFolder = QStringLiteral("ToolHolders/");

// The library file of a model in the "ToolHolders" folder beside the add-in
// module (addInFolder ends with a separator); empty for an unknown model.
QString HolderFilePath(const QString& addInFolder, const QString& machineName);

bool HolderFileExists(const QString& path);

// A holder's shift (inches) as shown in a document of the given units. A
// millimetre value comes from the file's 15 digits times 25.4, so it is shown
// with 14: -42.5 typed in millimetres is shown again as -42.5, not as
// -42.4999999999999.
QString HolderShiftText(double inches, int documentUnits);

// The records of a library file's text, in file order: reading stops at the
// first line that is not a well-formed record (those before it are kept) and
// after kHolderCapacity records. Blank lines are skipped; lines may end with
// CR LF or LF alone.
QList<HolderRecord> ParseHolderRecords(const QByteArray& text);

// The records of a library file; none when it cannot be read.
QList<HolderRecord> ReadHolderFile(const QString& path);

// One record as a line of the file, CR LF included.
QByteArray HolderLine(const HolderRecord& record);

// Every change replaces the file atomically: when it fails (false), the file
// is left exactly as it was. The file as it was before the change is kept
// beside it as "<file>.bak" (replacing the copy of the change before), so
// that a change made by mistake is one copy away from undone; when that copy
// cannot be written, nothing is changed.

// The copy of a library file from before its last change.
QString BackupPath(const QString& path);

// Adds the record as a new last line, creating the file if needed.
bool AppendHolder(const QString& path, const HolderRecord& record);

// Writes the records as the whole file (no records: an empty file).
bool WriteHolderFile(const QString& path, const QList<HolderRecord>& records);

// Removes the record at a table position: the file is read as a library
// (stopping where reading stops), then written back without that record.
// Returns the number of records read before the removal.
int DeleteHolder(const QString& path, int index);

} // namespace marelon
