#include "app/SingleInstance.h"

#include "platform/posix/LocalSocket.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>
#include <QtCore/QThread>

#include <atomic>
#include <cstdlib>
#include <string_view>

namespace swabby {
namespace {

constexpr std::chrono::milliseconds patience{2'000};
constexpr std::size_t longestRequest = 64;
constexpr std::string_view taken = "ok\n";

/// For when the toolkit ends the program where it stands, as it does when the display goes.
std::atomic<SingleInstance *> listening = nullptr;

QByteArray written(const StartRequest &request)
{
    if (!request.wantsWindow)
        return "stay\n";
    return "show " + (request.section ? sectionName(*request.section).toLatin1() : QByteArray()) + '\n';
}

std::optional<StartRequest> read(const QByteArray &line)
{
    if (line == "stay\n")
        return StartRequest{false, std::nullopt};
    if (!line.startsWith("show "))
        return std::nullopt;
    return StartRequest{true, sectionFrom(QString::fromLatin1(line.mid(5).trimmed()))};
}

} // namespace

SingleInstance::SingleInstance(const QString &path) : m_path(path), m_lock(path + QStringLiteral(".lock"))
{
    // A lock counts for as long as its holder lives, however long that is.
    m_lock.setStaleLockTime(0);
}

SingleInstance::~SingleInstance()
{
    SingleInstance *own = this;
    listening.compare_exchange_strong(own, nullptr);
    leave();
}

SingleInstance::Standing SingleInstance::claim(const StartRequest &request)
{
    const QDeadlineTimer deadline(patience);
    do {
        if (m_lock.tryLock(0)) {
            listen();
            return Standing::first;
        }
        // Without a place for a lock there is no telling; better two than none.
        if (m_lock.error() != QLockFile::LockFailedError)
            return Standing::first;
        if (handOver(request))
            return Standing::handedOver;
        // The first one may be about to listen, or about to end.
        QThread::msleep(20);
    } while (!deadline.hasExpired());
    return Standing::unanswered;
}

bool SingleInstance::handOver(const StartRequest &request) const
{
    return askAt(m_path.toStdString(), written(request).toStdString(), taken.size(), patience) == taken;
}

void SingleInstance::leave()
{
    if (!m_listener.isOpen())
        return;
    m_isCalled.reset();
    m_listener = Descriptor();
    QFile::remove(m_path); // the next one waits for the lock
    m_lock.unlock();
}

void SingleInstance::listen()
{
    [[maybe_unused]] static const int isArranged = std::atexit([] {
        if (SingleInstance *left = listening)
            left->leave();
    });
    listening = this;
    m_listener = listenAt(m_path.toStdString());
    if (!m_listener.isOpen()) {
        qWarning("%s: %s", qPrintable(m_path), qPrintable(qt_error_string()));
        return;
    }
    m_isCalled = std::make_unique<QSocketNotifier>(m_listener.number(), QSocketNotifier::Read);
    connect(m_isCalled.get(), &QSocketNotifier::activated, this, &SingleInstance::letIn);
}

void SingleInstance::letIn()
{
    const auto caller = std::make_shared<Descriptor>(acceptFrom(m_listener));
    if (!caller->isOpen())
        return;
    auto *const speaks = new QSocketNotifier(caller->number(), QSocketNotifier::Read, this);
    const auto heard = std::make_shared<std::string>();
    connect(speaks, &QSocketNotifier::activated, this, [this, caller, heard, speaks] {
        const std::string words = hearFrom(*caller, longestRequest - heard->size());
        heard->append(words);
        // Until the line ends there may be more, but not from one that has hung up or goes on for ever.
        if (!words.empty() && words.back() != '\n' && heard->size() < longestRequest)
            return;
        speaks->setEnabled(false);
        speaks->deleteLater();
        const auto request = read(QByteArray::fromStdString(*heard));
        if (request && sayTo(*caller, taken))
            Q_EMIT asked(*request);
    });
}

QString instancePath(const std::optional<QString> &machineFolder)
{
    // A name of fixed length: a socket's path may not be long.
    const QString machine = machineFolder ? QFileInfo(*machineFolder).canonicalFilePath() : QString();
    const QByteArray name =
        QCryptographicHash::hash(machine.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + QStringLiteral("/swabby-") +
           QString::fromLatin1(name);
}

} // namespace swabby
