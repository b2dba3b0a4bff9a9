#pragma once

#include <QJSEngine>
#include <QString>
#include <memory>

namespace feldra {

class DialogWatcher;
class Host;
class MacroApi;
class MainWindow;
class MessageBoxRecorder;

// Runs a JavaScript macro against the host and its main window: the global
// `feldra` (MacroApi), `doc` (the active document through the facade, by the
// facade's names), `print(...)` and `onDialog(name, handler)`. The runner
// makes the host's message box a recorder that the macro answers.
class MacroRunner {
public:
    MacroRunner(Host& host, MainWindow& window);
    ~MacroRunner();

    // Opens the document when one is given, then runs the script. Returns 0, or
    // 1 with the reason in `error` ("file:line: message" for script errors).
    int Run(const QString& scriptPath, const QString& documentPath, QString& error);

private:
    Host& host_;
    MainWindow& window_;
    QJSEngine engine_;
    std::shared_ptr<MessageBoxRecorder> messages_;
    std::unique_ptr<DialogWatcher> dialogs_;
    std::unique_ptr<MacroApi> api_;
};

} // namespace feldra
