#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// A control (button or separator) on a host command bar.
class CommandBarControl {
public:
    virtual ~CommandBarControl() = default;
    virtual void setVisible(bool visible) = 0;
    virtual void setCaption(const QString& caption) = 0;
    virtual void setToolTip(const QString& toolTip) = 0;
    virtual void SetBitmaps(const QString& smallBitmapFile, const QString& largeBitmapFile) = 0;
};

} // namespace host
