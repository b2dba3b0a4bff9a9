#include "feldra/app/HelpViewer.h"

#include "addin/host/Localizer.h"

#include <QAction>
#include <QEventLoop>
#include <QFileInfo>
#include <QHelpContentWidget>
#include <QHelpEngine>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QHelpSearchEngine>
#include <QListWidgetItem>
#include <QTextDocument>
#include <QTextCursor>
#include <QRegularExpression>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

namespace feldra {

// The page: a text browser that reads the pages and pictures of the help
// file through the help engine.
class HelpBrowser : public QTextBrowser {
public:
    using QTextBrowser::QTextBrowser;

    void setEngine(QHelpEngine* engine) { engine_ = engine; }
    // The page and place the viewer is showing now; a load of that page
    // meanwhile is at that place (QTextBrowser reads a page again without it).
    void setAsked(const QUrl& url) { asked_ = url; }

    // Pages, pictures and style sheets, named relative to the page or in full.
    // A line of a page for a reader who comes from one place (<p
    // class="from"> with an <a name> inside) is shown only when the page is
    // opened at that place: the index opened from the Data Page's Machine
    // Data tab, "Index.htm#FromDataPageMachine", begins with the way to that
    // tab's topic, the index opened otherwise does not.
    QVariant loadResource(int type, const QUrl& url) override
    {
        const QUrl resolved = url.isRelative() ? source().resolved(url) : url;
        if (engine_ && resolved.scheme() == QLatin1String("qthelp")) {
            const QByteArray data = engine_->fileData(resolved);
            if (type != QTextDocument::HtmlResource || !data.contains("class=\"from\""))
                return data;
            static const QRegularExpression line(QStringLiteral("<p class=\"from\">.*?</p>\\s*"),
                                                 QRegularExpression::DotMatchesEverythingOption);
            QString fragment = resolved.fragment();
            if (fragment.isEmpty() && asked_.adjusted(QUrl::RemoveFragment) == resolved.adjusted(QUrl::RemoveFragment))
                fragment = asked_.fragment();
            QString page = QString::fromUtf8(data);
            const QString place = QStringLiteral("<a name=\"%1\">").arg(fragment);
            for (qsizetype at = 0;;) {
                const auto match = line.match(page, at);
                if (!match.hasMatch())
                    break;
                if (!fragment.isEmpty() && match.captured().contains(place)) {
                    at = match.capturedEnd();
                    continue;
                }
                page.remove(match.capturedStart(), match.capturedLength());
                at = match.capturedStart();
            }
            return page.toUtf8();
        }
        return QTextBrowser::loadResource(type, url);
    }

private:
    QHelpEngine* engine_ = nullptr;
    QUrl asked_;
};

namespace {

// How long the viewer waits for the contents and the index of a file it has
// just opened; they take milliseconds for the add-in's help.
constexpr int kContentsWaitMs = 10000;

// A column of widgets without margins, the last one stretched.
QWidget* Column(const QList<QWidget*>& widgets = {})
{
    auto* column = new QWidget;
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QWidget* widget : widgets)
        layout->addWidget(widget, widget == widgets.last() ? 1 : 0);
    return column;
}

} // namespace

