#pragma once

#include <QString>

#include <optional>

namespace marelon {

class frmMarelonDataPage;

// The per-model layout of the Data Page's Machine Data slots: the reset that
// every model selection starts with, then the model's captions, slot states,
// fixed values and lists. What neither the reset nor the model's row sets
// keeps what earlier selections left. A name that is no model applies the
// reset alone.
void ApplyMachineLayout(frmMarelonDataPage& form, const QString& modelName);

// Whether a Machine Data slot (its input, "txt816") has the same caption and
// parameter number on both models: a value typed under one then means the
// same under the other.
bool SlotMeansTheSame(const QString& oneModel, const QString& otherModel, const QString& input);

// What the drill holder lists add to a list position to give the holder code
// (txt991, txt992) on this model; none on models whose lists set no code.
std::optional<int> FrontDrillHolderOffset(const QString& modelName);
std::optional<int> BackDrillHolderOffset(const QString& modelName);

// Param893's code of a back-spindle entry as the list shows it (translated);
// none for a text that is no back-spindle entry.
std::optional<int> BackSpindleCode(const QString& entryText);
// The English entry that shows a Param893 code on this model; none for a code
// the model's list has no entry for.
std::optional<QString> BackSpindleEntry(const QString& modelName, int code);

} // namespace marelon
