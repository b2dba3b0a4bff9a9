#pragma once

#include <QString>

namespace host {
class Application;
}

namespace marelon {

// The add-in's compiled help files, in the host's help folder of the user's language.
inline const QString kAddInHelpFile = QStringLiteral("Marelon Help.chm");
inline const QString kGCodeHelpFile = QStringLiteral("G-Code Help.chm");

// Opens a topic of a help file ("TooData.htm#Holder"; empty for the file's own
// start page) with the host's help viewer, owned by the host main window. The
// file is looked for in "Help/<number>" below the host install folder, the
// number being the help folder of the user's language, then in "Help/1033".
// Returns whether a file was found; a file missing in both folders shows nothing.
bool OpenHelpTopic(host::Application& application, const QString& file, const QString& topic);

} // namespace marelon
