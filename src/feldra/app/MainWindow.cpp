#include "feldra/app/MainWindow.h"

#include "feldra/Host.h"
#include "feldra/MessageBoxRecorder.h"
#include "feldra/QtMessageBoxService.h"
#include "feldra/app/DocumentTree.h"
#include "feldra/app/HelpViewer.h"
#include "feldra/app/MaskingPanel.h"
#include "feldra/app/PickDialog.h"
#include "feldra/app/SimulationPane.h"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QCheckBox>
#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <QSettings>
#include <QSplitter>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>
#include <QTranslator>
#include <QUndoGroup>
#include <QUndoView>
#include <QWindow>

#include <type_traits>

namespace feldra {

namespace {

const QString kLanguageKey = QStringLiteral("Language");
const char* const kHandleProperty = "feldraCommandHandle";
const char* const kHostCaptionProperty = "feldraHostCaption";

QSettings AppSettings() { return QSettings(QStringLiteral("Feldra"), QStringLiteral("feldra")); }

const char* const kDocumentFilter = "Feldra documents (*.fdoc)";
const char* const kTemplateFilter = "Feldra templates (*.fdt)";

// A window of an add-in (a dialog, a modeless form) as opposed to menus,
// tooltips and the like, whose showing changes no command's state.
bool IsFormWindow(QObject* watched)
{
    if (!watched->isWidgetType())
        return false;
    auto* widget = static_cast<QWidget*>(watched);
    const Qt::WindowType type = widget->windowType();
    return widget->isWindow() && (type == Qt::Window || type == Qt::Dialog || type == Qt::Tool || type == Qt::Sheet);
}

// Drops the leading, trailing and doubled separators of a menu.
void TidySeparators(QMenu* menu)
{
    QAction* previous = nullptr;
    for (QAction* action : menu->actions()) {
        if (action->isSeparator() && (!previous || previous->isSeparator())) {
            menu->removeAction(action);
            continue;
        }
        previous = action;
    }
    if (previous && previous->isSeparator())
        menu->removeAction(previous);
}

} // namespace

MainWindow::MainWindow(Host& host, QWidget* parent)
    : QMainWindow(parent), host_(host), tree_(new DocumentTree), panes_(new QTabWidget),
      simulation_(new SimulationPane), nc_(new QPlainTextEdit), log_(new QPlainTextEdit),
      help_(new HelpViewer(localizer_, this)), masks_(new MaskingPanel(this)), stateUpdate_(new QTimer(this)),
      undoGroup_(new QUndoGroup(this)), history_(new QUndoView), undo_(new QAction(this)), redo_(new QAction(this))
{
    setObjectName("feldraMainWindow");
    nc_->setObjectName("ncPane");
    log_->setObjectName("logPane");
    for (QPlainTextEdit* text : {nc_, log_}) {
        text->setReadOnly(true);
        text->setLineWrapMode(QPlainTextEdit::NoWrap);
    }
    nc_->setFont(QFont(QStringLiteral("monospace")));
    panes_->setObjectName("panes");
    panes_->addTab(simulation_, QStringLiteral("Simulation"));
    panes_->addTab(nc_, QStringLiteral("NC Code"));
    // The log shows what went wrong; the host calls behind it only on request.
    auto* logTab = new QWidget;
    auto* logLayout = new QVBoxLayout(logTab);
    logLayout->setContentsMargins(0, 0, 0, 0);
    logLayout->addWidget(log_);
    logDetails_ = new QCheckBox(QStringLiteral("Show details (host calls)"));
    logDetails_->setObjectName("logDetails");
    logLayout->addWidget(logDetails_);
    connect(logDetails_, &QCheckBox::toggled, this, [this] { RefreshLog(); });
    panes_->addTab(logTab, QStringLiteral("Log"));
    // The steps of the active document: a click goes back or forward to one.
    history_->setObjectName("historyPane");
    history_->setGroup(undoGroup_);
    panes_->addTab(history_, QStringLiteral("History"));
    connect(undoGroup_, &QUndoGroup::indexChanged, this, [this] {
        RefreshDocumentView();
        stateUpdate_->start();
    });
    auto* splitter = new QSplitter(Qt::Vertical);
    splitter->addWidget(tree_);
    splitter->addWidget(panes_);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    setCentralWidget(splitter);
    // One row per bar: in German the bars together are wider than the window.
    for (int number : kShownCommandBars) {
        if (!toolBars_.isEmpty())
            addToolBarBreak();
        auto* bar = addToolBar(host_.App().CommandBar(number)->name);
        bar->setObjectName(QStringLiteral("commandBar%1").arg(number));
        bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        toolBars_.insert(number, bar);
    }
    addDockWidget(Qt::RightDockWidgetArea, masks_);
    masks_->hide();
    connect(masks_, &MaskingPanel::MaskChanged, this, &MainWindow::RefreshDocumentView);
    undo_->setObjectName("undoAction");
    redo_->setObjectName("redoAction");
    undo_->setShortcut(QKeySequence::Undo);
    redo_->setShortcuts({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    connect(undo_, &QAction::triggered, this, &MainWindow::Undo);
    connect(redo_, &QAction::triggered, this, &MainWindow::Redo);
    // A double click on an operation edits its technology: the add-ins answer
    // (the parameters' captions under it change).
    connect(tree_, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item) {
        const QVariant position = item->data(0, DocumentTree::kOperationRole);
        if (position.isValid())
            attempt([&] { EditTechnology(position.toInt()); });
    });
    resize(kDefaultSize);

    // Command states are asked again once control is back in the event loop
    // after a window came or went, or the focus moved to another window.
    stateUpdate_->setSingleShot(true);
    stateUpdate_->setInterval(0);
    connect(stateUpdate_, &QTimer::timeout, this, &MainWindow::UpdateCommandStates);
    connect(qApp, &QGuiApplication::focusWindowChanged, stateUpdate_, qOverload<>(&QTimer::start));
    qApp->installEventFilter(this);

    HostServices& services = host_.Services();
    services.mainWindow = this;
    services.refreshView = [this] { RefreshDocumentView(); };
    services.sendKeys = [this](const QString& keys) { SendKeys(keys); };
    services.refreshCommandBars = [this] { RefreshCommandBars(); };
    services.showHelpTopic = [this](const QString& file, const QString& topic) {
        help_->ShowTopic(file, topic);
        localizer_.TranslateForm(help_);
    };
    services.translateStep = [this](const QString& name) { return localizer_.Translate(name); };
    services.createLocalizer = [this]() -> std::shared_ptr<host::Localizer> {
        auto localizer = std::make_shared<QtLocalizer>();
        localizer->setLanguageCode(host_.App().languageCode);
        return localizer;
    };
    SetLanguage(host_.App().languageCode);
}

MainWindow::~MainWindow()
{
    qApp->removeEventFilter(this);
    if (qtCatalogue_)
        QCoreApplication::removeTranslator(qtCatalogue_.get());
    HostServices& services = host_.Services();
    if (messageBox_ && services.messageBox == messageBox_)
        services.messageBox = std::make_shared<MessageBoxRecorder>();
    services.mainWindow = nullptr;
    services.refreshView = nullptr;
    services.sendKeys = nullptr;
    services.refreshCommandBars = nullptr;
    services.showHelpTopic = nullptr;
    services.createLocalizer = nullptr;
    services.translateStep = nullptr;
    services.pickObject = nullptr;
}

void MainWindow::InstallInteractiveServices()
{
    HostServices& services = host_.Services();
    messageBox_ = std::make_shared<QtMessageBoxService>(this);
    services.messageBox = messageBox_;
    services.pickObject = [this](const QString& prompt, int) {
        const auto& document = host_.ActiveDocument();
        return document ? PickDialog::Pick(document->data, prompt, this) : QString();
    };
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if ((type == QEvent::Show || type == QEvent::Hide || type == QEvent::Close) && watched != this
        && IsFormWindow(watched)) {
        // What a window of an add-in wrote while it was open, and what it
        // writes as it goes (a modeless window's OK), are steps named after it.
        if (type != QEvent::Show) {
            pendingStepName_ = static_cast<QWidget*>(watched)->windowTitle();
            host_.CommitChanges(pendingStepName_);
        }
        stateUpdate_->start();
    }
    return false;
}

// ---- command bars and menus ---------------------------------------------------

QToolBar* MainWindow::CommandBarToolBar(int number) const { return toolBars_.value(number); }

QAction* MainWindow::controlAction(const ControlData& control, QWidget* owner)
{
    auto* action = new QAction(owner);
    if (control.type == ControlData::Separator) {
        action->setSeparator(true);
        return action;
    }
    const bool ofHost = control.commandHandle == 0;
    action->setText(ofHost ? localizer_.Translate(control.caption) : control.caption);
    action->setToolTip(ofHost ? localizer_.Translate(control.toolTip) : control.toolTip);
    action->setVisible(control.visible);
    if (!control.smallBitmap.isEmpty())
        action->setIcon(QIcon(control.smallBitmap));
    if (ofHost) {
        const std::function<void()> run = hostCommand(control.caption);
        action->setProperty(kHostCaptionProperty, control.caption);
        action->setEnabled(bool(run) && hostCommandEnabled(control.caption)); // the stand-in host has no other functions
        if (run)
            connect(action, &QAction::triggered, this, run);
    } else {
        const int handle = control.commandHandle;
        action->setProperty(kHandleProperty, handle);
        action->setEnabled(host_.CommandEnabled(handle));
        connect(action, &QAction::triggered, this, [this, handle] { InvokeCommand(handle); });
    }
    return action;
}

// The controls being replaced may be the one whose command runs now: they go
// once control is back in the event loop.
void MainWindow::fillToolBar(QToolBar* bar, int number)
{
    const QList<QAction*> old = bar->actions();
    bar->clear();
    for (QAction* action : old)
        if (action != undo_ && action != redo_)
            action->deleteLater();
    if (number == 2) { // the Edit bar starts with the window's Undo and Redo
        bar->addActions({undo_, redo_});
        bar->addSeparator();
    }
    for (const auto& control : host_.App().CommandBar(number)->controls)
        bar->addAction(controlAction(*control, bar));
}

void MainWindow::addFileActions(QMenu* menu)
{
    const auto t = [this](const char* english) { return localizer_.Translate(QString::fromLatin1(english)); };
    // An action that asks for a file first, and does nothing when none is chosen.
    // Templates are offered from the host's template folder, when it has one.
    // The filter is translated when the dialog opens, in the language chosen then.
    const auto withFile = [this](const char* filter, bool (MainWindow::*action)(const QString&)) {
        return [this, filter, action] {
            const QString templates = QDir(host_.App().installFolder).filePath(QStringLiteral("templates"));
            const bool template_ = filter == kTemplateFilter;
            const QString start = template_ && QFileInfo(templates).isDir() ? templates : QString();
            const QString path = QFileDialog::getOpenFileName(this, QString(), start,
                                                              localizer_.Translate(QString::fromLatin1(filter)));
            if (!path.isEmpty())
                (this->*action)(path);
        };
    };
    menu->addAction(t("Open..."), this, withFile(kDocumentFilter, &MainWindow::OpenDocument));
    menu->addAction(t("New from Template..."), this, withFile(kTemplateFilter, &MainWindow::NewDocument));
    menu->addAction(t("Open Template..."), this, withFile(kTemplateFilter, &MainWindow::OpenTemplate));
    menu->addSeparator();
    const bool open = host_.ActiveDocument() != nullptr;
    QAction* save = menu->addAction(t("Save"), this, [this] {
        QString path = host_.ActiveDocument()->fileName;
        if (path.isEmpty())
            path = askSavePath();
        if (!path.isEmpty())
            SaveDocument(path);
    });
    save->setShortcut(QKeySequence::Save);
    save->setEnabled(open);
    menu->addAction(t("Save As..."), this, [this] {
        const QString path = askSavePath();
        if (!path.isEmpty())
            SaveDocument(path);
    })->setEnabled(open);
    menu->addAction(t("Close"), this, &MainWindow::CloseDocument)->setEnabled(open);
    menu->addSeparator();
    menu->addAction(t("Exit"), this, &QWidget::close);
}

void MainWindow::addViewActions(QMenu* menu)
{
    QAction* toggle = masks_->toggleViewAction();
    toggle->setText(localizer_.Translate("Masking Panel"));
    toggle->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_M));
    menu->addAction(toggle);

