#include "platform/posix/TerminationSignals.h"

#include <QtCore/QCoreApplication>

#include <csignal>
#include <pthread.h>
#include <thread>
#include <unistd.h>

namespace swabby {
namespace {

constexpr int exitStatusOfSignals = 128;

} // namespace

TerminationSignals::TerminationSignals()
{
    sigset_t ending;
    sigemptyset(&ending);
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&ending, number);
    ::pthread_sigmask(SIG_BLOCK, &ending, nullptr);
    std::thread([ending] {
        int number = 0;
        ::sigwait(&ending, &number);
        if (QCoreApplication *application = QCoreApplication::instance())
            QMetaObject::invokeMethod(
                application, [number] { QCoreApplication::exit(exitStatusOfSignals + number); },
                Qt::QueuedConnection);
        ::sigwait(&ending, &number);
        ::_exit(exitStatusOfSignals + number);
    }).detach();
}

} // namespace swabby
