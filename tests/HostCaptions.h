#pragma once

#include "feldra/ApplicationData.h"

#include <QStringList>

// The captions of a command bar's controls or a menu's entries; "|" for a separator.
inline QStringList Captions(const feldra::ControlList& controls)
{
    QStringList captions;
    for (const auto& control : controls)
        captions.append(control->type == feldra::ControlData::Separator ? QStringLiteral("|") : control->caption);
    return captions;
}
