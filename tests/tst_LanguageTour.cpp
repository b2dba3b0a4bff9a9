// A new user's round through the application, in English and in German, on
// the Feldra window with the built add-in and the compiled help: a new part
// from the template, the Data Page on the L5 16-20 and on the L4 25-32, OK,
// save, reopen, the NC code and the help. At every step each text a user can
// read (window titles, labels, buttons, tabs, tooltips, list entries, menus,
// the document tree, the NC pane, the help page, the messages) is looked at:
// in German none may be an English text of the catalogue whose German differs,
// in English none may be a German translation; and no list shows its entry
// cut off (a list sized for one language's entries and filled in the other).
#include "TempStores.h"
#include "feldra/AddInLoader.h"
#include "feldra/Host.h"
#include "feldra/MessageBoxRecorder.h"
#include "feldra/QtLocalizer.h"
#include "feldra/app/HelpViewer.h"
#include "feldra/app/MainWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTimer>
#include <QToolBar>
#include <QTreeWidget>
#include <QXmlStreamReader>

#include <functional>

namespace {

const QString kTemplate = QStringLiteral(MARELON_SOURCE_DIR "/examples/swiss-lathe.fdt");

// The catalogue's pairs, English source to German translation.
QHash<QString, QString> Catalogue()
{
    QFile file(QStringLiteral(MARELON_SOURCE_DIR "/translations/marelon_de.ts"));
    file.open(QIODevice::ReadOnly);
    QXmlStreamReader xml(&file);
    QHash<QString, QString> pairs;
    QString source;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("source"))
            source = xml.readElementText();
        else if (xml.name() == QLatin1String("translation"))
            pairs.insert(source, xml.readElementText());
    }
    return pairs;
}

QString Plain(QString text)
{
    return text.remove(QLatin1Char('&')).trimmed();
}

// The texts of the other language: in German the English texts whose German
// differs, in English the German texts.
QSet<QString> OtherLanguage(int language)
{
    QSet<QString> other;
    const QHash<QString, QString> pairs = Catalogue();
    for (auto it = pairs.cbegin(); it != pairs.cend(); ++it)
        if (Plain(it.key()) != Plain(it.value()))
            other.insert(Plain(language == feldra::QtLocalizer::kGerman ? it.key() : it.value()));
    other.remove(QString());
    return other;
}

// Every text a user can read in a window, each with where it stands.
class Readable {
public:
    // A text, each of its lines, and each column of a line (parts set apart by
    // two spaces or more, as the NC pane's fields), without a leading
    // parameter number ("813 Work Receiver No.(##)").
    void Add(const QString& where, const QString& text)
    {
        static const QRegularExpression columns(QStringLiteral("\\s{2,}|\\t"));
        static const QRegularExpression number(QStringLiteral("^\\d+ "));
        for (const QString& line : text.split(QLatin1Char('\n'))) {
            QStringList parts{line};
            for (const QString& column : line.split(columns))
                parts << column << QString(column).remove(number);
            parts.removeDuplicates();
            for (const QString& part : parts)
                if (!Plain(part).isEmpty())
                    texts_.append({where, Plain(part)});
        }
    }

    void AddActions(const QString& where, const QList<QAction*>& actions)
    {
        for (QAction* action : actions) {
            if (!action->isVisible() || action->isSeparator())
                continue;
            // each language is named in its own ("English", "Deutsch"), whatever the language shown
            if (action->actionGroup() && QStringList({"English", "Deutsch"}).contains(action->text()))
                continue;
            Add(where + QStringLiteral(" action"), action->text());
            if (action->toolTip() != action->text())
                Add(where + QStringLiteral(" tooltip"), action->toolTip());
            if (action->menu())
                AddActions(where + QLatin1Char('/') + Plain(action->text()), action->menu()->actions());
        }
    }

