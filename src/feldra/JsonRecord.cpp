#include "feldra/JsonRecord.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace feldra {
namespace {

const QString kNumberKey = QStringLiteral("number");

// The texts that stand for the doubles JSON cannot hold as numbers.
QString specialDoubleText(double value)
{
    if (std::isnan(value))
        return QStringLiteral("NaN");
    if (std::isinf(value))
        return value > 0 ? QStringLiteral("Infinity") : QStringLiteral("-Infinity");
    if (value == 0 && std::signbit(value))
        return QStringLiteral("-0");
    return {};
}

std::optional<double> specialDouble(const QString& text)
{
    if (text == QLatin1String("NaN"))
        return std::numeric_limits<double>::quiet_NaN();
    if (text == QLatin1String("Infinity"))
        return std::numeric_limits<double>::infinity();
    if (text == QLatin1String("-Infinity"))
        return -std::numeric_limits<double>::infinity();
    if (text == QLatin1String("-0"))
        return -0.0;
    return std::nullopt;
}

QString describe(const QJsonValue& value)
{
    switch (value.type()) {
    case QJsonValue::Null: return QStringLiteral("null");
    case QJsonValue::Bool: return QStringLiteral("true/false");
    case QJsonValue::Double: return QStringLiteral("a number");
    case QJsonValue::String: return QStringLiteral("text");
    case QJsonValue::Array: return QStringLiteral("an array");
    case QJsonValue::Object: return QStringLiteral("an object");
    case QJsonValue::Undefined: break;
    }
    return QStringLiteral("nothing");
}

bool isNumber(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Float:
    case QMetaType::Double: return true;
    default: return false;
    }
}

} // namespace

QString JsonPlace::Path() const
{
    if (!parent_)
        return {};
    const QString parent = parent_->Path();
    if (field_)
        return parent.isEmpty() ? QString::fromLatin1(field_)
                                : parent + QLatin1Char('.') + QLatin1String(field_);
    if (index_ >= 0)
        return parent + QStringLiteral("[%1]").arg(index_);
    return parent + QStringLiteral("[\"%1\"]").arg(member_);
}

void FailAt(const JsonPlace& at, const QString& problem)
{
    throw JsonPlaceError{at.Path(), problem};
}

void FailExpected(const JsonPlace& at, const char* expected, const QJsonValue& found)
{
    FailAt(at, QStringLiteral("%1 expected, found %2").arg(QLatin1String(expected), describe(found)));
}

bool IsNumberObject(const QJsonValue& value)
{
    const QJsonObject object = value.toObject();
    return object.size() == 1 && object.contains(kNumberKey);
}

QJsonArray ArrayAt(const QJsonValue& value, const JsonPlace& at)
{
    if (!value.isArray())
        FailExpected(at, "an array", value);
    return value.toArray();
}

// ---- writing -----------------------------------------------------------------

void JsonWriter::Extra(const QJsonObject& extra)
{
    for (auto it = extra.begin(); it != extra.end(); ++it) {
        const QString& key = it.key();
        const bool known = std::any_of(written_.begin(), written_.end(),
                                       [&](const char* name) { return key == QLatin1String(name); });
        if (!known) {
            text_.Key(QStringView(key));
            text_.Value(it.value());
        }
    }
}

void WriteJson(JsonText& text, int value)
{
    text.Integer(value);
}

void WriteJson(JsonText& text, double value)
{
    const QString special = specialDoubleText(value);
    if (special.isEmpty())
        text.Number(value);
    else
        text.Text(special);
}

void WriteJson(JsonText& text, bool value)
{
    text.Bool(value);
}

void WriteJson(JsonText& text, const QString& value)
{
    text.Text(value);
}

bool IsWrittenAsObject(const QVariant& value)
{
    return isNumber(value) && !specialDoubleText(value.toDouble()).isEmpty();
}

void WriteJson(JsonText& text, const QVariant& value)
{
    if (!value.isValid()) {
        text.Null();
    } else if (value.typeId() == QMetaType::Bool) {
        text.Bool(value.toBool());
    } else if (IsWrittenAsObject(value)) {
        text.BeginObject();
        text.Key(QLatin1String("number"));
        text.Text(specialDoubleText(value.toDouble()));
        text.EndObject();
    } else if (isNumber(value)) {
        text.Number(value.toDouble());
    } else {
        text.Text(value.toString());
    }
}

