#pragma once

#include "feldra/DocumentData.h"
#include "feldra/JsonText.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QStringView>
#include <QVarLengthArray>

#include <simdjson.h>

#include <array>
#include <concepts>
#include <memory>
#include <optional>
#include <string_view>
#include <type_traits>

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
// A JSON value being read: an element of the parsed text.
using JsonIn = simdjson::dom::element;

// "a number expected, found text"
[[noreturn]] void FailExpected(const JsonPlace& at, const char* expected, JsonIn found);

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

void WriteJson(JsonText& text, int value);
void WriteJson(JsonText& text, double value);
void WriteJson(JsonText& text, bool value);
void WriteJson(JsonText& text, const QString& value);
void WriteJson(JsonText& text, const QVariant& value);
void WriteJson(JsonText& text, const Point3& value); // [x, y, z]
void WriteJson(JsonText& text, const QMap<int, double>& numbered); // {"813": 1.5}

void FromJsonValue(JsonIn value, const JsonPlace& at, int& target);
void FromJsonValue(JsonIn value, const JsonPlace& at, double& target);
void FromJsonValue(JsonIn value, const JsonPlace& at, bool& target);
void FromJsonValue(JsonIn value, const JsonPlace& at, QString& target);
void FromJsonValue(JsonIn value, const JsonPlace& at, QVariant& target);
void FromJsonValue(JsonIn value, const JsonPlace& at, Point3& target);
void FromJsonValue(JsonIn value, const JsonPlace& at, QMap<int, double>& target);

// True for a Variant double in its {"number": ...} form.
bool IsNumberObject(JsonIn value);
// True when a Variant is written as an object (its {"number": ...} form).
bool IsWrittenAsObject(const QVariant& value);
simdjson::dom::array ArrayAt(JsonIn value, const JsonPlace& at);
simdjson::dom::object ObjectAt(JsonIn value, const JsonPlace& at, const char* expected);
QString ToQString(std::string_view utf8);
// A value the host does not know, kept as it is.
QJsonValue ToQJsonValue(JsonIn value);

// ---- records and containers --------------------------------------------------

template <JsonRecord R> void WriteJson(JsonText& text, const R& record);
template <typename T> void WriteJson(JsonText& text, const std::shared_ptr<T>& item);
template <typename T> void WriteJson(JsonText& text, const QList<T>& list);
template <typename T, std::size_t N> void WriteJson(JsonText& text, const std::array<T, N>& items);

template <JsonRecord R> void FromJsonValue(JsonIn value, const JsonPlace& at, R& record);
template <typename T> void FromJsonValue(JsonIn value, const JsonPlace& at, std::shared_ptr<T>& item);
template <typename T> void FromJsonValue(JsonIn value, const JsonPlace& at, QList<T>& list);
template <typename T, std::size_t N>
void FromJsonValue(JsonIn value, const JsonPlace& at, std::array<T, N>& items);

// Writes the fields a record names as members of the open object, then the
// record's unknown fields.
class JsonWriter {
public:
    explicit JsonWriter(JsonText& text) : text_(text) {}

    template <typename T> void operator()(const char* key, const T& value)
    {
        written_.append(key);
        text_.Key(QLatin1String(key));
        WriteJson(text_, value);
    }

    void Extra(const QJsonObject& extra);

private:
    JsonText& text_;
    QVarLengthArray<const char*, 32> written_;
};

template <JsonRecord R> void WriteFields(JsonText& text, const R& record)
{
    JsonWriter writer(text);
    Fields(writer, record);
    writer.Extra(record.extra);
}

// Reads the fields a record names from one JSON object; a field that is
// absent keeps the record's default. The members it never takes are the
// rest, the record's unknown fields.
class JsonReader {
public:
    JsonReader(JsonIn value, const JsonPlace& at);

    template <typename T> void operator()(const char* key, T& target)
    {
        if (const std::optional<JsonIn> value = Take(key))
            FromJsonValue(*value, JsonPlace(at_, key), target);
    }

    // The member of that name, once.
    std::optional<JsonIn> Take(std::string_view key);
    QJsonObject Rest() const;

private:
    struct Member {
        std::string_view key;
        JsonIn value;
        bool taken = false;
    };

    const JsonPlace& at_;
    QVarLengthArray<Member, 32> members_;
    // Where the next key is looked for first: the members of a file usually
    // come in the order the record names its fields.
    qsizetype next_ = 0;
};

template <JsonRecord R> void WriteJson(JsonText& text, const R& record)
{
    text.BeginObject();
    WriteFields(text, record);
    text.EndObject();
}

template <typename T> void WriteJson(JsonText& text, const std::shared_ptr<T>& item)
{
    WriteJson(text, *item);
}

template <typename T> void WriteJson(JsonText& text, const QList<T>& list)
{
    text.BeginArray(list.isEmpty());
    for (const T& item : list)
        WriteJson(text, item);
    text.EndArray();
}

template <typename T, std::size_t N> void WriteJson(JsonText& text, const std::array<T, N>& items)
{
    text.BeginArray(std::is_arithmetic_v<T>);
    for (const T& item : items)
        WriteJson(text, item);
    text.EndArray();
}

template <JsonRecord R> void FromJsonValue(JsonIn value, const JsonPlace& at, R& record)
{
    JsonReader reader(value, at);
    Fields(reader, record);
    record.extra = reader.Rest();
}

template <typename T> void FromJsonValue(JsonIn value, const JsonPlace& at, std::shared_ptr<T>& item)
{
    auto fresh = std::make_shared<T>();
    FromJsonValue(value, at, *fresh);
    item = std::move(fresh);
}

template <typename T> void FromJsonValue(JsonIn value, const JsonPlace& at, QList<T>& list)
{
    const simdjson::dom::array array = ArrayAt(value, at);
    list.clear();
    list.reserve(qsizetype(array.size()));
    for (const JsonIn element : array) {
        T item{};
        FromJsonValue(element, JsonPlace(at, list.size()), item);
        list.append(std::move(item));
    }
}

template <typename T, std::size_t N>
void FromJsonValue(JsonIn value, const JsonPlace& at, std::array<T, N>& items)
{
    const simdjson::dom::array array = ArrayAt(value, at);
    if (array.size() != N)
        FailAt(at, QStringLiteral("%1 entries expected, found %2").arg(N).arg(array.size()));
    std::size_t i = 0;
    for (const JsonIn element : array) {
        FromJsonValue(element, JsonPlace(at, qsizetype(i)), items[i]);
        ++i;
    }
}

} // namespace feldra
