#pragma once

#include <QJSValue>
#include <QObject>
#include <QStringList>
#include <QVariantList>

class QJSEngine;

namespace feldra {

class DialogWatcher;
class Host;
class MainWindow;
class MessageBoxRecorder;

// The global object `feldra` of a macro: documents, commands, dialogs, message
// boxes, object picks, the simulation, document values and screenshots. A
// failing call throws a script error with the host's description. After each
// call the dialog handlers that became due run, and an error in one of them
// is thrown from the call.
class MacroApi : public QObject {
    Q_OBJECT
public:
    MacroApi(QJSEngine& engine, Host& host, MainWindow& window, MessageBoxRecorder& messages,
             DialogWatcher& dialogs);

    // ---- documents
    // Each replaces the active document as the window's File menu does: when
    // it has changes, the save prompt comes first (a message box answered
    // Save or Yes, Discard or No, Cancel). False when the prompt was cancelled.
    Q_INVOKABLE bool open(const QString& path);
    Q_INVOKABLE bool newDocument(const QString& templatePath);
    Q_INVOKABLE bool openTemplate(const QString& path);
    // Saves the active document, under path when given; returns the absolute path.
    Q_INVOKABLE QString save(const QString& path = {});
    Q_INVOKABLE bool close();
    Q_INVOKABLE QString documentFile() const;

    // ---- commands
    // The add-ins' commands: [{handle, cookie, id, group, caption, enabled}].
    Q_INVOKABLE QJSValue commands();
    // runCommand(cookie, id) or runCommand(caption); a disabled command fails.
    Q_INVOKABLE void runCommand(const QJSValue& cookieOrCaption, const QJSValue& id = {});
    // 3320 generates NC code: the listing as the NC pane shows it, in the
    // window's language, or null when an add-in cancels it.
    Q_INVOKABLE QJSValue runHostCommand(int id);

    // The host's technology edit of the operation at position (from 1), as
    // a double click on it in the document tree starts it: {override, resultCode}.
    Q_INVOKABLE QJSValue editTechnology(int position, int editType = 1);
    // Whether the active document has changes not saved (the title's "*").
    Q_INVOKABLE bool modified() const;
    // Writes the active document to path without making it the document's
    // file or its saved state (Save a Copy); returns the absolute path.
    Q_INVOKABLE QString saveCopy(const QString& path);

    // ---- undo
    // Undo and redo the active document's last step, as Edit > Undo and Redo
    // do; each fails when there is none, a dialog is open or a command runs.
    Q_INVOKABLE void undo();
    Q_INVOKABLE void redo();
    // The title of the step undo or redo would take back ("Auto Sync"), in the
    // window's language; empty when there is none.
    Q_INVOKABLE QString undoText();
    Q_INVOKABLE QString redoText();

    // ---- dialogs and message boxes
    Q_INVOKABLE QStringList dialogs() const;
    Q_INVOKABLE QJSValue dialog(const QString& formName);
    Q_INVOKABLE void onDialog(const QString& formName, const QJSValue& handler);
    // Queues the answer ("OK", "Cancel", "Abort", "Retry", "Ignore", "Yes", "No";
    // "Save" and "Discard" for the save prompt's Yes and No) to the next message box.
    Q_INVOKABLE void answer(const QString& result);
    // Every message box so far: [{prompt, title, icon, buttons}].
    Q_INVOKABLE QJSValue messages();
    Q_INVOKABLE void clearMessages();
    // Queues the keys of the objects the next picks choose ("" cancels).
    Q_INVOKABLE void pick(const QStringList& keys);

    // ---- simulation, values, output
    // [{position, name, z2Enabled, z3Enabled, z2Position}]; an absent axis is null.
    Q_INVOKABLE QJSValue simulate();
    // A value through the facade by path ("Tools.Item(1).XShift").
    Q_INVOKABLE QJSValue get(const QString& path);
    // The facade path walked by the `doc` object: steps [[name, [args]] ...].
    Q_INVOKABLE QJSValue facade(const QJSValue& steps);
    Q_INVOKABLE QString screenshot(const QString& path);
    // The main window in English and in German ("feldra.png" gives
    // "feldra-en.png" and "feldra-de.png"); the language is restored after.
    Q_INVOKABLE QStringList screenshots(const QString& path);
    Q_INVOKABLE QString writeText(const QString& path, const QString& text);
    Q_INVOKABLE QJSValue failedCallbacks();
    Q_INVOKABLE void setLanguage(int languageCode);
    Q_INVOKABLE void print(const QString& text);

private:
    template <class Action>
    auto call(Action action) -> decltype(action());
    void after();

    QJSEngine& engine_;
    Host& host_;
    MainWindow& window_;
    MessageBoxRecorder& messages_;
    DialogWatcher& dialogs_;
};

} // namespace feldra