    QMenu* languages = menu->addMenu(localizer_.Translate("Language"));
    auto* group = new QActionGroup(languages);
    // Each language by its own name, so that a user finds their own in any language.
    for (const auto& language : {std::pair{QtLocalizer::kEnglish, "English"}, std::pair{QtLocalizer::kGerman, "Deutsch"}}) {
        const int code = language.first;
        QAction* action = languages->addAction(QString::fromUtf8(language.second));
        action->setCheckable(true);
        action->setChecked(Language() == code);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, code] {
            AppSettings().setValue(kLanguageKey, code);
            SetLanguage(code);
        });
    }
}

void MainWindow::SendKeys(const QString& keys)
{
    // "^" stands for Control, as the host's keystroke strings write it.
    const QString written = keys.startsWith(QLatin1Char('^')) ? QStringLiteral("Ctrl+") + keys.mid(1).toUpper() : keys;
    const QKeySequence sequence(written);
    for (QAction* action : findChildren<QAction*>())
        if (action->shortcuts().contains(sequence) && action->isEnabled()) {
            action->trigger();
            return;
        }
}

// The host's functions that work on operations, also found on the "Lathe" bar.
void MainWindow::addOperationActions(QMenu* menu)
{
    for (const char* caption : {"Simulate", "Generate NC Code"}) {
        ControlData control;
        control.caption = QString::fromLatin1(caption);
        control.toolTip = control.caption;
        menu->addAction(controlAction(control, menu));
    }
}