HelpViewer::HelpViewer(const host::Localizer& localizer, QWidget* parent)
    : QWidget(parent, Qt::Window), localizer_(localizer)
{
    setObjectName("feldraHelpViewer");
    setWindowTitle(QStringLiteral("Feldra Help"));

    auto* toolBar = new QToolBar;
    back_ = toolBar->addAction(style()->standardIcon(QStyle::SP_ArrowBack), QStringLiteral("Back"));
    forward_ = toolBar->addAction(style()->standardIcon(QStyle::SP_ArrowForward), QStringLiteral("Forward"));
    home_ = toolBar->addAction(style()->standardIcon(QStyle::SP_DirHomeIcon), QStringLiteral("Home"));
    toolBar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    back_->setObjectName("actBack");
    forward_->setObjectName("actForward");
    home_->setObjectName("actHome");
    back_->setEnabled(false);
    forward_->setEnabled(false);

    contentsPane_ = Column(); // holds the contents once there is a help engine
    indexPane_ = Column();    // and the index
    indexFilter_ = new QLineEdit;
    indexFilter_->setObjectName("txtIndex");
    searchText_ = new QLineEdit;
    searchText_->setObjectName("txtSearch");
    auto* searchButton = new QPushButton(QStringLiteral("Search"));
    searchButton->setObjectName("cmdSearch");
    searchResults_ = new QListWidget;
    searchResults_->setObjectName("lstSearchResults");
    auto* searchRow = new QWidget;
    auto* searchLayout = new QHBoxLayout(searchRow);
    searchLayout->setContentsMargins(0, 0, 0, 0);
    searchLayout->addWidget(searchText_, 1);
    searchLayout->addWidget(searchButton);

    auto* tabs = new QTabWidget;
    tabs->setObjectName("tabsHelp");
    tabs->addTab(contentsPane_, QStringLiteral("Contents"));
    tabs->addTab(Column({indexFilter_, indexPane_}), QStringLiteral("Index"));
    tabs->addTab(Column({searchRow, searchResults_}), QStringLiteral("Search"));

    message_ = new QLabel;
    message_->setObjectName("lblMessage");
    message_->setWordWrap(true);
    message_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    message_->hide();
    page_ = new HelpBrowser(this);
    page_->setObjectName("txtPage");

    auto* splitter = new QSplitter;
    splitter->addWidget(tabs);
    splitter->addWidget(Column({message_, page_}));
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({260, 780});
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(toolBar);
    layout->addWidget(splitter, 1);
    resize(1060, 720);

    connect(back_, &QAction::triggered, page_, &QTextBrowser::backward);
    connect(forward_, &QAction::triggered, page_, &QTextBrowser::forward);
    connect(home_, &QAction::triggered, this, [this] { showUrl(startPage()); });
    connect(page_, &QTextBrowser::backwardAvailable, back_, &QAction::setEnabled);
    connect(page_, &QTextBrowser::forwardAvailable, forward_, &QAction::setEnabled);
    connect(page_, &QTextBrowser::sourceChanged, this, &HelpViewer::syncContents);
    connect(searchText_, &QLineEdit::returnPressed, this, &HelpViewer::search);
    connect(searchButton, &QPushButton::clicked, this, &HelpViewer::search);
    // One click on a result opens it, as a link does; Enter too.
    connect(searchResults_, &QListWidget::itemClicked, this, &HelpViewer::showSearchResult);
    connect(searchResults_, &QListWidget::itemActivated, this, &HelpViewer::showSearchResult);
}

// The help engine with the viewer's own collection of help files (thrown away
// with the viewer) and its contents and index, made when help is first asked
// for: the host starts without them.
void HelpViewer::makeEngine()
{
    if (engine_)
        return;
    collectionFolder_ = std::make_unique<QTemporaryDir>();
    engine_ = new QHelpEngine(collectionFolder_->filePath(QStringLiteral("feldra-help.qhc")), this);
    engine_->setReadOnly(false);
    engine_->setupData();
    page_->setEngine(engine_);

    QHelpContentWidget* contents = engine_->contentWidget();
    contents->setObjectName("treeContents");
    contents->setHeaderHidden(true);
    contentsPane_->layout()->addWidget(contents);
    QHelpIndexWidget* index = engine_->indexWidget();
    index->setObjectName("lstIndex");
    indexPane_->layout()->addWidget(index);

    connect(contents, &QHelpContentWidget::linkActivated, this, &HelpViewer::showUrl);
    connect(index, &QHelpIndexWidget::documentActivated, this,
            [this](const QHelpLink& document, const QString&) { showUrl(document.url); });
    connect(index, &QHelpIndexWidget::documentsActivated, this,
            [this](const QList<QHelpLink>& documents, const QString&) {
                if (!documents.isEmpty())
                    showUrl(documents.first().url);
            });
    connect(indexFilter_, &QLineEdit::textChanged, index, [index](const QString& text) { index->filterIndices(text); });
    connect(indexFilter_, &QLineEdit::returnPressed, index, &QHelpIndexWidget::activateCurrentItem);
    QHelpSearchEngine* searchEngine = engine_->searchEngine();
    // The help engine indexes a file for the full-text search by itself once
    // it is registered, at times more than once; a search waits for the
    // indexing and is run again after each one, so its results are complete.
    connect(searchEngine, &QHelpSearchEngine::indexingStarted, this, [this] { indexing_ = true; });
    connect(searchEngine, &QHelpSearchEngine::indexingFinished, this, [this] {
        indexing_ = false;
        indexed_ = !namespace_.isEmpty();
        if (indexed_ && !searchWords_.isEmpty())
            engine_->searchEngine()->search(searchWords_);
    });
    connect(searchEngine, &QHelpSearchEngine::searchingFinished, this, &HelpViewer::showSearchResults);
}

