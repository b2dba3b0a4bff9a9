#pragma once

#include "feldra/DocumentData.h"

#include <QString>
#include <QStringList>

// The host's NC code generation: a readable listing of what a document holds
// for its NC program, one listing per NC output head. Each listing carries the
// head's program header, the Data Page parameters of the machine setup, the
// tools in tool-number order and the operations in document order with the
// synchronisations that tie them, each operation by its number in document order. Numbers are written in the invariant form
// ("." decimal point), values as stored in the document (no unit conversion).
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

// One listing per NC head (MachineSetupData::heads, in order); a document
// without heads gets one listing for the whole machine. An operation belongs to
// the head that its technology parameter "HeadID" names; an operation without a
// "HeadID", or with one that names no head of the machine, is listed under every head.
QStringList GenerateNcListings(const DocumentData& document);

// All listings of the document, one after the other, separated by a blank line.
QString GenerateNcListing(const DocumentData& document);

} // namespace feldra
