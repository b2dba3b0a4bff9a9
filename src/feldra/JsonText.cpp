#include "feldra/JsonText.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QLocale>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace feldra {
namespace {

bool isScalar(const QJsonValue& value)
{
    return !value.isArray() && !value.isObject();
}

// The shortest text that reads back to the same double, as Qt's
// QByteArray::number(value, 'g', QLocale::FloatingPointShortest) writes it:
// the fixed form unless the exponent form is shorter, an exponent of at least
// two digits, and 0 for either zero. Written into a buffer of at least 32
// characters; returns its end.
char* shortestText(double value, char* out)
{
    if (value == 0) {
        *out = '0';
        return out + 1;
    }
    char scientific[32];
    const char* end = std::to_chars(scientific, scientific + sizeof scientific, value,
                                    std::chars_format::scientific).ptr;
    const char* p = scientific;
    if (*p == '-')
        *out++ = *p++;
    char digits[20];
    int count = 0;
    for (; *p != 'e'; ++p)
        if (*p != '.')
            digits[count++] = *p;
    int exponent = 0;
    std::from_chars(p[1] == '+' ? p + 2 : p + 1, end, exponent);
    const int magnitude = std::abs(exponent);
    // "d.ddde+XX" against "ddd00", "dd.dd" or "0.000ddd"
    const int scientificLength = count + (count > 1 ? 1 : 0) + 2 + (magnitude < 100 ? 2 : 3);
    const int fixedLength = exponent >= 0 ? std::max(count, exponent + 1) + (count > exponent + 1 ? 1 : 0)
                                          : 2 + (-exponent - 1) + count;
    if (fixedLength <= scientificLength) {
        if (exponent >= 0) {
            for (int i = 0; i < std::max(count, exponent + 1); ++i) {
                if (i == exponent + 1)
                    *out++ = '.';
                *out++ = i < count ? digits[i] : '0';
            }
        } else {
            *out++ = '0';
            *out++ = '.';
            out = std::fill_n(out, -exponent - 1, '0');
            out = std::copy_n(digits, count, out);
        }
        return out;
    }
    *out++ = digits[0];
    if (count > 1) {
        *out++ = '.';
        out = std::copy_n(digits + 1, count - 1, out);
    }
    *out++ = 'e';
    *out++ = exponent < 0 ? '-' : '+';
    if (magnitude < 10)
        *out++ = '0';
    return std::to_chars(out, out + 4, magnitude).ptr;
}

constexpr char kSpaces[] = "                                                                ";

} // namespace

void JsonText::newLine()
{
    out_ += '\n';
    for (qsizetype indent = 2 * levels_.size(); indent > 0; indent -= qsizetype(sizeof kSpaces - 1))
        out_.append(kSpaces, std::min(indent, qsizetype(sizeof kSpaces - 1)));
}

// Array elements are separated here; object members in beginMember.
void JsonText::beforeValue()
{
    if (levels_.isEmpty() || levels_.last().object)
        return;
    Level& level = levels_.last();
    if (level.count++ > 0)
        out_ += QByteArrayView(level.oneLine ? ", " : ",");
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
    out_ += QByteArrayView("\": ");
}

void JsonText::Key(QStringView key)
{
    beginMember();
    quoted(key);
    out_ += QByteArrayView(": ");
}

void JsonText::Number(double value)
{
    beforeValue();
    char text[32];
    out_.append(text, shortestText(value, text) - text);
}

void JsonText::Integer(int value)
{
    beforeValue();
    char text[16];
    out_.append(text, std::to_chars(text, text + sizeof text, value).ptr - text);
}

void JsonText::Bool(bool value)
{
    beforeValue();
    out_ += QByteArrayView(value ? "true" : "false");
}

void JsonText::Null()
{
    beforeValue();
    out_ += QByteArrayView("null");
}

void JsonText::Text(QStringView value)
{
    beforeValue();
    quoted(value);
}

// The text as UTF-8 in quotes, with '"', '\' and control characters escaped.
// Plain ASCII with nothing to escape, as most texts are, is copied as it is.
void JsonText::quoted(QStringView text)
{
    const bool plain = std::all_of(text.begin(), text.end(), [](QChar c) {
        return c.unicode() >= 0x20 && c.unicode() < 0x80 && c != QLatin1Char('"') && c != QLatin1Char('\\');
    });
    if (plain) {
        char* p = out_.Room(text.size() + 2);
        *p++ = '"';
        for (QChar c : text)
            *p++ = char(c.unicode());
        *p = '"';
        return;
    }
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
        case '"': out_ += QByteArrayView("\\\""); break;
        case '\\': out_ += QByteArrayView("\\\\"); break;
        case '\n': out_ += QByteArrayView("\\n"); break;
        case '\r': out_ += QByteArrayView("\\r"); break;
        case '\t': out_ += QByteArrayView("\\t"); break;
        case '\b': out_ += QByteArrayView("\\b"); break;
        case '\f': out_ += QByteArrayView("\\f"); break;
        default:
            out_ += QByteArrayView("\\u00");
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
            out_ += QByteArrayView(QByteArray::number(value.toInteger()));
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
    return out_.Take();
}

} // namespace feldra
