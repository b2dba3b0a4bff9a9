#include "DataPageFixture.h"

#include "addin/ui/TabStop.h"

#include <QTest>

using marelon::TabStop;

namespace {

// Slot captions after the reset: parameter number and text.
const QMap<QString, QString> kResetCaptions = {
    {"813", "813 Work Receiver No.(##)"}, {"814", "814 Bar Stock O.D."},  {"815", "815 Tool Positioning Point"},
    {"816", "816 Cut Off Tool"},          {"817", "817 Cut Off Speed"},   {"818", "818 Machining Length"},
    {"819", "819 Parts Per/1 Chuck"},     {"820", "820 Pipe ID/Tube ID"}, {"821", "821 Back Spl Chuck POS"},
    {"822", "822 Cut Off Feed"},          {"824", "824 Cut Off End Point"}, {"990", "990 Gang Holder"},
    {"991", "991 Front Drill Holder"},    {"992", "992 Back Drill Holder"}, {"893", "893 Back Spindle"},
    {"Ext", "Back Spindle Extension"},
};

const QString kANumbering = "814=016 Bar Stock O.D.|815=020 Tool Positioning Point|816=032 Cut Off Tool|"
                            "817=036 Cut Off Speed|818=024 Machining Length|819=028 Parts Per/1 Chuck|"
                            "821=048 Back Spl Chuck POS|822=040 Cut Off Feed|824=044 Cut Off End Point|";
const QString kBNumbering = "814=016 Bar Stock O.D.|815=020 Tool Positioning Point|817=028 Cut Off Speed|"
                            "818=032 Machining Length|819=036 Parts Per/1 Chuck|822=040 Cut Off Feed|"
                            "824=044 Cut Off End Point|990=024 Tooling Pattern|";

// Each model's captions that differ from the reset, and its slot states:
// on, off, "=N" a value, "list:N" a list of N entries, "·" left alone;
// 893 "off" or its entries; "ext" the extension shown; "pic" the pattern picture shown.
struct Layout {
    const char* model;
    QString captions;
    const char* states;
};

const Layout kLayouts[] = {
    {"A20", kANumbering + "813=052 Front Tool Hldr (4=Std)|990=056 Tool Pattern 2|991=062 Back Drill Holder|992=064 Back Spl Type (201=Std)",
     "813 on|816 ·|820 off|821 ·|822 ·|824 on|990 off|991 on|992 on|893 off"},
    {"A32", kANumbering + "813=052 Front Tool Hldr (4=Std)|990=056 Tool Pattern 2|991=992 Back Drill Holder|992=064 Back Spl Type (201=Std)",
     "813 on|816 ·|820 off|821 ·|822 ·|824 on|990 off|991 on|992 on|893 off"},
    {"B12", kBNumbering, "813 off =0|816 off =0 noupdate|820 off =0|821 off =0 noupdate|822 ·|824 ·|990 ·|991 off =0|992 off =0|893 off"},
    {"B2 12-20", kBNumbering + "821=928 Back Spl Chuck POS|813=932 Back Work Position",
     "813 on =9.0000|816 off =0 noupdate|820 off =0|821 ·|822 ·|824 ·|990 ·|991 off =0|992 off =0|893 off"},
    {"C12-16", "991=991 Back Drill Holder", "813 off =0|816 ·|820 on|821 ·|822 ·|824 on|990 list:4 =1|991 on =61|992 off|893 Standard,With Basket,With Support"},
    {"C20-32", "991=991 Back Drill Holder", "813 off =0|816 ·|820 on|821 ·|822 ·|824 on|990 list:4 =1|991 on =61|992 off|893 Standard,With Basket,With Support"},
    {"E2 16J", "", "813 on =18|816 ·|820 on|821 ·|822 ·|824 off|990 off =0|991 off =0|992 off =0|893 off"},
    {"E2 25J-32", "", "813 on =18|816 ·|820 on|821 ·|822 ·|824 off|990 off =0|991 off =0|992 off =0|893 off"},
    {"E2 32IV", "990=847 Gang Tool Pattern", "813 on =18|816 ·|820 on|821 ·|822 ·|824 off|990 on =1|991 off =0|992 off =0|893 off"},
    {"K16", kANumbering + "813=052 Front Tool Holder (8=Std)|990=056 Opp Tool Holder (101=Std)|991=060 Back Tool Holder (121=Std)|992=064 Back Spl Type (141=Std)",
     "813 on|816 ·|820 off|821 ·|822 ·|824 on|990 on|991 on|992 on|893 off"},
    {"L3 16-20", "816=816 Tooling Pattern", "813 off =0|816 · =1|820 off|821 off =0 noupdate|822 off =0|824 off|990 off =1|991 off =0|992 off =0|893 off"},
    {"L4 25-32", "990=823 Gang Tool Pattern|991=Holder GTF###|992=Holder GDF###|893=Back Spindle Support",
     "813 off =0|816 ·|820 on|821 ·|822 ·|824 on|990 on =2|991 on =516|992 on =0|893 Yes,No,Catch:1|ext"},
    {"L5 16-20", "", "813 off =0|816 ·|820 on|821 ·|822 ·|824 on|990 list:28 =3|991 list:2 =51|992 list:2 =61|893 Standard,With Basket,With Support|pic"},
    {"L7 16-20", "", "813 off =0|816 ·|820 on|821 ·|822 ·|824 on|990 list:96 =15|991 list:2 =51|992 list:2 =61|893 Standard,With Basket,With Support"},
    {"L6 32", "", "813 off =0|816 ·|820 on|821 ·|822 ·|824 on|990 on =30|991 off =0|992 on =64|893 Standard,Support"},
    {"M20", "990=847 Gang Tool Pattern", "813 on =20|816 ·|820 on|821 ·|822 ·|824 off =0|990 on =1|991 off =0|992 off =0|893 off"},
    {"M2-3 12-16", "", "813 on =20|816 ·|820 on|821 ·|822 ·|824 on|990 on =25|991 off =0|992 on =62|893 Standard,Support"},
    {"M2-3 20-32", "", "813 on =20|816 ·|820 on|821 ·|822 ·|824 on|990 list:14 =1|991 off =0|992 list:2 =0|893 Standard,Support"},
    {"R6 04-07", kANumbering + "813=052 Tool Pattern 1|990=056 Tool Pattern 2|991=060 Pair Tool (##)|992=064 Back Drill Holder",
     "813 on|816 ·|820 off|821 ·|822 ·|824 on|990 on|991 on|992 on|893 off"},
};

// What a slot shows, to compare before and after a model change.
struct SlotLook {
    bool labelEnabled, inputEnabled, inputVisible, inputTab;
    QString text;
    friend bool operator==(const SlotLook&, const SlotLook&) = default;
};

const char* kListOf(const QString& slot)
{
    return slot == "990" ? "cmbGangHolder" : slot == "991" ? "cmbFrontDrillHolder" : "cmbBackDrillHolder";
}

} // namespace

