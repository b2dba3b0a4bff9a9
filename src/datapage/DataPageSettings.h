#pragma once

#include <QString>

#include <optional>
#include <span>

namespace host {
class MachineSetup;
}

namespace marelon {

// The settings store's section of the Data Page's values.
inline const QString kDataPageSection = QStringLiteral("Data Page Settings");
// The tag that marks a document whose machine setup carries Data Page values.
inline const QString kMarelonTag = QStringLiteral("MARELON");

// The positions of the stock types in the Stock Type list.
enum StockType { kBar = 0, kTube = 1, kPolygon = 2, kProfile = 3 };

// How a field's value is typed in the settings store.
enum class FieldType {
    Double,       // a number, shown as its shortest text
    Integer,      // a 16-bit integer, rounded half to even
    Boolean,      // the word True or False (an option button)
    CheckBox,     // the check box value "0" or "1"
    ListPosition, // the list's position, -1 without a selection
    Text,         // text as typed
};

// Whether a field is kept in the settings store.
enum class SettingsUse {
    NotStored,
    ReadWrite,
    WriteOnly, // written on every successful OK, never read back
};

// How a field is kept in the document's machine setup.
enum class Encoding {
    NotInDocument,        // kept only while the dialog is open
    MachineCode,          // the machine code as text, from and to the list position
    Number,               // a double property
    PartsPerChuck,        // Param819 mod 1000; written with the polar mode folded in
    PolarMode,            // Param819 div 1000
    GangPattern,          // the gang tool pattern entry whose code is Param990
    FrontDrillHolder,     // the list position from txt991 and the model's offset
    BackDrillHolder,      // the list position from txt992 and the model's offset
    BackSpindleCode,      // Param893: the entry text's code
    BackSpindleExtension, // "L4 25-32" only: list position + 1, as text
    CheckBox01,           // 1 when checked, 0 otherwise
    BarLoader,            // BarLoaderType, BarLoaderSubProgram and BarLoaderCommand
    Stock,                // the stock properties and StockCode
    NCOutput,             // the program and the NC output heads
};

// The check OK applies to a field before anything is written.
enum class Check {
    NoCheck,
    NumericOnly,
    AtLeast,        // lower bound, inclusive
    GreaterThan,    // lower bound, exclusive
    BarStockOD,     // between 0 and 1.2598 in an inch document, 0 and 32 otherwise
    CutOffEndPoint, // between -D and +D, D the document's stock diameter
    CatchingTool,   // between 20 and 29 on the M2-3 models, numeric on the E2 J models
    ProgramNumber,  // a whole 32-bit program number: between 0 and 2147483647
    StockValue,     // a number while the chosen stock type shows the field
};

// What a number measures on the machine; it gives the number's unit and its
// upper bound.
enum class Quantity {
    NoUnit,
    Length, // mm in a millimetre part, inches in an inch part
    Feed,   // per spindle revolution, in the part's length unit
    Speed,  // spindle speed, rpm
    Time,   // seconds
    Count,  // parts
    Code,   // a number that names a tool, holder, pattern or program
    Angle,  // degrees
};

// A double property of the machine setup.
struct SetupNumber {
    double (host::MachineSetup::*get)() = nullptr;
    void (host::MachineSetup::*set)(double) = nullptr;
};

// One value of the Data Page: its control, where it is kept and how it is checked.
struct DataPageField {
    const char* field;       // the record's name ("BarStockOD")
    const char* control;     // the input control ("txt814")
    const char* label;       // its label, "" when none
    int parameter;           // the NC parameter number, 0 when none
    const char* caption;     // the English caption of the label or control
    const char* settingsKey; // "" when none
    SettingsUse settings;
    const char* defaultValue;
    FieldType type;
    Encoding encoding;
    SetupNumber property;    // for the numeric encodings
    Check check;
    double bound;            // the lower bound of AtLeast and GreaterThan
    Quantity quantity;
};

// Every Data Page field, in the order in which they are loaded, stored and checked.
std::span<const DataPageField> DataPageFields();

// The field whose control has this name; throws std::out_of_range for any other name.
const DataPageField& DataPageFieldOf(const QString& control);

// The largest value a field of this quantity takes on a Swiss-type lathe
// (10 m, 100,000 rpm, an hour, 999 parts per chuck, an 8-digit code, a full
// turn), in the part's unit; none for a field without a unit. OK refuses a
// number beyond it, and below its negative.
std::optional<double> UpperBound(Quantity quantity, bool inchDocument);

// A label caption: "814 - " and the translated text, or the translated text
// alone without a parameter number. Numbers keep three digits ("016 - ").
QString ParameterCaption(int parameter, const QString& english);

} // namespace marelon
