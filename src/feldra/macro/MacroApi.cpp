#include "feldra/macro/MacroApi.h"

#include "addin/host/HostError.h"
#include "feldra/Host.h"
#include "feldra/DocumentFile.h"
#include "feldra/HostActions.h"
#include "feldra/MessageBoxRecorder.h"
#include "feldra/SimulationRunner.h"
#include "feldra/app/MainWindow.h"
#include "feldra/macro/DialogWatcher.h"
#include "feldra/macro/FacadePath.h"
#include "feldra/macro/MacroDialog.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QJSEngine>
#include <QSaveFile>
#include <QTextStream>
#include <type_traits>

namespace feldra {

namespace {

const QStringList kResultNames{"", "OK", "Cancel", "Abort", "Retry", "Ignore", "Yes", "No"};
const QStringList kButtonNames{"OK", "OKCancel", "AbortRetryIgnore", "YesNoCancel", "YesNo", "RetryCancel"};
const QStringList kIconNames{"None", "Critical", "Question", "Exclamation", "Information"};

[[noreturn]] void Fail(const QString& description)
{
    throw host::HostError(QStringLiteral("Macro"), description);
}

QWidget* VisibleForm(const QString& formName, const QWidget* mainWindow)
{
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget != mainWindow && widget->isVisible() && widget->objectName() == formName)
            return widget;
    return nullptr;
}

QList<FacadeStep> StepsOf(const QVariantList& steps)
{
    QList<FacadeStep> result;
    for (const QVariant& step : steps) {
        const QVariantList parts = step.toList();
        const QVariant arguments = parts.value(1);
        result << FacadeStep{parts.value(0).toString(), arguments.toList(), arguments.isValid() && !arguments.isNull()};
    }
    return result;
}

} // namespace

MacroApi::MacroApi(QJSEngine& engine, Host& host, MainWindow& window, MessageBoxRecorder& messages,
                   DialogWatcher& dialogs)
    : engine_(engine), host_(host), window_(window), messages_(messages), dialogs_(dialogs)
{
    setObjectName("feldra");
}

// Runs one call: a host failure becomes a script error; then the view is
// refreshed and the dialog handlers that became due run.
template <class Action>
auto MacroApi::call(Action action) -> decltype(action())
{
    using Result = decltype(action());
    try {
        if constexpr (std::is_void_v<Result>) {
            action();
            after();
            return;
        } else {
            Result result = action();
            after();
            return result;
        }
    } catch (const host::HostError& error) {
        engine_.throwError(error.Description());
    } catch (const std::exception& error) {
        engine_.throwError(QString::fromUtf8(error.what()));
    }
    if constexpr (!std::is_void_v<Result>)
        return Result{};
}

void MacroApi::after()
{
    window_.CommitChanges(QStringLiteral("Macro")); // what the macro wrote through the facade
    window_.RefreshAll();
    // No event loop runs between macro steps: layouts and queued work happen here.
    QCoreApplication::sendPostedEvents();
    dialogs_.Drain();
    const QString error = dialogs_.TakeError();
    if (!error.isEmpty())
        Fail(error);
}

// ---- documents ------------------------------------------------------------------

bool MacroApi::open(const QString& path) { return call([&] { return window_.ReplaceDocument(path, OpenAs::Document); }); }
bool MacroApi::newDocument(const QString& templatePath)
{
    return call([&] { return window_.ReplaceDocument(templatePath, OpenAs::NewDocument); });
}
bool MacroApi::openTemplate(const QString& path)
{
    return call([&] { return window_.ReplaceDocument(path, OpenAs::Template); });
}

QString MacroApi::save(const QString& path)
{
    return call([&] {
        const auto document = host_.ActiveDocument();
        if (!document)
            Fail("No document is open.");
        const QString file = path.isEmpty() ? document->fileName : path;
        if (file.isEmpty())
            Fail("The new document has no file name yet: save(path).");
        QDir().mkpath(QFileInfo(file).absolutePath());
        SaveDocumentFile(host_, *document, file);
        return QFileInfo(file).absoluteFilePath();
    });
}

QString MacroApi::saveCopy(const QString& path)
{
    return call([&] {
        const auto document = host_.ActiveDocument();
        if (!document)
            Fail("No document is open.");
        QDir().mkpath(QFileInfo(path).absolutePath());
        SaveDocument(path, document->data);
        return QFileInfo(path).absoluteFilePath();
    });
}

bool MacroApi::modified() const
{
    return host_.ActiveDocument() && host_.ActiveDocument()->modified;
}

bool MacroApi::close() { return call([&] { return window_.CloseActiveDocument(); }); }

QString MacroApi::documentFile() const
{
    return host_.ActiveDocument() ? host_.ActiveDocument()->fileName : QString();
}

// ---- commands -------------------------------------------------------------------