// The host's popups with the add-ins' entries; File carries the document
// actions, Edit Undo and Redo, View the masking panel and the language, Operations the
// simulation and NC code. Entries of host functions this host lacks are left
// out, and a popup left empty is not shown.
void MainWindow::buildMenus()
{
    const QList<QMenu*> old = menuBar()->findChildren<QMenu*>(Qt::FindDirectChildrenOnly);
    menuBar()->clear();
    for (QMenu* menu : old)
        menu->deleteLater();
    for (const auto& data : host_.App().mainMenus) {
        auto* menu = new QMenu(localizer_.Translate(data->caption), menuBar());
        if (data->number == 1)
            addFileActions(menu);
        if (data->number == 2)
            menu->addActions({undo_, redo_});
        if (data->number == 3)
            addViewActions(menu);
        if (data->number == 6)
            addOperationActions(menu);
        for (const auto& entry : data->entries) {
            const bool lacking = entry->commandHandle == 0 && entry->type != ControlData::Separator
                                 && !hostCommand(entry->caption);
            if (!lacking)
                menu->addAction(controlAction(*entry, menu));
        }
        TidySeparators(menu);
        if (menu->actions().isEmpty())
            menu->deleteLater();
        else
            menuBar()->addMenu(menu);
    }
}

void MainWindow::RefreshCommandBars()
{
    for (auto it = toolBars_.cbegin(); it != toolBars_.cend(); ++it)
        fillToolBar(it.value(), it.key());
    buildMenus();
}

