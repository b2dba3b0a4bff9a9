#include "datapage/MachineCatalogue.h"

#include "addin/host/Document.h"
#include "addin/settings/SettingsStore.h"
#include "addin/ui/TabStop.h"
#include "addin/ui/UiServices.h"
#include "datapage/DataPageSettings.h"
#include "datapage/GangToolPatterns.h"
#include "datapage/ParameterUpdates.h"
#include "datapage/frmMarelonDataPage.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <initializer_list>
#include <span>

namespace marelon {
namespace {

// What the reset does to a slot besides setting its caption.
enum class Reset {
    CaptionOnly,
    EnableLabelAndInput,   // label, input and update button enabled
    ShowInput,             // input shown and enabled; list cleared, disabled, untabbed, hidden
    ShowInputInTabOrder,   // the same, and the input back in the tab order
    HideExtension,         // label and list hidden and disabled, list untabbed
};

// A slot of the Machine Data tab: its input (the field's control, which also
// names its label, parameter and reset caption), its list and update button.
struct Slot {
    const char* input;
    const char* list;
    const char* button;
    Reset reset;
};

// The slots in the order the reset walks them.
constexpr Slot kSlots[] = {
    {"txt814", "", "", Reset::CaptionOnly},
    {"txt815", "", "", Reset::CaptionOnly},
    {"txt816", "", "CmdUpd816", Reset::EnableLabelAndInput},
    {"txt817", "", "", Reset::CaptionOnly},
    {"txt822", "", "", Reset::EnableLabelAndInput},
    {"txt824", "", "", Reset::CaptionOnly},
    {"txt818", "", "CmdUpd818", Reset::CaptionOnly},
    {"txt819", "", "", Reset::CaptionOnly},
    {"txt820", "", "", Reset::CaptionOnly},
    {"txt821", "", "CmdUpd821", Reset::EnableLabelAndInput},
    {"txt813", "", "", Reset::CaptionOnly},
    {"txt990", "cmbGangHolder", "", Reset::ShowInput},
    {"txt991", "cmbFrontDrillHolder", "", Reset::ShowInputInTabOrder},
    {"txt992", "cmbBackDrillHolder", "", Reset::ShowInputInTabOrder},
    {"cmb893", "", "", Reset::CaptionOnly},
    {"cmbBackSpdlExt", "", "", Reset::HideExtension},
};

const Slot& SlotOf(const char* input)
{
    return *std::find_if(std::begin(kSlots), std::end(kSlots),
                         [input](const Slot& slot) { return qstrcmp(slot.input, input) == 0; });
}

// A caption that a model gives a slot instead of the reset caption; parameter 0 shows the text alone.
struct Caption {
    const char* input;
    int parameter;
    const char* text;
};

constexpr Caption kANumbering[] = {
    {"txt814", 16, "Bar Stock O.D."},   {"txt815", 20, "Tool Positioning Point"}, {"txt816", 32, "Cut Off Tool"},
    {"txt817", 36, "Cut Off Speed"},    {"txt818", 24, "Machining Length"},       {"txt819", 28, "Parts Per/1 Chuck"},
    {"txt821", 48, "Back Spl Chuck POS"}, {"txt822", 40, "Cut Off Feed"},        {"txt824", 44, "Cut Off End Point"},
};
constexpr Caption kBNumbering[] = {
    {"txt814", 16, "Bar Stock O.D."}, {"txt815", 20, "Tool Positioning Point"}, {"txt817", 28, "Cut Off Speed"},
    {"txt818", 32, "Machining Length"}, {"txt819", 36, "Parts Per/1 Chuck"},    {"txt822", 40, "Cut Off Feed"},
    {"txt824", 44, "Cut Off End Point"}, {"txt990", 24, "Tooling Pattern"},
};

struct ModelCaptions {
    std::initializer_list<const char*> models;
    std::span<const Caption> numbering; // a shared numbering, applied first
    std::initializer_list<Caption> own;
};

// clang-format off
const ModelCaptions kCaptions[] = {
    {{"A20"},        kANumbering, {{"txt813", 52, "Front Tool Hldr (4=Std)"}, {"txt990", 56, "Tool Pattern 2"},
                                   {"txt991", 62, "Back Drill Holder"}, {"txt992", 64, "Back Spl Type (201=Std)"}}},
    {{"A32"},        kANumbering, {{"txt813", 52, "Front Tool Hldr (4=Std)"}, {"txt990", 56, "Tool Pattern 2"},
                                   {"txt991", 992, "Back Drill Holder"}, {"txt992", 64, "Back Spl Type (201=Std)"}}},
    {{"K16"},        kANumbering, {{"txt813", 52, "Front Tool Holder (8=Std)"}, {"txt990", 56, "Opp Tool Holder (101=Std)"},
                                   {"txt991", 60, "Back Tool Holder (121=Std)"}, {"txt992", 64, "Back Spl Type (141=Std)"}}},
    {{"R6 04-07"},   kANumbering, {{"txt813", 52, "Tool Pattern 1"}, {"txt990", 56, "Tool Pattern 2"},
                                   {"txt991", 60, "Pair Tool (##)"}, {"txt992", 64, "Back Drill Holder"}}},
    {{"B12"},        kBNumbering, {}},
    {{"B2 12-20"},   kBNumbering, {{"txt821", 928, "Back Spl Chuck POS"}, {"txt813", 932, "Back Work Position"}}},
    {{"L3 16-20"},   {},          {{"txt816", 816, "Tooling Pattern"}}},
    {{"L4 25-32"},   {},          {{"txt990", 823, "Gang Tool Pattern"}, {"txt991", 0, "Holder GTF###"},
                                   {"txt992", 0, "Holder GDF###"}, {"cmb893", 0, "Back Spindle Support"}}},
    {{"E2 32IV", "M20"}, {},      {{"txt990", 847, "Gang Tool Pattern"}}},
    {{"C12-16", "C20-32"}, {},    {{"txt991", 991, "Back Drill Holder"}}},
};
// clang-format on

// The state a model row gives a slot.
enum class State { Keep, On, Off, List };
enum class List { None, L5Patterns, L7Patterns, M23Patterns, CPatterns, DrillD, BackA, BackB, BackC };
constexpr int kNoValue = -1;

struct SlotState {
    State state = State::Keep;
    int value = kNoValue;
    List list = List::None;
};

constexpr SlotState keep{};
constexpr SlotState on{State::On};
constexpr SlotState off{State::Off};
constexpr SlotState onValue(int v) { return {State::On, v}; }
constexpr SlotState offValue(int v) { return {State::Off, v}; }
constexpr SlotState value(int v) { return {State::Keep, v}; }
constexpr SlotState list(List l) { return {State::List, kNoValue, l}; }

enum class Picture { Keep, Show, Hide };

// A model's row: the states of slots 813, 816, 820, 821, 822, 824, 990, 991,
// 992 and 893, then what else the row does.
struct ModelRow {
    std::initializer_list<const char*> models;
    SlotState s813, s816, s820, s821, s822, s824, s990, s991, s992, s893;
    Picture picture = Picture::Keep;
    bool extension = false;            // "L4 25-32": the Back Spindle Extension list
    bool disableCutOffUpdate = false;  // CmdUpd816
    bool disableChuckPosUpdate = false;// CmdUpd821
    bool computeBackWorkPosition = false; // 813 from the part, after it is switched on
};

// clang-format off
const ModelRow kRows[] = {
//   models                     813          816          820          821          822          824          990                      991                 992                 893
    {{"A20", "A32"},            on,          keep,        off,         keep,        keep,        on,          off,                     on,                 on,                 off},
    {{"B12"},                   offValue(0), offValue(0), offValue(0), offValue(0), keep,        keep,        keep,                    offValue(0),        offValue(0),        off,
        Picture::Keep, false, true, true},
    {{"B2 12-20"},              on,          offValue(0), offValue(0), keep,        keep,        keep,        keep,                    offValue(0),        offValue(0),        off,
        Picture::Keep, false, true, false, true},
    {{"C12-16", "C20-32"},      offValue(0), keep,        on,          keep,        keep,        on,          list(List::CPatterns),   onValue(61),        off,                list(List::BackA),
        Picture::Hide},
    {{"E2 16J", "E2 25J-32"},   onValue(18), keep,        on,          keep,        keep,        off,         offValue(0),             offValue(0),        offValue(0),        off},
    {{"E2 32IV"},               onValue(18), keep,        on,          keep,        keep,        off,         onValue(1),              offValue(0),        offValue(0),        off},
    {{"K16"},                   on,          keep,        off,         keep,        keep,        on,          on,                      on,                 on,                 off},
    {{"L3 16-20"},              offValue(0), value(1),    off,         offValue(0), offValue(0), off,         offValue(1),             offValue(0),        offValue(0),        off,
        Picture::Keep, false, false, true},
    {{"L4 25-32"},              offValue(0), keep,        on,          keep,        keep,        on,          onValue(2),              onValue(516),       onValue(0),         list(List::BackC),
        Picture::Keep, true},
    {{"L5 16-20"},              offValue(0), keep,        on,          keep,        keep,        on,          list(List::L5Patterns),  list(List::DrillD), list(List::DrillD), list(List::BackA),
        Picture::Show},
    {{"L7 16-20"},              offValue(0), keep,        on,          keep,        keep,        on,          list(List::L7Patterns),  list(List::DrillD), list(List::DrillD), list(List::BackA)},
    {{"L6 32"},                 offValue(0), keep,        on,          keep,        keep,        on,          onValue(30),             offValue(0),        onValue(64),        list(List::BackB)},
    {{"M20"},                   onValue(20), keep,        on,          keep,        keep,        offValue(0), onValue(1),              offValue(0),        offValue(0),        off},
    {{"M2-3 12-16"},            onValue(20), keep,        on,          keep,        keep,        on,          onValue(25),             offValue(0),        onValue(62),        list(List::BackB)},
    {{"M2-3 20-32"},            onValue(20), keep,        on,          keep,        keep,        on,          list(List::M23Patterns), offValue(0),        list(List::DrillD), list(List::BackB)},
    {{"R6 04-07"},              on,          keep,        off,         keep,        keep,        on,          on,                      on,                 on,                 off},
};
// clang-format on

bool Names(std::initializer_list<const char*> models, const QString& model)
{
    return std::any_of(models.begin(), models.end(), [&](const char* name) { return model == QLatin1String(name); });
}

// The back-spindle entries per model group, by code: code i is entry i of the
// group's list unless the list says otherwise.
struct BackSpindleList {
    List list;
    std::initializer_list<const char*> entries;
    int selected;                       // the entry the layout selects
    std::initializer_list<int> codes;   // the Param893 code of each entry
};

const BackSpindleList kBackSpindleLists[] = {
    {List::BackA, {"Standard", "With Basket", "With Support"}, 0, {0, 1, 2}},
    {List::BackB, {"Standard", "Support"}, 0, {0, 1}},
    {List::BackC, {"Yes", "No", "Catch"}, 1, {1, 2, 3}},
};

const BackSpindleList& BackSpindleListOf(List list)
{
    return *std::find_if(std::begin(kBackSpindleLists), std::end(kBackSpindleLists),
                         [list](const BackSpindleList& l) { return l.list == list; });
}

// What the drill holder lists add to their position to give the holder code.
struct DrillHolderOffsets {
    std::initializer_list<const char*> models;
    int front;
    int back;
};
const DrillHolderOffsets kDrillHolderOffsets[] = {
    {{"L5 16-20", "L7 16-20"}, 51, 61},
    {{"M2-3 20-32"}, 62, 0},
};

const DrillHolderOffsets* DrillHolderOffsetsOf(const QString& model)
{
    for (const DrillHolderOffsets& offsets : kDrillHolderOffsets)
        if (Names(offsets.models, model))
            return &offsets;
    return nullptr;
}

// The texts Param893 is written from, in the order they are compared.
struct BackSpindleText {
    const char* text;
    int code;
};
constexpr BackSpindleText kBackSpindleTexts[] = {
    {"Standard", 0}, {"Support", 1}, {"With Support", 2}, {"With Basket", 1}, {"Yes", 1}, {"No", 2}, {"Catch", 3},
};

// The caption a model gives a slot: the reset's, unless the model's numbering
// or its own captions replace it (the model's own last).
Caption CaptionOf(const QString& model, const char* input)
{
    const DataPageField& field = DataPageFieldOf(QLatin1String(input));
    Caption shown{input, field.parameter, field.caption};
    auto take = [&](const Caption& caption) {
        if (qstrcmp(caption.input, input) == 0)
            shown = caption;
    };
    for (const ModelCaptions& captions : kCaptions) {
        if (!Names(captions.models, model))
            continue;
        std::for_each(captions.numbering.begin(), captions.numbering.end(), take);
        std::for_each(captions.own.begin(), captions.own.end(), take);
    }
    return shown;
}

// Applies the layout to one slot, through the form's controls.
class Layout {
public:
    Layout(frmMarelonDataPage& form, const QString& model) : form_(form), model_(model) {}

