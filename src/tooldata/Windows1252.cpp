#include "tooldata/Windows1252.h"

#include <QHash>

#include <array>
#include <optional>

namespace marelon {
namespace {

// The characters of the codes 0x80 to 0x9F; the five unused codes stand for themselves.
constexpr std::array<char16_t, 32> kHighControls{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

std::optional<char> encode(char32_t c)
{
    static const QHash<char32_t, char> high = [] {
        QHash<char32_t, char> table;
        for (size_t i = 0; i < kHighControls.size(); ++i)
            table.insert(kHighControls[i], char(0x80 + i));
        return table;
    }();
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return char(c);
    const auto found = high.constFind(c);
    if (found == high.constEnd())
        return std::nullopt;
    return *found;
}

} // namespace

QString FromWindows1252(const QByteArray& bytes)
{
    QString text = QString::fromLatin1(bytes);
    for (QChar& c : text) {
        if (c.unicode() >= 0x80 && c.unicode() <= 0x9F)
            c = QChar(kHighControls[c.unicode() - 0x80]);
    }
    return text;
}

QByteArray ToWindows1252(const QString& text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (const char32_t c : text.toUcs4())
        bytes += encode(c).value_or('?');
    return bytes;
}

QString CharactersOutsideWindows1252(const QString& text)
{
    QList<char32_t> outside;
    for (const char32_t c : text.toUcs4()) {
        if (!encode(c) && !outside.contains(c))
            outside.append(c);
    }
    return QString::fromUcs4(outside.constData(), outside.size());
}

} // namespace marelon
