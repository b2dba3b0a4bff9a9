#include "addin/settings/MachineCodes.h"

#include "addin/settings/cRegistry.h"

#include <algorithm>
#include <span>

namespace marelon {

namespace {

// Machine codes by list position.
constexpr int16_t kFullList[] = {15, 18, 0, 1, 2, 17, 3, 13, 4, 16, 5, 6, 7, 14, 8, 9, 10, 11, 12};
constexpr int16_t kReducedList[] = {6, 7, 14, 8, 10, 11};

std::span<const int16_t> ActiveList()
{
    if (IsTovricVersion())
        return kReducedList;
    return kFullList;
}

} // namespace

bool IsTovricVersion()
{
    cRegistry registry;
    registry.setClassKey(kHKeyLocalMachine);
    registry.setSectionKey(kAddInKey);
    registry.setValueType(kRegDword);
    registry.setValueKey(kTovricVersionValue);
    registry.setDefault(0);
    return registry.Value().toLongLong() != 0;
}

int16_t ListIndexToMachineCode(int16_t position)
{
    const std::span<const int16_t> list = ActiveList();
    return position >= 0 && static_cast<size_t>(position) < list.size() ? list[position] : 0;
}

int16_t MachineCodeToListIndex(int16_t code)
{
    const std::span<const int16_t> list = ActiveList();
    const auto found = std::find(list.begin(), list.end(), code);
    return found == list.end() ? 0 : static_cast<int16_t>(found - list.begin());
}

} // namespace marelon
