#include "feldra/JsonFile.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonParseError>
#include <QSaveFile>

#include <algorithm>

namespace feldra {
namespace {

const char* const kFormatKey = "format";
const char* const kVersionKey = "version";

// "line 3, column 14 (offset 52)" for a byte offset into a text.
QString position(const QByteArray& text, qsizetype offset)
{
    const QByteArrayView before = QByteArrayView(text).first(std::clamp<qsizetype>(offset, 0, text.size()));
    const qsizetype line = before.count('\n') + 1;
    const qsizetype column = before.size() - (before.lastIndexOf('\n') + 1) + 1;
    return QStringLiteral("line %1, column %2 (offset %3)").arg(line).arg(column).arg(offset);
}

} // namespace

JsonFile::JsonFile(const QString& operation, const QString& path, const JsonFileFormat& format)
    : operation_(operation), path_(path), format_(format)
{
}

void JsonFile::Fail(const QString& place, const QString& problem) const
{
    throw DocumentError(operation_, path_, place, problem);
}

QByteArray JsonFile::Read() const
{
    QFile file(path_);
    if (!file.open(QIODevice::ReadOnly))
        Fail({}, QStringLiteral("cannot be opened: %1").arg(file.errorString()));
    const QByteArray text = file.readAll();
    if (file.error() != QFileDevice::NoError)
        Fail({}, QStringLiteral("cannot be read: %1").arg(file.errorString()));
    return text;
}

JsonIn JsonFile::parseText(simdjson::dom::parser& parser, const QByteArray& text) const
{
    JsonIn top;
    if (const simdjson::error_code error = parser.parse(text.constData(), std::size_t(text.size())).get(top))
        failSyntax(text, error);
    Check([&] { ObjectAt(top, JsonPlace(), "a JSON object"); });
    return top;
}

// The fast parser does not say where the text goes wrong: Qt's parser is
// asked for the place. Where only the fast one refuses the text (an integer
// beyond 64 bits, an unpaired surrogate), its own words are given.
void JsonFile::failSyntax(const QByteArray& text, simdjson::error_code error) const
{
    QJsonParseError qtError;
    QJsonDocument::fromJson(text, &qtError);
    if (qtError.error != QJsonParseError::NoError)
        Fail(position(text, qtError.offset), qtError.errorString());
    Fail({}, QString::fromUtf8(simdjson::error_message(error)));
}

void JsonFile::checkFormat(JsonReader& top) const
{
    const std::optional<JsonIn> marker = top.Take(kFormatKey);
    std::string_view text;
    if (!marker || marker->get_string().get(text) || text != format_.marker)
        Fail(QLatin1String(kFormatKey), QStringLiteral("\"%1\" expected: this is not %2")
                                            .arg(QLatin1String(format_.marker), QLatin1String(format_.what)));
    const std::optional<JsonIn> written = top.Take(kVersionKey);
    if (!written)
        Fail(QLatin1String(kVersionKey), QStringLiteral("the schema version is missing"));
    const JsonPlace root;
    int version = 0;
    FromJsonValue(*written, JsonPlace(root, kVersionKey), version);
    if (version != format_.version)
        Fail(QLatin1String(kVersionKey), QStringLiteral("version %1 is not supported (this Feldra reads version %2)")
                                             .arg(version)
                                             .arg(format_.version));
}

void JsonFile::writeFormat(JsonText& text) const
{
    text.Key(QLatin1String(kFormatKey));
    text.Text(QString::fromLatin1(format_.marker));
    text.Key(QLatin1String(kVersionKey));
    text.Integer(format_.version);
}

void JsonFile::Write(const QByteArray& text) const
{
    QSaveFile file(path_);
    if (!file.open(QIODevice::WriteOnly))
        Fail({}, QStringLiteral("cannot be written: %1").arg(file.errorString()));
    if (file.write(text) != text.size() || !file.commit())
        Fail({}, QStringLiteral("cannot be written: %1").arg(file.errorString()));
}

} // namespace feldra