class tst_MachineCatalogue : public QObject {
    Q_OBJECT

    SlotLook Look(DataPageFixture& f, const QString& slot)
    {
        QLineEdit& input = f.Edit("txt" + slot);
        return {f.Control<QLabel>("lbl" + slot).isEnabled(), input.isEnabled(), !input.isHidden(),
                TabStop(&input), input.text()};
    }

    // The caption a slot shows: "814 - " and the translated text, or the text alone.
    QString Caption(const QString& expected)
    {
        const int blank = expected.indexOf(' ');
        bool numbered = false;
        expected.left(blank).toInt(&numbered);
        return numbered ? expected.left(blank) + " - " + marelon::Tr(expected.mid(blank + 1)) : marelon::Tr(expected);
    }

    void CheckCaptions(DataPageFixture& f, const Layout& layout)
    {
        QMap<QString, QString> expected = kResetCaptions;
        for (const QString& caption : layout.captions.split('|', Qt::SkipEmptyParts))
            expected[caption.section('=', 0, 0)] = caption.section('=', 1);
        for (auto it = expected.cbegin(); it != expected.cend(); ++it) {
            const QString label = it.key() == "Ext" ? "lblBackSpdlExt" : "lbl" + it.key();
            QCOMPARE(f.Text(label), Caption(it.value()));
        }
    }

