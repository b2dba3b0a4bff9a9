#include "feldra/DocumentJson.h"

namespace feldra {
namespace {

QJsonValue parameterToJson(const ParameterData& parameter)
{
    const QJsonValue value = ToJsonValue(parameter.value);
    if (parameter.caption.isEmpty() && parameter.extra.isEmpty() && !value.isObject())
        return value;
    return ToJsonValue<ParameterData>(parameter);
}

// The long form of a parameter is an object, as is the one form of a bare value.
bool isLongForm(const QJsonValue& value)
{
    return value.isObject() && !IsNumberObject(value);
}

} // namespace

QJsonValue ToJsonValue(const Parameters& parameters)
{
    QJsonObject object;
    for (auto it = parameters.cbegin(); it != parameters.cend(); ++it)
        object.insert(it.key(), parameterToJson(it.value()));
    return object;
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
