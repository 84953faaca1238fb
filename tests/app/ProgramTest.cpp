#include "support/TemporaryMachine.h"

#include <QtCore/QProcess>
#include <QtGui/QImage>
#include <QtTest/QTest>

using namespace swabby;

namespace {

struct Run {
    int status = -1;
    QByteArray output;
    QByteArray errors;
};

Run runProgram(const QStringList &arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QLatin1String(name));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(SWABBY_PROGRAM), arguments);
    if (!process.waitForFinished(patience))
        return {};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

} // namespace

class ProgramTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyViewIsDrawnWithoutADisplay()
    {
        TemporaryMachine machine(
            {{u"now"_qs, 1'790'000'000},
             {u"disk"_qs, QJsonObject{{u"freeBytes"_qs, 10}, {u"totalBytes"_qs, 1000}}}});
        machine.setProcesses({"10 1 90 1.0 1000 /Applications/Mill.app/Contents/MacOS/Mill"});
        QTemporaryDir folder;
        const QString pictures = folder.filePath(u"a/b"_qs);
        const Run run =
            runProgram({u"--machine"_qs, machine.folder(), u"--run-tools"_qs, u"--screenshots"_qs, pictures});
        QVERIFY2(run.status == 0, run.errors.constData());
        for (const char *name :
             {"overview", "health-detail", "speed", "speed-browsers", "battery", "network", "startup"}) {
            const QImage image(pictures + u'/' + QLatin1String(name) + u".png"_qs);
            QCOMPARE(image.size(), QSize(1880, 1320));
        }
        QVERIFY(!QImage(pictures + u"/menu-bar.png"_qs).isNull());
        QVERIFY(!QFile::exists(machine.historyFile())); // taking pictures leaves no trace

        const Run refused =
            runProgram({u"--machine"_qs, machine.folder(), u"--screenshots"_qs, u"/dev/null/x"_qs});
        QCOMPARE(refused.status, 1);
        QCOMPARE(refused.errors.count('\n'), 1);
    }

    void anotherStartAfterAnUpdateBringsTheNewOne_data()
    {
        QTest::addColumn<QString>("replaced");
        QTest::newRow("in its place") << u"libswabby-core.so"_qs;
        QTest::newRow("its libraries beside the old ones") << u"swabby"_qs;
    }
    void anotherStartAfterAnUpdateBringsTheNewOne()
    {
        QFETCH(QString, replaced);
        TemporaryMachine machine({{u"now"_qs, 1'790'000'000}});
        QTemporaryDir folder;
        const QDir built = QFileInfo(QStringLiteral(SWABBY_PROGRAM)).dir();
        const auto install = [&](const QString &name) {
            QFile::remove(folder.filePath(name));
            QVERIFY(name == u"swabby" ? QFile::copy(QStringLiteral(SWABBY_PROGRAM), folder.filePath(name))
                                      : QFile::link(built.filePath(name), folder.filePath(name)));
        };
        for (const QString &library : built.entryList({u"*.so"_qs}))
            install(library);
        install(u"swabby"_qs);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"LD_LIBRARY_PATH"_qs, folder.path());
        environment.insert(u"XDG_RUNTIME_DIR"_qs, folder.path());
        QProcess first;
        QProcess second;
        for (QProcess *process : {&first, &second}) {
            process->setProcessEnvironment(environment);
            process->setProgram(folder.filePath(u"swabby"_qs));
            process->setArguments({u"--machine"_qs, machine.folder()});
        }
        const auto commandLine = [&first] {
            QFile file(u"/proc/%1/cmdline"_qs.arg(first.processId()));
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        const auto isListening = [&folder] {
            return !QDir(folder.path()).entryList({u"swabby-*"_qs}, QDir::System).isEmpty();
        };
        first.setArguments(first.arguments() + QStringList(u"--background"_qs));
        first.start();
        QVERIFY(waitUntil([&] { return isListening(); }));
        QVERIFY(commandLine().contains("--background"));
        install(replaced);
        second.start();
        QVERIFY(second.waitForFinished(patience) && second.exitCode() == 0);
        QVERIFY(waitUntil([&] {
            return !commandLine().contains("--background");
        })); // it shows its window, as the second one asked
        QVERIFY(waitUntil([&] { return isListening(); }));
        QVERIFY(first.state() == QProcess::Running);
        first.terminate();
        QVERIFY(first.waitForFinished(patience));
    }

    void refusalsAreOneLine()
    {
        for (const auto &[arguments, status] : {std::pair{QStringList{u"--theme"_qs, u"blue"_qs}, 2},
                                                {QStringList{u"--machine"_qs, u"/nonexistent"_qs}, 2},
                                                {QStringList(), 1}}) { // no display
            const Run run = runProgram(arguments);
            QCOMPARE(run.status, status);
            QCOMPARE(run.errors.count('\n'), 1);
            QVERIFY(run.output.isEmpty());
        }
        QVERIFY(runProgram({u"--help"_qs}).output.contains("--screenshots"));
        QVERIFY(runProgram({u"--version"_qs}).output.startsWith("swabby "));
    }
};

QTEST_MAIN(ProgramTest)
#include "ProgramTest.moc"
