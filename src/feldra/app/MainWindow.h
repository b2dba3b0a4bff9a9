#pragma once

#include "feldra/QtLocalizer.h"
#include "feldra/SimulationRunner.h"

#include <QMainWindow>
#include <functional>
#include <memory>

class QMenu;
class QPlainTextEdit;
class QTabWidget;
class QToolBar;

namespace host {
class MessageBoxService;
}

namespace feldra {

class DocumentTree;
class HelpViewer;
class Host;
class MaskingPanel;
class SimulationPane;
struct ControlData;

// The Feldra application window: the command bars 2 and 23 as toolbars and the
// main menus (host controls and the add-ins' controls), the active document as
// a tree, and panes for the simulation, the NC code and the host log. It
// installs the host's window services (view and command-bar refreshes, the
// help viewer, the main window handle) on the host it shows.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    // The command bars shown as toolbars.
    static inline const QList<int> kShownCommandBars{2, 23};

    explicit MainWindow(Host& host, QWidget* parent = nullptr);
    ~MainWindow() override;

    // The services a user needs: message boxes and object picks in dialogs.
    void InstallInteractiveServices();

    // Rebuilds toolbars and menus from the application's command bars and menus,
    // with each add-in control's enabled state asked from its add-in.
    void RefreshCommandBars();
    void RefreshDocumentView();
    void RefreshLog();
    // All of the above, after a command or an event.
    void RefreshAll();
    void ShowSimulation(const QList<SimulatedOperation>& operations);
    void ShowNcListing(const QString& listing);

    QToolBar* CommandBarToolBar(int number) const;
    HelpViewer* Help() const { return help_; }
    MaskingPanel* Masks() const { return masks_; }
    // Keystrokes sent to the host ("^m": control and M) run the window's
    // action with that shortcut; Ctrl+M shows and hides the masking panel.
    void SendKeys(const QString& keys);

    // 1033 English, 1031 German: the host's own texts are shown in it and the
    // add-ins' localisers are created for it.
    void SetLanguage(int languageCode);
    int Language() const { return localizer_.LanguageCode(); }
    // The language kept in the application's settings (English when none).
    static int StoredLanguage();

    // The user's actions; failures are shown in a message box.
    void OpenDocument(const QString& path);
    void NewDocument(const QString& templatePath);
    void OpenTemplate(const QString& path);
    void SaveDocument(const QString& path);
    void CloseDocument();
    void InvokeCommand(int commandHandle);
    QList<SimulatedOperation> RunSimulation();
    void GenerateNcCode();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildMenus();
    void addFileActions(QMenu* menu);
    void addMaskingAction(QMenu* menu);
    void addLanguageMenu(QMenu* menu);
    void fillToolBar(QToolBar* bar, int number);
    QAction* controlAction(const ControlData& control, QWidget* owner);
    // What a control of the host runs; nothing for a function the host lacks.
    std::function<void()> hostCommand(const QString& caption);
    void retranslate();
    template <class Action>
    void attempt(Action action);

    Host& host_;
    QtLocalizer localizer_;
    QMap<int, QToolBar*> toolBars_;
    DocumentTree* tree_;
    QTabWidget* panes_;
    SimulationPane* simulation_;
    QPlainTextEdit* nc_;
    QPlainTextEdit* log_;
    HelpViewer* help_;
    MaskingPanel* masks_;
    std::shared_ptr<host::MessageBoxService> messageBox_;
};

} // namespace feldra