    void Reset()
    {
        for (const Slot& slot : kSlots)
            ResetSlot(slot);
    }

    void ApplyCaptions()
    {
        for (const Slot& slot : kSlots)
            SetCaption(CaptionOf(model_, slot.input));
    }

    void ApplyRow(const ModelRow& row)
    {
        Apply("txt813", row.s813);
        if (row.computeBackWorkPosition)
            Input("txt813").setText(UpdateMachiningLength(*form_.ActiveDocument(), model_, true));
        Apply("txt816", row.s816);
        Apply("txt820", row.s820);
        Apply("txt821", row.s821);
        Apply("txt822", row.s822);
        Apply("txt824", row.s824);
        Apply("txt990", row.s990);
        Apply("txt991", row.s991);
        Apply("txt992", row.s992);
        ApplyBackSpindle(row.s893);
        if (row.disableCutOffUpdate)
            Widget("CmdUpd816").setEnabled(false);
        if (row.disableChuckPosUpdate)
            Widget("CmdUpd821").setEnabled(false);
        ApplyPicture(row.picture);
        if (row.extension)
            ShowExtension();
    }

private:
    QWidget& Widget(const char* name) { return form_.Control<QWidget>(QLatin1String(name)); }
    QLineEdit& Input(const char* name) { return form_.Control<QLineEdit>(QLatin1String(name)); }
    QComboBox& ListControl(const char* name) { return form_.Control<QComboBox>(QLatin1String(name)); }
    QLabel& Label(const char* input)
    {
        return form_.Control<QLabel>(QLatin1String(DataPageFieldOf(QLatin1String(input)).label));
    }

