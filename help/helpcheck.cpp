// helpcheck: checks a help project (*.qhp) before it is compiled, so that a
// broken link is a build error and not something a user finds.
//
//   helpcheck PROJECT.qhp [SOURCE_FOLDER]
//
// The build checks a staged copy of the project (its pages with the pictures
// it shares with the add-in); given the project's source folder, a problem in
// a file that comes from there is reported at its source path, where it is
// fixed.
//
// Every file the project lists exists; every file in the project's folder is
// listed (a picture left out would be missing from the compiled help); every
// page has a title and appears in the table of contents; a style sheet is
// marked type="text/css" (the viewer reads no other); every link, picture and
// style sheet of a page, and every reference of the table of contents and
// the index, names a listed file and, after "#", an anchor of that page
// (<a name="..."> or id="..."). Links leave the help nowhere: no scheme, no
// absolute path. Problems are printed as "file:line: problem"; the exit code
// is 1 when there is any.

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QTextStream>
#include <QXmlStreamReader>

namespace {

struct Reference {
    QString from; // file that holds it
    int line;
    QString target; // as written
};

struct Project {
    QDir folder;
    QString path;
    QStringList files;
    QList<Reference> toc;
    QList<Reference> keywords;
};

QTextStream& err()
{
    static QTextStream stream(stderr);
    return stream;
}

int problems = 0;
QDir stagedFolder;
QString sourceFolder;

// Where a file is fixed: its source when it is a staged copy of one.
QString shownPath(const QString& file)
{
    if (sourceFolder.isEmpty())
        return file;
    const QString relative = stagedFolder.relativeFilePath(QFileInfo(file).absoluteFilePath());
    const QString source = QDir(sourceFolder).filePath(relative);
    return !relative.startsWith(QLatin1String("..")) && QFileInfo::exists(source) ? source : file;
}

void report(const QString& file, int line, const QString& problem)
{
    err() << shownPath(file) << ':' << line << ": " << problem << Qt::endl;
    ++problems;
}

QString readText(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll());
}

int lineOf(const QString& text, qsizetype offset)
{
    return int(text.left(offset).count(QLatin1Char('\n'))) + 1;
}

bool readProject(const QString& path, Project& project)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        report(path, 0, QStringLiteral("cannot be read"));
        return false;
    }
    project.path = QFileInfo(path).absoluteFilePath();
    project.folder = QFileInfo(path).absoluteDir();
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const auto name = xml.name();
        const int line = int(xml.lineNumber());
        if (name == QLatin1String("section"))
            project.toc << Reference{path, line, xml.attributes().value("ref").toString()};
        else if (name == QLatin1String("keyword"))
            project.keywords << Reference{path, line, xml.attributes().value("ref").toString()};
        else if (name == QLatin1String("file"))
            project.files << xml.readElementText();
    }
    if (xml.hasError()) {
        report(path, int(xml.lineNumber()), xml.errorString());
        return false;
    }
    return true;
}

// The anchors of a page: <a name="x"> and id="x" on any element.
QSet<QString> anchorsOf(const QString& text)
{
    static const QRegularExpression anchor(QStringLiteral(R"((?:\bname|\bid)\s*=\s*["']([^"']+)["'])"),
                                           QRegularExpression::CaseInsensitiveOption);
    QSet<QString> anchors;
    for (const auto& match : anchor.globalMatch(text))
        anchors.insert(match.captured(1));
    return anchors;
}

// The links, pictures and style sheets of a page.
QList<Reference> referencesOf(const QString& file, const QString& text)
{
    static const QRegularExpression reference(QStringLiteral(R"(\b(?:href|src)\s*=\s*["']([^"']*)["'])"),
                                              QRegularExpression::CaseInsensitiveOption);
    QList<Reference> references;
    for (const auto& match : reference.globalMatch(text))
        references << Reference{file, lineOf(text, match.capturedStart()), match.captured(1)};
    return references;
}

class Checker {
public:
    explicit Checker(const Project& project) : project_(project)
    {
        for (const QString& file : project.files)
            listed_.insert(QDir::cleanPath(file));
    }

