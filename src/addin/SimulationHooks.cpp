#include "addin/SimulationHooks.h"

#include "addin/ContinueOnError.h"
#include "addin/host/Axis.h"
#include "addin/host/AxisGroup.h"
#include "addin/host/AxisGroups.h"
#include "addin/host/AxisLimit.h"
#include "addin/host/AxisLimits.h"
#include "addin/host/Component.h"
#include "addin/host/Components.h"
#include "addin/host/CustomProperties.h"
#include "addin/host/CustomProperty.h"
#include "addin/host/Document.h"
#include "addin/host/MachineModel.h"
#include "addin/host/MachineSetup.h"
#include "addin/host/NCHeads.h"
#include "addin/host/Operation.h"
#include "addin/host/Point.h"
#include "addin/host/Simulation.h"
#include "addin/host/Technology.h"
#include "addin/host/TechnologyParameter.h"
#include "addin/host/Turret.h"
#include "addin/host/Turrets.h"
#include "addin/ui/UiServices.h"
#include "numeric/NumberText.h"

#include <optional>

namespace marelon {
namespace {

// The value a new property holds until the user sets it; a user's value that
// happens to be exactly this counts as unset too.
constexpr double kUnsetValue = 0.1234567;
constexpr int kTextProperty = 8;
constexpr int kDoubleProperty = 5;
constexpr int kBackSpindleTurret = 2;
constexpr int kTechnology154 = 154;

bool IsMarelonLathe(host::Document& document)
{
    return document.MachineType() == 1 && document.MachineSetup()->MakerTag() == QLatin1String("MARELON");
}

// True when the technology's parameter is this number; false when it is
// another value or cannot be read.
bool ParameterIs(host::Technology& technology, const QString& number, double expected)
{
    bool equal = false;
    ContinueOnError([&] { equal = numeric::VariantToNumber(technology.Parameter(number)->Value()) == expected; });
    return equal;
}

// The parameter's value as a text key; a number in the user's conventions.
QString ParameterText(host::Technology& technology, const QString& number)
{
    const QVariant value = technology.Parameter(number)->Value();
    if (value.typeId() == QMetaType::QString)
        return value.toString();
    return numeric::NumberToText(value.toDouble());
}

// Parameters "792" = 2 and "793" = 1: the operation works at the Z2 position.
bool WorksAtZ2(host::Technology& technology)
{
    return ParameterIs(technology, QStringLiteral("792"), 2) && ParameterIs(technology, QStringLiteral("793"), 1);
}

std::shared_ptr<host::Technology> TechnologyOf(host::Operation& operation)
{
    std::shared_ptr<host::Technology> technology;
    ContinueOnError([&] { technology = operation.Technology(); });
    return technology;
}

bool IsOfType(host::Technology& technology, int type)
{
    bool matches = false;
    ContinueOnError([&] { matches = technology.TechnologyType() == type; });
    return matches;
}

void SetEnabled(const std::shared_ptr<host::Axis>& axis, bool enabled)
{
    if (axis)
        ContinueOnError([&] { axis->setEnabled(enabled); });
}

bool HasThreeHeads(host::Document& document)
{
    bool three = false;
    ContinueOnError([&] { three = document.MachineSetup()->Heads()->Count() == 3; });
    return three;
}

// Machine code 6 moves the component in Y and Z only, 9, 10 and 11 keep X and
// Y, every other code moves it in X and Z only. A machine code that is no
// number keeps both.
void ApplyMachineCode(host::Document& document, host::Point& position)
{
    const auto code = numeric::VariantToNumber(document.MachineSetup()->MachineCode());
    if (!code || *code == 9 || *code == 10 || *code == 11)
        return;
    if (*code == 6)
        position.setX(0);
    else
        position.setY(0);
}

} // namespace

std::shared_ptr<host::CustomProperty> SimulationHooks::GetCustomProperty(host::GraphicObject& object,
                                                                         const QString& name, int type)
{
    std::shared_ptr<host::CustomProperty> property;
    ContinueOnError([&] { property = object.CustomProperties()->Item(name); });
    if (property && property->Type() != type) {
        object.CustomProperties()->Remove(name);
        property.reset();
    }
    if (!property) {
        const QVariant initial = type == kTextProperty ? QVariant(QString()) : QVariant(kUnsetValue);
        property = object.CustomProperties()->Add(name, name, type, initial);
    }
    return property;
}

QVariant SimulationHooks::GetZ2UpperLimit(host::Document& document)
{
    const auto limits = document.MachineSetup()->Turrets()->Item(kBackSpindleTurret)->AxisLimits();
    const int count = limits->Count();
    for (int i = 1; i <= count; ++i) {
        const auto limit = limits->Item(i);
        if (limit->Name() == QLatin1String("Z2"))
            return limit->UpperLimit();
    }
    return {};
}

std::shared_ptr<host::Axis> SimulationHooks::findAxis(const QString& name) const
{
    std::shared_ptr<host::Axis> found;
    ContinueOnError([&] {
        const auto groups = machineModel_->AxisGroups();
        const int groupCount = groups->Count();
        for (int g = 1; g <= groupCount && !found; ++g) {
            const auto group = groups->Item(g);
            const int axisCount = group->Count();
            for (int a = 1; a <= axisCount && !found; ++a) {
                const auto axis = group->Item(a);
                if (axis->Name() == name)
                    found = axis;
            }
        }
    });
    return found;
}

void SimulationHooks::OnBegin(host::Document& document, host::Simulation& simulation)
{
    if (!IsMarelonLathe(document))
        return;
    z2_.reset();
    z3_.reset();
    z2Moved_ = false;
    machineModel_ = simulation.MachineModel();
    z2_ = findAxis(QStringLiteral("Z2"));
    z3_ = findAxis(QStringLiteral("Z3"));
}

void SimulationHooks::OnOperationStart(host::Document& document, host::Operation& operation)
{
    if (!IsMarelonLathe(document))
        return;
    const auto technology = TechnologyOf(operation);
    if (!technology || IsOfType(*technology, kTechnology154))
        return;
    const bool backSpindle = ParameterIs(*technology, QStringLiteral("797"), 1);
    const bool atZ2 = WorksAtZ2(*technology);
    if (backSpindle) {
        SetEnabled(z2_, false);
        SetEnabled(z3_, false);
        if (atZ2 && z2_) {
            SetEnabled(z2_, true);
            z2Moved_ = true;
        }
    } else if (atZ2) {
        SetEnabled(z2_, false);
    }
}

void SimulationHooks::OnSimulateOperation(host::Document& document, host::Operation& operation)
{
    if (!IsMarelonLathe(document))
        return;
    const auto technology = TechnologyOf(operation);
    if (!technology)
        return;
    if (!ParameterIs(*technology, QStringLiteral("797"), 1)) {
        if (WorksAtZ2(*technology))
            SetEnabled(z2_, false);
        return;
    }
    SetEnabled(z2_, false);
    SetEnabled(z3_, false);
    if (WorksAtZ2(*technology)) {
        driveToZ2Position(document, operation, *technology);
    } else {
        if (ParameterIs(*technology, QStringLiteral("793"), 1) && z2Moved_)
            returnZ2ToReference(document);
        z2Moved_ = false;
    }
    const auto& axis154 = HasThreeHeads(document) ? z3_ : z2_;
    if (IsOfType(*technology, kTechnology154) && ParameterIs(*technology, QStringLiteral("793"), 1)
        && ParameterIs(*technology, QStringLiteral("778"), 2))
        SetEnabled(axis154, true);
}

// The operation's "Z2Position" (the upper limit of Z2 until the user sets
// it), the back-spindle component moved there, and Z2 enabled.
void SimulationHooks::driveToZ2Position(host::Document& document, host::Operation& operation,
                                        host::Technology& technology)
{
    std::shared_ptr<host::CustomProperty> z2Position;
    ContinueOnError([&] { z2Position = GetCustomProperty(operation, QStringLiteral("Z2Position"), kDoubleProperty); });
    if (z2Position) {
        ContinueOnError([&] { z2Position->setCaption(Tr(QStringLiteral("Z2 Position"))); });
        ContinueOnError([&] {
            if (numeric::VariantToNumber(z2Position->Value()) == kUnsetValue)
                z2Position->setValue(GetZ2UpperLimit(document));
        });
    }
    moveComponentToZ2(document, technology, z2Position);
    if (z2_) {
        SetEnabled(z2_, true);
        z2Moved_ = true;
    }
}

// Moves the machine-model component named by parameter "498" to the Z2
// position; a component that cannot be found or read stays where it is.
void SimulationHooks::moveComponentToZ2(host::Document& document, host::Technology& technology,
                                        const std::shared_ptr<host::CustomProperty>& z2Position) const
{
    if (!machineModel_)
        return;
    std::shared_ptr<host::Component> component;
    std::shared_ptr<host::Point> position;
    ContinueOnError([&] {
        component = machineModel_->Components()->Item(ParameterText(technology, QStringLiteral("498")));
        position = component->Position();
    });
    if (!position)
        return;
    ContinueOnError([&] { ApplyMachineCode(document, *position); });
    if (z2Position)
        ContinueOnError([&] { position->setZ(z2Position->Value().toDouble()); });
    ContinueOnError([&] { component->MoveTo(position); });
}

void SimulationHooks::returnZ2ToReference(host::Document& document) const
{
    if (z2_)
        ContinueOnError([&] {
            z2_->setPosition(document.MachineSetup()->Turrets()->Item(kBackSpindleTurret)->ReferenceZ());
        });
}

} // namespace marelon
