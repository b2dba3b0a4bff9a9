#include "feldra/macro/MacroRunner.h"

#include "addin/host/HostError.h"
#include "feldra/Host.h"
#include "feldra/HostActions.h"
#include "feldra/MessageBoxRecorder.h"
#include "feldra/app/MainWindow.h"
#include "feldra/macro/DialogWatcher.h"
#include "feldra/macro/MacroApi.h"
#include "feldra/macro/MacroDialog.h"

#include <QFile>
#include <QFileInfo>

namespace feldra {

namespace {

// `doc` walks the facade by name: each property read resolves the path from
// the active document afresh; objects read as further proxies, calls with
// arguments (Item, Parameter) as functions.
const char* const kPrelude = R"JS(
(function (global) {
    function isMarker(value) {
        return value !== null && typeof value === 'object' && typeof value.__facade === 'string';
    }
    function facadeObject(steps) {
        const text = step => step[1] ? step[0] + '(' + step[1].map(a => JSON.stringify(a)).join(', ') + ')' : step[0];
        const path = ['Document'].concat(steps.map(text)).join('.');
        return new Proxy({}, {
            get(target, name) {
                if (typeof name !== 'string')
                    return undefined;
                if (name === 'toString' || name === 'valueOf' || name === 'toJSON')
                    return () => '[' + path + ']';
                const next = steps.concat([[name]]);
                const value = feldra.facade(next);
                if (!isMarker(value))
                    return value;
                if (value.__facade === 'object')
                    return facadeObject(next);
                return function (...args) {
                    const called = steps.concat([[name, args]]);
                    const result = feldra.facade(called);
                    return isMarker(result) ? facadeObject(called) : result;
                };
            }
        });
    }
    global.doc = facadeObject([]);
    global.print = (...args) => feldra.print(args.map(String).join(' '));
    global.onDialog = (name, handler) => feldra.onDialog(name, handler);
})(this);
)JS";

} // namespace

MacroRunner::MacroRunner(Host& host, MainWindow& window)
    : host_(host), window_(window), messages_(std::make_shared<MessageBoxRecorder>())
{
    dialogs_ = std::make_unique<DialogWatcher>(
        [this](QWidget* form) { return engine_.newQObject(new MacroDialog(form)); }, &window);
    api_ = std::make_unique<MacroApi>(engine_, host, window, *messages_, *dialogs_);
    host_.Services().messageBox = messages_;
    host_.Services().pickObject = nullptr;
    engine_.installExtensions(QJSEngine::ConsoleExtension);
    QJSValue api = engine_.newQObject(api_.get());
    QJSEngine::setObjectOwnership(api_.get(), QJSEngine::CppOwnership);
    engine_.globalObject().setProperty("feldra", api);
    engine_.evaluate(QString::fromUtf8(kPrelude), QStringLiteral("prelude"));
}

MacroRunner::~MacroRunner() = default;

int MacroRunner::Run(const QString& scriptPath, const QString& documentPath, QString& error)
{
    QFile script(scriptPath);
    if (!script.open(QIODevice::ReadOnly | QIODevice::Text)) {
        error = QStringLiteral("Cannot read the macro %1: %2").arg(scriptPath, script.errorString());
        return 1;
    }
    if (!documentPath.isEmpty()) {
        try {
            OpenDocumentFile(host_, documentPath);
            window_.RefreshAll();
        } catch (const host::HostError& failure) {
            error = QStringLiteral("Cannot open the document: %1").arg(failure.Description());
            return 1;
        }
    }
    const QJSValue result = engine_.evaluate(QString::fromUtf8(script.readAll()),
                                             QFileInfo(scriptPath).filePath(), 1);
    if (result.isError()) {
        error = ScriptErrorText(result);
        return 1;
    }
    dialogs_->Drain();
    error = dialogs_->TakeError();
    return error.isEmpty() ? 0 : 1;
}

} // namespace feldra
