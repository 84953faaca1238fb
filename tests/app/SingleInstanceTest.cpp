#include "app/SingleInstance.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>
#include <QtNetwork/QLocalSocket>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <memory>

using namespace swabby;
using Standing = SingleInstance::Standing;

namespace {

// Asks from a thread of its own, as the first one answers in this one's event loop.
Standing claimElsewhere(const QString &path, const StartRequest &request)
{
    Standing standing = Standing::first;
    const std::unique_ptr<QThread> thread(
        QThread::create([&] { standing = SingleInstance(path).claim(request); }));
    thread->start();
    [&] { QVERIFY(waitUntil([&] { return thread->isFinished(); })); }();
    thread->wait();
    return standing;
}

} // namespace

class SingleInstanceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void theSecondAsksTheFirst()
    {
        SingleInstance first(path());
        QCOMPARE(first.claim({}), Standing::first);
        QList<StartRequest> asked;
        connect(&first, &SingleInstance::asked, this, [&](const StartRequest &got) { asked.append(got); });
        const QList<StartRequest> requests = {{true, {}}, {true, MainSection::storage}, {false, {}}};
        for (const StartRequest &request : requests)
            QCOMPARE(claimElsewhere(path(), request), Standing::handedOver);
        QCOMPARE(asked, requests);
        QVERIFY(QFile::exists(path()));
        // For another machine there is another first.
        QCOMPARE(claimElsewhere(path() + u"2"_qs, {}), Standing::first);
        // Which has ended by now.
        QCOMPARE(QDir(m_folder->path()).entryList({u"socket2*"_qs}, QDir::AllEntries | QDir::System),
                 QStringList());
    }

    void whatACrashLeftIsNoSwabbyAndSilenceIsNotWaitedForLong()
    {
        QFile left(path());
        QVERIFY(left.open(QIODevice::WriteOnly));
        SingleInstance next(path());
        QCOMPARE(next.claim({}), Standing::first);
        QCOMPARE(claimElsewhere(path(), {}), Standing::handedOver);
        // In the same thread: the first cannot answer while the second waits.
        QCOMPARE(SingleInstance(path()).claim({}), Standing::unanswered);
    }

    void nonsenseIsDropped()
    {
        SingleInstance first(path());
        QCOMPARE(first.claim({}), Standing::first);
        const QSignalSpy asked(&first, &SingleInstance::asked);
        for (const QByteArray &words : {QByteArray("delete everything\n"), QByteArray(10'000, 'x')}) {
            QLocalSocket socket;
            const QSignalSpy ended(&socket, &QLocalSocket::disconnected);
            socket.connectToServer(path());
            socket.write(words);
            QVERIFY(waitUntil([&] { return ended.count() == 1; }));
            QVERIFY(asked.isEmpty() && socket.readAll().isEmpty());
        }
    }

    void eachMachineHasItsOwnPlace()
    {
        QDir(m_folder->path()).mkdir(u"a"_qs);
        const QString machine = m_folder->filePath(u"a"_qs);
        QCOMPARE(instancePath(machine), instancePath(machine + u"/../a/"_qs));
        QVERIFY(instancePath(machine) != instancePath(m_folder->path()));
        QVERIFY(instancePath(machine) != instancePath({}));
    }

private:
    QString path() const { return m_folder->filePath(u"socket"_qs); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(SingleInstanceTest)
#include "SingleInstanceTest.moc"
