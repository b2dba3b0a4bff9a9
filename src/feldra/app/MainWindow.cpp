#include "feldra/app/MainWindow.h"

#include "feldra/HostActions.h"
#include "feldra/Host.h"
#include "feldra/MessageBoxRecorder.h"
#include "feldra/QtMessageBoxService.h"
#include "feldra/app/DocumentTree.h"
#include "feldra/app/HelpViewer.h"
#include "feldra/app/MaskingPanel.h"
#include "feldra/app/PickDialog.h"
#include "feldra/app/SimulationPane.h"

#include <QActionGroup>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QSettings>
#include <QSplitter>
#include <QTabWidget>
#include <QToolBar>

namespace feldra {

namespace {

const QString kLanguageKey = QStringLiteral("Language");

QSettings AppSettings() { return QSettings(QStringLiteral("Feldra"), QStringLiteral("feldra")); }

QString DocumentFilter() { return QStringLiteral("Feldra documents (*.fdoc)"); }
QString TemplateFilter() { return QStringLiteral("Feldra templates (*.fdt)"); }

} // namespace

MainWindow::MainWindow(Host& host, QWidget* parent)
    : QMainWindow(parent), host_(host), tree_(new DocumentTree), panes_(new QTabWidget),
      simulation_(new SimulationPane), nc_(new QPlainTextEdit), log_(new QPlainTextEdit),
      help_(new HelpViewer(localizer_, this)), masks_(new MaskingPanel(this))
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
    panes_->addTab(log_, QStringLiteral("Log"));
    auto* splitter = new QSplitter(Qt::Vertical);
    splitter->addWidget(tree_);
    splitter->addWidget(panes_);
    setCentralWidget(splitter);
    for (int number : kShownCommandBars) {
        auto* bar = addToolBar(host_.App().CommandBar(number)->name);
        bar->setObjectName(QStringLiteral("commandBar%1").arg(number));
        bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        toolBars_.insert(number, bar);
    }
    addDockWidget(Qt::RightDockWidgetArea, masks_);
    masks_->hide();
    connect(masks_, &MaskingPanel::MaskChanged, this, &MainWindow::RefreshDocumentView);
    resize(1000, 700);

    HostServices& services = host_.Services();
    services.mainWindow = this;
    services.refreshView = [this] { RefreshDocumentView(); };
    services.sendKeys = [this](const QString& keys) { SendKeys(keys); };
    services.refreshCommandBars = [this] { RefreshCommandBars(); };
    services.showHelpTopic = [this](const QString& file, const QString& topic) {
        help_->ShowTopic(file, topic);
        localizer_.TranslateForm(help_);
    };
    services.createLocalizer = [this]() -> std::shared_ptr<host::Localizer> {
        auto localizer = std::make_shared<QtLocalizer>();
        localizer->setLanguageCode(host_.App().languageCode);
        return localizer;
    };
    SetLanguage(host_.App().languageCode);
}

MainWindow::~MainWindow()
{
    HostServices& services = host_.Services();
    if (services.messageBox == messageBox_)
        services.messageBox = std::make_shared<MessageBoxRecorder>();
    services.mainWindow = nullptr;
    services.refreshView = nullptr;
    services.sendKeys = nullptr;
    services.refreshCommandBars = nullptr;
    services.showHelpTopic = nullptr;
    services.createLocalizer = nullptr;
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
        action->setEnabled(bool(run)); // the stand-in host has no other functions
        if (run)
            connect(action, &QAction::triggered, this, run);
    } else {
        const int handle = control.commandHandle;
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
        action->deleteLater();
    for (const auto& control : host_.App().CommandBar(number)->controls)
        bar->addAction(controlAction(*control, bar));
}

void MainWindow::addFileActions(QMenu* menu)
{
    const auto t = [this](const char* english) { return localizer_.Translate(QString::fromLatin1(english)); };
    // An action that asks for a file first, and does nothing when none is chosen.
    const auto withFile = [this](QString filter, void (MainWindow::*action)(const QString&)) {
        return [this, filter, action] {
            const QString path = QFileDialog::getOpenFileName(this, QString(), QString(), filter);
            if (!path.isEmpty())
                (this->*action)(path);
        };
    };
    menu->addAction(t("Open..."), this, withFile(DocumentFilter(), &MainWindow::OpenDocument));
    menu->addAction(t("New from Template..."), this, withFile(TemplateFilter(), &MainWindow::NewDocument));
    menu->addAction(t("Open Template..."), this, withFile(TemplateFilter(), &MainWindow::OpenTemplate));
    const bool open = host_.ActiveDocument() != nullptr;
    menu->addAction(t("Save"), this, [this] {
        QString path = host_.ActiveDocument()->fileName;
        if (path.isEmpty())
            path = QFileDialog::getSaveFileName(this, QString(), QString(), DocumentFilter());
        if (!path.isEmpty())
            SaveDocument(path);
    })->setEnabled(open);
    menu->addAction(t("Close"), this, &MainWindow::CloseDocument)->setEnabled(open);
    menu->addSeparator();
    menu->addAction(t("Exit"), this, &QWidget::close);
}

void MainWindow::addMaskingAction(QMenu* menu)
{
    QAction* toggle = masks_->toggleViewAction();
    toggle->setText(localizer_.Translate("Masking Panel"));
    toggle->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_M));
    menu->addAction(toggle);
}

