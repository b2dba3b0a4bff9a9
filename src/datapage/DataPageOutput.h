#pragma once

#include <QString>

class QWidget;

namespace marelon {

class frmMarelonDataPage;

// Writing the Data Page into the document when the user presses OK.

// Checks every field in order and returns the control the user has to
// correct, after a message that says why, or nullptr when every field passes.
// A bar stock O.D. computed from the stock (bar, tube, polygon) beyond the
// machine's bar capacity is asked about once: Yes lets it pass, No returns
// the stock field it was computed from.
QWidget* RefusedDataPageField(frmMarelonDataPage& form, bool inchDocument);
// A profile stock needs a feature of the document: tells the user when none
// is picked and returns the button that picks one, else nullptr.
QWidget* RefusedStockProfile(frmMarelonDataPage& form);

// The largest bar stock O.D. the machines take: 32 mm, 1.2598 inches.
double BarCapacity(bool inchDocument);
// Whether a bar stock O.D. text is a number the machine does not take
// (below 0 or beyond its capacity).
bool BeyondBarCapacity(const QString& text, bool inchDocument);

// The machine setup, the main spindle's work length and the stock. Goes on
// past every failure and returns false when any step failed.
bool WriteDataPage(frmMarelonDataPage& form, bool inchDocument);

// Every value of the Data Page into the machine setup; a value that cannot be
// written, or a field that is not a number, is skipped.
void SaveDataToMachineSetup(frmMarelonDataPage& form);
// The program name, number and unit and each head's comment into the NC output heads.
void WriteNCOutput(frmMarelonDataPage& form);
// The bar loader's type, sub program and command line.
void SaveBarLoaderSettings(frmMarelonDataPage& form);

// A new document not yet saved takes head 1's program name as its title.
void NameNewDocument(frmMarelonDataPage& form);

} // namespace marelon
