#pragma once

#include "feldra/Host.h"
#include "feldra/NcListing.h"
#include "feldra/HostActions.h"
#include "feldra/QtLocalizer.h"
#include "feldra/SimulationRunner.h"

#include <QMainWindow>
#include <functional>
#include <memory>

class QMenu;
class QCheckBox;
class QPlainTextEdit;
class QTabWidget;
class QTimer;
class QToolBar;
class QTranslator;
class QUndoGroup;
class QUndoView;

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
struct DocumentState;

// The Feldra application window: the command bars 2 and 23 as toolbars and the
// main menus (host controls and the add-ins' controls), the active document as
// a tree, and panes for the simulation, the NC code and the host log. It
// installs the host's window services (view and command-bar refreshes, the
// help viewer, the main window handle) on the host it shows.
//
// It holds one document at a time. Its title shows the document's name and
// "*" while it has changes (an add-in's writes included); opening, creating or
// closing a document and quitting first ask Save / Discard / Cancel for them.
// The prompt is a message box of the host's message box service: a window for
// a user, the macro's recorder (Yes saves, No discards) for a macro.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    // The command bars shown as toolbars.
    static inline const QList<int> kShownCommandBars{2, 23};
    static constexpr QSize kDefaultSize{1000, 700};

    explicit MainWindow(Host& host, QWidget* parent = nullptr);
    ~MainWindow() override;

    // The services a user needs: message boxes, the save prompt with Save,
    // Discard and Cancel, file dialogs for a new document's name, and object
    // picks in dialogs.
    void InstallInteractiveServices();

    // Rebuilds toolbars and menus from the application's command bars and menus,
    // with each add-in control's enabled state asked from its add-in.
    void RefreshCommandBars();
    // Asks the add-ins again whether their commands are enabled, and the host
    // whether its own can run; done whenever that may have changed (a command,
    // an event, a document opened or closed, a window of an add-in shown,
    // hidden or closed, another window getting the focus).
    void UpdateCommandStates();
    // Records the changes not yet in an undo step as one: named after the
    // add-in window that last closed, if one did since, else name (the last
    // command's name when empty).
    void CommitChanges(const QString& name = {});
    void RefreshDocumentView();
    void RefreshLog();
    // All of the above, after a command or an event.
    void RefreshAll();
    void ShowSimulation(const QList<SimulatedOperation>& operations);
    void ShowNcListing(const QString& listing);
    // What the NC pane shows.
    QString NcText() const;
    // The listings shown in the language of the window, and again in the new
    // language when the user switches.
    void ShowNcListing(const NcListings& listings);

    QToolBar* CommandBarToolBar(int number) const;
    HelpViewer* Help() const { return help_; }
    MaskingPanel* Masks() const { return masks_; }
    DocumentTree* Tree() const { return tree_; }
    SimulationPane* Simulation() const { return simulation_; }
    // Keystrokes sent to the host ("^m": control and M) run the window's
    // action with that shortcut; Ctrl+M shows and hides the masking panel.
    void SendKeys(const QString& keys);

    // 1033 English, 1031 German: the host's own texts and Qt's own (dialog
    // buttons, file dialogs) are shown in it, and the add-ins are connected
    // again under it.
    void SetLanguage(int languageCode);
    int Language() const { return localizer_.LanguageCode(); }
    // The language kept in the application's settings (English when none).
    static int StoredLanguage();

    // The user's actions; failures are shown in a message box. Each is false
    // when it did not happen (a failure, or Cancel at the save prompt).
    bool OpenDocument(const QString& path);
    bool NewDocument(const QString& templatePath);
    bool OpenTemplate(const QString& path);
    bool SaveDocument(const QString& path);
    bool CloseDocument();
    void InvokeCommand(int commandHandle);
    // Edit > Undo and Redo (Ctrl+Z; Ctrl+Shift+Z or Ctrl+Y) on the active
    // document, named after the step; disabled while a dialog is open.
    void Undo();
    void Redo();
    QList<SimulatedOperation> RunSimulation();
    // The host's technology edit of the operation at position (from 1): the
    // add-ins answer it (relabelling its parameters); throws host::HostError
    // for a position without an operation.
    Host::EditOutcome EditTechnology(int position, int editType = 1);
    void GenerateNcCode();

    // The same document actions for the macro runner: failures throw
    // host::HostError. A file that does not load leaves the document open.
    bool ReplaceDocument(const QString& path, OpenAs as);
    bool CloseActiveDocument();
    // Asks Save / Discard / Cancel when the document has changes, and saves it
    // on Save; false on Cancel. A failed save throws; the document stays open
    // and modified.
    bool SettleChanges(DocumentState& document);

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class SaveChoice { Save, Discard, Cancel };
    SaveChoice askToSave(const DocumentState& document);
    QString askSavePath();
    QString documentName(const DocumentState& document) const;

    void buildMenus();
    void addFileActions(QMenu* menu);
    void addViewActions(QMenu* menu);
    void addOperationActions(QMenu* menu);
    void fillToolBar(QToolBar* bar, int number);
    QAction* controlAction(const ControlData& control, QWidget* owner);
    // What a control of the host runs; nothing for a function the host lacks.
    std::function<void()> hostCommand(const QString& caption);
    bool hostCommandEnabled(const QString& caption) const;
    void updateUndoActions();
    void showHistoryOf(DocumentState* document);
    void installQtCatalogue(int languageCode);
    void retranslate();
    void reportError(const QString& description);
    template <class Action>
    bool attempt(Action action);

    Host& host_;
    QtLocalizer localizer_;
    std::unique_ptr<QTranslator> qtCatalogue_;
    QMap<int, QToolBar*> toolBars_;
    DocumentTree* tree_;
    QTabWidget* panes_;
    SimulationPane* simulation_;
    QPlainTextEdit* nc_;
    bool ncCancelled_ = false; // the NC pane shows that generation was cancelled
    std::optional<NcListings> ncListings_; // the listings the NC pane shows
    QPlainTextEdit* log_;
    QCheckBox* logDetails_ = nullptr;
    HelpViewer* help_;
    MaskingPanel* masks_;
    QTimer* stateUpdate_;
    QUndoGroup* undoGroup_;
    QUndoView* history_;
    QAction* undo_;
    QAction* redo_;
    QString pendingStepName_; // of the add-in window last hidden or closed
    std::shared_ptr<host::MessageBoxService> messageBox_; // set for a user
};

} // namespace feldra