void MainWindow::SendKeys(const QString& keys)
{
    // "^" stands for Control, as the host's keystroke strings write it.
    const QString written = keys.startsWith(QLatin1Char('^')) ? QStringLiteral("Ctrl+") + keys.mid(1).toUpper() : keys;
    const QKeySequence sequence(written);
    for (QAction* action : findChildren<QAction*>())
        if (action->shortcut() == sequence && action->isEnabled()) {
            action->trigger();
            return;
        }
}

void MainWindow::addLanguageMenu(QMenu* menu)
{
    QMenu* languages = menu->addMenu(localizer_.Translate("Language"));
    auto* group = new QActionGroup(languages);
    for (const auto& language : {std::pair{QtLocalizer::kEnglish, "English"}, std::pair{QtLocalizer::kGerman, "German"}}) {
        const int code = language.first;
        QAction* action = languages->addAction(localizer_.Translate(language.second));
        action->setCheckable(true);
        action->setChecked(Language() == code);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, code] {
            AppSettings().setValue(kLanguageKey, code);
            SetLanguage(code);
        });
    }
}

// The host's popups with the add-ins' entries; File carries the document
// actions and View the language choice.
void MainWindow::buildMenus()
{
    const QList<QMenu*> old = menuBar()->findChildren<QMenu*>(Qt::FindDirectChildrenOnly);
    menuBar()->clear();
    for (QMenu* menu : old)
        menu->deleteLater();
    for (const auto& data : host_.App().mainMenus) {
        QMenu* menu = menuBar()->addMenu(localizer_.Translate(data->caption));
        if (data->number == 1)
            addFileActions(menu);
        if (data->number == 3) {
            addMaskingAction(menu);
            addLanguageMenu(menu);
        }
        for (const auto& entry : data->entries)
            menu->addAction(controlAction(*entry, menu));
    }
}

void MainWindow::RefreshCommandBars()
{
    for (auto it = toolBars_.cbegin(); it != toolBars_.cend(); ++it)
        fillToolBar(it.value(), it.key());
    buildMenus();
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

// ---- views --------------------------------------------------------------------

void MainWindow::RefreshDocumentView()
{
    const auto& document = host_.ActiveDocument();
    masks_->Show(document ? &document->data : nullptr, localizer_);
    tree_->Show(document ? &document->data : nullptr, localizer_, masks_->Masked());
    const QString title = !document ? QString()
                          : document->fileName.isEmpty() ? document->data.title
                                                         : QFileInfo(document->fileName).fileName();
    setWindowTitle(title.isEmpty() ? QStringLiteral("Feldra") : title + QStringLiteral(" - Feldra"));
}

void MainWindow::RefreshLog()
{
    QStringList lines;
    for (const auto& failed : host_.Log().FailedCallbacks())
        lines << QStringLiteral("%1 failed: %2%3")
                     .arg(failed.callback, failed.operation.isEmpty() ? QString() : failed.operation + ": ",
                          failed.description);
    for (const auto& request : host_.Log().Requests())
        lines << QStringLiteral("%1(%2)").arg(request.operation, request.arguments.join(", "));
    log_->setPlainText(lines.join('\n'));
}

void MainWindow::RefreshAll()
{
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
    host_.App().languageCode = languageCode;
    localizer_.setLanguageCode(languageCode);
    localizer_.Initialise();
    retranslate();
}

void MainWindow::retranslate()
{
    for (int i = 0; i < panes_->count(); ++i)
        panes_->setTabText(i, localizer_.Translate(QStringList{"Simulation", "NC Code", "Log"}.value(i)));
    localizer_.TranslateForm(help_);
    RefreshAll();
}

// ---- actions ------------------------------------------------------------------

template <class Action>
void MainWindow::attempt(Action action)
{
    try {
        action();
    } catch (const host::HostError& error) {
        QMessageBox::warning(this, QStringLiteral("Feldra"), error.Description());
    } catch (const std::exception& error) {
        QMessageBox::warning(this, QStringLiteral("Feldra"), QString::fromUtf8(error.what()));
    }
    RefreshAll();
}

void MainWindow::OpenDocument(const QString& path) { attempt([&] { OpenDocumentFile(host_, path); }); }
void MainWindow::NewDocument(const QString& templatePath)
{
    attempt([&] { NewDocumentFromTemplate(host_, templatePath); });
}
void MainWindow::OpenTemplate(const QString& path) { attempt([&] { OpenTemplateFile(host_, path); }); }

void MainWindow::SaveDocument(const QString& path)
{
    attempt([&] {
        if (const auto& document = host_.ActiveDocument())
            SaveDocumentFile(host_, *document, path);
    });
}

void MainWindow::CloseDocument()
{
    attempt([&] {
        if (const auto document = host_.ActiveDocument())
            host_.CloseDocument(document);
    });
}

void MainWindow::InvokeCommand(int commandHandle)
{
    attempt([&] { host_.InvokeCommand(commandHandle); });
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
    nc_->setPlainText(listing);
    panes_->setCurrentWidget(nc_);
}

void MainWindow::GenerateNcCode()
{
    attempt([&] {
        const std::optional<QString> listing = feldra::GenerateNcCode(host_);
        ShowNcListing(listing ? *listing : localizer_.Translate("NC code generation was cancelled."));
    });
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    host_.Quit();
    QMainWindow::closeEvent(event);
}

} // namespace feldra
