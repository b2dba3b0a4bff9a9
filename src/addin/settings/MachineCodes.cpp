#include "addin/settings/MachineCodes.h"

#include "addin/settings/cRegistry.h"

#include <algorithm>
#include <vector>

namespace marelon {

namespace {

struct MachineModel {
    const char* name;
    int16_t code;
    bool inReducedList;
};

// The models in the order of the full list; the reduced list keeps the same
// order ("L6 32" after "L7 16-20" in both).
constexpr MachineModel kModels[] = {
    {"A20", 15, false},       {"A32", 18, false},        {"B12", 0, false},        {"B2 12-20", 1, false},
    {"C12-16", 2, false},     {"C20-32", 17, false},     {"E2 16J", 3, false},     {"E2 25J-32", 13, false},
    {"E2 32IV", 4, false},    {"K16", 16, false},        {"L3 16-20", 5, false},   {"L4 25-32", 6, true},
    {"L5 16-20", 7, true},    {"L7 16-20", 14, true},    {"L6 32", 8, true},       {"M20", 9, false},
    {"M2-3 12-16", 10, true}, {"M2-3 20-32", 11, true},  {"R6 04-07", 12, false},
};

std::vector<const MachineModel*> Models(bool reducedList)
{
    std::vector<const MachineModel*> models;
    for (const MachineModel& model : kModels)
        if (!reducedList || model.inReducedList)
            models.push_back(&model);
    return models;
}

std::vector<const MachineModel*> ActiveList()
{
    return Models(IsTovricVersion());
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

QStringList MachineModelNames(bool reducedList)
{
    QStringList names;
    for (const MachineModel* model : Models(reducedList))
        names << QString::fromLatin1(model->name);
    return names;
}

QStringList MachineNameList()
{
    return MachineModelNames(IsTovricVersion());
}

int16_t ListIndexToMachineCode(int16_t position)
{
    const auto list = ActiveList();
    return position >= 0 && static_cast<size_t>(position) < list.size() ? list[position]->code : 0;
}

int16_t MachineCodeToListIndex(int16_t code)
{
    const auto list = ActiveList();
    const auto found = std::find_if(list.begin(), list.end(), [code](const MachineModel* m) { return m->code == code; });
    return found == list.end() ? 0 : static_cast<int16_t>(found - list.begin());
}

} // namespace marelon