    // The widget and everything shown in it; a tab widget's pages one by one.
    void AddWidget(QWidget* widget, const QString& where)
    {
        if (!widget->isVisible())
            return;
        const QString here = where + QLatin1Char('/') + widget->objectName();
        if (widget->isWindow())
            Add(here + QStringLiteral(" title"), widget->windowTitle());
        Add(here + QStringLiteral(" tooltip"), widget->toolTip());
        if (auto* label = qobject_cast<QLabel*>(widget))
            Add(here, label->text());
        else if (auto* button = qobject_cast<QAbstractButton*>(widget))
            Add(here, button->text());
        else if (auto* box = qobject_cast<QGroupBox*>(widget))
            Add(here, box->title());
        else if (auto* list = qobject_cast<QComboBox*>(widget)) {
            for (int i = 0; i < list->count(); ++i)
                Add(here, list->itemText(i));
            // the entry chosen is read whole, not cut off by a list too narrow for the language
            QStyleOptionComboBox option;
            option.initFrom(list);
            option.editable = list->isEditable();
            const QRect field =
                list->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, list);
            if (!list->isEditable() && list->fontMetrics().horizontalAdvance(list->currentText()) > field.width())
                clipped_ << here + QStringLiteral(": \"") + list->currentText() + QLatin1Char('"');
        }
        else if (auto* edit = qobject_cast<QLineEdit*>(widget))
            Add(here, edit->placeholderText());
        else if (auto* browser = qobject_cast<QTextBrowser*>(widget))
            Add(here, browser->toPlainText());
        else if (auto* text = qobject_cast<QPlainTextEdit*>(widget))
            Add(here, text->toPlainText());
        else if (auto* tree = qobject_cast<QTreeWidget*>(widget))
            AddTree(here, tree);
        else if (auto* table = qobject_cast<QTableWidget*>(widget))
            AddTable(here, table);
        else if (auto* bar = qobject_cast<QMenuBar*>(widget))
            AddActions(here, bar->actions());
        else if (auto* bar = qobject_cast<QToolBar*>(widget))
            AddActions(here, bar->actions());
        if (auto* tabs = qobject_cast<QTabWidget*>(widget)) {
            const int shown = tabs->currentIndex();
            for (int i = 0; i < tabs->count(); ++i) {
                Add(here + QStringLiteral(" tab"), tabs->tabText(i));
                Add(here + QStringLiteral(" tab tooltip"), tabs->tabToolTip(i));
                if (!tabs->isTabEnabled(i))
                    continue;
                tabs->setCurrentIndex(i);
                AddWidget(tabs->widget(i), here);
            }
            tabs->setCurrentIndex(shown);
            return;
        }
        for (QObject* child : widget->children())
            if (auto* inner = qobject_cast<QWidget*>(child); inner && !inner->isWindow())
                AddWidget(inner, here);
    }

    // The texts that are of the other language, with where they stand.
    QStringList Foreign(const QSet<QString>& other) const
    {
        QStringList found;
        for (const auto& [where, text] : texts_)
            if (other.contains(text))
                found << where + QStringLiteral(": \"") + text + QLatin1Char('"');
        found.removeDuplicates();
        return found;
    }
    qsizetype Count() const { return texts_.size(); }
    const QStringList& Clipped() const { return clipped_; }

private:
    void AddTree(const QString& where, QTreeWidget* tree)
    {
        for (int c = 0; c < tree->columnCount(); ++c)
            Add(where + QStringLiteral(" header"), tree->headerItem()->text(c));
        std::function<void(QTreeWidgetItem*)> walk = [&](QTreeWidgetItem* item) {
            for (int c = 0; c < tree->columnCount(); ++c)
                Add(where, item->text(c));
            for (int i = 0; i < item->childCount(); ++i)
                walk(item->child(i));
        };
        for (int i = 0; i < tree->topLevelItemCount(); ++i)
            walk(tree->topLevelItem(i));
    }

    void AddTable(const QString& where, QTableWidget* table)
    {
        for (int c = 0; c < table->columnCount(); ++c)
            if (table->horizontalHeaderItem(c))
                Add(where + QStringLiteral(" header"), table->horizontalHeaderItem(c)->text());
        for (int r = 0; r < table->rowCount(); ++r)
            for (int c = 0; c < table->columnCount(); ++c)
                if (table->item(r, c))
                    Add(where, table->item(r, c)->text());
    }

    QList<std::pair<QString, QString>> texts_;
    QStringList clipped_;
};

QWidget* ShownWindow(const QString& name)
{
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->objectName() == name && widget->isVisible())
            return widget;
    return nullptr;
}

QAction* ToolBarAction(feldra::MainWindow& window, const QString& text)
{
    for (QAction* action : window.CommandBarToolBar(23)->actions())
        if (action->text() == text)
            return action;
    return nullptr;
}

// Chooses a list entry as a user does.
void Choose(QWidget& dialog, const char* list, const QString& entry)
{
    auto* combo = dialog.findChild<QComboBox*>(QString::fromLatin1(list));
    QVERIFY2(combo, list);
    const int index = combo->findText(entry);
    QVERIFY2(index >= 0, qPrintable(entry));
    combo->setCurrentIndex(index);
    emit combo->activated(index);
}

void Click(QWidget& dialog, const char* button)
{
    auto* found = dialog.findChild<QAbstractButton*>(QString::fromLatin1(button));
    QVERIFY2(found, button);
    QTest::mouseClick(found, Qt::LeftButton);
}

} // namespace

