#pragma once

#include "addin/host/Fwd.h"

#include <QString>

#include <optional>

// The Data Page's update buttons: parameters taken from the document's
// operations instead of being typed. Each routine only reads the document
// and returns the text for its field; std::nullopt leaves the field as it is.
// Suppressed operations are ignored. Technology types: 153 and 398 cut off,
// 207 pick up (with a collet extension).
//
// Every routine continues on error: a host call that fails is skipped, and
// what it would have delivered counts as missing (an operation whose
// suppression, type or spindle condition cannot be read takes no part, a tool
// that cannot be read matches no identifier, a parameter or coordinate that
// cannot be read is 0). Numbers shown and read are in the user's locale.
namespace marelon {

// The technology types the Data Page reads: cut-off and pick-up operations.
constexpr int kPickUpTechnology = 207;
constexpr bool IsCutOffTechnology(int type)
{
    return type == 153 || type == 398;
}

// txt816: the Number of the tool of the last cut-off operation, as decimal
// text; none when there is no cut-off operation or no tool with its "498".
std::optional<QString> UpdateCutOffTool(host::Document& document);

// txtColletExt: the collet extension of the last pick-up operation, "0" when
// there is none; none when that operation's value cannot be read.
std::optional<QString> UpdateColletExtension(host::Document& document);

struct BackSpindleChuckPosition {
    std::optional<QString> colletExtension; // txtColletExt; none: unchanged
    QString chuckPosition;                  // txt821
};

// Walks back from the last operation until a cut-off and a pick-up operation
// have been met. The collet extension is that of the last pick-up met; the
// chuck position is PartLength - |X of the first point (kind 903) of the
// first pick-up met| + the collet extension ("##,##0.0000"), or "0" unless
// both kinds were met. colletExtensionText is the field's current text, whose
// number is used when no pick-up operation gives one.
BackSpindleChuckPosition UpdateBackSpindleChuckPos(host::Document& document, const QString& colletExtensionText);

// The machining length over the operations whose spindle condition holds
// ("793" = 1; SpindleCode 1 for type 154): cut-off operations give the X of
// their feature's second point + the cut-off tool's width + the approach
// ("233", or "232" when "239" is not 0); turning, drilling and milling
// operations give the largest X met so far in any of their geometry (never
// reset between operations) less their tool's ZShift. modelName is the text of
// the Machine Name list. writeTo813 false: the txt818 text, the largest
// candidate cut to the model's limit (inches, x 25.4 for a millimetre
// document); true: the txt813 text, the largest cut-off candidate. Both
// formatted "##,##0.0000".
QString UpdateMachiningLength(host::Document& document, const QString& modelName, bool writeTo813);

// The face amount OK writes for a Z facing amount z, from the tool of the
// first cut-off operation (walking from the first): -|z| for a corner code of
// 14, otherwise its centre offset - width - |z|; 0 without a cut-off
// operation, without its tool or for a tool other than kinds 17 and 23.
// A host refusal on the way leaves it: the caller keeps the old face amount.
double EvalFaceAmount(host::Document& document, double zFacingAmount);

} // namespace marelon
