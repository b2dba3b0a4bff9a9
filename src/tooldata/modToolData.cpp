#include "tooldata/modToolData.h"

#include "addin/host/LatheToolKind16.h"
#include "addin/host/LatheToolKind17.h"
#include "addin/host/LatheToolKind18.h"
#include "addin/host/LatheToolKind19.h"
#include "addin/host/LatheToolKind21.h"
#include "addin/host/LatheToolKind22.h"
#include "addin/host/LatheToolKind23.h"
#include "addin/host/TechnologyParameter.h"
#include "addin/host/Tool.h"
#include "addin/host/Tools.h"
#include "numeric/NumberText.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace marelon {
namespace {

constexpr int kCentreMount = 10; // MountCode of a tool whose X shift is its centre offset
constexpr int kZFromLength = 2;  // ZCode of kinds 18 and 19 whose Z shift comes from the length

double centreShift(int mountCode, double centreOffset)
{
    return mountCode == kCentreMount ? 2 * centreOffset : 0;
}

// Kinds 17 and 23: X from the mount, Z and Y from the side and corner.
template <class Kind>
ToolShiftFields sideAndCornerShift(Kind& kind)
{
    ToolShiftFields shift;
    shift.x = centreShift(kind.MountCode(), kind.CentreOffset());
    const int side = kind.SideCode();
    if (side != 1 && side != 2) {
        shift.z = 0;
        shift.y = 0;
        return shift;
    }
    const int corner = kind.CornerCode();
    if (corner == 11 || corner == 14) {
        shift.z = side == 1 ? -kind.Width() : 0;
        shift.y = 0;
    } else if (corner == 12 || corner == 13) {
        shift.z = side == 1 ? -kind.CentreOffset() : kind.Width() - kind.CentreOffset();
        shift.y = 0;
    }
    return shift;
}

// Kinds 18 and 19: Z from the length (half of it for 18) when ZCode is 2,
// else Y is 0. X is kept for a tool mounted on its centre: these kinds carry
// no centre offset of their own.
template <class Kind>
ToolShiftFields lengthShift(Kind& kind, double lengthFactor)
{
    ToolShiftFields shift;
    if (kind.MountCode() != kCentreMount)
        shift.x = 0;
    if (kind.ZCode() == kZFromLength)
        shift.z = -kind.Length() * lengthFactor;
    else
        shift.y = 0;
    return shift;
}

ToolShiftFields centreOnly(int mountCode, double centreOffset)
{
    return {centreShift(mountCode, centreOffset), 0.0, 0.0};
}

} // namespace

double GetToolLengthComp(host::Tool& tool)
{
    const QVariant value = tool.Parameter(kLengthCompParameter)->Value();
    if (value.typeId() == QMetaType::QString)
        return numeric::LeadingNumber(value.toString());
    return value.toDouble();
}

bool IsMillTool(host::Tool& tool)
{
    const int kind = tool.ToolType();
    return kind < 15 || kind == 20;
}

bool IsLatheTool(host::Tool& tool)
{
    return !IsMillTool(tool);
}

int32_t ToolNumber(host::Tool& tool)
{
    const double key = double(tool.Number()) * 100 + GetToolLengthComp(tool);
    if (std::isnan(key))
        return 0;
    const double limit = std::numeric_limits<int32_t>::max();
    return numeric::RoundToInt32(std::clamp(key, -limit - 1, limit));
}

QList<ToolPtr> SortTools(host::Tools& tools)
{
    const int n = tools.Count();
    std::vector<ToolPtr> a(size_t(n) + 1); // a[1..n], as the host counts
    std::vector<int32_t> key(size_t(n) + 1);
    for (int i = 1; i <= n; ++i) {
        a[size_t(i)] = tools.Item(i);
        key[size_t(i)] = ToolNumber(*a[size_t(i)]);
    }
    int gap = n / 2;
    while (gap >= 1) {
        for (int i = gap; i <= n - 1; ++i) {
            for (int j = i - gap + 1; j >= 1; j -= gap) {
                if (key[size_t(j)] <= key[size_t(j + gap)])
                    break;
                std::swap(a[size_t(j)], a[size_t(j + gap)]);
                std::swap(key[size_t(j)], key[size_t(j + gap)]);
            }
        }
        gap = numeric::RoundToInt32(gap / 2.0); // halves to even: 5 gives 2, 3 gives 2, 1 gives 0
    }
    return QList<ToolPtr>(a.begin() + 1, a.end());
}

ToolShiftFields ToolShiftFromGeometry(host::Tool& tool)
{
    switch (tool.ToolType()) {
    case 16: {
        auto kind = tool.AsLatheToolKind16();
        return centreOnly(kind->MountCode(), kind->CentreOffset());
    }
    case 21: {
        auto kind = tool.AsLatheToolKind21();
        return centreOnly(kind->MountCode(), kind->CentreOffset());
    }
    case 22: {
        auto kind = tool.AsLatheToolKind22();
        return centreOnly(kind->MountCode(), kind->CentreOffset());
    }
    case 17:
        return sideAndCornerShift(*tool.AsLatheToolKind17());
    case 23:
        return sideAndCornerShift(*tool.AsLatheToolKind23());
    case 18:
        return lengthShift(*tool.AsLatheToolKind18(), 0.5);
    case 19:
        return lengthShift(*tool.AsLatheToolKind19(), 1.0);
    default:
        return {0.0, 0.0, 0.0};
    }
}

} // namespace marelon
