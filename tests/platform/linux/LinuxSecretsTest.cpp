#include "PrivateBus.h"
#include "platform/linux/LinuxSecretStore.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>

#include <csignal>
#include <sys/stat.h>

using namespace swabby;
using namespace std::chrono_literals;

namespace {

const QString account = u"anthropicAPIKey"_qs;

QByteArray outputOf(const QString &program, const QStringList &arguments, const QByteArray &input = {})
{
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    return process.waitForFinished() && process.exitCode() == 0 ? process.readAllStandardOutput()
                                                                : QByteArray("failed");
}

QByteArray secretTool(const QString &verb, const QByteArray &input = {})
{
    QStringList arguments = {verb};
    if (verb == u"store")
        arguments += u"--label=by hand"_qs;
    if (verb == u"search")
        arguments += {u"--all"_qs, u"--unlock"_qs};
    return outputOf(
        u"secret-tool"_qs,
        arguments + QStringList{u"service"_qs, QLatin1String(secretService), u"account"_qs, account}, input);
}

/// A bus address is kept by the process once it has been used, so one bus serves all tests here, and the
/// service on it comes and goes.
class Keyring {
public:
    Keyring()
    {
        m_daemon.start(u"gnome-keyring-daemon"_qs,
                       {u"--unlock"_qs, u"--components=secrets"_qs, u"--foreground"_qs});
        m_daemon.write("test");
        isRunning = m_daemon.waitForBytesWritten();
        m_daemon.closeWriteChannel();
        isRunning = isRunning && outputOf(u"gdbus"_qs, {u"wait"_qs, u"--session"_qs, u"--timeout"_qs,
                                                        u"20"_qs, u"org.freedesktop.secrets"_qs}) != "failed";
    }
    ~Keyring()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

    void lock() const
    {
        outputOf(u"gdbus"_qs, {u"call"_qs, u"--session"_qs, u"--dest"_qs, u"org.freedesktop.secrets"_qs,
                               u"--object-path"_qs, u"/org/freedesktop/secrets"_qs, u"--method"_qs,
                               u"org.freedesktop.Secret.Service.Lock"_qs,
                               u"['/org/freedesktop/secrets/collection/login']"_qs});
    }

    void signal(int number) const { QVERIFY(::kill(static_cast<pid_t>(m_daemon.processId()), number) == 0); }

    bool isRunning = false;

private:
    QProcess m_daemon;
};

SecretReading reading(LinuxSecretStore store, Unlocking unlocking = Unlocking::never,
                      const QString &whose = account)
{
    return store.read(whose, unlocking, {});
}

std::optional<QString> read(const LinuxSecretStore &store, const QString &whose = account)
{
    return reading(store, Unlocking::never, whose).value;
}

qint64 millisecondsFor(const std::function<void()> &work)
{
    QElapsedTimer clock;
    clock.start();
    work();
    return clock.elapsed();
}

} // namespace

class LinuxSecretsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (m_bus.address.empty())
            QSKIP("no message bus on this machine");
        // Nothing here may reach the real home or its keyring.
        for (const char *place :
             {"HOME", "XDG_RUNTIME_DIR", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"}) {
            const QString folder = QString::fromStdString(m_home.path(place));
            QVERIFY(QDir().mkpath(folder) && ::chmod(qPrintable(folder), S_IRWXU) == 0);
            qputenv(place, folder.toUtf8());
        }
        qputenv("DBUS_SESSION_BUS_ADDRESS", QByteArray::fromStdString(m_bus.address));
    }

    void oneItemIsKept()
    {
        const Keyring keyring;
        QVERIFY(keyring.isRunning);
        QCOMPARE(read(store()), std::nullopt);
        for (const QString &secret :
             {u"sk-one"_qs, u"sk-two"_qs, QString::fromUtf8("sk-ünï 🧹 \" \\"), u""_qs}) {
            QVERIFY(store().write(secret, account));
            QCOMPARE(read(store()), secret);
            QCOMPARE(secretTool(u"search"_qs).count("label = "), 1);
            QCOMPARE(secretTool(u"lookup"_qs), secret.toUtf8());
        }
        QVERIFY(!store().write(u"sk"_qs + QChar(QChar::Null), account));
        QVERIFY(store().write(u"other"_qs, u"another"_qs));
        store().remove(account);
        store().remove(account); // no failure
        QCOMPARE(read(store()), std::nullopt);
        QCOMPARE(read(store(), u"another"_qs), u"other"_qs);
    }

    void anItemMadeByHandIsTheSameItem()
    {
        const Keyring keyring;
        secretTool(u"store"_qs, "sk-hand");
        QCOMPARE(read(store()), u"sk-hand"_qs);
        QVERIFY(store().write(u"sk-mine"_qs, account));
        const QByteArray found = secretTool(u"search"_qs);
        QCOMPARE(found.count("label = "), 1);
        QVERIFY(found.contains("label = by hand") && found.contains("secret = sk-mine"));
        secretTool(u"store"_qs, "\xff\xfe");
        QCOMPARE(read(store()), std::nullopt); // no text
        store().remove(account);
        QCOMPARE(read(store()), std::nullopt);
    }

    void aServiceThatCameAgainIsAskedAgain()
    {
        {
            const Keyring first;
            QVERIFY(store().write(u"sk-kept"_qs, account));
        }
        QCOMPARE(read(store()), std::nullopt); // nobody is there
        QVERIFY(!store().write(u"sk-lost"_qs, account));
        const Keyring second;
        QVERIFY(second.isRunning);
        QCOMPARE(read(store()), u"sk-kept"_qs);
    }

    void aLockedOneIsNotAskedToUnlock()
    {
        const Keyring keyring;
        QVERIFY(store().write(u"sk-kept"_qs, account));
        keyring.lock();
        QVERIFY(millisecondsFor([&] { QCOMPARE(reading(store()).keeper, SecretReading::Keeper::locked); }) <
                2'000);
        // Nobody is there to type a password, so it stays locked.
        QCOMPARE(reading(store(500ms), Unlocking::mayAsk).value, std::nullopt);
        QVERIFY(millisecondsFor([&] { QVERIFY(!store(500ms).write(u"sk-new"_qs, account)); }) < 5'000);
    }

    void aSilentOneIsGivenUp()
    {
        // A service that takes questions and answers none: the daemon, stopped.
        const Keyring silent;
        QCOMPARE(read(store()), u"sk-kept"_qs);
        silent.signal(SIGSTOP);
        for (int time = 0; time < 8; ++time)
            QVERIFY(millisecondsFor([&] {
                        QCOMPARE(reading(store(200ms)).keeper, SecretReading::Keeper::silent);
                    }) < 3'000);
        StopSource stop;
        stop.requestStop();
        QCOMPARE(read(LinuxSecretStore(m_bus.address, {1h, 1h, 1h}, stop.token())), std::nullopt);
        silent.signal(SIGCONT);
        QVERIFY(waitUntil([&] { return read(store()) == u"sk-kept"_qs; }));
    }

private:
    LinuxSecretStore store(std::chrono::milliseconds patience = 10s) const
    {
        return LinuxSecretStore(m_bus.address, {patience, patience, patience}, StopToken());
    }

    StandIn m_home;
    PrivateBus m_bus;
};

QTEST_GUILESS_MAIN(LinuxSecretsTest)
#include "LinuxSecretsTest.moc"
