#pragma once

#include "cleanup/Quitting.h"
#include "platform/BackgroundWork.h"
#include "platform/LatestRun.h"
#include "state/AppState.h"

#include <QCoroTask>

#include <QtCore/QObject>

namespace swabby {

/// Ends programs off the main thread, and takes those that are gone off the lists. Main thread.
class QuitFlow : public QObject {
    Q_OBJECT

public:
    explicit QuitFlow(AppState &state);

    /// Whether applications here are asked to quit, and so can still save.
    bool canAsk() const { return m_state.machine().runningApplications->canAsk(); }
    const MachineWords &words() const { return m_state.machine().words; }
    /// Finds out who the shown program is, while the person still reads the question.
    QFuture<std::optional<ProcessIdentity>> identify(const ProcessSample &shown);
    /// Ends it if it still is that one. Gives whether it could be told to.
    QCoro::Task<bool> quit(ProcessSample shown, QFuture<std::optional<ProcessIdentity>> identity,
                           Quitting::Force force);

Q_SIGNALS:
    /// A quit that was confirmed has been carried out, or could not be.
    void finished(std::int32_t pid, bool wasTold);

private:
    AppState &m_state;
    BackgroundWork m_work;
    LatestRun m_quits;
};

} // namespace swabby