void MainWindow::CommitChanges(const QString& name)
{
    host_.CommitChanges(pendingStepName_.isEmpty() ? name : pendingStepName_);
    pendingStepName_.clear();
}

void MainWindow::UpdateCommandStates()
{
    CommitChanges();
    updateUndoActions();
    QList<QAction*> actions;
    for (QToolBar* bar : std::as_const(toolBars_))
        actions += bar->actions();
    for (QMenu* menu : menuBar()->findChildren<QMenu*>())
        actions += menu->actions();
    for (QAction* action : std::as_const(actions)) {
        const QVariant handle = action->property(kHandleProperty);
        const QVariant caption = action->property(kHostCaptionProperty);
        if (handle.isValid())
            action->setEnabled(host_.CommandEnabled(handle.toInt()));
        else if (caption.isValid())
            action->setEnabled(bool(hostCommand(caption.toString())) && hostCommandEnabled(caption.toString()));
    }
}

std::function<void()> MainWindow::hostCommand(const QString& caption)
{
    if (caption == "Simulate")
        return [this] { RunSimulation(); };
    if (caption == "Generate NC Code")
        return [this] { GenerateNcCode(); };
    if (caption == "About Feldra")
        return [this, caption] {
            QMessageBox::about(this, localizer_.Translate(caption),
                               localizer_.Translate("Feldra: CAM for Swiss-type lathes, with its add-ins."));
        };
    return {};
}

