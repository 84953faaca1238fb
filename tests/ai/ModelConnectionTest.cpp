#include "ai/CloudAI.h"
#include "platform/posix/EnvironmentKey.h"
#include "support/LoopbackServer.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QTimer>
#include <QtNetwork/QSslKey>
#include <QtNetwork/QSslSocket>
#include <QtTest/QTest>

using namespace swabby;
using namespace std::chrono_literals;

namespace {

/// The answer, however long it takes.
ModelResponse wait(const QFuture<ModelResponse> &future)
{
    return waitUntil([&] { return future.isFinished(); }) ? future.result() : ModelResponse{.body = "never"};
}

ModelResponse post(const QUrl &address, std::chrono::milliseconds time = 60s, const QByteArray &key = "sk")
{
    ModelConnection connection;
    return wait(connection.post({address, key, "{}", time}));
}

/// Sends a piece again and again until nobody is there.
LoopbackServer::Respond drip(const QByteArray &start, const QByteArray &piece,
                             std::chrono::milliseconds pause)
{
    return [=](QTcpSocket &socket, const HttpRequest &) {
        socket.write(start);
        auto *timer = new QTimer(&socket);
        QObject::connect(timer, &QTimer::timeout, &socket, [&socket, piece] { socket.write(piece); });
        timer->start(pause);
    };
}

} // namespace

class ModelConnectionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qunsetenv("ANTHROPIC_API_KEY");
        takeKeyFromEnvironment();
    }

    void redirectsAreNotFollowed()
    {
        LoopbackServer elsewhere(always(httpAnswer(200, "{}")));
        for (const int status : {301, 302, 303, 307, 308}) {
            LoopbackServer server(
                always(httpAnswer(status, "{}", "Location: " + elsewhere.url().toEncoded() + "\r\n")));
            const ModelResponse response = post(server.url());
            QVERIFY(!response.body && response.wasSent && server.requests().size() == 1);
        }
        QCOMPARE(elsewhere.connections(), 0);
    }

    void aStrangersCertificateEndsIt()
    {
        if (QStandardPaths::findExecutable(u"openssl"_qs).isEmpty())
            QSKIP("no openssl to make a certificate with");
        const QTemporaryDir folder;
        const QString certificate = folder.filePath(u"certificate"_qs);
        const QString key = folder.filePath(u"key"_qs);
        QProcess maker;
        maker.start(u"openssl"_qs,
                    {u"req"_qs, u"-x509"_qs, u"-newkey"_qs, u"rsa:2048"_qs, u"-nodes"_qs, u"-batch"_qs,
                     u"-subj"_qs, u"/CN=127.0.0.1"_qs, u"-addext"_qs, u"subjectAltName=IP:127.0.0.1"_qs,
                     u"-keyout"_qs, key, u"-out"_qs, certificate});
        QVERIFY(maker.waitForFinished() && maker.exitCode() == 0);
        QFile keyFile(key);
        QVERIFY(keyFile.open(QIODevice::ReadOnly));
        QSslConfiguration encryption = QSslConfiguration::defaultConfiguration();
        encryption.setLocalCertificateChain(QSslCertificate::fromPath(certificate));
        encryption.setPrivateKey(QSslKey(keyFile.readAll(), QSsl::Rsa));
        LoopbackServer server(always(httpAnswer(200, modelReply(u"Trust me."_qs))), encryption);
        TemporaryMachine machine;
        qputenv("ANTHROPIC_API_KEY", "sk-a");
        takeKeyFromEnvironment();
        CloudAI ai(machine.open(), {.direct = server.url(), .proxy = server.url()});
        const auto answer = QCoro::waitFor(ai.ask(u"Why?"_qs, {}));
        QCOMPARE(answer.value.explanation, u"Couldn't come up with an answer right now."_qs);
        QVERIFY(!answer.wasSent);
        QCOMPARE(server.bytesReceived(), 0);

        // With the same certificate trusted it is the answer that comes.
        encryption.setCaCertificates(encryption.localCertificateChain());
        QSslSocket socket;
        socket.setSslConfiguration(encryption);
        socket.connectToHostEncrypted(u"127.0.0.1"_qs, static_cast<quint16>(server.url().port()));
        QVERIFY(waitUntil([&] { return socket.isEncrypted(); }));
    }

    void nothingIsAnswered()
    {
        // Nothing, no HTTP, less than announced, half a chunk and half a header. An end that is missing
        // behind a whole answer is not noticed, and not missed.
        for (const QByteArray &answer :
             {QByteArray(), QByteArray("220 mail.example ESMTP\r\n"),
              QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 90\r\n\r\n{}"),
              "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2f\r\n" + modelReply(u"x"_qs).first(30),
              QByteArray("HTTP/1.1 200 OK\r\nContent-Le")}) {
            LoopbackServer server(always(answer));
            const ModelResponse response = post(server.url());
            QVERIFY(!response.body || !messagesReplyText(*response.body));
            QVERIFY(response.wasSent);
            QCOMPARE(server.requests().size(), 1); // never said twice
        }
    }

    void aSteadyDripEndsInTime()
    {
        // Before the header, in it, and in the body.
        for (const QByteArray start :
             {"", "HTTP/1.1 200 OK\r\nX: ", "HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n"}) {
            LoopbackServer server(drip(start, start.isEmpty() ? "" : "x", 10ms));
            QElapsedTimer clock;
            clock.start();
            QCOMPARE(post(server.url(), 1s).failure, ModelFailure::offline);
            QVERIFY(clock.elapsed() >= 1'000); // or it was no drip
            QVERIFY(clock.elapsed() < 55'000);
        }
    }

    void aLongAnswerIsCutOff()
    {
        // Just short enough, a byte too long, and far too long.
        for (const qint64 size : {1'000'000LL, 1'000'001LL, 2'000'000'000LL}) {
            std::atomic<qint64> taken = 0;
            LoopbackServer server([&](QTcpSocket &socket, const HttpRequest &) {
                const auto sendMore = [&] {
                    constexpr qint64 piece = 65'536;
                    if (socket.bytesToWrite() == 0 && taken < size)
                        taken += socket.write(QByteArray(std::min(piece, size - taken), 'x'));
                };
                QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, sendMore);
                socket.write("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(size) + "\r\n\r\n");
            });
            const ModelResponse response = post(server.url());
            QCOMPARE(response.body.has_value(), size == 1'000'000);
            // How much is on its way when the line is cut depends on who gets to run; far from all of it is.
            QVERIFY2(taken < 1'000'000'000, qPrintable(QString::number(taken)));
        }
    }

    void nothingIsRemembered()
    {
        LoopbackServer server(always(httpAnswer(200, "{}", "Set-Cookie: a=b; Path=/\r\n")));
        ModelConnection connection;
        for (int count = 1; count <= 3; ++count)
            QCOMPARE(wait(connection.post({server.url(), "sk", "{}"})).body, QByteArray("{}"));
        QCOMPARE(server.requests().size(), 3);
        for (const HttpRequest &request : server.requests())
            QVERIFY(!request.headers.contains("cookie"));
    }

    void whetherItWasSent()
    {
        const QUrl nobody = LoopbackServer(always({})).url();
        LoopbackServer server(always(httpAnswer(200, "{}")));
        QVERIFY(!post(nobody).wasSent);
        QVERIFY(!post(QUrl(u"http://gateway.example/"_qs)).wasSent);
        QCOMPARE(post(server.url(), 60s, "sk\r\nX-Other: 1").failure, ModelFailure::keyRefused);
        QCOMPARE(server.connections(), 0);
        QVERIFY(post(server.url()).wasSent);
    }

    void twentyAreUnderWayAtOnce()
    {
        constexpr int crowd = 20;
        QList<QTcpSocket *> sockets; // on the server's thread
        LoopbackServer server([&](QTcpSocket &socket, const HttpRequest &) {
            sockets.append(&socket);
            if (sockets.size() == crowd)
                for (QTcpSocket *waiting : std::as_const(sockets))
                    always(httpAnswer(200, modelReply(u"At last."_qs)))(*waiting, {});
        });
        TemporaryMachine machine;
        CloudAI ai(machine.open(), {.direct = {}, .proxy = server.url()});
        int answered = 0;
        for (int count = 0; count < crowd; ++count)
            ai.respond(u"S"_qs, u"P"_qs, 1).then([&](const auto &answer) {
                answered += answer.value == u"At last."_qs ? 1 : 0;
            });
        QVERIFY(waitUntil([&] { return answered == crowd; }));
    }

    void aHeaderWithoutAnEndEndsIt()
    {
        // As fast as it is taken: it is the work that ends it, long before the minute does.
        LoopbackServer server([](QTcpSocket &socket, const HttpRequest &) {
            const QByteArray lines = ("X: " + QByteArray(100, 'x') + "\r\n").repeated(1'000);
            QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, [&socket, lines] {
                if (socket.bytesToWrite() < lines.size())
                    socket.write(lines);
            });
            socket.write("HTTP/1.1 200 OK\r\n");
        });
        QElapsedTimer clock;
        clock.start();
        QVERIFY(post(server.url()).failure);
        QVERIFY(clock.elapsed() < 55'000);
    }

    void aStoppedRequestEnds()
    {
        LoopbackServer server([](QTcpSocket &, const HttpRequest &) {}); // never answers
        ModelConnection connection;
        StopSource stop;
        const auto response = connection.post({server.url(), {}, "{}"}, stop.token());
        QVERIFY(waitUntil([&] { return server.requests().size() == 1; }));
        stop.requestStop();
        QCOMPARE(wait(response).failure, ModelFailure::cancelled);
    }

    void goingAwayEndsWhatIsUnderWay()
    {
        LoopbackServer server([](QTcpSocket &, const HttpRequest &) {}); // never answers
        TemporaryMachine machine;
        qputenv("ANTHROPIC_API_KEY", "sk-a");
        takeKeyFromEnvironment();
        auto ai = std::make_unique<CloudAI>(machine.open(), ModelAddresses{server.url(), server.url()});
        QStringList answers;
        const auto note = [&](const Answered<AskAnswer> &answer) {
            answers.append(answer.value.explanation);
        };
        for (int count = 0; count < 3; ++count)
            ai->ask(u"Why?"_qs, {}).then(note);
        QVERIFY(waitUntil([&] { return server.requests().size() == 3; }));
        ai->ask(u"Why not?"_qs, {}).then(note); // its key is perhaps still being looked up
        ai.reset();
        QVERIFY(waitUntil([&] { return answers.size() == 4; }));
        QCOMPARE(answers.count(u"Couldn't come up with an answer right now."_qs), 4);
    }
};

QTEST_GUILESS_MAIN(ModelConnectionTest)
#include "ModelConnectionTest.moc"
