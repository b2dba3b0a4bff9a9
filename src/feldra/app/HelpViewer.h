#pragma once

#include <QWidget>

class QLabel;
class QTextBrowser;

namespace feldra {

// The host's help viewer. A compiled help file cannot be read here, so the
// viewer shows the file and the topic asked for, and the topic's page when the
// help has been unpacked beside the file: "<folder>/<name>/<page>" for
// "<folder>/<name>.chm" (the start page "index.htm" for an empty topic).
class HelpViewer : public QWidget {
public:
    explicit HelpViewer(QWidget* parent = nullptr);

    void ShowTopic(const QString& helpFile, const QString& topic);

    // The unpacked page of a topic ("posting.htm#Warning" reads "posting.htm").
    static QString PageFile(const QString& helpFile, const QString& topic);

private:
    QLabel* file_;
    QLabel* topic_;
    QTextBrowser* page_;
};

} // namespace feldra
