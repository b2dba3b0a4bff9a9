#pragma once

namespace marelon {

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

} // namespace marelon
