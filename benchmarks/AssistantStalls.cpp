// How long the main thread is kept from its events while twenty questions to the model are under way, twenty
// times over, beside the same time of an event loop with nothing to do. The server answers each after a while
// of its own.
#include "ai/CloudAI.h"
#include "benchmarks/StallMeter.h"
#include "machine/MachineChoice.h"
#include "tests/support/LoopbackServer.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace {

using namespace swabby;

constexpr int rounds = 20;
constexpr int questions = 20;
constexpr int slowestMilliseconds = 300;

QCoro::Task<> askOnce(CloudAI &ai, int &answered, int &open)
{
    const auto answer = co_await ai.respond(QStringLiteral("Be kind."), QStringLiteral("Why?"), 400);
    answered += answer.value ? 1 : 0;
    if (--open == 0)
        QCoreApplication::quit();
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir folder;
    QFile description(folder.filePath(QStringLiteral("machine.json")));
    if (!description.open(QIODevice::WriteOnly) || description.write("{}") != 2)
        return 1;
    description.close();
    QDir(folder.path()).mkpath(QStringLiteral("home"));
    prepareProcess();
    QCoreApplication application(argc, argv);
    int delay = 0;
    const LoopbackServer server([&](QTcpSocket &socket, const HttpRequest &) {
        delay = delay % slowestMilliseconds + slowestMilliseconds / questions;
        QTimer::singleShot(delay, &socket, [&socket] {
            socket.write(httpAnswer(200, modelReply(QStringLiteral("Because."))));
            socket.disconnectFromHost();
        });
    });

    int answered = 0;
    QElapsedTimer whole;
    whole.start();
    {
        QString problem;
        CloudAI ai(chooseMachine(MachineFolder{folder.path()}, &problem),
                   {.direct = server.url(), .proxy = server.url()});
        StallMeter meter;
        meter.start();
        for (int round = 0; round < rounds; ++round) {
            int open = questions;
            for (int question = 0; question < questions; ++question)
                askOnce(ai, answered, open);
            QCoreApplication::exec();
        }
        meter.report("while asking");
    }
    const qint64 elapsed = whole.elapsed();
    std::printf("%d of %d answered, %.0f ms for each round of %d; the slowest answer takes %d ms\n", answered,
                rounds * questions, static_cast<double>(elapsed) / rounds, questions, slowestMilliseconds);
    StallMeter control;
    QTimer::singleShot(static_cast<int>(elapsed), &application, &QCoreApplication::quit);
    control.start();
    QCoreApplication::exec();
    control.report("with nothing to do");
    return answered == rounds * questions ? 0 : 1;
}