bool MainWindow::hostCommandEnabled(const QString& caption) const
{
    const bool onDocument = caption == "Simulate" || caption == "Generate NC Code";
    return !onDocument || host_.ActiveDocument() != nullptr;
}

// Undo and Redo name the step they would take back or replay, and are
// enabled only when there is one and nothing holds the document (a dialog).
void MainWindow::updateUndoActions()
{
    const auto& document = host_.ActiveDocument();
    const bool free = host_.UndoBlocked().isEmpty();
    const auto show = [this](QAction* action, const char* caption, const QString& step, bool can) {
        const QString english = QString::fromLatin1(caption);
        action->setText(step.isEmpty() ? localizer_.Translate(english)
                                       : localizer_.Translate(english + QStringLiteral(" %1")).arg(step));
        action->setToolTip(action->text());
        action->setEnabled(can);
    };
    show(undo_, "Undo", host_.UndoText(), free && document->history.Stack().canUndo());
    show(redo_, "Redo", host_.RedoText(), free && document->history.Stack().canRedo());
}

// ---- views --------------------------------------------------------------------

QString MainWindow::documentName(const DocumentState& document) const
{
    if (!document.fileName.isEmpty())
        return QFileInfo(document.fileName).fileName();
    return document.data.title.isEmpty() ? localizer_.Translate("Untitled") : document.data.title;
}

void MainWindow::RefreshDocumentView()
{
    const auto& document = host_.ActiveDocument();
    const DocumentData* data = document ? &document->data : nullptr;
    masks_->Show(data, localizer_);
    tree_->Show(data, localizer_, masks_->Masked());
    simulation_->ShowStock(data, localizer_);
    // "[*]" is where the window shows that the document has changes.
    setWindowTitle(document ? documentName(*document) + QStringLiteral("[*] - Feldra") : QStringLiteral("Feldra"));
    setWindowModified(document && document->modified);
    showHistoryOf(document.get());
}

void MainWindow::showHistoryOf(DocumentState* document)
{
    QUndoStack* stack = document ? &document->history.Stack() : nullptr;
    if (stack && !undoGroup_->stacks().contains(stack))
        undoGroup_->addStack(stack);
    if (undoGroup_->activeStack() != stack)
        undoGroup_->setActiveStack(stack);
}

void MainWindow::RefreshLog()
{
    QStringList lines;
    for (const auto& failed : host_.Log().FailedCallbacks())
        lines << QStringLiteral("%1 failed: %2%3")
                     .arg(failed.callback, failed.operation.isEmpty() ? QString() : failed.operation + ": ",
                          failed.description);
    // The host's own notes ("Feldra.…") always; the add-ins' calls of the host with the details.
    for (const auto& request : host_.Log().Requests())
        if (logDetails_->isChecked() || request.operation.startsWith(QLatin1String("Feldra.")))
            lines << QStringLiteral("%1(%2)").arg(request.operation, request.arguments.join(", "));
    log_->setPlainText(lines.join('\n'));
}

void MainWindow::RefreshAll()
{
    updateUndoActions();
    RefreshCommandBars();
    RefreshDocumentView();
    RefreshLog();
}

// ---- language -----------------------------------------------------------------

int MainWindow::StoredLanguage()
{
    return AppSettings().value(kLanguageKey, QtLocalizer::kEnglish).toInt();
}

void MainWindow::SetLanguage(int languageCode)
{
    localizer_.setLanguageCode(languageCode);
    localizer_.Initialise();
    installQtCatalogue(languageCode);
    host_.SetLanguage(languageCode);
    retranslate();
}

