#include "addin/TechnologyEditHook.h"

#include "addin/host/Document.h"
#include "addin/host/Technology.h"
#include "addin/host/TechnologyParameter.h"
#include "addin/ui/UiServices.h"

#include <QList>
#include <QString>
#include <utility>

namespace marelon {
namespace {

struct LabelGroup {
    QList<int> technologyTypes;
    QList<std::pair<QString, QString>> labels; // parameter number, English label
};

// In the order the groups are tested; a technology type belongs to one group at most.
// A label with its letter in brackets is one text for the localiser.
const QList<LabelGroup>& LabelGroups()
{
    static const QList<LabelGroup> groups{
        {{206},
         {{"631", "M32- Position X"},
          {"632", "M32- Position Z"},
          {"633", "M34- 0:Basket 1:Clamp"},
          {"634", "M34- Pickup Location(A)"},
          {"635", "M34- Pull Back(B)"},
          {"636", "M34- Ejecting Distance(W)"}}},
        {{207}, {{"631", "Collet Extension"}}}, // the pick-up operation
        {{150, 180}, {{"631", "G76- Pull Out Dist.(%)"}, {"632", "G76- Minimum Depth"}}},
        {{230}, {{"631", "15=M15 ; 16=M16"}}},
        {{37, 152, 310, 317}, {{"631", "G79- Dwell At Retract"}}},
        {{153, 398}, {{"631", "G201- H Value"}}}, // the cut-off operations
    };
    return groups;
}

} // namespace

void RelabelTechnology(host::Document& document, host::Technology& technology)
{
    for (const LabelGroup& group : LabelGroups()) {
        const int technologyType = technology.TechnologyType();
        const bool lathe = document.MachineType() == 1;
        if (!lathe || !group.technologyTypes.contains(technologyType))
            continue;
        for (const auto& [number, label] : group.labels)
            technology.Parameter(number)->setCaption(Tr(label));
    }
}

} // namespace marelon
