#include "cleanup/FullMac.h"
#include "cli/Terminal.h"
#include "support/RandomTree.h"
#include "support/Table.h"

#include <QtCore/QDir>
#include <QtTest/QTest>

#include <csignal>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace swabby;

namespace {

/// The program at a terminal of its own: what it shows there, and what is typed.
class Session {
public:
    Session(const TemporaryMachine &machine, const QStringList &arguments)
    {
        QList<QByteArray> words = {SWABBYCTL, "--machine", machine.folder().toUtf8(), "--run-tools"};
        for (const QString &argument : arguments)
            words.append(argument.toUtf8());
        std::vector<char *> pointers;
        for (QByteArray &word : words)
            pointers.push_back(word.data());
        pointers.push_back(nullptr);
        m_pid = ::forkpty(&m_terminal, nullptr, nullptr, nullptr);
        if (m_pid == 0) {
            ::execv(SWABBYCTL, pointers.data());
            ::_exit(127);
        }
    }
    ~Session()
    {
        if (m_pid > 0)
            end();
    }
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    /// Reads until the text has come, or to the end.
    bool sees(const QByteArray &text)
    {
        while (!m_shown.contains(text) && readMore()) {
        }
        return m_shown.contains(text);
    }
    void type(const QByteArray &text) const
    {
        if (::write(m_terminal, text.constData(), std::size_t(text.size())) != text.size())
            qFatal("the terminal takes no input");
    }
    /// Reads to the end; the document is the last line.
    Answer end()
    {
        while (readMore()) {
        }
        int status = 0;
        ::waitpid(m_pid, &status, 0);
        m_pid = 0;
        ::close(m_terminal);
        const QByteArray text = m_shown.trimmed();
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, text.mid(text.lastIndexOf('\n') + 1), m_shown};
    }

private:
    bool readMore()
    {
        pollfd watched = {m_terminal, POLLIN, 0};
        QByteArray piece(4096, '\0');
        if (::poll(&watched, 1, 60'000) != 1) {
            ::kill(m_pid, SIGKILL);
            return false;
        }
        const ssize_t count = ::read(m_terminal, piece.data(), std::size_t(piece.size()));
        m_shown += piece.left(std::max<ssize_t>(count, 0));
        return count > 0;
    }

    pid_t m_pid = -1;
    int m_terminal = -1;
    QByteArray m_shown;
};

QStringList effectsOf(const TemporaryMachine &mac)
{
    QStringList kinds;
    for (const char *kind : {"trash", "delete", "putBack", "terminate", "signal", "notification"})
        if (const auto count = mac.events(QLatin1String(kind)).size(); count > 0)
            kinds.append(QString(u"%1 %2"_qs).arg(QLatin1String(kind)).arg(count));
    return kinds;
}

} // namespace

class CleanupVerbsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void documentsHaveTheirKeys()
    {
        const FullMac mac;
        mac.setProcesses({"50 1 90 1 9 /opt/Mill"});
        compareTable(fixture(u"cli/documents_have_their_keys.txt"_qs), [&](const Cells &row) {
            const Answer answer = runOn(mac, (row[0] + " --json").constData());
            const QJsonValue value = answer.json();
            return (value.isArray() ? value[0].toObject() : value.toObject()).keys().join(u' ') +
                   (answer.output.count('\n') == 1 ? u""_qs : u" in several lines"_qs);
        });
        QCOMPARE(effectsOf(mac), QStringList());
        const QString ids = lines(runOn(mac, "items --json").json().toArray(),
                                  [](const QJsonValue &found) { return found[u"id"_qs].toString(); });
        QCOMPARE(ids.split(u'\n'), mac.allIds());
    }

    void lookingLeavesNoTrace()
    {
        const FullMac mac(
            QJsonObject{{u"disk"_qs, QJsonObject{{u"freeBytes"_qs, 1}, {u"totalBytes"_qs, 1000}}}});
        mac.setProcesses({"50 1 90 80 9 /opt/Mill"});
        const TreePicture before = pictureOf(mac.homePath());
        for (const char *verb : {"check --json", "check", "items", "quit 50", "remove derived-data"})
            runOn(mac, words(verb));
        QCOMPARE(difference(before, pictureOf(mac.homePath())), std::string());
        QCOMPARE(effectsOf(mac), QStringList());
        // And the steps are seen without --json.
        const QByteArray text = runOn(mac, "check").output;
        QVERIFY(text.startsWith("✓ Checking storage\n✓ Checking startup items\n"));
        QVERIFY(text.contains("\nHigh power usage\n  Mill  90% busy\n"));
    }

    void anIdIsTakenAsItIsShown()
    {
        const FullMac mac;
        for (const char *name : {"odd\x1bone", "a\x01z", "a\x02z"})
            mac.addFolder(u"Library/Caches/"_qs + QString::fromLatin1(name), 30'000);
        const auto chosenBy = [&](const QString &name) {
            const QString id = u"cache:"_qs + mac.home() + u"/Library/Caches/"_qs + name;
            return runOn(mac, {u"remove"_qs, id, u"--json"_qs}).json()[u"itemCount"_qs].toInt();
        };
        QCOMPARE(chosenBy(u"odd\x1bone"_qs), 1);
        QCOMPARE(chosenBy(u"odd\uFFFDone"_qs), 1);
        QCOMPARE(chosenBy(u"a\uFFFDz"_qs), 0); // it could be either
    }

    void whatIsRefusedIsNotDone()
    {
        const FullMac mac;
        mac.setProcesses({"50 1 30 1 9 /opt/Mill"});
        const Answer refused = runOn(mac, "remove derived-data docker-prune derived-data --json");
        QCOMPARE(refused.status, 1);
        QCOMPARE(refused.json()[u"confirmed"_qs], false);
        QVERIFY(refused.json()[u"banner"_qs].isNull());
        QCOMPARE(refused.json()[u"itemCount"_qs], 2);
        QCOMPARE(refused.json()[u"freedBytes"_qs].toInteger(), 700 * 1024 + 1'200'000'000);
        QCOMPARE(refused.json()[u"title"_qs], u"Remove 2 items?"_qs);
        const Answer unknown = runOn(mac, "remove derived-data sim:no nothing --yes --json");
        QCOMPARE(unknown.status, 1);
        QCOMPARE(unknown.json()[u"confirmed"_qs], false);
        QCOMPARE(unknown.problems.count('\n'), 2);
        const Answer quit = runOn(mac, "quit 50 --force --json");
        QCOMPARE(quit.status, 1);
        QCOMPARE(quit.json()[u"confirmed"_qs], false);
        QCOMPARE(quit.json()[u"title"_qs], u"Force quit Mill?"_qs);
        compareTranscript(mac, u"cli/wrong_cleanup.txt"_qs);
        QCOMPARE(effectsOf(mac), QStringList());
    }

    void unreadableSettingsLetNothingGo()
    {
        const FullMac mac;
        const QString settings = u"home/Library/Preferences/com.swabby.app.json"_qs;
        for (const QByteArray content :
             {"{\"neverRemove\": [\"/x\"],}", "{\"neverRemove\": [\"/x\", null]}"}) {
            mac.writeFile(settings, content);
            for (const char *verb :
                 {"caches", "caches --unknown", "duplicates", "deep-scan", "apps", "developer", "items",
                  "remove derived-data docker-prune --yes", "check --json"}) {
                const Answer answer = runOn(mac, verb);
                QVERIFY2(answer.status == 1 && answer.output.isEmpty(), verb);
                QVERIFY2(answer.problems.contains(settings.toUtf8()) && answer.problems.count('\n') == 1,
                         verb);
            }
        }
        QCOMPARE(effectsOf(mac), QStringList());
        QCOMPARE(mac.runs(), QString());
        // The person mends the list, with a place that is there and one that is not.
        const Answer mended =
            runOn(mac, {u"settings"_qs, u"neverRemove"_qs, u"[\"~/Downloads\",\"/not/there\"]"_qs});
        QCOMPARE(mended.output, QByteArray("[\"~/Downloads\",\"/not/there\"]\n"));
        QCOMPARE(mended.problems,
                 QByteArray("swabbyctl: nothing is at /not/there yet; what comes there will be kept\n"));
        const Answer items = runOn(mac, "items");
        QVERIFY(items.status == 0 && items.output.contains("derived-data") &&
                !items.output.contains("/Downloads/"));
    }

    void answersAtATerminal()
    {
        for (const auto &[typed, agrees] :
             {std::pair("y\n", true), std::pair("YES\n", true), std::pair(" Yes \n", true),
              std::pair("n\n", false), std::pair("\n", false), std::pair("yess\n", false),
              std::pair("\x04", false), std::pair("\x03", false)}) {
            const FullMac mac;
            mac.setProcesses({"50 1 30 1 9 /opt/Mill"});
            for (const char *verb : {"remove derived-data --json", "quit 50 --json"}) {
                Session session(mac, words(verb));
                QVERIFY(session.sees("? [y/N] "));
                QCOMPARE(effectsOf(mac).contains(u"signal 1"_qs), false);
                session.type(typed);
                const Answer answer = session.end();
                QVERIFY2(answer.json()[u"confirmed"_qs] == agrees && answer.status == (agrees ? 0 : 1),
                         typed);
            }
            QCOMPARE(effectsOf(mac), agrees ? QStringList({u"delete 1"_qs, u"signal 1"_qs}) : QStringList());
        }
    }

    void theQuestionNamesWhatGoes()
    {
        const FullMac mac;
        {
            Session session(mac, QStringList{u"remove"_qs} + mac.allIds());
            session.sees("? [y/N] ");
            session.type("\n");
            const QString shown = QString::fromUtf8(session.end().problems)
                                      .remove(u'\r')
                                      .replace(mac.folder(), u"MAC"_qs)
                                      .replace(u"? [y/N] "_qs, u"?"_qs);
            QCOMPARE(shown.mid(shown.indexOf(u"Remove 1"_qs)),
                     QString::fromUtf8(fixture(u"cli/what_goes.txt"_qs)));
        }
        for (int number = 10; number < 24; ++number)
            QFile::copy(mac.home() + u"/Downloads/report.pdf"_qs,
                        mac.home() + u"/Desktop/report \x1b]0;x"_qs + QString::number(number));
        Session session(mac, QStringList{u"remove"_qs} + mac.allIds());
        QVERIFY(session.sees("  and 7 more\r\nRemove All? [y/N] "));
        session.type("\n");
        QVERIFY(!session.end().problems.contains("\x1b]0"));
        QCOMPARE(effectsOf(mac), QStringList());
    }

    void anInterruptionEndsTheScanAndItsTools()
    {
        const FullMac mac;
        mac.addTool(u"/usr/bin/du"_qs, R"(echo $$ >"$MACHINE_DIR/pid$$"; exec tail -f /dev/null)");
        for (const char *verb : {"items", "check", "caches --vet", "remove cache:/x --yes"}) {
            Session session(mac, words(verb) + words("--json"));
            const auto pids = [&] { return QDir(mac.folder()).entryList({u"pid*"_qs}); };
            QVERIFY(waitUntil([&] { return !pids().isEmpty(); }));
            session.type("\x03");
            QCOMPARE(session.end().status, 128 + SIGINT);
            for (const QString &name : pids()) {
                QVERIFY(::kill(name.mid(3).toInt(), 0) != 0);
                QFile::remove(mac.folder() + u'/' + name);
            }
        }
        QCOMPARE(effectsOf(mac), QStringList());
    }

    void removedAndPutBack()
    {
        const FullMac mac;
        QCOMPARE(runOn(mac, "put-back --json").status, 1);
        const QStringList ids = mac.allIds();
        const Answer removed =
            runOn(mac, QStringList{u"remove"_qs, ids[3], ids[8], ids[7], u"--yes"_qs, u"--json"_qs});
        QCOMPARE(removed.json()[u"banner"_qs], u"Removed 3 items — freed 91.4 MB"_qs);
        QCOMPARE(removed.json()[u"left"_qs], 0);
        QCOMPARE(runOn(mac, "settings weeklyBytesFreed").output, QByteArray("91445000\n"));
        mac.writeFile(u"home/Downloads/setup.dmg"_qs, "in the way");
        compareTranscript(mac, u"cli/put_back.txt"_qs);
        QCOMPARE(QFileInfo(mac.home() + u"/Downloads/setup.dmg"_qs).size(), 10);
        QVERIFY(mac.has(u"Desktop/report again.pdf"_qs) && mac.has(u"Projects/old/node_modules/.kib"_qs));
        // The next removal, whatever it removes, is the one that can be put back.
        mac.age(u"Projects/old"_qs, 40 * Clutter::day);
        QCOMPARE(runOn(mac, {u"remove"_qs, ids[7], u"--yes"_qs}).status, 0);
        QCOMPARE(runOn(mac, "put-back --json").output, QByteArray("{\"left\":0,\"restored\":1}\n"));
        QVERIFY(mac.has(u"Projects/old/node_modules/.kib"_qs));
        QCOMPARE(runOn(mac, "remove derived-data --yes").status, 0);
        QCOMPARE(runOn(mac, "put-back --json").output, QByteArray("{\"left\":0,\"restored\":0}\n"));
    }

    void whatStaysIsLeft()
    {
        const FullMac mac;
        const QString dmg = mac.home() + u"/Downloads/setup.dmg"_qs;
        mac.writeFile(u"machine.json"_qs, QJsonDocument(QJsonObject{{u"now"_qs, double(Clutter::now)},
                                                                    {u"trashRefuses"_qs, QJsonArray{dmg}}})
                                              .toJson());
        const Answer answer = runOn(mac, {u"remove"_qs, u"deep:"_qs + dmg, u"--yes"_qs, u"--json"_qs});
        QCOMPARE(answer.status, 0);
        QCOMPARE(answer.json()[u"left"_qs], 1);
        QCOMPARE(answer.json()[u"banner"_qs], u"Removed 1 item — freed 30 MB"_qs);
        QVERIFY(QFile::exists(dmg));
    }

    void aRunningApplicationStays()
    {
        const QJsonObject loom = {{u"pid"_qs, 7}, {u"bundleID"_qs, u"org.example.loom"_qs}};
        const FullMac mac({{u"runningApplications"_qs, QJsonArray{loom}}});
        const Answer answer = runOn(mac, "remove derived-data app:org.example.loom --yes --json");
        QCOMPARE(answer.status, 1);
        QCOMPARE(answer.problems, QByteArray("swabbyctl: Loom is running: quit it first\n"));
        QCOMPARE(answer.json()[u"confirmed"_qs], false);
        QCOMPARE(effectsOf(mac), QStringList());
    }

    void anyRunningProgramCanBeQuit()
    {
        QList<QByteArray> rows;
        for (int pid = 100; pid < 200; ++pid)
            rows.append(QByteArray::number(pid) + " 1 9 9 9 /opt/loom");
        rows.append("300 1 0 0 9 /opt/Small");
        rows.append("301 1 0 0 9 /opt/Stuck");
        rows.append("302 1 0 0 9 /System/Library/CoreServices/Dock.app/Contents/MacOS/Dock");
        const FullMac mac(QJsonObject{{u"unsignalablePids"_qs, QJsonArray{301}}});
        mac.setProcesses(rows);
        const Answer small = runOn(mac, "quit 300 --yes --json");
        QCOMPARE(small.status, 0);
        QCOMPARE(small.json()[u"title"_qs], u"Quit Small?"_qs);
        QCOMPARE(small.json()[u"trustRatio"_qs], 85);
        const Answer stuck = runOn(mac, "quit 301 --force --yes --json");
        QCOMPARE(stuck.status, 1);
        QCOMPARE(stuck.json()[u"confirmed"_qs], true);
        const Answer dock = runOn(mac, "quit 302 --yes --json");
        QCOMPARE(dock.status, 1);
        QCOMPARE(dock.json()[u"confirmed"_qs], false);
        QVERIFY(dock.problems.contains("Dock keeps your session running; --force"));
        QCOMPARE(mac.events(u"signal"_qs), QJsonArray({QJsonObject{{u"pid"_qs, 300}, {u"signal"_qs, 15}}}));
        QCOMPARE(runOn(mac, "quit 302 --force --yes --json").status, 0);
        QCOMPARE(mac.events(u"signal"_qs)[1], QJsonValue(QJsonObject{{u"pid"_qs, 302}, {u"signal"_qs, 9}}));
    }
};

QTEST_GUILESS_MAIN(CleanupVerbsTest)
#include "CleanupVerbsTest.moc"