// Qt's own texts (dialog buttons, file dialogs) from Qt's catalogue.
void MainWindow::installQtCatalogue(int languageCode)
{
    if (qtCatalogue_) {
        QCoreApplication::removeTranslator(qtCatalogue_.get());
        qtCatalogue_.reset();
    }
    if (languageCode != QtLocalizer::kGerman)
        return;
    auto catalogue = std::make_unique<QTranslator>();
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    if (!catalogue->load(QStringLiteral("qtbase_de"), folder)) {
        host_.Log().RecordRequest(QStringLiteral("Feldra.QtCatalogue"), {folder + QStringLiteral("/qtbase_de.qm missing")});
        return;
    }
    QCoreApplication::installTranslator(catalogue.get());
    qtCatalogue_ = std::move(catalogue);
}

void MainWindow::retranslate()
{
    for (int i = 0; i < panes_->count(); ++i)
        panes_->setTabText(i, localizer_.Translate(QStringList{"Simulation", "NC Code", "Log", "History"}.value(i)));
    history_->setEmptyLabel(localizer_.Translate("As opened"));
    const auto title = [this](const QString& name, int handle) { return host_.StepTitle(name, handle); };
    for (const auto& document : host_.Documents())
        document->history.Retitle(title);
    simulation_->Retranslate(localizer_);
    logDetails_->setText(localizer_.Translate("Show details (host calls)"));
    localizer_.TranslateForm(help_);
    if (ncCancelled_)
        nc_->setPlainText(localizer_.Translate("NC code generation was cancelled."));
    if (ncListings_)
        nc_->setPlainText(ncListings_->Text(&localizer_));
    RefreshAll();
}

// ---- documents ----------------------------------------------------------------

