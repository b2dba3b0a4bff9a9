#pragma once

#include <QPointer>
#include <QString>

namespace marelon {

class frmMarelonDataPage;

// The add-in's process-wide flags.
struct ProcessFlags {
    // The Data Page may be opened (command 2 enabled): set at connection and
    // whenever the Data Page closes, cleared while it is shown.
    bool dataPageAvailable = false;
    // The active document was created new or from a template and not saved since.
    bool newDocument = false;
    // The NC-code warning's answer: true when NC code is not to be generated.
    bool ncWarningCancel = false;
};

ProcessFlags& Flags();

// The host's installation folder, ending with a path separator (kept at connection).
QString& HostInstallFolder();

// The one Data Page dialog: created and loaded hidden at connection, unloaded
// at shutdown (then null).
QPointer<frmMarelonDataPage>& DataPageInstance();

// Prepares the Data Page for the active document (unless it is still shown),
// shows it modeless beside the host and clears the data page available flag.
// Returns at once.
void ShowDataPage();

} // namespace marelon
