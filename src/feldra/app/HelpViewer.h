#pragma once

#include <QUrl>
#include <QWidget>

#include <memory>

class QAction;
class QHelpEngine;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QTemporaryDir;

namespace host {
class Localizer;
}

namespace feldra {

class HelpBrowser;

// The host's help viewer. A compiled help file is a QtHelp file (compiled by
// qhelpgenerator) under whatever name the add-in asks for ("Marelon Help.chm").
// The viewer shows one help file at a time: its contents, its index, a
// full-text search, the page, back and forward. A missing file, a file that
// is not compiled help and a topic the file lacks are told in the viewer.
class HelpViewer : public QWidget {
public:
    explicit HelpViewer(const host::Localizer& localizer, QWidget* parent = nullptr);
    ~HelpViewer() override;

    // Shows a topic of a help file and raises the viewer: "TooData.htm#Holder"
    // (the page, then the place on it); an empty topic shows the file's start
    // page, the first entry of its contents. Topics are found as the compiled
    // help of the host finds them, whatever their case. When it returns, the
    // contents and the index of the file are filled.
    void ShowTopic(const QString& helpFile, const QString& topic);

    // The help file shown, the address of the page shown (with its place
    // after "#"; empty when no page is shown), and the message shown above
    // the page (empty when all went well).
    QString HelpFile() const { return helpFile_; }
    QUrl CurrentUrl() const;
    QString Message() const;

private:
    void makeEngine();
    bool openFile(const QString& helpFile);
    void closeFile();
    void waitForContentsAndIndex();
    QUrl findTopic(const QString& page) const;
    QUrl startPage() const;
    void showUrl(const QUrl& url);
    void showMessage(const QString& english, const QStringList& arguments = {});
    bool hasPlace(const QString& place) const;
    void syncContents(const QUrl& page);
    void search();
    void showSearchResults();
    void showSearchResult(QListWidgetItem* item);
    QString translated(const QString& english) const;

    const host::Localizer& localizer_;
    std::unique_ptr<QTemporaryDir> collectionFolder_;
    QHelpEngine* engine_ = nullptr;
    QString helpFile_;
    QString namespace_;
    QString searchWords_; // of the last search
    bool indexing_ = false;
    bool indexed_ = false;

    QAction* back_;
    QAction* forward_;
    QAction* home_;
    QWidget* contentsPane_;
    QWidget* indexPane_;
    QLineEdit* indexFilter_;
    QLineEdit* searchText_;
    QListWidget* searchResults_;
    QLabel* message_;
    HelpBrowser* page_;
};

} // namespace feldra
