#pragma once

#include <QApplication>
#include <QLocale>

// The offscreen application the dialog fuzz targets open their dialogs on,
// with the number texts of English (United States).
inline void StartOffscreenApplication(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    new QApplication(*argc, *argv);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
}
