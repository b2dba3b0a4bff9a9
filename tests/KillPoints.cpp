// The calls below replace the C library's for the whole process: the
// executable's definitions come first in the dynamic symbol lookup, so Qt's
// file engine calls these. Each counts, may kill, then calls the library's
// own. This file includes no header that declares them, so that their
// signatures are the C library's without its exception specifications.
#include "KillPoints.h"

#include <dlfcn.h>
#include <signal.h>
#include <sys/types.h>

#include <cstdlib>

namespace killpoints {
namespace {

bool armed = false;
std::int64_t killAtStep = -1;
std::int64_t killAfterBytes = -1;
Counts counts;

std::int64_t environmentNumber(const char* name)
{
    const char* text = std::getenv(name);
    return text && *text ? std::strtoll(text, nullptr, 10) : -1;
}

void die()
{
    raise(SIGKILL);
}

// Counts one step; dies before it when it is the chosen one.
void step()
{
    if (!armed)
        return;
    ++counts.steps;
    if (counts.steps == killAtStep)
        die();
}

template <typename Function> Function real(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

void Arm()
{
    killAtStep = environmentNumber("MARELON_KILL_AT_STEP");
    killAfterBytes = environmentNumber("MARELON_KILL_AFTER_BYTES");
    counts = {};
    armed = true;
    if (killAfterBytes == 0)
        die();
}

Counts Disarm()
{
    step(); // the save has returned
    armed = false;
    return counts;
}

} // namespace killpoints

using namespace killpoints;

extern "C" {

ssize_t write(int fd, const void* data, size_t size)
{
    static const auto next = real<ssize_t (*)(int, const void*, size_t)>("write");
    step();
    if (armed && killAfterBytes > 0 && counts.bytes + std::int64_t(size) >= killAfterBytes) {
        const auto part = size_t(killAfterBytes - counts.bytes);
        // The part before the chosen byte reaches the file, then the process dies.
        for (size_t done = 0; done < part;) {
            const ssize_t written = next(fd, static_cast<const char*>(data) + done, part - done);
            if (written <= 0)
                break;
            done += size_t(written);
        }
        die();
    }
    const ssize_t written = next(fd, data, size);
    if (armed && written > 0)
        counts.bytes += written;
    return written;
}

int fsync(int fd)
{
    static const auto next = real<int (*)(int)>("fsync");
    step();
    return next(fd);
}

int fdatasync(int fd)
{
    static const auto next = real<int (*)(int)>("fdatasync");
    step();
    return next(fd);
}

int close(int fd)
{
    static const auto next = real<int (*)(int)>("close");
    step();
    return next(fd);
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags)
{
    static const auto next = real<int (*)(int, const char*, int, const char*, int)>("linkat");
    step();
    return next(fromFolder, from, toFolder, to, flags);
}

int rename(const char* from, const char* to)
{
    static const auto next = real<int (*)(const char*, const char*)>("rename");
    step();
    return next(from, to);
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to)
{
    static const auto next = real<int (*)(int, const char*, int, const char*)>("renameat");
    step();
    return next(fromFolder, from, toFolder, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned int flags)
{
    static const auto next = real<int (*)(int, const char*, int, const char*, unsigned int)>("renameat2");
    step();
    return next(fromFolder, from, toFolder, to, flags);
}

} // extern "C"