    // A slot the model leaves alone shows what the model before left, but for
    // what the reset does: it enables 816, 821 and 822 and shows the holder inputs.
    static SlotLook AfterReset(const QString& slot, SlotLook look, const QStringList& words)
    {
        if (slot == "816" || slot == "821" || slot == "822")
            look.labelEnabled = look.inputEnabled = true;
        if (slot.startsWith("99")) {
            look.inputEnabled = look.inputVisible = true;
            look.inputTab = look.inputTab || slot != "990";
        }
        for (const QString& word : words)
            if (word.startsWith('='))
                look.text = word.mid(1);
        return look;
    }

    void CheckSlot(DataPageFixture& f, const QString& slot, const QStringList& words, const SlotLook& before)
    {
        const QLineEdit& input = f.Edit("txt" + slot);
        const SlotLook after = Look(f, slot);
        for (const QString& word : words) {
            if (word == "on" || word == "off") {
                const bool on = word == "on";
                QCOMPARE(after.labelEnabled, on);
                QCOMPARE(after.inputEnabled, on);
                QCOMPARE(after.inputTab, on);
            } else if (word.startsWith('=')) {
                QCOMPARE(input.text(), word.mid(1));
            } else if (word.startsWith("list:")) {
                QComboBox& list = f.List(kListOf(slot));
                QVERIFY(!list.isHidden() && list.isEnabled() && TabStop(&list));
                QCOMPARE(list.count(), word.mid(5).toInt());
                QVERIFY(!after.inputVisible && !after.inputTab && after.labelEnabled);
            } else if (word == "noupdate") {
                QVERIFY(!f.Control<QAbstractButton>("CmdUpd" + slot).isEnabled());
            } else if (word == "·") {
                const SlotLook expected = AfterReset(slot, before, words);
                if (!(after == expected))
                    qWarning() << "slot" << slot << after.labelEnabled << after.inputEnabled << after.inputVisible
                               << after.inputTab << after.text << "expected" << expected.labelEnabled
                               << expected.inputEnabled << expected.inputVisible << expected.inputTab << expected.text;
                QCOMPARE(after, expected);
            }
        }
        if (!words.join(' ').contains("list:") && slot.startsWith("99"))
            QVERIFY(f.List(kListOf(slot)).isHidden());
    }

    void CheckBackSpindle(DataPageFixture& f, const QString& expected)
    {
        QComboBox& list = f.List("cmb893");
        if (expected == "off") {
            QVERIFY(!list.isEnabled() && !f.Control("lbl893").isEnabled() && !TabStop(&list));
            QCOMPARE(list.count(), 0);
            return;
        }
        QStringList entries;
        for (const QString& entry : expected.section(':', 0, 0).split(','))
            entries << marelon::Tr(entry);
        QStringList shown;
        for (int i = 0; i < list.count(); ++i)
            shown << list.itemText(i);
        QCOMPARE(shown, entries);
        QCOMPARE(list.currentIndex(), expected.section(':', 1).toInt());
        QVERIFY(list.isEnabled() && TabStop(&list));
    }

    void CheckLayout(DataPageFixture& f, const Layout& layout, const QMap<QString, SlotLook>& before)
    {
        CheckCaptions(f, layout);
        const QString states = QString::fromUtf8(layout.states);
        for (const QString& state : states.split('|')) {
            const QStringList words = state.split(' ');
            if (words[0] == "893")
                CheckBackSpindle(f, words.mid(1).join(' '));
            else if (words[0] != "ext" && words[0] != "pic")
                CheckSlot(f, words[0], words.mid(1), before[words[0]]);
        }
        QCOMPARE(!f.List("cmbBackSpdlExt").isHidden(), states.contains("|ext"));
        QCOMPARE(!f.Control("imgGangHolder").isHidden(), states.contains("|pic"));
        if (states.contains("|ext")) {
            QCOMPARE(f.List("cmbBackSpdlExt").count(), 2);
            QCOMPARE(f.List("cmbBackSpdlExt").currentText(), marelon::Tr("No"));
        }
    }

private slots:
    // Every model after several others: what the model sets is its own, what
    // it leaves alone is what the model before it left.
    void layouts_data()
    {
        QTest::addColumn<int>("language");
        QTest::addColumn<QString>("before");
        for (int language : {feldra::QtLocalizer::kEnglish, feldra::QtLocalizer::kGerman})
            for (const char* before : {"B12", "K16", "L4 25-32", "L5 16-20"})
                QTest::addRow("%s after %s", language == feldra::QtLocalizer::kGerman ? "de" : "en", before)
                    << language << QString(before);
    }

