#include "tooldata/HolderLibrary.h"

#include "addin/UnitConversion.h"
#include "numeric/NumberText.h"
#include "tooldata/Windows1252.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

#include <array>
#include <cmath>
#include <optional>

namespace marelon {
namespace {

constexpr int kFieldCount = 8;
constexpr char kQuote = '"';

// Machine models and their library files. The rule behind the table: a blank
// becomes a hyphen and " ToolHolders.txt" follows; the table keeps the models
// exact, so that a name that is not a model gives no file.
struct ModelFile {
    const char* machine;
    const char* file;
};
constexpr std::array kModelFiles{
    ModelFile{"A20", "A20 ToolHolders.txt"},
    ModelFile{"A32", "A32 ToolHolders.txt"},
    ModelFile{"B12", "B12 ToolHolders.txt"},
    ModelFile{"B2 12-20", "B2-12-20 ToolHolders.txt"},
    ModelFile{"C12-16", "C12-16 ToolHolders.txt"},
    ModelFile{"C20-32", "C20-32 ToolHolders.txt"},
    ModelFile{"E2 16J", "E2-16J ToolHolders.txt"},
    ModelFile{"E2 25J-32", "E2-25J-32 ToolHolders.txt"},
    ModelFile{"E2 32IV", "E2-32IV ToolHolders.txt"},
    ModelFile{"K16", "K16 ToolHolders.txt"},
    ModelFile{"L3 16-20", "L3-16-20 ToolHolders.txt"},
    ModelFile{"L4 25-32", "L4-25-32 ToolHolders.txt"},
    ModelFile{"L5 16-20", "L5-16-20 ToolHolders.txt"},
    ModelFile{"L7 16-20", "L7-16-20 ToolHolders.txt"},
    ModelFile{"L6 32", "L6-32 ToolHolders.txt"},
    ModelFile{"M20", "M20 ToolHolders.txt"},
    ModelFile{"M2-3 12-16", "M2-3-12-16 ToolHolders.txt"},
    ModelFile{"M2-3 20-32", "M2-3-20-32 ToolHolders.txt"},
    ModelFile{"R6 04-07", "R6-04-07 ToolHolders.txt"},
};

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

// One field of a line as read: its text, and whether it was quoted.
struct Field {
    QByteArray text;
    bool quoted = false;
};

// Splits a line into its fields: a field ends at a comma or at the end of the
// line, blanks around it are skipped, a quoted field ends at its closing quote
// and may hold commas. None when the line is not a list of fields.
std::optional<QList<Field>> splitFields(const QByteArray& line)
{
    QList<Field> fields;
    qsizetype at = 0;
    const qsizetype n = line.size();
    while (true) {
        while (at < n && isBlank(line[at]))
            ++at;
        Field field;
        if (at < n && line[at] == kQuote) {
            const qsizetype close = line.indexOf(kQuote, at + 1);
            if (close < 0)
                return std::nullopt;
            field = {line.mid(at + 1, close - at - 1), true};
            at = close + 1;
            while (at < n && isBlank(line[at]))
                ++at;
            if (at < n && line[at] != ',')
                return std::nullopt; // text after the closing quote
        } else {
            const qsizetype comma = line.indexOf(',', at);
            const qsizetype end = comma < 0 ? n : comma;
            field.text = line.mid(at, end - at).trimmed();
            if (field.text.contains(kQuote))
                return std::nullopt; // a quote only opens a field
            at = end;
        }
        fields.append(field);
        if (at >= n)
            return fields;
        ++at; // the comma
    }
}

std::optional<double> numberField(const Field& field)
{
    static const QRegularExpression number(
        QStringLiteral(R"(^[+-]?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?$)"));
    if (field.quoted)
        return std::nullopt;
    if (field.text.isEmpty())
        return 0.0;
    const QString text = QString::fromLatin1(field.text);
    if (!number.match(text).hasMatch())
        return std::nullopt;
    const double value = numeric::LeadingNumber(text);
    if (!std::isfinite(value))
        return std::nullopt;
    return value;
}

std::optional<HolderRecord> parseRecord(const QByteArray& line)
{
    const auto fields = splitFields(line);
    if (!fields || fields->size() != kFieldCount)
        return std::nullopt;
    const Field& f0 = (*fields)[0];
    const Field& f1 = (*fields)[1];
    std::array<double, 6> numbers{};
    for (int i = 0; i < 6; ++i) {
        const auto value = numberField((*fields)[i + 2]);
        if (!value)
            return std::nullopt;
        numbers[size_t(i)] = *value;
    }
    HolderRecord record;
    record.name = FromWindows1252(f0.text);
    record.description = FromWindows1252(f1.text);
    record.xShift = numbers[0];
    record.zShift = numbers[1];
    record.yShift = numbers[2];
    try {
        record.spindleRotation = numeric::RoundToInt16(numbers[3]);
    } catch (const numeric::NumberError&) {
        return std::nullopt;
    }
    record.gearRatio1 = numbers[4];
    record.gearRatio2 = numbers[5];
    return record;
}

QByteArray quoted(const QString& text)
{
    return kQuote + ToWindows1252(text) + kQuote;
}

QByteArray number(double value)
{
    return numeric::NumberToInvariantText(value).toLatin1();
}

bool saveFile(const QString& path, const QByteArray& contents)
{
    // Unbuffered, so that a short write (a full disk) shows in write()'s count:
    // a buffered flush at commit takes a short write for success.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    if (file.write(contents) != contents.size()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

// Rewrites a library file; the file as it was before stays beside it as
// "<file>.bak". When the copy cannot be made, the library is not touched.
bool replaceFile(const QString& path, const std::optional<QByteArray>& previous, const QByteArray& contents)
{
    if (previous && !saveFile(BackupPath(path), *previous))
        return false;
    return saveFile(path, contents);
}

// The file's contents; none when it does not exist, an error when it cannot be read.
std::optional<QByteArray> readExisting(const QString& path, bool& readable)
{
    readable = true;
    if (!QFileInfo::exists(path))
        return std::nullopt;
    QFile file(path);
    readable = file.open(QIODevice::ReadOnly);
    return file.readAll();
}

} // namespace

QString SpindleRotationText(int rotation)
{
    switch (rotation) {
    case -1:
        return QStringLiteral("Forward");
    case 0:
        return QStringLiteral("N/A");
    case 1:
        return QStringLiteral("Reverse");
    default:
        return {};
    }
}

QString HolderFileName(const QString& machineName)
{
    for (const auto& model : kModelFiles) {
        if (machineName == QLatin1String(model.machine))
            return QString::fromLatin1(model.file);
    }
    return {};
}

QString HolderFilePath(const QString& addInFolder, const QString& machineName)
{
    const QString file = HolderFileName(machineName);
    return file.isEmpty() ? QString() : addInFolder + QStringLiteral("ToolHolders/") + file;
}

bool HolderFileExists(const QString& path)
{
    return QFileInfo(path).isFile();
}

QString HolderShiftText(double inches, int documentUnits)
{
    const int digits = documentUnits == kMillimetreUnits ? 14 : 15;
    return numeric::NumberToText(InchesToDocument(inches, documentUnits), digits);
}

QList<HolderRecord> ParseHolderRecords(const QByteArray& text)
{
    QList<HolderRecord> records;
    qsizetype at = 0;
    while (at < text.size() && records.size() < kHolderCapacity) {
        qsizetype end = text.indexOf('\n', at);
        if (end < 0)
            end = text.size();
        QByteArray line = text.mid(at, end - at);
        at = end + 1;
        if (line.endsWith('\r'))
            line.chop(1);
        if (line.trimmed().isEmpty())
            continue;
        const auto record = parseRecord(line);
        if (!record)
            break;
        records.append(*record);
    }
    return records;
}

QList<HolderRecord> ReadHolderFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return ParseHolderRecords(file.readAll());
}

QByteArray HolderLine(const HolderRecord& r)
{
    return quoted(r.name) + ',' + quoted(r.description) + ',' + number(r.xShift) + ','
        + number(r.zShift) + ',' + number(r.yShift) + ',' + QByteArray::number(r.spindleRotation)
        + ',' + number(r.gearRatio1) + ',' + number(r.gearRatio2) + "\r\n";
}

QString BackupPath(const QString& path)
{
    return path + QStringLiteral(".bak");
}

bool AppendHolder(const QString& path, const HolderRecord& record)
{
    bool readable = true;
    const auto previous = readExisting(path, readable);
    if (!readable)
        return false;
    QByteArray contents = previous.value_or(QByteArray());
    if (!contents.isEmpty() && !contents.endsWith('\n'))
        contents += "\r\n"; // a last line without its end stays a line of its own
    return replaceFile(path, previous, contents + HolderLine(record));
}

bool WriteHolderFile(const QString& path, const QList<HolderRecord>& records)
{
    bool readable = true;
    const auto previous = readExisting(path, readable);
    if (!readable)
        return false;
    QByteArray contents;
    for (const auto& record : records)
        contents += HolderLine(record);
    return replaceFile(path, previous, contents);
}

int DeleteHolder(const QString& path, int index)
{
    QList<HolderRecord> records = ReadHolderFile(path);
    const int count = int(records.size());
    if (count > 1 && index >= 0 && index < count)
        records.removeAt(index);
    else if (count <= 1)
        records.clear();
    WriteHolderFile(path, records);
    return count;
}

} // namespace marelon
