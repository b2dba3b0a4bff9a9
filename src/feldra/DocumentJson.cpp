#include "feldra/DocumentJson.h"

namespace feldra {
namespace {

// A parameter's long form is an object {"value": ..., "caption": ...}; a bare
// value is an object only in the {"number": "NaN"} form of a Variant double.
bool isLongForm(JsonIn value)
{
    return value.is_object() && !IsNumberObject(value);
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

void FromJsonValue(JsonIn value, const JsonPlace& at, Parameters& target)
{
    target.clear();
    for (const simdjson::dom::key_value_pair member : ObjectAt(value, at, "an object of parameters")) {
        const QString key = ToQString(member.key);
        const JsonPlace place(at, QStringView(key));
        ParameterData& parameter = target[key];
        if (isLongForm(member.value))
            FromJsonValue(member.value, place, parameter);
        else
            FromJsonValue(member.value, place, parameter.value);
    }
}

} // namespace feldra