    void layouts()
    {
        QFETCH(int, language);
        QFETCH(QString, before);
        DataPageFixture f(70, language);
        for (const Layout& layout : kLayouts) {
            f.SelectModel(before);
            QMap<QString, SlotLook> looks;
            for (const char* slot : {"813", "816", "820", "821", "822", "824", "990", "991", "992"})
                looks[slot] = Look(f, slot);
            f.SelectModel(layout.model);
            CheckLayout(f, layout, looks);
            if (QTest::currentTestFailed())
                qWarning() << "model" << layout.model;
        }
    }

    // A name that is no model leaves the reset: captions back, the lists and the extension hidden.
    void unknownModelLeavesTheReset()
    {
        DataPageFixture f;
        f.SelectModel("L4 25-32");
        f.List("cmbMachineName").addItem("X99");
        f.form->SelectList(f.List("cmbMachineName"), f.List("cmbMachineName").count() - 1);
        CheckCaptions(f, {"X99", "", ""});
        QVERIFY(f.List("cmbBackSpdlExt").isHidden());
        QCOMPARE(f.Text("txt990"), QString("2"));
        QCOMPARE(f.List("cmbMachineSetup").itemText(0), QString("??????????"));
    }

    // A value a model does not set stays from the model before, marked as
    // carried over from it until the user types or confirms it.
    void carriedOverValuesAreMarked()
    {
        DataPageFixture f;
        f.SelectModel("L5 16-20");
        QLineEdit& gang = f.Edit("txt990");
        QVERIFY(gang.toolTip().isEmpty());
        f.SelectModel("A20");
        QCOMPARE(gang.text(), QString("3"));
        QCOMPARE(gang.toolTip(),
                 QString("Carried over from L5 16-20: press Enter in the field to keep it, or type another value"));
        QVERIFY(gang.font().italic());
        QVERIFY(f.Edit("txt813").toolTip().contains("L5 16-20")); // A20 switches 813 on with L5's 0
        f.SelectModel("K16");
        QVERIFY(gang.toolTip().contains("L5 16-20"));
        emit gang.returnPressed();
        QVERIFY(gang.toolTip().isEmpty());
        f.SelectModel("R6 04-07");
        QVERIFY(gang.toolTip().contains("K16"));
        gang.setText("7");
        QVERIFY(gang.toolTip().isEmpty() && !gang.font().italic());
        // A model that sets a slot to the text it already has makes it its own.
        f.SelectModel("C12-16");
        f.SelectModel("L5 16-20");
        QCOMPARE(f.Edit("txt813").toolTip(), QString());
    }

    // The saved list positions are taken when the model fills its lists; one
    // beyond the gang tool list takes its first entry.
    void savedListPositions_data()
    {
        QTest::addColumn<QString>("gang");
        QTest::addColumn<QString>("front");
        QTest::addColumn<int>("gangPosition");
        QTest::addColumn<QString>("txt990");
        QTest::addColumn<QString>("txt991");
        QTest::newRow("saved") << "5" << "1" << 5 << "10" << "52";
        QTest::newRow("beyond the list") << "28" << "0" << 0 << "3" << "51";
        QTest::newRow("no selection") << "-1" << "-1" << -1 << "" << "";
    }

    void savedListPositions()
    {
        QFETCH(QString, gang);
        QFETCH(QString, front);
        QFETCH(int, gangPosition);
        QFETCH(QString, txt990);
        QFETCH(QString, txt991);
        DataPageFixture f;
        f.SaveSetting("Gang Holder", gang);
        f.SaveSetting("Front Drill Holder", front);
        f.Edit("txt990").clear();
        f.Edit("txt991").clear();
        f.SelectModel("L5 16-20");
        QCOMPARE(f.List("cmbGangHolder").currentIndex(), gangPosition);
        QCOMPARE(f.Text("txt990"), txt990);
        QCOMPARE(f.Text("txt991"), txt991);
    }
};

QTEST_MAIN(tst_MachineCatalogue)
#include "tst_MachineCatalogue.moc"