    void run()
    {
        checkListedFilesExist();
        checkEveryFileIsListed();
        QSet<QString> inToc;
        for (const Reference& ref : project_.toc) {
            if (const QString page = resolve(ref, QString()); !page.isEmpty())
                inToc.insert(page);
        }
        for (const Reference& ref : project_.keywords)
            resolve(ref, QString());
        for (const QString& file : project_.files) {
            if (!isPage(file))
                continue;
            const QString text = page(file);
            static const QRegularExpression title(QStringLiteral(R"(<title>\s*\S[^<]*</title>)"),
                                                  QRegularExpression::CaseInsensitiveOption);
            if (!title.match(text).hasMatch())
                report(where(file), 1, QStringLiteral("the page has no title"));
            static const QRegularExpression link(QStringLiteral("<link\\b[^>]*>"), QRegularExpression::CaseInsensitiveOption);
            for (const auto& match : link.globalMatch(text))
                if (!match.captured().contains(QLatin1String("type=\"text/css\"")))
                    report(where(file), lineOf(text, match.capturedStart()),
                           QStringLiteral("a style sheet the viewer reads only with type=\"text/css\""));
            if (!inToc.contains(QDir::cleanPath(file)))
                report(where(file), 1, QStringLiteral("the page is not in the table of contents"));
            for (const Reference& ref : referencesOf(where(file), text))
                resolve(ref, file);
        }
    }

private:
    static bool isPage(const QString& file)
    {
        const QString suffix = QFileInfo(file).suffix().toLower();
        return suffix == QLatin1String("htm") || suffix == QLatin1String("html");
    }

    QString where(const QString& file) const { return project_.folder.filePath(file); }

    QString page(const QString& file)
    {
        auto it = pages_.find(file);
        if (it == pages_.end())
            it = pages_.insert(file, readText(where(file)));
        return *it;
    }

    void checkListedFilesExist()
    {
        for (const QString& file : project_.files)
            if (!QFileInfo(where(file)).isFile())
                report(project_.path, 0, QStringLiteral("the listed file %1 does not exist").arg(file));
    }

    void checkEveryFileIsListed()
    {
        QDirIterator it(project_.folder.path(), QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString file = project_.folder.relativeFilePath(it.next());
            if (QFileInfo(it.filePath()).absoluteFilePath() != project_.path && !listed_.contains(file))
                report(where(file), 0, QStringLiteral("the file is not listed in %1").arg(shownPath(project_.path)));
        }
    }

    // Checks one reference; returns the page it names (relative to the
    // project folder), empty when it is broken.
    QString resolve(const Reference& ref, const QString& fromPage)
    {
        const QString target = ref.target;
        if (target.isEmpty()) {
            report(ref.from, ref.line, QStringLiteral("an empty link"));
            return {};
        }
        static const QRegularExpression scheme(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]*:"));
        if (scheme.match(target).hasMatch() || target.startsWith(QLatin1Char('/'))) {
            report(ref.from, ref.line, QStringLiteral("%1 leads out of the help").arg(target));
            return {};
        }
        const QString path = target.section(QLatin1Char('#'), 0, 0);
        const QString anchor = target.contains(QLatin1Char('#')) ? target.section(QLatin1Char('#'), 1) : QString();
        QString file = fromPage;
        if (!path.isEmpty()) {
            const QString base = fromPage.isEmpty() ? QString() : QFileInfo(fromPage).path() + QLatin1Char('/');
            file = QDir::cleanPath(base + path);
        }
        if (file.isEmpty() || !listed_.contains(file)) {
            report(ref.from, ref.line, QStringLiteral("%1 names no file of the help").arg(target));
            return {};
        }
        if (!anchor.isEmpty() && !anchorsOf(page(file)).contains(anchor)) {
            report(ref.from, ref.line, QStringLiteral("%1: %2 has no anchor \"%3\"").arg(target, file, anchor));
            return {};
        }
        return file;
    }

    const Project& project_;
    QSet<QString> listed_;
    QHash<QString, QString> pages_;
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = app.arguments().mid(1);
    if (arguments.size() != 1 && arguments.size() != 2) {
        err() << "usage: helpcheck PROJECT.qhp [SOURCE_FOLDER]" << Qt::endl;
        return 2;
    }
    stagedFolder = QFileInfo(arguments.first()).absoluteDir();
    sourceFolder = arguments.value(1);
    Project project;
    if (readProject(arguments.first(), project))
        Checker(project).run();
    return problems == 0 ? 0 : 1;
}
