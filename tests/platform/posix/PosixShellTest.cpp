#include "platform/posix/PosixShell.h"
#include "support/Table.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <csignal>
#include <future>

using namespace swabby;

class PosixShellTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void givesTheWholeText()
    {
        qputenv("ANTHROPIC_API_KEY", "canary");
        sigset_t blocked;
        sigemptyset(&blocked);
        sigaddset(&blocked, SIGTERM);
        ::pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
        PosixShell shell{StopToken()};
        compareTable(fixture(u"shell/gives_the_whole_text.txt"_qs), [&](const Cells &row) {
            const auto streams =
                row[0].startsWith("refusals") ? ToolOutput::standardOutput : ToolOutput::bothStreams;
            const auto text = shell.run("/bin/sh", {"-c", row.string(1)}, streams);
            return QString::fromStdString(text.value_or("none"));
        });
    }

    void argumentsAndTextsOfAnySize()
    {
        PosixShell shell{StopToken()};
        const std::vector<std::string> arguments = {
            "-c", "printf '<%s>' \"$@\"", "sh", "a b", "*", "$HOME", "", "\n", "'\""};
        QCOMPARE(shell.run("/bin/sh", arguments), "<a b><*><$HOME><><\n><'\">");
        const auto text = shell.run("/bin/sh", {"-c", "head -c 20000000 /dev/zero | tr '\\0' x"});
        QCOMPARE(text->size(), std::size_t(20'000'000));
    }

    void whatCannotBeStartedGivesNoText()
    {
        QTemporaryDir folder;
        QFile plain(folder.filePath(QStringLiteral("plain")));
        QVERIFY(plain.open(QIODevice::WriteOnly));
        plain.close();
        PosixShell shell{StopToken()};
        QCOMPARE(shell.run(plain.fileName().toStdString(), {}), std::nullopt);
        QCOMPARE(shell.run("/nonexistent/tool", {}), std::nullopt);
        QCOMPARE(shell.run("sh", {"-c", "echo found by the PATH"}), std::nullopt);
        StopSource stop;
        stop.requestStop();
        QCOMPARE(PosixShell(stop.token()).run("/bin/echo", {"late"}), std::nullopt);
    }

    void stoppingEndsTheToolAndItsChildren()
    {
        // A hung tool, one that waits for its child, and a child that keeps the output open.
        for (QByteArray script : {"echo $$ >PIDS; exec sleep 600", "sleep 600 & echo $$ $! >PIDS; wait",
                                  "sleep 600 & echo $! >PIDS"}) {
            QTemporaryDir folder;
            const QString pidFile = folder.filePath(QStringLiteral("pids"));
            // Renamed into place, so that it is never seen half written.
            script.replace("PIDS", "\"$0.new\" && mv \"$0.new\" \"$0\"");
            StopSource stop;
            PosixShell shell{stop.token()};
            auto run = std::async(std::launch::async, [&] {
                return shell.run("/bin/sh", {"-c", script.toStdString(), pidFile.toStdString()});
            });
            QVERIFY(QTest::qWaitFor([&] { return QFile::exists(pidFile); }, 30'000));
            stop.requestStop();
            QCOMPARE(run.wait_for(std::chrono::seconds(30)), std::future_status::ready);
            QFile file(pidFile);
            QVERIFY(file.open(QIODevice::ReadOnly));
            for (const QByteArray &pid : file.readAll().simplified().split(' '))
                QVERIFY(QTest::qWaitFor([&] { return isGone(pid); }, 30'000));
        }
    }

private:
    /// Gone, or dead and waiting for whoever inherited it.
    static bool isGone(const QByteArray &pid)
    {
        QFile stat(QStringLiteral("/proc/%1/stat").arg(QString::fromLatin1(pid)));
        return !stat.open(QIODevice::ReadOnly) || stat.readAll().contains(") Z ");
    }
};

QTEST_GUILESS_MAIN(PosixShellTest)
#include "PosixShellTest.moc"
