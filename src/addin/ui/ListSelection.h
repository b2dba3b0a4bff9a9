#pragma once

#include <QComboBox>

namespace marelon {

// Sets a list's position from code and runs the list's click handler, exactly
// as a user's choice does. Every programmatic selection goes through here;
// the lists' change signals are never relied on for it. A position outside
// the list leaves the selection as it was and runs nothing.
template <class Handler>
void SelectListIndex(QComboBox& list, int position, Handler&& click)
{
    if (position < 0 || position >= list.count())
        return;
    list.setCurrentIndex(position);
    click();
}

} // namespace marelon