    void SetCaption(const Caption& caption) { Label(caption.input).setText(ParameterCaption(caption.parameter, caption.text)); }

    void ResetSlot(const Slot& slot)
    {
        const DataPageField& field = DataPageFieldOf(QLatin1String(slot.input));
        Label(slot.input).setText(ParameterCaption(field.parameter, field.caption));
        switch (slot.reset) {
        case Reset::CaptionOnly:
            break;
        case Reset::EnableLabelAndInput:
            Label(slot.input).setEnabled(true);
            Widget(slot.input).setEnabled(true);
            if (*slot.button)
                Widget(slot.button).setEnabled(true);
            break;
        case Reset::ShowInput:
        case Reset::ShowInputInTabOrder:
            Widget(slot.input).show();
            Widget(slot.input).setEnabled(true);
            if (slot.reset == Reset::ShowInputInTabOrder)
                SetTabStop(&Widget(slot.input), true);
            HideList(ListControl(slot.list));
            if (qstrcmp(slot.input, "txt990") == 0)
                Widget("imgGangHolder").hide();
            break;
        case Reset::HideExtension:
            for (QWidget* w : {static_cast<QWidget*>(&Label(slot.input)), &Widget(slot.input)}) {
                w->hide();
                w->setEnabled(false);
            }
            SetTabStop(&Widget(slot.input), false);
            break;
        }
    }

