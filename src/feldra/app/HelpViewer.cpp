#include "feldra/app/HelpViewer.h"

#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QTextBrowser>
#include <QUrl>

namespace feldra {

HelpViewer::HelpViewer(QWidget* parent)
    : QWidget(parent, Qt::Window), file_(new QLabel), topic_(new QLabel), page_(new QTextBrowser)
{
    setObjectName("feldraHelpViewer");
    setWindowTitle(QStringLiteral("Feldra Help"));
    file_->setObjectName("lblHelpFile");
    topic_->setObjectName("lblTopic");
    page_->setObjectName("txtPage");
    auto* layout = new QFormLayout(this);
    layout->addRow(QStringLiteral("Help file:"), file_);
    layout->addRow(QStringLiteral("Topic:"), topic_);
    layout->addRow(page_);
    resize(640, 480);
}

QString HelpViewer::PageFile(const QString& helpFile, const QString& topic)
{
    const QFileInfo chm(helpFile);
    const QString page = topic.section('#', 0, 0);
    return chm.absolutePath() + '/' + chm.completeBaseName() + '/' + (page.isEmpty() ? "index.htm" : page);
}

void HelpViewer::ShowTopic(const QString& helpFile, const QString& topic)
{
    file_->setText(helpFile);
    topic_->setText(topic.isEmpty() ? QStringLiteral("(start page)") : topic);
    const QString page = PageFile(helpFile, topic);
    if (QFileInfo::exists(page))
        page_->setSource(QUrl::fromLocalFile(page));
    else
        page_->setPlainText(QStringLiteral("The help is not unpacked beside the file: %1 does not exist.").arg(page));
    show();
    raise();
}

} // namespace feldra
