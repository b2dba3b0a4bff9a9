#include "feldra/JsonRecord.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace feldra {
namespace {

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

std::optional<double> specialDouble(std::string_view text)
{
    if (text == "NaN")
        return std::numeric_limits<double>::quiet_NaN();
    if (text == "Infinity")
        return std::numeric_limits<double>::infinity();
    if (text == "-Infinity")
        return -std::numeric_limits<double>::infinity();
    if (text == "-0")
        return -0.0;
    return std::nullopt;
}

QString describe(JsonIn value)
{
    switch (value.type()) {
    case simdjson::dom::element_type::NULL_VALUE: return QStringLiteral("null");
    case simdjson::dom::element_type::BOOL: return QStringLiteral("true/false");
    case simdjson::dom::element_type::INT64:
    case simdjson::dom::element_type::UINT64:
    case simdjson::dom::element_type::DOUBLE: return QStringLiteral("a number");
    case simdjson::dom::element_type::STRING: return QStringLiteral("text");
    case simdjson::dom::element_type::ARRAY: return QStringLiteral("an array");
    case simdjson::dom::element_type::OBJECT: return QStringLiteral("an object");
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

void FailExpected(const JsonPlace& at, const char* expected, JsonIn found)
{
    FailAt(at, QStringLiteral("%1 expected, found %2").arg(QLatin1String(expected), describe(found)));
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
// A value is converted to a type (simdjson::dom::array(value), double(value))
// only after its type is checked, so the conversions never throw.

bool IsNumberObject(JsonIn value)
{
    return value.is_object() && simdjson::dom::object(value).size() == 1
           && value.at_key("number").error() == simdjson::SUCCESS;
}

simdjson::dom::array ArrayAt(JsonIn value, const JsonPlace& at)
{
    if (!value.is_array())
        FailExpected(at, "an array", value);
    return simdjson::dom::array(value);
}

simdjson::dom::object ObjectAt(JsonIn value, const JsonPlace& at, const char* expected)
{
    if (!value.is_object())
        FailExpected(at, expected, value);
    return simdjson::dom::object(value);
}

QString ToQString(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
}

QJsonValue ToQJsonValue(JsonIn value)
{
    switch (value.type()) {
    case simdjson::dom::element_type::NULL_VALUE: return QJsonValue::Null;
    case simdjson::dom::element_type::BOOL: return bool(value);
    case simdjson::dom::element_type::INT64: return qint64(std::int64_t(value));
    case simdjson::dom::element_type::UINT64:
    case simdjson::dom::element_type::DOUBLE: return double(value);
    case simdjson::dom::element_type::STRING: return ToQString(std::string_view(value));
    case simdjson::dom::element_type::ARRAY: {
        QJsonArray array;
        for (const JsonIn element : simdjson::dom::array(value))
            array.append(ToQJsonValue(element));
        return array;
    }
    case simdjson::dom::element_type::OBJECT: {
        QJsonObject object;
        for (const simdjson::dom::key_value_pair member : simdjson::dom::object(value))
            object.insert(ToQString(member.key), ToQJsonValue(member.value));
        return object;
    }
    }
    return {};
}

JsonReader::JsonReader(JsonIn value, const JsonPlace& at) : at_(at)
{
    for (const simdjson::dom::key_value_pair member : ObjectAt(value, at, "an object"))
        members_.append({member.key, member.value});
}

std::optional<JsonIn> JsonReader::Take(std::string_view key)
{
    const qsizetype count = members_.size();
    for (qsizetype n = 0; n < count; ++n) {
        const qsizetype i = (next_ + n) % count;
        Member& member = members_[i];
        if (!member.taken && member.key == key) {
            member.taken = true;
            next_ = i + 1;
            return member.value;
        }
    }
    return std::nullopt;
}

QJsonObject JsonReader::Rest() const
{
    QJsonObject rest;
    for (const Member& member : members_)
        if (!member.taken)
            rest.insert(ToQString(member.key), ToQJsonValue(member.value));
    return rest;
}

// A number in a whole-number field may be written with a fraction of zero ("5.0").
void FromJsonValue(JsonIn value, const JsonPlace& at, int& target)
{
    if (!value.is_number())
        FailExpected(at, "a whole number", value);
    const double number = double(value);
    if (number != std::trunc(number) || number < std::numeric_limits<int>::min()
        || number > std::numeric_limits<int>::max())
        FailAt(at, QStringLiteral("a 32-bit whole number expected"));
    target = int(number);
}

void FromJsonValue(JsonIn value, const JsonPlace& at, double& target)
{
    if (value.is_number()) {
        target = double(value);
        return;
    }
    const auto special = value.is_string() ? specialDouble(std::string_view(value)) : std::nullopt;
    if (!special)
        FailExpected(at, "a number", value);
    target = *special;
}

void FromJsonValue(JsonIn value, const JsonPlace& at, bool& target)
{
    if (!value.is_bool())
        FailExpected(at, "true or false", value);
    target = bool(value);
}

void FromJsonValue(JsonIn value, const JsonPlace& at, QString& target)
{
    if (!value.is_string())
        FailExpected(at, "text", value);
    target = ToQString(std::string_view(value));
}

void FromJsonValue(JsonIn value, const JsonPlace& at, QVariant& target)
{
    switch (value.type()) {
    case simdjson::dom::element_type::NULL_VALUE: target = QVariant(); return;
    case simdjson::dom::element_type::BOOL: target = bool(value); return;
    case simdjson::dom::element_type::INT64:
    case simdjson::dom::element_type::UINT64:
    case simdjson::dom::element_type::DOUBLE: target = double(value); return;
    case simdjson::dom::element_type::STRING: target = ToQString(std::string_view(value)); return;
    default: break;
    }
    std::string_view text;
    const bool numberObject = IsNumberObject(value) && !value.at_key("number").get_string().get(text);
    const auto special = numberObject ? specialDouble(text) : std::nullopt;
    if (!special)
        FailExpected(at, "a value (a number, text, true/false or null)", value);
    target = *special;
}

void FromJsonValue(JsonIn value, const JsonPlace& at, Point3& target)
{
    const simdjson::dom::array array = ArrayAt(value, at);
    if (array.size() != 3)
        FailAt(at, QStringLiteral("a point [x, y, z] expected, found %1 entries").arg(array.size()));
    double* const coordinates[] = {&target.x, &target.y, &target.z};
    qsizetype i = 0;
    for (const JsonIn coordinate : array) {
        FromJsonValue(coordinate, JsonPlace(at, i), *coordinates[i]);
        ++i;
    }
}

void FromJsonValue(JsonIn value, const JsonPlace& at, QMap<int, double>& target)
{
    target.clear();
    for (const simdjson::dom::key_value_pair member : ObjectAt(value, at, "an object of numbered values")) {
        const QString key = ToQString(member.key);
        const JsonPlace place(at, QStringView(key));
        bool ok = false;
        const int number = key.toInt(&ok);
        if (!ok || QString::number(number) != key)
            FailAt(place, QStringLiteral("a parameter number expected as the name"));
        FromJsonValue(member.value, place, target[number]);
    }
}

} // namespace feldra
