#pragma once

#include "feldra/DocumentData.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace host {
class Localizer;
}

// The host's NC code generation: a readable listing of what a document holds
// for its NC program, one listing per NC output head. Each listing carries the
// head's program header, the Data Page parameters of the machine setup, the
// tools in tool-number order and the operations in document order with the
// synchronisations that tie them, each operation by its number in document order. Numbers are written in the invariant form
// ("." decimal point), values as stored in the document (no unit conversion).
// The listing's own words (headings, keys, notes such as the unit the numbers
// are in) are in the language of the user interface, as the comments of an NC
// program are in the shop's language; the machine code (G and M codes, the
// parameter, tool and program numbers, the bar loader line) and the
// document's own texts (names, comments) stay as they are.
namespace feldra {

// A Data Page parameter of the machine setup and its caption ("Work Receiver No.(##)").
struct DataPageParameter {
    int number;
    const char* caption;
};
// The Data Page parameters in listing order; the document view names them alike.
QList<DataPageParameter> DataPageParameters();

// The number an operation carries in the listing, the document view and the
// simulation: its position in document order, from 1; 0 when it has none.
int OperationNumber(const DocumentData& document, int operationId);

// A text of a listing: the host's own words, English, with %1..%n for the
// texts they frame, translated when the listing is shown; or, without words,
// a value as it stands.
struct NcText {
    QString text;
    bool words = false;
    std::vector<NcText> args;
    int width = 0; // kField: a field's label, filled with spaces to the listing's column

    static constexpr int kField = -1;
    QString Shown(const host::Localizer* localizer, int fieldWidth = 0) const;
    // The widest field label in it, as shown.
    int FieldWidth(const host::Localizer* localizer) const;
};

// The listings of a document as made at one moment, to be shown in any
// language later: the NC pane shows them again in the new language when the
// user switches, without generating anew.
class NcListings {
public:
    explicit NcListings(const DocumentData& document);
    // One text per NC head; a localizer of null gives English.
    QStringList Heads(const host::Localizer* localizer = nullptr) const;
    // All of them, one after the other, separated by a blank line.
    QString Text(const host::Localizer* localizer = nullptr) const;

private:
    std::vector<std::vector<NcText>> heads_; // the lines of each head's listing
};

// One listing per NC head (MachineSetupData::heads, in order); a document
// without heads gets one listing for the whole machine. An operation belongs to
// the head that its technology parameter "HeadID" names; an operation without a
// "HeadID", or with one that names no head of the machine, is listed under every head.
QStringList GenerateNcListings(const DocumentData& document, const host::Localizer* localizer = nullptr);

// All listings of the document, one after the other, separated by a blank line.
QString GenerateNcListing(const DocumentData& document, const host::Localizer* localizer = nullptr);

} // namespace feldra