HelpViewer::~HelpViewer()
{
    if (engine_) {
        engine_->searchEngine()->cancelIndexing();
        engine_->searchEngine()->cancelSearching();
    }
}

QString HelpViewer::translated(const QString& english) const { return localizer_.Translate(english); }

QUrl HelpViewer::CurrentUrl() const { return page_->source(); }

QString HelpViewer::Message() const { return message_->isVisible() ? message_->text() : QString(); }

void HelpViewer::ShowTopic(const QString& helpFile, const QString& topic)
{
    showMessage(QString());
    makeEngine();
    const bool anotherFile = helpFile != helpFile_ || namespace_.isEmpty();
    if (openFile(helpFile)) {
        const QString page = topic.section(QLatin1Char('#'), 0, 0);
        const QString place = topic.contains(QLatin1Char('#')) ? topic.section(QLatin1Char('#'), 1) : QString();
        QUrl url = page.isEmpty() ? startPage() : findTopic(page);
        if (url.isEmpty()) {
            showUrl(startPage());
            showMessage(QStringLiteral("The topic %1 is not in the help file %2. Its start page is shown."),
                        {topic, QFileInfo(helpFile).fileName()});
        } else {
            if (!place.isEmpty())
                url.setFragment(place);
            showUrl(url);
        }
        if (anotherFile) // the history of a help file starts at its first page
            page_->clearHistory();
    }
    show();
    raise();
    activateWindow();
}

bool HelpViewer::openFile(const QString& helpFile)
{
    if (helpFile == helpFile_ && !namespace_.isEmpty())
        return true;
    closeFile();
    helpFile_ = helpFile;
    if (!QFileInfo(helpFile).isFile()) {
        showMessage(QStringLiteral("The help file %1 cannot be found."), {helpFile});
        return false;
    }
    const QString name = QHelpEngineCore::namespaceName(helpFile);
    if (name.isEmpty()) {
        showMessage(QStringLiteral("%1 is not a compiled help file."), {helpFile});
        return false;
    }
    if (!engine_->registerDocumentation(helpFile)) {
        showMessage(QStringLiteral("The help file %1 cannot be opened: %2"), {helpFile, engine_->error()});
        return false;
    }
    namespace_ = name;
    waitForContentsAndIndex();
    engine_->contentWidget()->expandToDepth(0);
    return true;
}

void HelpViewer::closeFile()
{
    searchWords_.clear();
    indexed_ = false;
    if (!namespace_.isEmpty()) {
        engine_->searchEngine()->cancelIndexing();
        indexing_ = false;
        engine_->unregisterDocumentation(namespace_);
        namespace_.clear();
        waitForContentsAndIndex();
    }
    helpFile_.clear();
    searchText_->clear();
    searchResults_->clear();
    indexFilter_->clear();
    page_->clear();
    page_->clearHistory();
    back_->setEnabled(false);
    forward_->setEnabled(false);
}

// Rebuilds the contents and the index for the registered file and waits until
// both are there, so that the viewer is whole when a topic is shown. Each is
// built in a thread of the help engine and handed over by a signal.
void HelpViewer::waitForContentsAndIndex()
{
    QHelpContentModel* contents = engine_->contentModel();
    QHelpIndexModel* index = engine_->indexModel();
    QEventLoop loop;
    bool contentsDone = false;
    bool indexDone = false;
    const auto done = [&](bool& flag) {
        flag = true;
        if (contentsDone && indexDone)
            loop.quit();
    };
    connect(contents, &QHelpContentModel::contentsCreated, &loop, [&] { done(contentsDone); });
    connect(index, &QHelpIndexModel::indexCreated, &loop, [&] { done(indexDone); });
    QTimer::singleShot(kContentsWaitMs, &loop, &QEventLoop::quit);
    contents->createContents(QString());
    index->createIndex(QString());
    if (!contentsDone || !indexDone)
        loop.exec(QEventLoop::ExcludeUserInputEvents);
}

// The address of a page of the open file: as asked, or else the one page
// whose name differs only in case.
QUrl HelpViewer::findTopic(const QString& page) const
{
    QUrl match;
    for (const QUrl& url : engine_->files(namespace_, QString())) {
        const QString name = url.path().section(QLatin1Char('/'), 2, -1); // "/<virtual folder>/<page>"
        if (name == page)
            return url;
        if (match.isEmpty() && name.compare(page, Qt::CaseInsensitive) == 0)
            match = url;
    }
    return match;
}

