#include "platform/posix/PosixShell.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <csignal>
#include <future>

using namespace swabby;

class PosixShellTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void givesTheWholeText_data()
    {
        using Text = std::optional<std::string>;
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<ToolOutput>("output");
        QTest::addColumn<Text>("expected");
        const auto row = [](const char *name, const char *script, ToolOutput output, const Text &expected) {
            QTest::newRow(name) << QByteArray(script) << output << expected;
        };
        row("both streams in order", "echo one; echo two >&2; echo three", ToolOutput::bothStreams,
            "one\ntwo\nthree\n");
        row("refusals kept from the answer", "echo refused >&2; echo 12", ToolOutput::standardOutput, "12\n");
        row("a failing tool's text counts", "echo partial; exit 3", ToolOutput::bothStreams, "partial\n");
        row("killed in the middle", "printf half; kill -9 $$", ToolOutput::bothStreams, "half");
        row("silent", "exit 0", ToolOutput::bothStreams, "");
        row("not UTF-8", R"(printf 'a\377b')", ToolOutput::bothStreams, std::nullopt);
        row("cut inside a character", R"(printf 'caf\303')", ToolOutput::bothStreams, std::nullopt);
        row("nothing to read", "read line; echo \"[$line]\"", ToolOutput::bothStreams, "[]\n");
        row("signals as a fresh program's", "trap 'echo told; exit' TERM; kill -TERM $$; sleep 9",
            ToolOutput::bothStreams, "told\n");
        row("the key stays here", "echo \"[$ANTHROPIC_API_KEY]\"", ToolOutput::bothStreams, "[]\n");
        row("an output closed before the end", "echo done; exec >&- 2>&-; sleep 0.1", ToolOutput::bothStreams,
            "done\n");
    }

    void givesTheWholeText()
    {
        QFETCH(QByteArray, script);
        QFETCH(ToolOutput, output);
        QFETCH(std::optional<std::string>, expected);
        qputenv("ANTHROPIC_API_KEY", "canary");
        sigset_t blocked;
        sigemptyset(&blocked);
        sigaddset(&blocked, SIGTERM);
        ::pthread_sigmask(SIG_BLOCK, &blocked, nullptr);

        PosixShell shell{StopToken()};
        QCOMPARE(shell.run("/bin/sh", {"-c", script.toStdString()}, output), expected);
    }

    void passesArgumentsUntouched()
    {
        PosixShell shell{StopToken()};
        const std::vector<std::string> arguments = {
            "-c", "printf '<%s>' \"$@\"", "sh", "a b", "*", "$HOME", "", "\n", "'\""};
        QCOMPARE(shell.run("/bin/sh", arguments), "<a b><*><$HOME><><\n><'\">");
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
    }

    void readsTwentyMegabytes()
    {
        PosixShell shell{StopToken()};
        const auto text = shell.run("/bin/sh", {"-c", "head -c 20000000 /dev/zero | tr '\\0' x"});
        QVERIFY(text);
        QCOMPARE(text->size(), std::size_t(20'000'000));
    }

    void stoppingEndsTheToolAndItsChildren_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::newRow("a hung tool") << QByteArray("echo $$ >PIDS; exec sleep 600");
        QTest::newRow("a deaf tool") << QByteArray(
            "trap '' TERM HUP INT; echo $$ >PIDS; while :; do sleep 600; done");
        QTest::newRow("a tool waiting for its child") << QByteArray("sleep 600 & echo $$ $! >PIDS; wait");
        QTest::newRow("a child that keeps the output open") << QByteArray("sleep 600 & echo $! >PIDS");
    }

    void stoppingEndsTheToolAndItsChildren()
    {
        QFETCH(QByteArray, script);
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

    void aStoppedShellStartsNothing()
    {
        StopSource stop;
        stop.requestStop();
        PosixShell shell{stop.token()};
        QCOMPARE(shell.run("/bin/echo", {"late"}), std::nullopt);
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