QJSValue MacroApi::commands()
{
    return call([&] {
        const ApplicationData& app = host_.App();
        QJSValue list = engine_.newArray(quint32(app.commands.size()));
        quint32 i = 0;
        for (const CommandData& command : app.commands) {
            QJSValue entry = engine_.newObject();
            entry.setProperty("handle", command.handle);
            entry.setProperty("cookie", command.cookie);
            entry.setProperty("id", command.id);
            entry.setProperty("group", command.group);
            entry.setProperty("caption", app.CommandCaption(command.handle));
            entry.setProperty("enabled", host_.CommandEnabled(command.handle));
            list.setProperty(i++, entry);
        }
        return list;
    });
}

namespace {

// The handle of the command named by caption, or by its add-in's cookie and id; 0 for none.
int CommandHandle(const ApplicationData& app, const QJSValue& cookieOrCaption, const QJSValue& id)
{
    for (const CommandData& command : app.commands) {
        const bool named = cookieOrCaption.isString()
                               ? app.CommandCaption(command.handle) == cookieOrCaption.toString()
                               : command.cookie == cookieOrCaption.toInt() && command.id == id.toInt();
        if (named)
            return command.handle;
    }
    return 0;
}

} // namespace

void MacroApi::runCommand(const QJSValue& cookieOrCaption, const QJSValue& id)
{
    call([&] {
        const QString named = cookieOrCaption.isString()
                                  ? QStringLiteral("\"%1\"").arg(cookieOrCaption.toString())
                                  : QStringLiteral("%1 of add-in %2").arg(id.toInt()).arg(cookieOrCaption.toInt());
        const int handle = CommandHandle(host_.App(), cookieOrCaption, id);
        if (handle == 0)
            Fail(QStringLiteral("There is no add-in command %1.").arg(named));
        if (!host_.CommandEnabled(handle))
            Fail(QStringLiteral("The command %1 is disabled.").arg(named));
        host_.InvokeCommand(handle);
    });
}

QJSValue MacroApi::editTechnology(int position, int editType)
{
    return call([&] {
        const auto document = host_.ActiveDocument();
        if (!document)
            Fail("No document is open.");
        const Host::EditOutcome outcome = window_.EditTechnology(position, editType);
        QJSValue result = engine_.newObject();
        result.setProperty("override", outcome.bOverride);
        result.setProperty("resultCode", outcome.resultCode);
        return result;
    });
}

void MacroApi::undo()
{
    call([&] {
        window_.CommitChanges(QStringLiteral("Macro"));
        host_.Undo();
    });
}

void MacroApi::redo()
{
    call([&] {
        window_.CommitChanges(QStringLiteral("Macro"));
        host_.Redo();
    });
}

QString MacroApi::undoText()
{
    return call([&] {
        window_.CommitChanges(QStringLiteral("Macro"));
        return host_.UndoText();
    });
}

QString MacroApi::redoText()
{
    return call([&] {
        window_.CommitChanges(QStringLiteral("Macro"));
        return host_.RedoText();
    });
}

QJSValue MacroApi::runHostCommand(int id)
{
    return call([&] {
        if (id != kGenerateNcCommand)
            Fail(QStringLiteral("Feldra has no host command %1 (3320 generates NC code).").arg(id));
        const std::optional<NcListings> listings = GenerateNcCodeListings(host_);
        if (!listings)
            return QJSValue(QJSValue::NullValue);
        window_.ShowNcListing(*listings);
        return QJSValue(window_.NcText());
    });
}

// ---- dialogs and message boxes ----------------------------------------------------

QStringList MacroApi::dialogs() const
{
    QStringList names;
    for (const QWidget* widget : QApplication::topLevelWidgets())
        if (widget != &window_ && widget->isVisible() && !widget->objectName().isEmpty())
            names << widget->objectName();
    return names;
}

QJSValue MacroApi::dialog(const QString& formName)
{
    QWidget* form = VisibleForm(formName, &window_);
    if (!form) {
        const QStringList visible = dialogs();
        engine_.throwError(QStringLiteral("No dialog named %1 is visible (visible: %2).")
                               .arg(formName, visible.isEmpty() ? QStringLiteral("none") : visible.join(", ")));
        return {};
    }
    return engine_.newQObject(new MacroDialog(form));
}

void MacroApi::onDialog(const QString& formName, const QJSValue& handler) { dialogs_.On(formName, handler); }

void MacroApi::answer(const QString& result)
{
    const QString named = result == QLatin1String("Save") ? QStringLiteral("Yes")
                          : result == QLatin1String("Discard") ? QStringLiteral("No")
                                                               : result;
    const int code = int(kResultNames.indexOf(named));
    if (code <= 0)
        return engine_.throwError(QStringLiteral("A message box has no answer \"%1\" (one of %2).")
                                      .arg(result, kResultNames.mid(1).join(", ") + ", Save, Discard"));
    messages_.Answer(host::MsgResult(code));
}

