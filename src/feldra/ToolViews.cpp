// The tools of a document, their parameters and their lathe kind views.
#include "addin/host/LatheToolKind16.h"
#include "addin/host/LatheToolKind17.h"
#include "addin/host/LatheToolKind18.h"
#include "addin/host/LatheToolKind19.h"
#include "addin/host/LatheToolKind21.h"
#include "addin/host/LatheToolKind22.h"
#include "addin/host/LatheToolKind23.h"
#include "feldra/Views.h"

#include <algorithm>

namespace feldra {

// One object serves every lathe kind view: the kinds share their value names,
// and each view's operations are named after its kind ("LatheToolKind17.Width").
class ToolView::KindView final : public host::LatheToolKind16,
                                 public host::LatheToolKind17,
                                 public host::LatheToolKind18,
                                 public host::LatheToolKind19,
                                 public host::LatheToolKind21,
                                 public host::LatheToolKind22,
                                 public host::LatheToolKind23,
                                 public View {
public:
    KindView(ContextPtr context, DocumentPtr document, std::shared_ptr<ToolData> data)
        : View(std::move(context), std::move(document)), data_(std::move(data)),
          prefix_(QStringLiteral("LatheToolKind%1.").arg(data_->toolType))
    {
    }

    int MountCode() override { return get(prefix_ + "MountCode", data_->mountCode); }
    double CentreOffset() override { return get(prefix_ + "CentreOffset", data_->centreOffset); }
    int SideCode() override { return get(prefix_ + "SideCode", data_->sideCode); }
    int CornerCode() override { return get(prefix_ + "CornerCode", data_->cornerCode); }
    double Width() override { return get(prefix_ + "Width", data_->width); }
    int ZCode() override { return get(prefix_ + "ZCode", data_->zCode); }
    double Length() override { return get(prefix_ + "Length", data_->length); }

private:
    std::shared_ptr<ToolData> data_;
    QString prefix_;
};

std::shared_ptr<ToolView::KindView> ToolView::kindView(int kind)
{
    const QString operation = QStringLiteral("Tool.AsLatheToolKind%1").arg(kind);
    guard(operation);
    if (data_->toolType != kind)
        fail(operation, QStringLiteral("The tool is of kind %1.").arg(data_->toolType));
    return std::make_shared<KindView>(ctx_, doc_, data_);
}

std::shared_ptr<host::LatheToolKind16> ToolView::AsLatheToolKind16() { return kindView(16); }
std::shared_ptr<host::LatheToolKind17> ToolView::AsLatheToolKind17() { return kindView(17); }
std::shared_ptr<host::LatheToolKind18> ToolView::AsLatheToolKind18() { return kindView(18); }
std::shared_ptr<host::LatheToolKind19> ToolView::AsLatheToolKind19() { return kindView(19); }
std::shared_ptr<host::LatheToolKind21> ToolView::AsLatheToolKind21() { return kindView(21); }
std::shared_ptr<host::LatheToolKind22> ToolView::AsLatheToolKind22() { return kindView(22); }
std::shared_ptr<host::LatheToolKind23> ToolView::AsLatheToolKind23() { return kindView(23); }

int ToolView::Number() { return get("Tool.Number", data_->number); }
void ToolView::setNumber(int number) { put("Tool.Number", data_->number, number); }
QString ToolView::ToolID() { return get("Tool.ToolID", data_->toolId); }
void ToolView::setToolID(const QString& id) { put("Tool.ToolID", data_->toolId, id); }
QString ToolView::Comment() { return get("Tool.Comment", data_->comment); }
void ToolView::setComment(const QString& comment) { put("Tool.Comment", data_->comment, comment); }
int ToolView::ToolType() { return get("Tool.ToolType", data_->toolType); }
int ToolView::UnitSystem() { return get("Tool.UnitSystem", data_->unitSystem); }
double ToolView::XShift() { return get("Tool.XShift", data_->xShift); }
void ToolView::setXShift(double value) { put("Tool.XShift", data_->xShift, value); }
double ToolView::YShift() { return get("Tool.YShift", data_->yShift); }
void ToolView::setYShift(double value) { put("Tool.YShift", data_->yShift, value); }
double ToolView::ZShift() { return get("Tool.ZShift", data_->zShift); }
void ToolView::setZShift(double value) { put("Tool.ZShift", data_->zShift, value); }
double ToolView::HolderIndex() { return get("Tool.HolderIndex", data_->holderIndex); }
void ToolView::setHolderIndex(double value) { put("Tool.HolderIndex", data_->holderIndex, value); }
void ToolView::setGearRatio(double value) { put("Tool.GearRatio", data_->gearRatio, value); }
int ToolView::BackSpindle() { return get("Tool.BackSpindle", data_->backSpindle); }
int ToolView::TurretNumber() { return get("Tool.TurretNumber", data_->turretNumber); }
int ToolView::StationIndex() { return get("Tool.StationIndex", data_->stationIndex); }
int ToolView::SpindleDirection() { return get("Tool.SpindleDirection", data_->spindleDirection); }

void ToolView::setBackSpindle(int value)
{
    guard("Tool.BackSpindle write");
    if (value != 0 && value != 1)
        fail("Tool.BackSpindle write", QStringLiteral("%1 is neither 0 (main) nor 1 (back).").arg(value));
    store(data_->backSpindle, value);
}

void ToolView::setSpindleDirection(int value)
{
    guard("Tool.SpindleDirection write");
    if (value < -1 || value > 1)
        fail("Tool.SpindleDirection write", QStringLiteral("%1 is not -1, 0 or 1.").arg(value));
    store(data_->spindleDirection, value);
}

std::shared_ptr<host::TechnologyParameter> ToolView::Parameter(const QString& number)
{
    guard("Tool.Parameter");
    return MakeParameter(ctx_, doc_, std::shared_ptr<Parameters>(data_, &data_->parameters), number,
                         "Tool.Parameter");
}

namespace {

class ToolsView final : public host::Tools, public View {
public:
    using View::View;

    std::shared_ptr<host::Tool> Item(int i) override
    {
        guard("Tools.Item");
        return std::make_shared<ToolView>(ctx_, doc_, at(doc().data.tools, i, "Tools.Item"));
    }
    int Count() override { return get("Tools.Count", int(doc().data.tools.size())); }
    // A new tool of the kind, numbered after the last tool, in the document's units.
    std::shared_ptr<host::Tool> Add(int toolType) override
    {
        change("Tools.Add");
        auto data = std::make_shared<ToolData>();
        data->toolType = toolType;
        data->unitSystem = doc().data.unitSystem;
        for (const auto& tool : doc().data.tools)
            data->number = std::max(data->number, tool->number);
        ++data->number;
        data->toolId = QStringLiteral("T%1").arg(data->number);
        data->parameters.insert(QStringLiteral("121"), {data->number, QString(), {}});
        doc().data.tools.append(data);
        return std::make_shared<ToolView>(ctx_, doc_, data);
    }
};

} // namespace

std::shared_ptr<host::Tools> MakeTools(ContextPtr context, DocumentPtr document)
{
    return std::make_shared<ToolsView>(std::move(context), std::move(document));
}

} // namespace feldra
