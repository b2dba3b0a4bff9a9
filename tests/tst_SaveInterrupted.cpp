// A save killed part way leaves the file as it was or as the save makes it,
// whole. A child process (SaveChild.cpp) writes a large part, a holder
// library, the settings file and the registry hive over an old version, and
// kills itself with SIGKILL before each file call of the save and after
// bytes spread over the whole write (KillPoints.h): the points are counted,
// not timed, so every run kills at the same places.
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

// The files of a folder by name, with their contents.
using Snapshot = QMap<QString, QByteArray>;

Snapshot snapshot(const QString& folder)
{
    Snapshot files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden);
    while (it.hasNext()) {
        const QString path = it.next();
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            files.insert(it.fileName(), file.readAll());
    }
    return files;
}

void restore(const QString& folder, const Snapshot& files)
{
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    for (auto it = files.begin(); it != files.end(); ++it) {
        QFile file(folder + QLatin1Char('/') + it.key());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(it.value()), it.value().size());
    }
}

struct KillPoint {
    const char* variable;
    qint64 value;
};

struct Run {
    QProcess::ExitStatus status = QProcess::NormalExit;
    int code = -1;
    QByteArray output;
};

Run runChild(const QString& kind, const QString& folder, const char* version, const KillPoint* point = nullptr)
{
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("MARELON_KILL_AT_STEP"));
    environment.remove(QStringLiteral("MARELON_KILL_AFTER_BYTES"));
    if (point)
        environment.insert(QLatin1String(point->variable), QString::number(point->value));
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QStringLiteral(MARELON_SAVE_CHILD), {kind, folder, QLatin1String(version)});
    Run run;
    if (!child.waitForFinished(-1))
        return run;
    run.status = child.exitStatus();
    run.code = child.exitCode();
    run.output = child.readAllStandardOutput();
    return run;
}

} // namespace

class tst_SaveInterrupted : public QObject {
    Q_OBJECT

private slots:
    void killedSaveLeavesOldOrNew_data();
    void killedSaveLeavesOldOrNew();
};

void tst_SaveInterrupted::killedSaveLeavesOldOrNew_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("file");

    QTest::newRow("part (1,000 tools, 2,000 operations)") << "document" << "part.fdoc";
    // The library's former text is copied to "<file>.bak" first, in a save of its own.
    QTest::newRow("holder library (101 holders)") << "holders" << "L5-16-20 ToolHolders.txt";
    QTest::newRow("settings file (500 Data Page defaults)") << "settings" << "Marelon Add-In.ini";
    QTest::newRow("registry hive (300 values)") << "registry" << "HKEY_CURRENT_USER.json";
}

void tst_SaveInterrupted::killedSaveLeavesOldOrNew()
{
    QFETCH(QString, kind);
    QFETCH(QString, file);
    const QTemporaryDir dir;
    const QString folder = dir.filePath(QStringLiteral("files"));

    // The old version, and the new one written over it without a kill.
    QDir().mkpath(folder);
    const Run old = runChild(kind, folder, "old");
    QCOMPARE(old.code, 0);
    const Snapshot before = snapshot(folder);
    QVERIFY(before.contains(file));
    const Run whole = runChild(kind, folder, "new");
    QCOMPARE(whole.status, QProcess::NormalExit);
    QCOMPARE(whole.code, 0);
    const Snapshot after = snapshot(folder);
    QVERIFY(after.value(file) != before.value(file));
    const QList<QByteArray> counts = whole.output.trimmed().split(' ');
    QCOMPARE(counts.size(), 2);
    const qint64 steps = counts[0].toLongLong();
    const qint64 bytes = counts[1].toLongLong();
    QVERIFY(steps > 0);
    QVERIFY(bytes >= after.value(file).size());

    QList<KillPoint> points;
    for (qint64 step = 1; step <= steps; ++step)
        points.append({"MARELON_KILL_AT_STEP", step});
    constexpr int kSpread = 16;
    for (int i = 0; i <= kSpread; ++i)
        points.append({"MARELON_KILL_AFTER_BYTES", bytes * i / kSpread});

    QStringList names = before.keys() + after.keys();
    names.removeDuplicates();
    int leftOld = 0;
    int leftNew = 0;
    int strays = 0;
    QString stray;
    for (const KillPoint& point : points) {
        const QString where = QStringLiteral("%1=%2").arg(QLatin1String(point.variable)).arg(point.value);
        restore(folder, before);
        const Run killed = runChild(kind, folder, "new", &point);
        QVERIFY2(killed.status == QProcess::CrashExit, qPrintable(where + QStringLiteral(": not killed")));
        const Snapshot now = snapshot(folder);
        // Every file of the save is as it was or as the save makes it, whole
        // (a missing file counts as a state); once the file itself is new,
        // everything the save writes before it is new too.
        const bool isNew = now.value(file) == after.value(file) && now.contains(file);
        for (const QString& name : names) {
            const bool asBefore = now.contains(name) == before.contains(name) && now.value(name) == before.value(name);
            const bool asAfter = now.contains(name) == after.contains(name) && now.value(name) == after.value(name);
            QVERIFY2(asBefore || asAfter,
                     qPrintable(QStringLiteral("%1: %2 is neither old nor new (%3 bytes)")
                                    .arg(where, name)
                                    .arg(now.value(name).size())));
            if (isNew)
                QVERIFY2(asAfter, qPrintable(QStringLiteral("%1: %2 is old beside the new file").arg(where, name)));
        }
        ++(isNew ? leftNew : leftOld);
        for (const QString& name : now.keys()) {
            if (!names.contains(name)) {
                ++strays;
                stray = name;
            }
        }
    }
    // The points span the whole save: some leave the old file, some the new.
    QVERIFY(leftOld > 0);
    QVERIFY(leftNew > 0);
    qInfo("%s: %lld steps, %lld bytes; %d kills left the old file, %d the new one; %d left a file beside it (%s)",
          qPrintable(kind), steps, bytes, leftOld, leftNew, strays, qPrintable(stray));

    // What a kill leaves beside the file does not stand in the next save's way.
    restore(folder, before);
    const KillPoint half{"MARELON_KILL_AFTER_BYTES", bytes / 2};
    QCOMPARE(runChild(kind, folder, "new", &half).status, QProcess::CrashExit);
    const Run next = runChild(kind, folder, "new");
    QCOMPARE(next.code, 0);
    QCOMPARE(snapshot(folder).value(file), after.value(file));
}

QTEST_GUILESS_MAIN(tst_SaveInterrupted)
#include "tst_SaveInterrupted.moc"
