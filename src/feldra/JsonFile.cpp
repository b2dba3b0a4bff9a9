#include "feldra/JsonFile.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonParseError>
#include <QSaveFile>

#include <algorithm>

namespace feldra {
namespace {

const QString kFormatKey = QStringLiteral("format");
const QString kVersionKey = QStringLiteral("version");

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

QJsonObject JsonFile::Parse(const QByteArray& text) const
{
    QJsonParseError error;
    const QJsonDocument json = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError)
        Fail(position(text, error.offset), error.errorString());
    if (!json.isObject())
        Fail({}, QStringLiteral("a JSON object expected, found an array"));
    QJsonObject top = json.object();
    checkFormat(top);
    top.remove(kFormatKey);
    top.remove(kVersionKey);
    return top;
}

void JsonFile::checkFormat(const QJsonObject& top) const
{
    if (top.value(kFormatKey) != QJsonValue(QLatin1String(format_.marker)))
        Fail(kFormatKey, QStringLiteral("\"%1\" expected: this is not %2")
                             .arg(QLatin1String(format_.marker), QLatin1String(format_.what)));
    const JsonPlace root;
    int version = 0;
    Check([&] { FromJsonValue(top.value(kVersionKey), JsonPlace(root, "version"), version); });
    if (version != format_.version)
        Fail(kVersionKey, QStringLiteral("version %1 is not supported (this Feldra reads version %2)")
                              .arg(version)
                              .arg(format_.version));
}

void JsonFile::writeFormat(JsonText& text) const
{
    text.Key(QStringView(kFormatKey));
    text.Text(QString::fromLatin1(format_.marker));
    text.Key(QStringView(kVersionKey));
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