QUrl HelpViewer::startPage() const
{
    if (!engine_)
        return {};
    QHelpContentModel* contents = engine_->contentModel();
    if (const QHelpContentItem* first = contents->contentItemAt(contents->index(0, 0)))
        return first->url();
    return {};
}

void HelpViewer::showUrl(const QUrl& url)
{
    showMessage(QString());
    page_->setExtraSelections({});
    if (url.isEmpty())
        return;
    // A page asked for again goes back to its place without a second entry in
    // the history; asked for at another place, it is read again, for the lines
    // that depend on the place.
    if (url != page_->source()) {
        const bool samePage = url.adjusted(QUrl::RemoveFragment) == page_->source().adjusted(QUrl::RemoveFragment);
        page_->setAsked(url);
        page_->setSource(url);
        if (samePage)
            page_->reload();
        page_->setAsked({});
    } else if (url.fragment().isEmpty())
        page_->verticalScrollBar()->setValue(0);
    else
        page_->scrollToAnchor(url.fragment());
    if (!url.fragment().isEmpty() && !hasPlace(url.fragment()))
        showMessage(QStringLiteral("The place %1 is not on the page %2."),
                    {url.fragment(), url.path().section(QLatin1Char('/'), 2, -1)});
}

void HelpViewer::showMessage(const QString& english, const QStringList& arguments)
{
    QString text = english.isEmpty() ? QString() : translated(english);
    for (const QString& argument : arguments)
        text = text.arg(argument);
    message_->setText(text);
    message_->setVisible(!text.isEmpty());
}

bool HelpViewer::hasPlace(const QString& place) const
{
    for (QTextBlock block = page_->document()->begin(); block.isValid(); block = block.next())
        for (auto it = block.begin(); !it.atEnd(); ++it)
            if (it.fragment().charFormat().anchorNames().contains(place))
                return true;
    return false;
}

void HelpViewer::syncContents(const QUrl& page)
{
    if (!engine_)
        return;
    QHelpContentWidget* contents = engine_->contentWidget();
    const QModelIndex index = contents->indexOf(page);
    if (index.isValid()) {
        contents->setCurrentIndex(index);
        contents->scrollTo(index);
    }
}

void HelpViewer::search()
{
    const QString words = searchText_->text().trimmed();
    if (words.isEmpty() || namespace_.isEmpty())
        return;
    searchResults_->clear();
    searchWords_ = words;
    if (indexed_ && !indexing_)
        engine_->searchEngine()->search(words);
    else if (!indexing_)
        engine_->searchEngine()->scheduleIndexDocumentation();
}

// The result's page, with the searched words marked and the page at the first of them.
void HelpViewer::showSearchResult(QListWidgetItem* item)
{
    if (!item)
        return;
    showUrl(item->data(Qt::UserRole).toUrl());
    QList<QTextEdit::ExtraSelection> marks;
    QTextCursor first;
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    for (QString word : searchWords_.split(blanks, Qt::SkipEmptyParts)) {
        word.remove(QLatin1Char('"')).remove(QLatin1Char('*'));
        if (word.isEmpty())
            continue;
        for (QTextCursor at = page_->document()->find(word); !at.isNull(); at = page_->document()->find(word, at)) {
            QTextEdit::ExtraSelection mark;
            mark.cursor = at;
            mark.format.setBackground(QColor(0xFF, 0xE0, 0x40));
            marks << mark;
            if (first.isNull() || at.selectionStart() < first.selectionStart())
                first = at;
        }
    }
    page_->setExtraSelections(marks);
    if (first.isNull())
        return;
    first.setPosition(first.selectionStart()); // the cursor before the word, nothing selected
    page_->setTextCursor(first);
    page_->ensureCursorVisible();
}

void HelpViewer::showSearchResults()
{
    QHelpSearchEngine* searchEngine = engine_->searchEngine();
    searchResults_->clear();
    for (const QHelpSearchResult& result : searchEngine->searchResults(0, searchEngine->searchResultCount())) {
        auto* item = new QListWidgetItem(result.title(), searchResults_);
        item->setData(Qt::UserRole, result.url());
        item->setToolTip(result.snippet());
    }
}

} // namespace feldra
