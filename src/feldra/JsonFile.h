#pragma once

#include "feldra/DocumentError.h"
#include "feldra/JsonRecord.h"

#include <QByteArray>

namespace feldra {

// The kind of a Feldra JSON file: its format marker, the schema version it is
// written in, and what it is called in errors.
struct JsonFileFormat {
    const char* marker;
    int version;
    const char* what;
};

// One Feldra JSON file being read or written by one operation: a JSON object
// with "format" and "version" beside the body. Every fault becomes a
// DocumentError naming the operation, the file and the place.
class JsonFile {
public:
    JsonFile(const QString& operation, const QString& path, const JsonFileFormat& format);

    QByteArray Read() const;
    // Reads a record from the file's text: "format" and "version", then the record's fields.
    template <JsonRecord R> void Parse(const QByteArray& text, R& record) const
    {
        simdjson::dom::parser parser;
        const JsonIn top = parseText(parser, text);
        Check([&] {
            JsonReader reader(top, JsonPlace());
            checkFormat(reader);
            Fields(reader, record);
            record.extra = reader.Rest();
        });
    }
    // The text of a record: "format" and "version", then the record's fields.
    template <JsonRecord R> QByteArray Text(const R& record) const
    {
        JsonText text;
        text.BeginObject();
        writeFormat(text);
        WriteFields(text, record);
        text.EndObject();
        return text.Finish();
    }
    // Replaces the file only when the whole text is written: a failed write leaves the old file.
    void Write(const QByteArray& text) const;

    // Runs a step that reports its faults as JsonPlaceError, naming this file in them.
    template <typename Step> void Check(Step step) const
    {
        try {
            step();
        } catch (const JsonPlaceError& error) {
            Fail(error.place, error.problem);
        }
    }

    [[noreturn]] void Fail(const QString& place, const QString& problem) const;

private:
    JsonIn parseText(simdjson::dom::parser& parser, const QByteArray& text) const;
    [[noreturn]] void failSyntax(const QByteArray& text, simdjson::error_code error) const;
    void checkFormat(JsonReader& top) const;
    void writeFormat(JsonText& text) const;

    QString operation_;
    QString path_;
    JsonFileFormat format_;
};

} // namespace feldra
