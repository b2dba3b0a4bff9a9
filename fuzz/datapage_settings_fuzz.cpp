// Any texts under the settings store's Data Page keys open a new part's Data
// Page without a crash. A text that does not convert to its field's number is
// skipped: that field shows the same as when the key holds any other text
// that is no number.
//
// The input is the keys' values, one after another, separated by the byte 0x01.
#include "DataPageFixture.h"
#include "OffscreenApplication.h"
#include "datapage/DataPageSettings.h"
#include "numeric/NumberText.h"


#include <cstdint>
#include <cstdlib>
#include <utility>

namespace {

// The settings store keys of the Data Page, as it reads them on a new part.
QStringList Keys()
{
    QStringList keys;
    for (const marelon::DataPageField& field : marelon::DataPageFields())
        if (field.settings == marelon::SettingsUse::ReadWrite)
            keys.append(QLatin1String(field.settingsKey));
    keys << QStringLiteral("Gang Holder") << QStringLiteral("Front Drill Holder") << QStringLiteral("Back Drill Holder");
    return keys;
}

bool IsNumberField(const marelon::DataPageField& field)
{
    return field.settings == marelon::SettingsUse::ReadWrite
           && (field.type == marelon::FieldType::Double || field.type == marelon::FieldType::Integer);
}

// The texts of the number fields after opening a new part with these stored values.
QStringList Open(const QStringList& keys, const QStringList& values)
{
    DataPageFixture f;
    QList<std::pair<QString, QString>> stored;
    for (int i = 0; i < keys.size(); ++i)
        stored.append({keys[i], values.value(i)});
    marelon::SaveSettings(marelon::kAppName, marelon::kDataPageSection, stored);
    f.Open();
    QStringList shown;
    for (const marelon::DataPageField& field : marelon::DataPageFields())
        if (IsNumberField(field))
            shown.append(f.Edit(QLatin1String(field.control)).text());
    return shown;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    StartOffscreenApplication(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const QStringList keys = Keys();
    const QStringList values = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size))
                                   .split(QChar(1));
    const QStringList shown = Open(keys, values);

    // The same store with every number that does not convert replaced by another non-number.
    QStringList others = values;
    bool anySkipped = false;
    for (const marelon::DataPageField& field : marelon::DataPageFields()) {
        const int i = keys.indexOf(QLatin1String(field.settingsKey));
        if (IsNumberField(field) && i >= 0 && i < values.size() && !numeric::IsNumeric(values[i])) {
            others[i] = QStringLiteral("not a number");
            anySkipped = true;
        }
    }
    if (!anySkipped)
        return 0;
    const QStringList reference = Open(keys, others);
    int n = 0;
    for (const marelon::DataPageField& field : marelon::DataPageFields()) {
        if (!IsNumberField(field))
            continue;
        const int i = keys.indexOf(QLatin1String(field.settingsKey));
        if (i < values.size() && !numeric::IsNumeric(values[i]) && shown[n] != reference[n])
            std::abort();
        ++n;
    }
    return 0;
}