class tst_LanguageTour : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void aNewUsersRoundShowsOneLanguage_data()
    {
        QTest::addColumn<int>("language");
        QTest::newRow("English") << int(feldra::QtLocalizer::kEnglish);
        QTest::newRow("German") << int(feldra::QtLocalizer::kGerman);
    }
    void aNewUsersRoundShowsOneLanguage()
    {
        QFETCH(int, language);
        const bool german = language == feldra::QtLocalizer::kGerman;
        const auto tr = [german](const char* english, const char* inGerman) {
            return QString::fromUtf8(german ? inGerman : english);
        };
        const QSet<QString> other = OtherLanguage(language);
        QVERIFY(other.size() > 300);
        TempStores stores;
        QTemporaryDir work;
        feldra::Host host;
        host.App().installFolder = QStringLiteral(MARELON_HELP_DIR "/../");
        host.App().temporaryFolder = work.filePath(QStringLiteral("temp/"));
        auto& messages = dynamic_cast<feldra::MessageBoxRecorder&>(*host.Services().messageBox);
        feldra::MainWindow window(host);
        window.resize(feldra::MainWindow::kDefaultSize);
        window.show();
        QVERIFY(host.AddIns().Load("Marelon.Connect", QStringLiteral(MARELON_MODULE)));
        window.SetLanguage(language);

        QStringList foreign;
        qsizetype looked = 0;
        // Every window shown and every message so far.
        const auto look = [&](const QString& step) {
            Readable readable;
            for (QWidget* shown : QApplication::topLevelWidgets())
                readable.AddWidget(shown, step);
            for (const auto& message : messages.Messages()) {
                readable.Add(step + QStringLiteral(" message"), message.prompt);
                readable.Add(step + QStringLiteral(" message title"), message.title);
            }
            messages.Clear();
            looked += readable.Count();
            foreign += readable.Foreign(other) + readable.Clipped();
        };

        // A new part from the template.
        QVERIFY(window.NewDocument(kTemplate));
        look(QStringLiteral("new part"));

        // The Data Page on the L5 16-20 and the L4 25-32, then OK.
        QAction* dataPageCommand = ToolBarAction(window, tr("Data Page", "Datenblatt"));
        QVERIFY(dataPageCommand);
        dataPageCommand->trigger();
        QWidget* dataPage = ShownWindow(QStringLiteral("frmMarelonDataPage"));
        QVERIFY(dataPage);
        look(QStringLiteral("Data Page"));
        Choose(*dataPage, "cmbMachineName", QStringLiteral("L5 16-20"));
        look(QStringLiteral("Data Page, L5 16-20"));
        Choose(*dataPage, "cmbMachineName", QStringLiteral("L4 25-32"));
        look(QStringLiteral("Data Page, L4 25-32"));
        // a new part has no cut-off speed and feed yet: the user types them
        dataPage->findChild<QLineEdit*>(QStringLiteral("txt817"))->setText(QStringLiteral("1500"));
        dataPage->findChild<QLineEdit*>(QStringLiteral("txt822"))->setText(QStringLiteral("0.05"));
        Click(*dataPage, "cmdOK");
        QStringList said;
        for (const auto& message : messages.Messages())
            said << message.prompt;
        look(QStringLiteral("Data Page, OK"));
        QVERIFY2(!dataPage->isVisible(), qPrintable(QStringLiteral("OK left the Data Page open: ") + said.join(QLatin1Char('\n'))));

        // Save, reopen.
        const QString part = work.filePath(QStringLiteral("part.fdoc"));
        QVERIFY(window.SaveDocument(part));
        QVERIFY(window.OpenDocument(part));
        look(QStringLiteral("reopened"));

        // The NC code: the add-in's reminder first, then the listing.
        QString warning;
        QTimer::singleShot(0, [&] {
            if (QWidget* modal = QApplication::activeModalWidget()) {
                warning = modal->objectName();
                look(QStringLiteral("NC warning"));
                Click(*modal, "cmdYes");
            }
        });
        window.GenerateNcCode();
        QCOMPARE(warning, QStringLiteral("frmWarning"));
        const QString listing = window.findChild<QPlainTextEdit*>(QStringLiteral("ncPane"))->toPlainText();
        QVERIFY2(listing.startsWith(tr("HEAD 1 OF ", "KANAL 1 VON ")), qPrintable(listing.left(200)));
        look(QStringLiteral("NC code"));

        // The help from the Data Page.
        dataPageCommand = ToolBarAction(window, tr("Data Page", "Datenblatt"));
        dataPageCommand->trigger();
        dataPage = ShownWindow(QStringLiteral("frmMarelonDataPage"));
        QVERIFY(dataPage);
        QCOMPARE(dataPage->findChild<QComboBox*>(QStringLiteral("cmbMachineName"))->currentText(), QStringLiteral("L4 25-32"));
        Click(*dataPage, "cmdHelp");
        QTRY_VERIFY(window.Help()->isVisible());
        QVERIFY2(window.Help()->HelpFile().contains(QStringLiteral("/Help/%1/").arg(language)), qPrintable(window.Help()->HelpFile()));
        QCOMPARE(window.Help()->Message(), QString());
        look(QStringLiteral("help"));
        Click(*dataPage, "cmdCancel");
        window.Help()->close();

        QVERIFY2(looked > 500, qPrintable(QString::number(looked)));
        QVERIFY2(foreign.isEmpty(), qPrintable(foreign.join(QLatin1Char('\n'))));
        QVERIFY(window.CloseDocument());
        host.AddIns().UnloadAll();
    }
};

QTEST_MAIN(tst_LanguageTour)
#include "tst_LanguageTour.moc"