QJSValue MacroApi::messages()
{
    QJSValue list = engine_.newArray(quint32(messages_.Messages().size()));
    quint32 i = 0;
    for (const auto& message : messages_.Messages()) {
        QJSValue entry = engine_.newObject();
        entry.setProperty("prompt", message.prompt);
        entry.setProperty("title", message.title);
        entry.setProperty("icon", kIconNames.value(int(message.icon)));
        entry.setProperty("buttons", kButtonNames.value(int(message.buttons)));
        list.setProperty(i++, entry);
    }
    return list;
}

void MacroApi::clearMessages() { messages_.Clear(); }

void MacroApi::pick(const QStringList& keys) { host_.Services().pickAnswers = keys; }

// ---- simulation, values, output ---------------------------------------------------

QJSValue MacroApi::simulate()
{
    return call([&] {
        const auto document = host_.ActiveDocument();
        if (!document)
            Fail("No document is open.");
        const QList<SimulatedOperation> operations = SimulationRunner(host_).Run(document);
        window_.ShowSimulation(operations);
        QJSValue list = engine_.newArray(quint32(operations.size()));
        quint32 i = 0;
        for (const SimulatedOperation& operation : operations) {
            QJSValue entry = engine_.newObject();
            entry.setProperty("position", operation.position);
            entry.setProperty("name", operation.name);
            const auto axis = [](const AxisState& state, QJSValue value) {
                return state.present ? value : QJSValue(QJSValue::NullValue);
            };
            entry.setProperty("z2Enabled", axis(operation.z2, operation.z2.enabled));
            entry.setProperty("z3Enabled", axis(operation.z3, operation.z3.enabled));
            entry.setProperty("z2Position", axis(operation.z2, operation.z2.position));
            list.setProperty(i++, entry);
        }
        return list;
    });
}

QJSValue MacroApi::get(const QString& path)
{
    return call([&] {
        const FacadeResult result =
            ResolveFacadePath(host_.DocumentObject(host_.ActiveDocument()), ParseFacadePath(path));
        if (result.kind != FacadeResult::Value)
            Fail(QStringLiteral("%1 is not a value.").arg(path));
        return engine_.toScriptValue(result.value);
    });
}

QJSValue MacroApi::facade(const QJSValue& steps)
{
    return call([&] {
        const auto document = host_.ActiveDocument();
        const FacadeResult result =
            ResolveFacadePath(document ? host_.DocumentObject(document) : nullptr, StepsOf(steps.toVariant().toList()));
        if (result.kind == FacadeResult::Value)
            return engine_.toScriptValue(result.value);
        QJSValue marker = engine_.newObject();
        marker.setProperty("__facade", result.kind == FacadeResult::Object ? "object" : "call");
        marker.setProperty("type", result.typeName);
        return marker;
    });
}

QString MacroApi::screenshot(const QString& path)
{
    return call([&] {
        const QString written = GrabToPng(&window_, path);
        if (written.isEmpty())
            Fail(QStringLiteral("Cannot write the screenshot %1.").arg(path));
        return written;
    });
}

QStringList MacroApi::screenshots(const QString& path)
{
    return call([&] {
        const QFileInfo info(path);
        const QString stem = info.path() + QLatin1Char('/') + info.completeBaseName();
        const int language = window_.Language();
        QStringList written;
        for (const auto& [code, suffix] : {std::pair{QtLocalizer::kEnglish, "-en.png"}, std::pair{QtLocalizer::kGerman, "-de.png"}}) {
            window_.SetLanguage(code);
            QCoreApplication::sendPostedEvents();
            written << GrabToPng(&window_, stem + QLatin1String(suffix));
            if (written.last().isEmpty())
                Fail(QStringLiteral("Cannot write the screenshot %1.").arg(stem + QLatin1String(suffix)));
        }
        window_.SetLanguage(language);
        return written;
    });
}

QString MacroApi::writeText(const QString& path, const QString& text)
{
    return call([&] {
        const QFileInfo info(path);
        QDir().mkpath(info.absolutePath());
        QSaveFile file(info.absoluteFilePath());
        if (!file.open(QIODevice::WriteOnly | QIODevice::Text) || file.write(text.toUtf8()) < 0 || !file.commit())
            Fail(QStringLiteral("Cannot write %1: %2").arg(path, file.errorString()));
        return info.absoluteFilePath();
    });
}

QJSValue MacroApi::failedCallbacks()
{
    const auto& failed = host_.Log().FailedCallbacks();
    QJSValue list = engine_.newArray(quint32(failed.size()));
    quint32 i = 0;
    for (const auto& entry : failed) {
        QJSValue item = engine_.newObject();
        item.setProperty("callback", entry.callback);
        item.setProperty("operation", entry.operation);
        item.setProperty("description", entry.description);
        list.setProperty(i++, item);
    }
    return list;
}

void MacroApi::setLanguage(int languageCode) { call([&] { window_.SetLanguage(languageCode); }); }

void MacroApi::print(const QString& text)
{
    QTextStream(stdout) << text << Qt::endl;
}

} // namespace feldra
