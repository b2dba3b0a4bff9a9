#include "addin/ui/UiServices.h"
#include "feldra/MessageBoxRecorder.h"
#include "addin/ui/Validation.h"

#include <QHash>
#include <QLineEdit>
#include <QTest>

#include <optional>

using marelon::ValidateNumber;

namespace {

// Translates the request texts so a test can tell they pass through the localiser.
class MarkingLocalizer : public host::Localizer {
public:
    int LanguageCode() const override { return 1031; }
    void setLanguageCode(int) override {}
    void Initialise() override {}
    QString Translate(const QString& english) const override { return QStringLiteral("<") + english + QStringLiteral(">"); }
    void TranslateForm(QWidget*) const override {}
};

const QString kCrLf = QStringLiteral("\r\n");

QString message(const QString& caption, const QString& request)
{
    return QStringLiteral("Bad data entered for - ") + caption + kCrLf + kCrLf + request;
}

using Bound = std::optional<double>;

} // namespace

Q_DECLARE_METATYPE(std::optional<double>)

class tst_Validation : public QObject {
    Q_OBJECT

    std::shared_ptr<feldra::MessageBoxRecorder> messages_;

private slots:
    void init()
    {
        messages_ = std::make_shared<feldra::MessageBoxRecorder>();
        marelon::InstallUiServices(nullptr, messages_);
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    }
    void cleanup() { marelon::RemoveUiServices(); }

    void validate_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("text");
        QTest::addColumn<Bound>("lower");
        QTest::addColumn<Bound>("upper");
        QTest::addColumn<bool>("inclusive");
        QTest::addColumn<QString>("request"); // empty: accepted without a message

        const Bound none;
        QTest::newRow("number, no bounds") << "en_US" << "12.5" << none << none << false << "";
        QTest::newRow("letters") << "en_US" << "abc" << none << none << false << "Please enter a numeric value";
        QTest::newRow("empty") << "en_US" << "" << none << none << false << "Please enter a numeric value";
        QTest::newRow("german comma") << "de_DE" << "12,5" << Bound(0) << Bound(20) << false << "";
        QTest::newRow("german bound shown with comma") << "de_DE" << "12,5" << Bound(0.5) << Bound(2.5) << false
                                                       << "Please enter a numeric value between 0,5 and 2,5";
        QTest::newRow("range includes top") << "en_US" << "10" << Bound(0) << Bound(10) << false << "";
        QTest::newRow("range includes bottom") << "en_US" << "0" << Bound(0) << Bound(10) << false << "";
        QTest::newRow("above range") << "en_US" << "10.0001" << Bound(0) << Bound(10) << false
                                     << "Please enter a numeric value between 0 and 10";
        QTest::newRow("below range") << "en_US" << "-1" << Bound(0) << Bound(10) << true
                                     << "Please enter a numeric value between 0 and 10";
        QTest::newRow("inclusive lower met") << "en_US" << "0" << Bound(0) << none << true << "";
        QTest::newRow("inclusive lower missed") << "en_US" << "-0.5" << Bound(0) << none << true
                                                << "Please enter a numeric value greater than or equal to 0";
        QTest::newRow("exclusive lower at bound") << "en_US" << "0" << Bound(0) << none << false
                                                  << "Please enter a numeric value greater than 0";
        QTest::newRow("exclusive lower above") << "en_US" << "0.001" << Bound(0) << none << false << "";
        QTest::newRow("inclusive upper met") << "en_US" << "5" << none << Bound(5) << true << "";
        QTest::newRow("inclusive upper missed") << "en_US" << "5.5" << none << Bound(5) << true
                                                << "Please enter a numeric value less than or equal to 5";
        QTest::newRow("exclusive upper at bound") << "en_US" << "5" << none << Bound(5) << false
                                                  << "Please enter a numeric value less than 5";
        QTest::newRow("exclusive upper below") << "en_US" << "4.999" << none << Bound(5) << false << "";
    }
    void validate()
    {
        QFETCH(QString, locale);
        QFETCH(QString, text);
        QFETCH(Bound, lower);
        QFETCH(Bound, upper);
        QFETCH(bool, inclusive);
        QFETCH(QString, request);
        QLocale::setDefault(QLocale(locale));

        QLineEdit field(text);
        field.setSelection(1, 1);
        const bool accepted = ValidateNumber(QStringLiteral("Tool X Shift"), field, lower, upper, inclusive);

        QCOMPARE(accepted, request.isEmpty());
        if (request.isEmpty()) {
            QVERIFY(messages_->Messages().isEmpty());
            return;
        }
        QCOMPARE(messages_->Messages().size(), 1);
        const auto& shown = messages_->Last();
        QCOMPARE(shown.prompt, message(QStringLiteral("Tool X Shift"), request));
        QCOMPARE(shown.icon, host::MsgIcon::Information);
        QCOMPARE(shown.buttons, host::MsgButtons::OK);
        QCOMPARE(shown.title, marelon::kDefaultTitle);
        QCOMPARE(field.text(), text); // the field is left as the user typed it
        QCOMPARE(field.selectedText(), text.mid(1, 1));
    }

    void disabledFieldIsAccepted()
    {
        QLineEdit field(QStringLiteral("abc"));
        field.setEnabled(false);
        QVERIFY(ValidateNumber(QStringLiteral("Gear Ratio 1"), field, 0.0, 1.0));
        QVERIFY(messages_->Messages().isEmpty());
    }

    void everyTextPassesThroughTheLocalizer()
    {
        marelon::InstallUiServices(std::make_shared<MarkingLocalizer>(), messages_);
        QLineEdit field(QStringLiteral("7"));
        QVERIFY(!ValidateNumber(QStringLiteral("Part Length"), field, 0.0, 5.0));
        QCOMPARE(messages_->Last().prompt,
                 QStringLiteral("<Bad data entered for -> Part Length") + kCrLf + kCrLf
                     + QStringLiteral("<Please enter a numeric value between> 0 <and> 5"));
    }
};

QTEST_MAIN(tst_Validation)
#include "tst_Validation.moc"
