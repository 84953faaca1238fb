#include "app/SingleInstance.h"

#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>
#include <QtNetwork/QLocalSocket>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <memory>

using namespace swabby;
using Standing = SingleInstance::Standing;

Q_DECLARE_METATYPE(swabby::StartRequest)

namespace {

// Asks from a thread of its own, as the first one answers in this one's event loop.
Standing claimElsewhere(const QString &path, const StartRequest &request)
{
    Standing standing = Standing::first;
    const std::unique_ptr<QThread> thread(
        QThread::create([&] { standing = SingleInstance(path).claim(request); }));
    thread->start();
    [&] { QTRY_VERIFY_WITH_TIMEOUT(thread->isFinished(), 20'000); }();
    thread->wait();
    return standing;
}

} // namespace

class SingleInstanceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theSecondAsksTheFirst_data()
    {
        QTest::addColumn<StartRequest>("request");
        QTest::newRow("to show itself") << StartRequest{true, std::nullopt};
        QTest::newRow("for a section") << StartRequest{true, MainSection::storage};
        QTest::newRow("for nothing") << StartRequest{false, std::nullopt};
    }
    void theSecondAsksTheFirst()
    {
        QFETCH(StartRequest, request);
        const QTemporaryDir folder;
        SingleInstance first(folder.filePath(u"socket"_qs));
        QCOMPARE(first.claim({}), Standing::first);
        QList<StartRequest> asked;
        connect(&first, &SingleInstance::asked, this, [&](const StartRequest &got) { asked.append(got); });
        QCOMPARE(claimElsewhere(folder.filePath(u"socket"_qs), request), Standing::handedOver);
        QCOMPARE(asked, QList<StartRequest>{request});
        // For another machine there is another first.
        QCOMPARE(claimElsewhere(folder.filePath(u"other"_qs), request), Standing::first);
    }

    void whatACrashLeftIsNoSwabby()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"socket"_qs);
        QFile left(path);
        QVERIFY(left.open(QIODevice::WriteOnly));
        SingleInstance next(path);
        QCOMPARE(next.claim({}), Standing::first);
        QCOMPARE(claimElsewhere(path, {}), Standing::handedOver);
    }

    void oneThatDoesNotAnswerIsNotWaitedForLong()
    {
        const QTemporaryDir folder;
        SingleInstance first(folder.filePath(u"socket"_qs));
        QCOMPARE(first.claim({}), Standing::first);
        // In the same thread: the first cannot answer while the second waits.
        SingleInstance second(folder.filePath(u"socket"_qs));
        QCOMPARE(second.claim({}), Standing::unanswered);
    }

    void nonsenseIsDropped_data()
    {
        QTest::addColumn<QByteArray>("words");
        QTest::newRow("unknown") << QByteArray("delete everything\n");
        QTest::newRow("endless") << QByteArray(10'000, 'x');
    }
    void nonsenseIsDropped()
    {
        QFETCH(QByteArray, words);
        const QTemporaryDir folder;
        SingleInstance first(folder.filePath(u"socket"_qs));
        QCOMPARE(first.claim({}), Standing::first);
        int count = 0;
        connect(&first, &SingleInstance::asked, this, [&] { ++count; });
        QLocalSocket socket;
        QSignalSpy ended(&socket, &QLocalSocket::disconnected);
        socket.connectToServer(folder.filePath(u"socket"_qs));
        socket.write(words);
        QTRY_COMPARE(ended.count(), 1);
        QCOMPARE(count, 0);
        QVERIFY(socket.readAll().isEmpty());
    }

    void eachMachineHasItsOwnPlace()
    {
        const QTemporaryDir folder;
        QDir(folder.path()).mkdir(u"a"_qs);
        const QString machine = folder.filePath(u"a"_qs);
        QCOMPARE(instancePath(machine), instancePath(machine + u"/../a/"_qs));
        QVERIFY(instancePath(machine) != instancePath(folder.path()));
        QVERIFY(instancePath(machine) != instancePath({}));
    }
};

QTEST_GUILESS_MAIN(SingleInstanceTest)
#include "SingleInstanceTest.moc"
