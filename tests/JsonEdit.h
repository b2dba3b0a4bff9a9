#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QStringList>

// Editing a JSON tree at a path of member names and array positions
// ({"tools", "3", "xShift"}), to build bad and extended files from good ones.

inline QJsonValue setAt(QJsonValue node, QStringList path, const QJsonValue& value)
{
    if (path.isEmpty())
        return value;
    const QString step = path.takeFirst();
    if (node.isArray()) {
        QJsonArray array = node.toArray();
        array[step.toInt()] = setAt(array.at(step.toInt()), path, value);
        return array;
    }
    QJsonObject object = node.toObject();
    object[step] = setAt(object.value(step), path, value);
    return object;
}

inline QJsonValue valueAt(QJsonValue node, const QStringList& path)
{
    for (const QString& step : path)
        node = node.isArray() ? node.toArray().at(step.toInt()) : node.toObject().value(step);
    return node;
}
