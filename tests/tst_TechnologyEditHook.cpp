#include "MarkingLocalizer.h"
#include "addin/TechnologyEditHook.h"
#include "addin/host/Document.h"
#include "addin/host/TechnologyUtility.h"
#include "addin/ui/UiServices.h"
#include "feldra/Host.h"

#include <QtTest>

using namespace feldra;

namespace {

const QStringList kNumbers{"631", "632", "633", "634", "635", "636"};
const QStringList kNeutral{"P631", "P632", "P633", "P634", "P635", "P636"};

// The add-in's side of the technology utility's event, as the connection forwards it.
class EditSink : public host::TechnologyUtilityEvents {
public:
    explicit EditSink(std::shared_ptr<host::Document> document) : document_(std::move(document))
    {
        document_->TechnologyUtility()->Advise(this);
    }
    void OnEdit(std::shared_ptr<host::Technology> technology, int, bool&, int&) override
    {
        marelon::RelabelTechnology(*document_, *technology);
    }

private:
    std::shared_ptr<host::Document> document_;
};

// A document with one operation whose technology has these parameters, each
// captioned neutrally; the host then edits the technology.
struct EditedTechnology {
    EditedTechnology(int machineType, int technologyType, const QStringList& numbers)
    {
        state->data.machineType = machineType;
        auto operation = std::make_shared<OperationData>();
        operation->technology->type = technologyType;
        for (const QString& number : numbers)
            operation->technology->parameters[number].caption = 'P' + number;
        state->data.operations.append(operation);
    }
    QStringList Captions()
    {
        host.EditTechnology(state, 1, 0);
        QStringList captions;
        for (const QString& number : kNumbers)
            captions.append(state->data.operations[0]->technology->parameters.value(number).caption);
        return captions;
    }

    feldra::Host host;
    std::shared_ptr<DocumentState> state = std::make_shared<DocumentState>();
    EditSink sink{host.DocumentObject(state)};
};

} // namespace

class tst_TechnologyEditHook : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { marelon::InstallUiServices(std::make_shared<MarkingLocalizer>(), nullptr); }
    void cleanupTestCase() { marelon::RemoveUiServices(); }

    void relabelsItsGroupInTheUsersLanguage_data()
    {
        QTest::addColumn<int>("machineType");
        QTest::addColumn<int>("technologyType");
        QTest::addColumn<QStringList>("captions"); // 631 to 636

        auto only631 = [](const QString& label) { return QStringList{label} + kNeutral.mid(1); };
        QTest::newRow("206: M32 and M34")
            << 1 << 206
            << QStringList{"«M32- Position X»",       "«M32- Position Z»",   "«M34- 0:Korb 1:Klemmung»",
                           "«M34- Übernahmeposition(A)»", "«M34- Rückzug(B)»", "«M34- Auswerfweg(W)»"};
        QTest::newRow("207: pick-up") << 1 << 207 << only631("«Spannzangenüberstand»");
        for (int type : {150, 180})
            QTest::addRow("%d: G76", type)
                << 1 << type << QStringList{"«G76- Ausfahrweg(%)»", "«G76- Minimale Schnitttiefe»"} + kNeutral.mid(2);
        QTest::newRow("230: M15/M16") << 1 << 230 << only631("«15=M15 ; 16=M16»");
        for (int type : {37, 152, 310, 317})
            QTest::addRow("%d: G79", type) << 1 << type << only631("«G79- Verweilzeit beim Rückzug»");
        for (int type : {153, 398})
            QTest::addRow("%d: cut-off G201", type) << 1 << type << only631("«G201- H-Wert»");
        QTest::newRow("other types keep their labels") << 1 << 151 << kNeutral;
        QTest::newRow("machine type 2 keeps the labels") << 2 << 206 << kNeutral;
    }
    void relabelsItsGroupInTheUsersLanguage()
    {
        QFETCH(int, machineType);
        QFETCH(int, technologyType);
        QFETCH(QStringList, captions);

        EditedTechnology edited(machineType, technologyType, kNumbers);
        QCOMPARE(edited.Captions(), captions);
        QVERIFY(edited.host.Log().FailedCallbacks().isEmpty());
    }

    void aMissingParameterEndsTheRelabelling()
    {
        EditedTechnology edited(1, 206, {"631", "632", "633", "635", "636"});
        QCOMPARE(edited.Captions(), (QStringList{"«M32- Position X»", "«M32- Position Z»", "«M34- 0:Korb 1:Klemmung»",
                                                 "", "P635", "P636"}));
        const auto& failed = edited.host.Log().FailedCallbacks();
        QCOMPARE(failed.size(), 1);
        QCOMPARE(failed[0].callback, "TechnologyUtility.OnEdit");
        QCOMPARE(failed[0].operation, "Technology.Parameter");
    }
};

QTEST_MAIN(tst_TechnologyEditHook)
#include "tst_TechnologyEditHook.moc"
