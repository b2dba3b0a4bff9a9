#include "datapage/FieldUnits.h"

#include "addin/ui/UiServices.h"

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>

namespace marelon {
namespace {

const QString kUnitPrefix = QStringLiteral("unit");
const QString kNCCodeUnitNote = QStringLiteral("lblNCCodeUnitNote");

// The layout, at any depth below this one, that holds the widget itself.
QLayout* LayoutHolding(QLayout* layout, QWidget* widget)
{
    if (!layout)
        return nullptr;
    if (layout->indexOf(widget) >= 0)
        return layout;
    for (int i = 0; i < layout->count(); ++i)
        if (QLayout* found = LayoutHolding(layout->itemAt(i)->layout(), widget))
            return found;
    return nullptr;
}

// Keeps a unit label hidden and greyed as its field is.
class UnitFollower : public QObject {
public:
    UnitFollower(QWidget& field, QLabel& unit) : QObject(&unit), field_(field), unit_(unit)
    {
        field.installEventFilter(this);
        Follow();
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::ShowToParent:
        case QEvent::HideToParent:
        case QEvent::EnabledChange:
            Follow();
            break;
        default:
            break;
        }
        return false;
    }

private:
    void Follow()
    {
        unit_.setHidden(field_.isHidden());
        unit_.setEnabled(field_.isEnabled());
    }

    QWidget& field_;
    QLabel& unit_;
};

// Beside the list: what the chosen unit for NC code changes, against the part's own unit.
QString NCCodeUnitNote(int position, bool inchPart)
{
    if (position < 0)
        return QString();
    const bool inchCode = position == 0;
    if (inchCode == inchPart)
        return Tr(QStringLiteral("The NC code is written in the part's unit, %1.")).arg(UnitText(Quantity::Length, inchPart));
    return Tr(QStringLiteral("The NC code's lengths and feeds are written in %1; the values on this page stay in the part's unit, %2."))
        .arg(UnitText(Quantity::Length, inchCode), UnitText(Quantity::Length, inchPart));
}

} // namespace

QString UnitText(Quantity quantity, bool inchPart)
{
    switch (quantity) {
    case Quantity::Length: return inchPart ? Tr(QStringLiteral("in")) : Tr(QStringLiteral("mm"));
    case Quantity::Feed: return inchPart ? Tr(QStringLiteral("in/rev")) : Tr(QStringLiteral("mm/rev"));
    case Quantity::Speed: return Tr(QStringLiteral("rpm"));
    case Quantity::Time: return Tr(QStringLiteral("s"));
    case Quantity::Angle: return QStringLiteral("°");
    case Quantity::NoUnit:
    case Quantity::Count:
    case Quantity::Code: return QString();
    }
    return QString();
}

void AddUnitLabels(QWidget& page)
{
    for (const DataPageField& field : DataPageFields()) {
        if (UnitText(field.quantity, false).isEmpty())
            continue;
        auto* box = page.findChild<QLineEdit*>(QLatin1String(field.control));
        if (!box || page.findChild<QLabel*>(kUnitPrefix + QLatin1String(field.control)))
            continue;
        QWidget* parent = box->parentWidget();
        QLayout* layout = LayoutHolding(parent->layout(), box);
        if (!layout)
            continue;
        auto* pair = new QWidget(parent);
        auto* row = new QHBoxLayout;
        row->setContentsMargins(0, 0, 0, 0);
        pair->setLayout(row);
        delete layout->replaceWidget(box, pair);
        row->addWidget(box, 1);
        auto* unit = new QLabel(pair);
        unit->setObjectName(kUnitPrefix + QLatin1String(field.control));
        row->addWidget(unit);
        new UnitFollower(*box, *unit);
    }

    auto* list = page.findChild<QComboBox*>(QStringLiteral("NCCodeUnit"));
    if (!list || page.findChild<QLabel*>(kNCCodeUnitNote))
        return;
    QWidget* parent = list->parentWidget();
    if (QLayout* layout = LayoutHolding(parent->layout(), list)) {
        auto* pair = new QWidget(parent);
        auto* row = new QHBoxLayout;
        row->setContentsMargins(0, 0, 0, 0);
        pair->setLayout(row);
        delete layout->replaceWidget(list, pair);
        row->addWidget(list);
        auto* note = new QLabel(pair);
        note->setObjectName(kNCCodeUnitNote);
        note->setWordWrap(true);
        row->addWidget(note, 1);
    }
}

void ShowUnits(QWidget& page, bool inchPart)
{
    for (const DataPageField& field : DataPageFields())
        if (auto* unit = page.findChild<QLabel*>(kUnitPrefix + QLatin1String(field.control)))
            unit->setText(UnitText(field.quantity, inchPart));
    auto* list = page.findChild<QComboBox*>(QStringLiteral("NCCodeUnit"));
    auto* note = page.findChild<QLabel*>(kNCCodeUnitNote);
    if (!list || !note)
        return;
    note->setText(NCCodeUnitNote(list->currentIndex(), inchPart));
    QObject::disconnect(list, &QComboBox::currentIndexChanged, note, nullptr);
    QObject::connect(list, &QComboBox::currentIndexChanged, note,
                     [note, inchPart](int position) { note->setText(NCCodeUnitNote(position, inchPart)); });
}

} // namespace marelon
