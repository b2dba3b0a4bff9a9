#pragma once

#include <cstdint>

// The points at which the interrupted-save child kills itself. While armed,
// every call of write, fsync, fdatasync, close, linkat, rename, renameat and
// renameat2 the process makes (the save's own, through Qt's file classes, and
// the library's) is a numbered step, the return of the save the last one, and
// every byte written counts.
// $MARELON_KILL_AT_STEP=k raises SIGKILL just before the k-th step (from 1);
// $MARELON_KILL_AFTER_BYTES=n raises it once n bytes are written, in the
// middle of the write that passes n.
namespace killpoints {

struct Counts {
    std::int64_t steps = 0;
    std::int64_t bytes = 0;
};

void Arm();
Counts Disarm();

} // namespace killpoints
