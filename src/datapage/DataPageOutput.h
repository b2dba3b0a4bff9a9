#pragma once

namespace marelon {

class frmMarelonDataPage;

// Writing the Data Page into the document when the user presses OK.

// Checks every field in order; the first that fails has told the user why.
bool CheckDataPageFields(frmMarelonDataPage& form, bool inchDocument);
// A profile stock needs a feature of the document: tells the user when none is picked.
bool CheckStockProfile(frmMarelonDataPage& form);

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
