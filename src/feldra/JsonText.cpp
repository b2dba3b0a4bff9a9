#include "feldra/JsonText.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QLocale>

#include <algorithm>
#include <cmath>

namespace feldra {
namespace {

bool isScalar(const QJsonValue& value)
{
    return !value.isArray() && !value.isObject();
}

} // namespace

void JsonText::newLine()
{
    out_ += '\n';
    out_.append(2 * levels_.size(), ' ');
}

// Array elements are separated here; object members in beginMember.
void JsonText::beforeValue()
{
    if (levels_.isEmpty() || levels_.last().object)
        return;
    Level& level = levels_.last();
    if (level.count++ > 0)
        out_ += level.oneLine ? ", " : ",";
    if (!level.oneLine)
        newLine();
}

void JsonText::beginMember()
{
    if (levels_.last().count++ > 0)
        out_ += ',';
    newLine();
}

void JsonText::BeginObject()
{
    beforeValue();
    out_ += '{';
    levels_.append({true, false, 0});
}

void JsonText::BeginArray(bool oneLine)
{
    beforeValue();
    out_ += '[';
    levels_.append({false, oneLine, 0});
}

void JsonText::EndObject()
{
    const Level level = levels_.last();
    levels_.removeLast();
    if (level.count > 0)
        newLine();
    out_ += '}';
}

void JsonText::EndArray()
{
    const Level level = levels_.last();
    levels_.removeLast();
    if (level.count > 0 && !level.oneLine)
        newLine();
    out_ += ']';
}

void JsonText::Key(QLatin1String key)
{
    beginMember();
    out_ += '"';
    out_ += QByteArrayView(key.data(), key.size()); // the record field names are plain ASCII
    out_ += "\": ";
}

void JsonText::Key(QStringView key)
{
    beginMember();
    quoted(key);
    out_ += ": ";
}

void JsonText::Number(double value)
{
    beforeValue();
    out_ += QByteArray::number(value, 'g', QLocale::FloatingPointShortest);
}

void JsonText::Integer(int value)
{
    beforeValue();
    out_ += QByteArray::number(value);
}

void JsonText::Bool(bool value)
{
    beforeValue();
    out_ += value ? "true" : "false";
}

void JsonText::Null()
{
    beforeValue();
    out_ += "null";
}

void JsonText::Text(QStringView value)
{
    beforeValue();
    quoted(value);
}

// The text as UTF-8 in quotes, with '"', '\' and control characters escaped.
void JsonText::quoted(QStringView text)
{
    static const char hex[] = "0123456789abcdef";
    const QByteArray utf8 = text.toUtf8();
    out_ += '"';
    qsizetype plainFrom = 0;
    for (qsizetype i = 0; i < utf8.size(); ++i) {
        const unsigned char c = static_cast<unsigned char>(utf8[i]);
        if (c >= 0x20 && c != '"' && c != '\\')
            continue;
        out_.append(utf8.constData() + plainFrom, i - plainFrom);
        plainFrom = i + 1;
        switch (c) {
        case '"': out_ += "\\\""; break;
        case '\\': out_ += "\\\\"; break;
        case '\n': out_ += "\\n"; break;
        case '\r': out_ += "\\r"; break;
        case '\t': out_ += "\\t"; break;
        case '\b': out_ += "\\b"; break;
        case '\f': out_ += "\\f"; break;
        default:
            out_ += "\\u00";
            out_ += hex[c >> 4];
            out_ += hex[c & 0xf];
        }
    }
    out_.append(utf8.constData() + plainFrom, utf8.size() - plainFrom);
    out_ += '"';
}

void JsonText::Value(const QJsonValue& value)
{
    switch (value.type()) {
    case QJsonValue::Bool: Bool(value.toBool()); return;
    case QJsonValue::Double: {
        // whole numbers as integers, so that a 64-bit integer keeps every digit
        const double number = value.toDouble();
        if (!std::isfinite(number))
            Null();
        else if (number == std::trunc(number) && std::fabs(number) < 0x1p63) {
            beforeValue();
            out_ += QByteArray::number(value.toInteger());
        } else
            Number(number);
        return;
    }
    case QJsonValue::String: Text(value.toString()); return;
    case QJsonValue::Array: {
        const QJsonArray array = value.toArray();
        BeginArray(std::all_of(array.begin(), array.end(), isScalar));
        for (const QJsonValue& element : array)
            Value(element);
        EndArray();
        return;
    }
    case QJsonValue::Object: {
        const QJsonObject object = value.toObject();
        BeginObject();
        for (auto it = object.begin(); it != object.end(); ++it) {
            Key(QStringView(it.key()));
            Value(it.value());
        }
        EndObject();
        return;
    }
    default: Null(); return;
    }
}

QByteArray JsonText::Finish()
{
    out_ += '\n';
    return std::move(out_);
}

} // namespace feldra