    static void HideList(QComboBox& list)
    {
        list.clear();
        list.setEnabled(false);
        SetTabStop(&list, false);
        list.hide();
    }

    void Switch(const char* input, bool enabled)
    {
        Label(input).setEnabled(enabled);
        Widget(input).setEnabled(enabled);
        SetTabStop(&Widget(input), enabled);
    }

    void Apply(const char* input, const SlotState& state)
    {
        switch (state.state) {
        case State::Keep:
            break;
        case State::On:
            Switch(input, true);
            break;
        case State::Off:
            Switch(input, false);
            break;
        case State::List:
            ShowList(SlotOf(input), state.list);
            break;
        }
        if (state.value != kNoValue) {
            Input(input).setText(QString::number(state.value));
            form_.TakeSlotValue(Input(input));
        }
    }

    // The list takes the place of the slot's text input, which keeps the entry's number.
    void ShowList(const Slot& slot, List list)
    {
        Label(slot.input).setEnabled(true);
        QLineEdit& input = Input(slot.input);
        input.setEnabled(true);
        input.hide();
        SetTabStop(&input, false);
        QComboBox& combo = ListControl(slot.list);
        combo.clear();
        combo.setEnabled(true);
        combo.show();
        SetTabStop(&combo, true);
        if (list == List::DrillD)
            FillDrillHolders(combo, qstrcmp(slot.list, "cmbFrontDrillHolder") == 0 ? "Front Drill Holder" : "Back Drill Holder");
        else
            FillGangPatterns(combo, list);
        form_.TakeSlotValue(input);
    }

    void FillGangPatterns(QComboBox& combo, List list)
    {
        GangToolPatternTable& table = form_.PatternTable();
        switch (list) {
        case List::L5Patterns: LoadL5Patterns(table); break;
        case List::L7Patterns: LoadL7Patterns(table); break;
        case List::M23Patterns: LoadM23Patterns(table); break;
        default: LoadCPatterns(table); break;
        }
        FillPatternList(combo, table);
        combo.setCurrentIndex(-1);
        int saved = SavedPosition("Gang Holder");
        if (saved >= combo.count())
            saved = 0;
        form_.SelectList(combo, saved);
    }

