#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QLatin1String>
#include <QStringView>
#include <QVarLengthArray>

#include <algorithm>

namespace feldra {

// Writes JSON text for a person to read: fields in the order they are
// written, one per line, indented by two spaces; an array of numbers (a
// point, a placement) on one line, "[8, 0, -38.2]". Numbers are written in
// their shortest form that reads back to the same double.
class JsonText {
public:
    void BeginObject();
    void EndObject();
    // An array whose elements each take a line, or one on a single line.
    void BeginArray(bool oneLine = false);
    void EndArray();

    // The name of the next member of the open object.
    void Key(QLatin1String key);
    void Key(QStringView key);

    void Number(double value); // finite
    void Integer(int value);
    void Bool(bool value);
    void Text(QStringView value);
    void Null();
    // Any JSON value; an array of scalars goes on one line.
    void Value(const QJsonValue& value);

    QByteArray Finish();

private:
    struct Level {
        bool object;
        bool oneLine;
        int count;
    };

    void beforeValue();
    void beginMember();
    void newLine();
    void quoted(QStringView text);

    // The text written so far: room is made by doubling, and bytes are copied
    // in without QByteArray's general insertion on every call.
    class Output {
    public:
        // Room for n more bytes at the end, to be filled in.
        char* Room(qsizetype n)
        {
            if (size_ + n > bytes_.size())
                bytes_.resize(std::max(2 * bytes_.size(), size_ + n + 4096));
            char* at = bytes_.data() + size_;
            size_ += n;
            return at;
        }
        Output& operator+=(char c)
        {
            *Room(1) = c;
            return *this;
        }
        Output& operator+=(QByteArrayView text)
        {
            append(text.data(), text.size());
            return *this;
        }
        void append(const char* text, qsizetype n) { std::copy_n(text, n, Room(n)); }
        QByteArray Take()
        {
            bytes_.resize(size_);
            size_ = 0;
            return std::move(bytes_);
        }

    private:
        QByteArray bytes_;
        qsizetype size_ = 0;
    };

    Output out_;
    QVarLengthArray<Level, 16> levels_;
};

} // namespace feldra
