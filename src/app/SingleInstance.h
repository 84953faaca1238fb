#pragma once

#include "health/MainSection.h"
#include "platform/posix/Descriptor.h"

#include <QtCore/QLockFile>
#include <QtCore/QObject>
#include <QtCore/QSocketNotifier>

#include <memory>
#include <optional>

namespace swabby {

/// What somebody who starts Swabby a second time wants of the one that runs.
struct StartRequest {
    bool wantsWindow = true;
    std::optional<MainSection> section;

    bool operator==(const StartRequest &) const = default;
};

/// Sees to it that one Swabby runs for each machine: the first one listens, every further one asks it to come
/// to the front. Only the same person can ask.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    enum class Standing { first, handedOver, unanswered };

    /// The path is the place of the socket; see instancePath.
    explicit SingleInstance(const QString &path);
    /// Leaves no file behind.
    ~SingleInstance() override;

    /// Whether this is the first one, which listens from then on. Else the request was handed to the first,
    /// or that one did not answer. Waits a few seconds at most.
    Standing claim(const StartRequest &request);

Q_SIGNALS:
    void asked(const swabby::StartRequest &request);

private:
    void listen();
    void leave();
    void letIn();
    bool handOver(const StartRequest &request) const;

    QString m_path;
    QLockFile m_lock;
    Descriptor m_listener;
    std::unique_ptr<QSocketNotifier> m_isCalled;
};

/// Where the Swabby for that machine folder listens, or for this computer where there is none: a file of the
/// person's own in the folder for what lasts a session.
QString instancePath(const std::optional<QString> &machineFolder);

} // namespace swabby