    void FillDrillHolders(QComboBox& combo, const char* key)
    {
        combo.addItem(Tr(QStringLiteral("Standard Holder")));
        combo.addItem(Tr(QStringLiteral("Free Tool")));
        combo.setCurrentIndex(-1);
        form_.SelectList(combo, SavedPosition(key));
    }

    // A list position kept in the settings store; 0 when it is missing or no number.
    static int SavedPosition(const char* key)
    {
        const QString text = GetSetting(kAppName, kDataPageSection, QLatin1String(key), QStringLiteral("0"));
        bool ok = false;
        const int position = text.trimmed().toInt(&ok);
        return ok ? position : 0;
    }

    void ApplyBackSpindle(const SlotState& state)
    {
        QComboBox& combo = ListControl("cmb893");
        QLabel& label = Label("cmb893");
        combo.clear();
        const bool shown = state.state == State::List;
        label.setEnabled(shown);
        combo.setEnabled(shown);
        SetTabStop(&combo, shown);
        if (!shown)
            return;
        const BackSpindleList& list = BackSpindleListOf(state.list);
        for (const char* entry : list.entries)
            combo.addItem(Tr(QLatin1String(entry)));
        combo.setCurrentIndex(-1);
        form_.SelectList(combo, list.selected);
    }

    void ApplyPicture(Picture picture)
    {
        QWidget& image = Widget("imgGangHolder");
        if (picture == Picture::Keep)
            return;
        image.setVisible(picture == Picture::Show);
        image.setEnabled(picture == Picture::Show);
    }

    void ShowExtension()
    {
        QComboBox& combo = ListControl("cmbBackSpdlExt");
        QLabel& label = Label("cmbBackSpdlExt");
        for (QWidget* w : {static_cast<QWidget*>(&label), static_cast<QWidget*>(&combo)}) {
            w->show();
            w->setEnabled(true);
        }
        SetTabStop(&combo, true);
        combo.clear();
        combo.addItem(Tr(QStringLiteral("Yes")));
        combo.addItem(Tr(QStringLiteral("No")));
        combo.setCurrentIndex(-1);
        form_.SelectList(combo, 1);
    }

    frmMarelonDataPage& form_;
    const QString& model_;
};

const ModelRow* RowOf(const QString& model)
{
    const auto row = std::find_if(std::begin(kRows), std::end(kRows), [&](const ModelRow& r) { return Names(r.models, model); });
    return row == std::end(kRows) ? nullptr : &*row;
}

// The back-spindle list that shows a model's Param893: the list its layout
// fills, or "Standard", "Support" on models without one.
List BackSpindleListOf(const QString& model)
{
    const ModelRow* row = RowOf(model);
    return row && row->s893.state == State::List ? row->s893.list : List::BackB;
}

} // namespace

bool SlotMeansTheSame(const QString& oneModel, const QString& otherModel, const QString& input)
{
    const QByteArray name = input.toLatin1();
    const Caption one = CaptionOf(oneModel, name.constData());
    const Caption other = CaptionOf(otherModel, name.constData());
    return one.parameter == other.parameter && qstrcmp(one.text, other.text) == 0;
}

void ApplyMachineLayout(frmMarelonDataPage& form, const QString& modelName)
{
    Layout layout(form, modelName);
    layout.Reset();
    const ModelRow* row = RowOf(modelName);
    if (!row)
        return;
    layout.ApplyCaptions();
    layout.ApplyRow(*row);
}

std::optional<int> FrontDrillHolderOffset(const QString& modelName)
{
    const DrillHolderOffsets* offsets = DrillHolderOffsetsOf(modelName);
    return offsets ? std::optional(offsets->front) : std::nullopt;
}

std::optional<int> BackDrillHolderOffset(const QString& modelName)
{
    const DrillHolderOffsets* offsets = DrillHolderOffsetsOf(modelName);
    return offsets ? std::optional(offsets->back) : std::nullopt;
}

std::optional<int> BackSpindleCode(const QString& entryText)
{
    for (const BackSpindleText& entry : kBackSpindleTexts)
        if (entryText == Tr(QLatin1String(entry.text)))
            return entry.code;
    return std::nullopt;
}

std::optional<QString> BackSpindleEntry(const QString& modelName, int code)
{
    const BackSpindleList& list = BackSpindleListOf(BackSpindleListOf(modelName));
    int i = 0;
    for (int entryCode : list.codes) {
        if (entryCode == code)
            return QLatin1String(list.entries.begin()[i]);
        ++i;
    }
    return std::nullopt;
}

} // namespace marelon
