#pragma once

namespace marelon {

class frmMarelonDataPage;

// Loading the Data Page's values and keeping the user's choices. Every loader
// goes on past a step that fails (a value that does not convert, a property
// the host refuses): that control keeps what it showed.

// One entry per NC output head of the document: "Head-1", "Head-2", ...
void FillHeadList(frmMarelonDataPage& form);
// The heads' entries and comments, and the program of head 1.
void LoadHeads(frmMarelonDataPage& form);
// The heads' entries again after a machine setup load; the comments already
// held stay, a head that is new brings its own comment.
void RefreshHeads(frmMarelonDataPage& form);

// A document without Data Page values: the user's last choices from the
// settings store, the stock and the program from the document.
void GetDataForNewFile(frmMarelonDataPage& form);
// A document that carries Data Page values: everything from the document.
void GetDataForExistingFile(frmMarelonDataPage& form);
// The bar loader fields from the document's bar loader type and command line.
void RestoreBarLoaderSettings(frmMarelonDataPage& form);

// The user's choices as the defaults of the next new document; a store that
// cannot be written is named in a message.
void SaveDataToRegistry(frmMarelonDataPage& form);

} // namespace marelon