MainWindow::SaveChoice MainWindow::askToSave(const DocumentState& document)
{
    const QString prompt =
        localizer_.Translate("The document \"%1\" has changes. Save them?").arg(documentName(document));
    if (messageBox_) {
        QMessageBox box(QMessageBox::Warning, QStringLiteral("Feldra"), prompt,
                        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
        box.setDefaultButton(QMessageBox::Save);
        switch (box.exec()) {
        case QMessageBox::Save: return SaveChoice::Save;
        case QMessageBox::Discard: return SaveChoice::Discard;
        default: return SaveChoice::Cancel;
        }
    }
    switch (host_.Services().messageBox->Show(prompt, host::MsgButtons::YesNoCancel, host::MsgIcon::Exclamation,
                                              QStringLiteral("Feldra"))) {
    case host::MsgResult::Yes: return SaveChoice::Save;
    case host::MsgResult::No: return SaveChoice::Discard;
    default: return SaveChoice::Cancel;
    }
}

// A file name chosen by the user; without a user (a macro) there is none to ask.
QString MainWindow::askSavePath()
{
    if (!messageBox_)
        throw host::HostError(QStringLiteral("Feldra.Save"),
                              QStringLiteral("The document has no file name yet: save it under a name first."));
    QString path = QFileDialog::getSaveFileName(this, localizer_.Translate("Save As"), QString(), localizer_.Translate(kDocumentFilter));
    if (!path.isEmpty() && QFileInfo(path).suffix().isEmpty())
        path += QStringLiteral(".fdoc");
    return path;
}

bool MainWindow::SettleChanges(DocumentState& document)
{
    if (!document.modified)
        return true;
    switch (askToSave(document)) {
    case SaveChoice::Cancel: return false;
    case SaveChoice::Discard: return true;
    case SaveChoice::Save: break;
    }
    const QString path = document.fileName.isEmpty() ? askSavePath() : document.fileName;
    if (path.isEmpty())
        return false; // the user cancelled the file dialog
    SaveDocumentFile(host_, document, path);
    return true;
}

bool MainWindow::CloseActiveDocument()
{
    const auto document = host_.ActiveDocument();
    if (!document)
        return true;
    if (!SettleChanges(*document))
        return false;
    host_.CloseDocument(document);
    return true;
}

// The changes are settled first (the file to open may be the one saved), then
// the file is read: one that does not load leaves the document open.
bool MainWindow::ReplaceDocument(const QString& path, OpenAs as)
{
    const auto current = host_.ActiveDocument();
    if (current && !SettleChanges(*current))
        return false;
    const auto next = ReadDocumentState(path, as);
    if (current)
        host_.CloseDocument(current);
    PresentDocument(host_, next, as);
    return true;
}

// ---- actions ------------------------------------------------------------------

void MainWindow::reportError(const QString& description)
{
    host_.Services().messageBox->Show(description, host::MsgButtons::OK, host::MsgIcon::Critical,
                                      QStringLiteral("Feldra"));
}

// Runs a user's action: a failure is shown; the window is refreshed either way.
template <class Action>
bool MainWindow::attempt(Action action)
{
    bool done = false;
    try {
        if constexpr (std::is_void_v<decltype(action())>) {
            action();
            done = true;
        } else {
            done = action();
        }
    } catch (const host::HostError& error) {
        reportError(error.Description());
    } catch (const std::exception& error) {
        reportError(QString::fromUtf8(error.what()));
    }
    RefreshAll();
    return done;
}

bool MainWindow::OpenDocument(const QString& path)
{
    return attempt([&] { return ReplaceDocument(path, OpenAs::Document); });
}

bool MainWindow::NewDocument(const QString& templatePath)
{
    return attempt([&] { return ReplaceDocument(templatePath, OpenAs::NewDocument); });
}

bool MainWindow::OpenTemplate(const QString& path)
{
    return attempt([&] { return ReplaceDocument(path, OpenAs::Template); });
}

bool MainWindow::SaveDocument(const QString& path)
{
    return attempt([&] {
        const auto document = host_.ActiveDocument();
        if (!document)
            return false;
        SaveDocumentFile(host_, *document, path);
        return true;
    });
}

bool MainWindow::CloseDocument()
{
    return attempt([&] { return CloseActiveDocument(); });
}

void MainWindow::InvokeCommand(int commandHandle)
{
    attempt([&] { host_.InvokeCommand(commandHandle); });
}

void MainWindow::Undo()
{
    attempt([&] {
        CommitChanges();
        host_.Undo();
    });
}

void MainWindow::Redo()
{
    attempt([&] {
        CommitChanges();
        host_.Redo();
    });
}

Host::EditOutcome MainWindow::EditTechnology(int position, int editType)
{
    const auto document = host_.ActiveDocument();
    if (!document || position < 1 || position > document->data.operations.size())
        throw host::HostError(QStringLiteral("Feldra.EditTechnology"),
                              QStringLiteral("There is no operation at position %1.").arg(position));
    const Host::EditOutcome outcome = host_.EditTechnology(document, position, editType);
    RefreshAll();
    return outcome;
}

QList<SimulatedOperation> MainWindow::RunSimulation()
{
    QList<SimulatedOperation> operations;
    attempt([&] {
        if (const auto document = host_.ActiveDocument())
            operations = SimulationRunner(host_).Run(document);
    });
    ShowSimulation(operations);
    return operations;
}

void MainWindow::ShowSimulation(const QList<SimulatedOperation>& operations)
{
    simulation_->Show(operations, localizer_);
    panes_->setCurrentWidget(simulation_);
}

void MainWindow::ShowNcListing(const QString& listing)
{
    ncCancelled_ = false;
    ncListings_.reset();
    nc_->setPlainText(listing);
    panes_->setCurrentWidget(nc_);
}

QString MainWindow::NcText() const { return nc_->toPlainText(); }

void MainWindow::ShowNcListing(const NcListings& listings)
{
    ShowNcListing(listings.Text(&localizer_));
    ncListings_ = listings;
}

void MainWindow::GenerateNcCode()
{
    attempt([&] {
        const std::optional<NcListings> listings = feldra::GenerateNcCodeListings(host_);
        if (listings) {
            ShowNcListing(*listings);
            return;
        }
        ShowNcListing(localizer_.Translate("NC code generation was cancelled."));
        ncCancelled_ = true; // the pane's text follows the language
    });
}

// Quitting settles the changes of every open document first.
void MainWindow::closeEvent(QCloseEvent* event)
{
    const bool settled = attempt([&] {
        for (const auto& document : QList(host_.Documents()))
            if (!SettleChanges(*document))
                return false;
        return true;
    });
    if (!settled) {
        event->ignore();
        return;
    }
    host_.Quit();
    QMainWindow::closeEvent(event);
}

} // namespace feldra
