#pragma once

#include <QList>
#include <QString>
#include <memory>

// The host application's own state behind the facade: folders, language,
// the add-in command registry, the numbered command bars and the main menus.
namespace feldra {

// A control of a command bar or an entry of a menu.
struct ControlData {
    enum Type { Separator = 0, Button = 1 };
    int type = Button;
    QString caption;
    QString toolTip;
    QString smallBitmap;
    QString largeBitmap;
    bool visible = true;
    int commandHandle = 0; // 0: a control of the host itself (or a separator)
};

using ControlList = QList<std::shared_ptr<ControlData>>;

struct CommandBarData {
    int number = 0;
    QString name;
    ControlList controls;
};

struct MenuData {
    int number = 0;
    QString caption; // popup 9 is "Help"
    ControlList entries;
};

// A command an add-in registered: the host knows it by its handle, the add-in by
// its cookie and id.
struct CommandData {
    int handle = 0;
    int cookie = 0;
    int id = 0;
    QString group;
};

struct AddInData {
    QString progId;
    int cookie = 0;
    QString folder{}; // the folder of the add-in's module; empty when it was not loaded from one
};

struct ApplicationData {
    QString installFolder;   // each folder ends with a path separator
    QString temporaryFolder;
    QString addInFolder;     // the folder of an add-in that was not loaded from a module
    int languageCode = 1033;
    QList<int> helpLanguages{1033, 1031}; // the languages with a help folder
    QList<AddInData> addIns;
    QList<CommandData> commands;
    int nextCommandHandle = 1001;
    QList<std::shared_ptr<CommandBarData>> commandBars;
    QList<std::shared_ptr<MenuData>> mainMenus;

    // The host's bars and menus as it starts: command bars 1 to 23 (bar 2
    // "Edit" and bar 23 "Lathe" hold host buttons) and main-menu popups 1 to 9
    // (9 is "Help").
    static ApplicationData Standard();

    std::shared_ptr<CommandBarData> CommandBar(int number) const;
    std::shared_ptr<MenuData> Menu(int number) const;
    const CommandData* Command(int handle) const;
    // The caption of the first control that runs the command; empty for none.
    QString CommandCaption(int handle) const;
};

} // namespace feldra
