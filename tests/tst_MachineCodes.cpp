#include "TempStores.h"

#include "registry/FileRegistryHive.h"
#include "addin/settings/MachineCodes.h"
#include "addin/settings/cRegistry.h"

#include <QProcess>
#include <QTest>

#include <memory>
#include <vector>

using namespace marelon;

namespace {

// The Data Page machine lists: machine code by list position.
const std::vector<int16_t> kFull = {15, 18, 0, 1, 2, 17, 3, 13, 4, 16, 5, 6, 7, 14, 8, 9, 10, 11, 12};
const std::vector<int16_t> kReduced = {6, 7, 14, 8, 10, 11};

cRegistry Flag(std::int32_t type)
{
    cRegistry registry;
    registry.setClassKey(kHKeyLocalMachine);
    registry.setSectionKey(QStringLiteral("Software\\Orvalen\\FELDRA\\AddIns\\Marelon.Connect\\"));
    registry.setValueKey(QStringLiteral("TovricVersion"));
    registry.setValueType(type);
    return registry;
}

// Sets TovricVersion; "missing" leaves it unset.
void SetFlag(const QString& flag)
{
    if (flag != QLatin1String("missing"))
        Flag(kRegDword).setValue(flag.toInt());
}

} // namespace

class tst_MachineCodes : public QObject {
    Q_OBJECT

private slots:
    void init() { stores_ = std::make_unique<TempStores>(); }
    void cleanup() { stores_.reset(); }

    void mapping_data()
    {
        QTest::addColumn<QString>("flag");
        QTest::addColumn<std::vector<int16_t>>("list");
        QTest::newRow("flag missing") << "missing" << kFull;
        QTest::newRow("flag 0") << "0" << kFull;
        QTest::newRow("flag 1") << "1" << kReduced;
        QTest::newRow("flag 7") << "7" << kReduced;
    }

    void mapping()
    {
        QFETCH(QString, flag);
        QFETCH(std::vector<int16_t>, list);
        SetFlag(flag);
        QCOMPARE(IsTovricVersion(), list.size() == kReduced.size());
        for (int16_t position = 0; position < static_cast<int16_t>(list.size()); ++position) {
            QCOMPARE(ListIndexToMachineCode(position), list[position]);
            QCOMPARE(MachineCodeToListIndex(list[position]), position);
        }
        // Outside the active list: position and code 0.
        QCOMPARE(ListIndexToMachineCode(-1), int16_t(0));
        QCOMPARE(ListIndexToMachineCode(static_cast<int16_t>(list.size())), int16_t(0));
        QCOMPARE(MachineCodeToListIndex(19), int16_t(0));
        QCOMPARE(MachineCodeToListIndex(-1), int16_t(0));
    }

    void reducedListSendsOtherCodesToTheFirstEntry()
    {
        SetFlag(QStringLiteral("1"));
        for (int16_t code : {0, 1, 15, 18})
            QCOMPARE(MachineCodeToListIndex(code), int16_t(0));
        QCOMPARE(ListIndexToMachineCode(MachineCodeToListIndex(0)), int16_t(6));
    }

    void flagIsReadOnEveryCall()
    {
        QVERIFY(!IsTovricVersion());
        SetFlag(QStringLiteral("1"));
        QVERIFY(IsTovricVersion());
        QCOMPARE(ListIndexToMachineCode(2), int16_t(14));
        SetFlag(QStringLiteral("0"));
        QVERIFY(!IsTovricVersion());
        QCOMPARE(ListIndexToMachineCode(2), int16_t(0));
        Flag(kRegDword).DeleteValue();
        QVERIFY(!IsTovricVersion());
    }

    void flagStoredBigEndian()
    {
        // A type-5 value stores its bytes most significant first.
        FileRegistryHive(stores_->RegistryDir()).CreateKey(kHKeyLocalMachine, Flag(0).SectionKey());
        FileRegistryHive(stores_->RegistryDir())
            .SetValue(kHKeyLocalMachine, Flag(0).SectionKey(), QStringLiteral("TovricVersion"),
                      {kRegDwordBigEndian, QByteArray("\0\0\0\1", 4)});
        QVERIFY(IsTovricVersion());
    }

    void flagSwitchedWithTheTool()
    {
        const auto tool = [](QStringList arguments) {
            arguments.insert(1, QStringLiteral("HKLM"));
            arguments.insert(2, QStringLiteral("Software\\Orvalen\\FELDRA\\AddIns\\Marelon.Connect\\"));
            arguments.insert(3, QStringLiteral("TovricVersion"));
            return QProcess::execute(QStringLiteral(MARELON_REGISTRY_TOOL), arguments);
        };
        QCOMPARE(tool({"set", "dword", "1"}), 0);
        QVERIFY(IsTovricVersion());
        QCOMPARE(tool({"get"}), 0);
        QCOMPARE(tool({"delete"}), 0);
        QVERIFY(!IsTovricVersion());
        QCOMPARE(tool({"get"}), 1);
    }

private:
    std::unique_ptr<TempStores> stores_;
};

QTEST_GUILESS_MAIN(tst_MachineCodes)
#include "tst_MachineCodes.moc"
