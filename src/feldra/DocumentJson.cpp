#include "feldra/DocumentJson.h"

namespace feldra {
namespace {

// A parameter's long form is an object {"value": ..., "caption": ...}; a bare
// value is an object only in the {"number": "NaN"} form of a Variant double.
bool isLongForm(const QJsonValue& value)
{
    return value.isObject() && !IsNumberObject(value);
}

bool isBare(const ParameterData& parameter)
{
    return parameter.caption.isEmpty() && parameter.extra.isEmpty() && !IsWrittenAsObject(parameter.value);
}

} // namespace

void WriteJson(JsonText& text, const Parameters& parameters)
{
    text.BeginObject();
    for (auto it = parameters.cbegin(); it != parameters.cend(); ++it) {
        text.Key(QStringView(it.key()));
        if (isBare(it.value()))
            WriteJson(text, it.value().value);
        else
            WriteJson(text, it.value());
    }
    text.EndObject();
}

void FromJsonValue(const QJsonValue& value, const JsonPlace& at, Parameters& target)
{
    if (!value.isObject())
        FailExpected(at, "an object of parameters", value);
    const QJsonObject object = value.toObject();
    target.clear();
    for (auto it = object.constBegin(); it != object.constEnd(); ++it) {
        const QString key = it.key();
        const JsonPlace place(at, QStringView(key));
        ParameterData& parameter = target[key];
        if (isLongForm(it.value()))
            FromJsonValue(it.value(), place, parameter);
        else
            FromJsonValue(it.value(), place, parameter.value);
    }
}

} // namespace feldra
