#include "MarkingLocalizer.h"
#include "addin/ui/UiServices.h"
#include "datapage/GangToolPatterns.h"

#include <QComboBox>
#include <QPixmap>
#include <QTest>

using namespace marelon;

namespace {

using Loader = void (*)(GangToolPatternTable&);

Loader loader(const QString& family)
{
    static const QMap<QString, Loader> loaders{
        {"L5", LoadL5Patterns}, {"L7", LoadL7Patterns}, {"M2-3", LoadM23Patterns}, {"C", LoadCPatterns}};
    return loaders.value(family);
}

GangToolPatternTable load(const QString& family)
{
    GangToolPatternTable table{{QStringLiteral("left over"), 99}};
    loader(family)(table);
    return table;
}

void fill(QComboBox& list, const QString& family)
{
    list.addItem(QStringLiteral("left over"), 99);
    FillPatternList(list, load(family));
}

} // namespace

class tst_GangToolPatterns : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { RemoveUiServices(); }

    // The table and the list filled from it carry the entry at its position.
    void entriesStandAsWritten_data()
    {
        QTest::addColumn<QString>("family");
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("position"); // from 1
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("code");

        QTest::newRow("L5 first") << "L5" << 28 << 1 << "GTF3813 6TURN+4ROTARY" << 3;
        QTest::newRow("L5 last pattern") << "L5" << 28 << 26 << "GTF3612+GSE1007+GDF1107 5TURN+4ROTARY+6FACE+6BACK"
                                         << 44;
        QTest::newRow("L5 free tool 2") << "L5" << 28 << 28 << "Free Tool2" << 49;
        QTest::newRow("L7 first") << "L7" << 96 << 1 << "GTF3110 7TURN+4ROTARY" << 15;
        QTest::newRow("L7 blank for +") << "L7" << 96 << 31 << "GTF3612 GSE1110(2) 5TURN+4ROTARY+3FACE" << 87;
        QTest::newRow("L7 ORTARY") << "L7" << 96 << 64 << "GTF3613+GSE910(2) 5TURN+4ORTARY+3FACE" << 32;
        QTest::newRow("L7 69 double blank") << "L7" << 96 << 69 << "GTF3613+GSE1110(1)  5TURN+7ROTARY" << 110;
        QTest::newRow("L7 70 same as 69") << "L7" << 96 << 70 << "GTF3613+GSE1110(1)  5TURN+7ROTARY" << 110;
        QTest::newRow("L7 no blank") << "L7" << 96 << 71 << "GTF3613+GSE1110(2)5TURN+3ROTARY+3FACE" << 111;
        QTest::newRow("L7 short R") << "L7" << 96 << 90 << "GTF3813+GSE1110(1)+GDF1108 6TURN+6R+3FACE+3BACK" << 128;
        QTest::newRow("L7 last") << "L7" << 96 << 96 << "Free tool pattern 3" << 47;
        QTest::newRow("M2-3 first") << "M2-3" << 14 << 1 << "GTF5016 5TURN+3ROTARY" << 1;
        QTest::newRow("M2-3 last pattern") << "M2-3" << 14 << 12 << "GTF5212+GDF906 5TURN+1ROTARY+3FACE" << 12;
        QTest::newRow("M2-3 free tool 1") << "M2-3" << 14 << 13 << "Free Tool1" << 48;
        QTest::newRow("C first") << "C" << 4 << 1 << "GTF6010L+U30B 6TURN+4ROTARY" << 1;
        QTest::newRow("C second") << "C" << 4 << 2 << "GTF6010L+U31B+GDF905 6TURN+3ROTARY+4FACE" << 1;
        QTest::newRow("C free tool 2 is code 1") << "C" << 4 << 4 << "Free Tool2" << 1;
    }
    void entriesStandAsWritten()
    {
        QFETCH(QString, family);
        QFETCH(int, size);
        QFETCH(int, position);
        QFETCH(QString, name);
        QFETCH(int, code);

        const GangToolPatternTable table = load(family);
        QCOMPARE(int(table.size()), size);
        QCOMPARE(table[position - 1].name, name);
        QCOMPARE(int(table[position - 1].code), code);

        QComboBox list;
        fill(list, family);
        QCOMPARE(list.count(), size);
        QCOMPARE(list.itemText(position - 1), name);
        QCOMPARE(list.itemData(position - 1), QVariant(code));
    }

    // Every L5 code has its picture; the codes are exactly those drawn.
    void l5CodesAndPictures()
    {
        QList<int> expected;
        for (const auto& [from, to] : {std::pair{3, 7}, {10, 14}, {29, 44}, {48, 49}})
            for (int code = from; code <= to; ++code)
                expected << code;
        QList<int> codes;
        for (const GangToolPattern& pattern : load("L5")) {
            codes << pattern.code;
            QVERIFY2(!QPixmap(GangPatternPicture(pattern.code)).isNull(), qPrintable(GangPatternPicture(pattern.code)));
        }
        QCOMPARE(codes, expected);
        QCOMPARE(GangPatternPicture(3), QStringLiteral(":/datapage/L5-16/20-3"));
        for (const char* bitmap : {"ODcircle", "IDcircle", "SELECTION"})
            QVERIFY2(!QPixmap(QStringLiteral(":/datapage/") + bitmap).isNull(), bitmap);

        // In German every picture has its German words drawn in.
        InstallUiServices(std::make_shared<MarkingLocalizer>(), nullptr);
        for (const GangToolPattern& pattern : load("L5")) {
            const QString german = GangPatternPicture(pattern.code);
            QCOMPARE(german, QStringLiteral(":/datapage/L5-16/20-de-%1").arg(pattern.code));
            const QImage picture = QPixmap(german).toImage();
            QVERIFY2(!picture.isNull(), qPrintable(german));
            QVERIFY(picture != QPixmap(QStringLiteral(":/datapage/L5-16/20-%1").arg(pattern.code)).toImage());
        }
        RemoveUiServices();
    }

    // The L7 codes in list order: a pattern picked by name writes its own code.
    void l7CodesInOrder()
    {
        const QList<int> expected{
            15,  17,  16,  18,  19,  20,  21,  22,  24,  23,  25,  26,  27,  28,  8,   74,  9,   75,  76,  77,
            14,  37,  38,  39,  40,  41,  42,  43,  44,  86,  87,  90,  91,  92,  93,  96,  97,  10,  82,  11,
            12,  13,  83,  84,  85,  98,  99,  102, 103, 104, 105, 108, 109, 1,   70,  2,   71,  72,  73,  7,
            29,  30,  31,  32,  33,  34,  35,  36,  110, 110, 111, 114, 115, 116, 117, 120, 121, 3,   78,  4,
            5,   6,   79,  80,  81,  122, 123, 126, 127, 128, 129, 132, 133, 48,  49,  47};
        QList<int> codes;
        for (const GangToolPattern& pattern : load("L7"))
            codes << pattern.code;
        QCOMPARE(codes, expected);
    }

    // Only the "Free Tool" entries pass through the localiser, once each.
    void onlyFreeToolIsTranslated_data()
    {
        QTest::addColumn<QString>("family");
        QTest::addColumn<QList<int>>("translated"); // positions from 1
        QTest::newRow("L5") << "L5" << QList<int>{27, 28};
        QTest::newRow("L7 has its own free tool names") << "L7" << QList<int>{};
        QTest::newRow("M2-3") << "M2-3" << QList<int>{13, 14};
        QTest::newRow("C") << "C" << QList<int>{3, 4};
    }
    void onlyFreeToolIsTranslated()
    {
        QFETCH(QString, family);
        QFETCH(QList<int>, translated);
        const auto localizer = std::make_shared<MarkingLocalizer>();
        InstallUiServices(localizer, nullptr);

        const GangToolPatternTable table = load(family);

        for (int position = 1; position <= int(table.size()); ++position) {
            const QString& name = table[position - 1].name;
            if (translated.contains(position))
                QCOMPARE(name, localizer->Translate("Free Tool") + QString::number(translated.indexOf(position) + 1));
            else
                QVERIFY2(!name.contains(u'«'), qPrintable(name));
        }
    }

    void selectByCode_data()
    {
        QTest::addColumn<QString>("family"); // empty: an empty list
        QTest::addColumn<int>("before");     // the selection before
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("after");
        QTest::addColumn<int>("clicks");

        QTest::newRow("L5 first code") << "L5" << 5 << 3 << 0 << 1;
        QTest::newRow("L5 free tool 2") << "L5" << 0 << 49 << 27 << 1;
        QTest::newRow("L7 110: the first of two") << "L7" << 69 << 110 << 68 << 1;
        QTest::newRow("the selected code again") << "M2-3" << 4 << 5 << 4 << 1;
        QTest::newRow("C: the first of four") << "C" << 3 << 1 << 0 << 1;
        QTest::newRow("a code the list lacks") << "L5" << 4 << 50 << 4 << 0;
        QTest::newRow("an empty list") << "" << -1 << 3 << -1 << 0;
    }
    void selectByCode()
    {
        QFETCH(QString, family);
        QFETCH(int, before);
        QFETCH(int, code);
        QFETCH(int, after);
        QFETCH(int, clicks);
        QComboBox list;
        if (!family.isEmpty())
            FillPatternList(list, load(family));
        list.setCurrentIndex(before);
        const int count = list.count();

        QList<int> seen; // the selection the click handler finds
        SelectPatternByCode(list, code, [&] { seen << list.currentIndex(); });

        QCOMPARE(list.currentIndex(), after);
        QCOMPARE(seen, QList<int>(clicks, after));
        QCOMPARE(list.count(), count);
    }
};

QTEST_MAIN(tst_GangToolPatterns)
#include "tst_GangToolPatterns.moc"
