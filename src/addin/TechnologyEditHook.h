#pragma once

#include "addin/host/Fwd.h"

namespace marelon {

// Relabels the general-purpose parameters 631 to 636 of a technology the host
// is about to edit, with the meaning they have on a Marelon lathe (machine
// type 1). Only the captions change. A technology that lacks one of its
// group's parameters ends the relabelling with a host failure; the labels set
// before it stay.
void RelabelTechnology(host::Document& document, host::Technology& technology);

} // namespace marelon
