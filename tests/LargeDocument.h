#pragma once

#include "feldra/DocumentData.h"

// A large part for the save and load benchmarks and the interrupted-save
// test: 1,000 tools times `scale`, as many features, twice as many operations
// (each with a technology of a dozen parameters, a geometry entry and a
// custom property) and 500 synchronisations times `scale`.
feldra::DocumentData LargeDocument(int scale);