void WriteJson(JsonText& text, const Point3& value)
{
    text.BeginArray(true);
    WriteJson(text, value.x);
    WriteJson(text, value.y);
    WriteJson(text, value.z);
    text.EndArray();
}

void WriteJson(JsonText& text, const QMap<int, double>& numbered)
{
    text.BeginObject();
    for (auto it = numbered.cbegin(); it != numbered.cend(); ++it) {
        text.Key(QString::number(it.key()));
        WriteJson(text, it.value());
    }
    text.EndObject();
}

// ---- reading -----------------------------------------------------------------

JsonReader::JsonReader(const QJsonValue& value, const JsonPlace& at) : at_(at)
{
    if (!value.isObject())
        FailExpected(at, "an object", value);
    object_ = value.toObject();
}

QJsonObject JsonReader::Rest() const
{
    if (read_.size() == object_.size())
        return {};
    QJsonObject rest;
    for (auto it = object_.begin(); it != object_.end(); ++it) {
        const QString& key = it.key();
        const bool read = std::any_of(read_.begin(), read_.end(),
                                      [&](const char* name) { return key == QLatin1String(name); });
        if (!read)
            rest.insert(key, it.value());
    }
    return rest;
}

void FromJsonValue(const QJsonValue& value, const JsonPlace& at, int& target)
{
    if (!value.isDouble())
        FailExpected(at, "a whole number", value);
    const double number = value.toDouble();
    if (number != std::trunc(number) || number < std::numeric_limits<int>::min()
        || number > std::numeric_limits<int>::max())
        FailAt(at, QStringLiteral("a 32-bit whole number expected"));
    target = int(number);
}

void FromJsonValue(const QJsonValue& value, const JsonPlace& at, double& target)
{
    if (value.isDouble()) {
        target = value.toDouble();
        return;
    }
    const auto special = value.isString() ? specialDouble(value.toString()) : std::nullopt;
    if (!special)
        FailExpected(at, "a number", value);
    target = *special;
}

void FromJsonValue(const QJsonValue& value, const JsonPlace& at, bool& target)
{
    if (!value.isBool())
        FailExpected(at, "true or false", value);
    target = value.toBool();
}

void FromJsonValue(const QJsonValue& value, const JsonPlace& at, QString& target)
{
    if (!value.isString())
        FailExpected(at, "text", value);
    target = value.toString();
}

void FromJsonValue(const QJsonValue& value, const JsonPlace& at, QVariant& target)
{
    switch (value.type()) {
    case QJsonValue::Null: target = QVariant(); return;
    case QJsonValue::Bool: target = value.toBool(); return;
    case QJsonValue::Double: target = value.toDouble(); return;
    case QJsonValue::String: target = value.toString(); return;
    default: break;
    }
    const auto special = IsNumberObject(value)
                             ? specialDouble(value.toObject().value(kNumberKey).toString())
                             : std::nullopt;
    if (!special)
        FailExpected(at, "a value (a number, text, true/false or null)", value);
    target = *special;
}

void FromJsonValue(const QJsonValue& value, const JsonPlace& at, Point3& target)
{
    const QJsonArray array = ArrayAt(value, at);
    if (array.size() != 3)
        FailAt(at, QStringLiteral("a point [x, y, z] expected, found %1 numbers").arg(array.size()));
    FromJsonValue(array.at(0), JsonPlace(at, qsizetype(0)), target.x);
    FromJsonValue(array.at(1), JsonPlace(at, qsizetype(1)), target.y);
    FromJsonValue(array.at(2), JsonPlace(at, qsizetype(2)), target.z);
}

void FromJsonValue(const QJsonValue& value, const JsonPlace& at, QMap<int, double>& target)
{
    if (!value.isObject())
        FailExpected(at, "an object of numbered values", value);
    const QJsonObject object = value.toObject();
    target.clear();
    for (auto it = object.constBegin(); it != object.constEnd(); ++it) {
        const QString key = it.key();
        const JsonPlace place(at, QStringView(key));
        bool ok = false;
        const int number = key.toInt(&ok);
        if (!ok || QString::number(number) != key)
            FailAt(place, QStringLiteral("a parameter number expected as the name"));
        FromJsonValue(it.value(), place, target[number]);
    }
}

} // namespace feldra
