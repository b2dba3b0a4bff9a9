#pragma once

#include "feldra/DocumentData.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QStringView>

#include <array>
#include <concepts>
#include <memory>

// The mapping between the Feldra records and JSON, both ways. A record names
// each of its fields once, in a `Fields(visitor, record)` function found by
// argument-dependent lookup (see DocumentJson.h); the same list writes the
// record and reads it back. Fields a record does not name are kept in its
// `extra`, so that a file gives back what the host does not know.
namespace feldra {

// A place in a JSON file. It is only spelled out as its JSON path
// ("tools[3].xShift", "operations[0].technology.parameters[\"498\"]") when an
// error names it.
class JsonPlace {
public:
    JsonPlace() = default;
    JsonPlace(const JsonPlace& parent, const char* field) : parent_(&parent), field_(field) {}
    JsonPlace(const JsonPlace& parent, QStringView member) : parent_(&parent), member_(member) {}
    JsonPlace(const JsonPlace& parent, qsizetype index) : parent_(&parent), index_(index) {}
    // A place keeps its parent by reference: the parent must outlive it.
    template <typename Step> JsonPlace(const JsonPlace&& parent, Step) = delete;

    QString Path() const;

private:
    const JsonPlace* parent_ = nullptr;
    const char* field_ = nullptr;
    QStringView member_;
    qsizetype index_ = -1;
};

// A fault at one place of a JSON file: its JSON path and what is wrong there.
struct JsonPlaceError {
    QString place;
    QString problem;
};

[[noreturn]] void FailAt(const JsonPlace& at, const QString& problem);
// "a number expected, found text"
[[noreturn]] void FailExpected(const JsonPlace& at, const char* expected, const QJsonValue& found);

template <typename R>
concept JsonRecord = requires(R& record) {
    { record.extra } -> std::same_as<QJsonObject&>;
};

// ---- scalars -----------------------------------------------------------------
// A double JSON cannot hold as a number (NaN, the infinities, negative zero)
// is written as the text "NaN", "Infinity", "-Infinity" or "-0", so that every
// double reads back bit-identical. A Variant holds null, a Boolean, a number or
// text (any other Variant is written as its text); a Variant double JSON
// cannot hold is written as {"number": "NaN"}.

QJsonValue ToJsonValue(int value);
QJsonValue ToJsonValue(double value);
QJsonValue ToJsonValue(bool value);
QJsonValue ToJsonValue(const QString& value);
QJsonValue ToJsonValue(const QVariant& value);
QJsonValue ToJsonValue(const Point3& value); // [x, y, z]
QJsonValue ToJsonValue(const QMap<int, double>& numbered);

void FromJsonValue(const QJsonValue& value, const JsonPlace& at, int& target);
void FromJsonValue(const QJsonValue& value, const JsonPlace& at, double& target);
void FromJsonValue(const QJsonValue& value, const JsonPlace& at, bool& target);
void FromJsonValue(const QJsonValue& value, const JsonPlace& at, QString& target);
void FromJsonValue(const QJsonValue& value, const JsonPlace& at, QVariant& target);
void FromJsonValue(const QJsonValue& value, const JsonPlace& at, Point3& target);
void FromJsonValue(const QJsonValue& value, const JsonPlace& at, QMap<int, double>& target);

// ---- records and containers --------------------------------------------------

template <JsonRecord R> QJsonValue ToJsonValue(const R& record);
template <typename T> QJsonValue ToJsonValue(const std::shared_ptr<T>& item);
template <typename T> QJsonValue ToJsonValue(const QList<T>& list);
template <typename T, std::size_t N> QJsonValue ToJsonValue(const std::array<T, N>& items);

template <JsonRecord R> void FromJsonValue(const QJsonValue& value, const JsonPlace& at, R& record);
template <typename T>
void FromJsonValue(const QJsonValue& value, const JsonPlace& at, std::shared_ptr<T>& item);
template <typename T> void FromJsonValue(const QJsonValue& value, const JsonPlace& at, QList<T>& list);
template <typename T, std::size_t N>
void FromJsonValue(const QJsonValue& value, const JsonPlace& at, std::array<T, N>& items);

QJsonArray ArrayAt(const QJsonValue& value, const JsonPlace& at);
// True for the {"number": ...} form of a Variant double.
bool IsNumberObject(const QJsonValue& value);

// Writes the fields a record names over the record's unknown fields.
class JsonWriter {
public:
    explicit JsonWriter(const QJsonObject& extra) : object_(extra) {}

    template <typename T> void operator()(const char* key, const T& value)
    {
        object_.insert(QLatin1String(key), ToJsonValue(value));
    }

    QJsonObject Object() const { return object_; }

private:
    QJsonObject object_;
};

// Reads the fields a record names from one JSON object; a field that is
// absent keeps the record's default. What it never reads is the rest, the
// record's unknown fields.
class JsonReader {
public:
    JsonReader(const QJsonValue& value, const JsonPlace& at);

    template <typename T> void operator()(const char* key, T& target)
    {
        const QLatin1String name(key);
        const auto found = rest_.constFind(name);
        if (found == rest_.constEnd())
            return;
        const QJsonValue value = found.value();
        rest_.remove(name);
        FromJsonValue(value, JsonPlace(at_, key), target);
    }

    QJsonObject Rest() const { return rest_; }

private:
    const JsonPlace& at_;
    QJsonObject rest_;
};

template <JsonRecord R> QJsonValue ToJsonValue(const R& record)
{
    JsonWriter writer(record.extra);
    Fields(writer, record);
    return writer.Object();
}

template <typename T> QJsonValue ToJsonValue(const std::shared_ptr<T>& item)
{
    return ToJsonValue(*item);
}

template <typename T> QJsonValue ToJsonValue(const QList<T>& list)
{
    QJsonArray array;
    for (const T& item : list)
        array.append(ToJsonValue(item));
    return array;
}

template <typename T, std::size_t N> QJsonValue ToJsonValue(const std::array<T, N>& items)
{
    QJsonArray array;
    for (const T& item : items)
        array.append(ToJsonValue(item));
    return array;
}

template <JsonRecord R> void FromJsonValue(const QJsonValue& value, const JsonPlace& at, R& record)
{
    JsonReader reader(value, at);
    Fields(reader, record);
    record.extra = reader.Rest();
}

template <typename T>
void FromJsonValue(const QJsonValue& value, const JsonPlace& at, std::shared_ptr<T>& item)
{
    auto fresh = std::make_shared<T>();
    FromJsonValue(value, at, *fresh);
    item = std::move(fresh);
}

template <typename T> void FromJsonValue(const QJsonValue& value, const JsonPlace& at, QList<T>& list)
{
    const QJsonArray array = ArrayAt(value, at);
    list.clear();
    list.reserve(array.size());
    for (qsizetype i = 0; i < array.size(); ++i) {
        T item{};
        FromJsonValue(array.at(i), JsonPlace(at, i), item);
        list.append(std::move(item));
    }
}

template <typename T, std::size_t N>
void FromJsonValue(const QJsonValue& value, const JsonPlace& at, std::array<T, N>& items)
{
    const QJsonArray array = ArrayAt(value, at);
    if (array.size() != qsizetype(N))
        FailAt(at, QStringLiteral("%1 entries expected, found %2").arg(N).arg(array.size()));
    for (std::size_t i = 0; i < N; ++i)
        FromJsonValue(array.at(qsizetype(i)), JsonPlace(at, qsizetype(i)), items[i]);
}

} // namespace feldra
