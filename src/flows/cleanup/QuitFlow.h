#pragma once

#include "cleanup/Quitting.h"
#include "platform/BackgroundWork.h"
#include "platform/LatestRun.h"
#include "state/AppState.h"

#include <QCoroTask>

#include <QtCore/QObject>

#include <vector>

namespace swabby {

/// What quitting a program comes down to, before anybody has agreed to it.
struct QuitPlan {
    QFuture<std::optional<ProcessIdentity>> identity; ///< found out while the person still reads the question
    Quitting::Means means = Quitting::Means::terminate;
    bool isAnew = false; ///< it was asked a moment ago and did not end
};

/// Ends programs off the main thread, and takes those that are gone off the lists. Main thread.
class QuitFlow : public QObject {
    Q_OBJECT

public:
    explicit QuitFlow(AppState &state);

    const MachineWords &words() const { return m_state.machine().words; }
    /// Whether every application here is asked before anything is lost.
    bool asksAll() const { return m_state.machine().runningApplications->asksAll(); }
    /// How the shown program would be quit. There at once where nothing has to be looked at first.
    QFuture<QuitPlan> plan(const ProcessSample &shown, Quitting::Force force);
    /// Quits it as planned if it still is that one, and says what came of it; of what runs on first, a second
    /// time when it ends within two minutes.
    QCoro::Task<Quitting::Outcome> quit(ProcessSample shown, QuitPlan plan);

Q_SIGNALS:
    /// A quit that was confirmed has been carried out, or could not be.
    void finished(std::int32_t pid, swabby::Quitting::Outcome outcome);

private:
    /// A program that was asked, and when: seconds since 1970.
    struct Asked {
        ProcessIdentity process;
        double time = 0;
    };

    void finish(std::int32_t pid, Quitting::Outcome outcome);

    AppState &m_state;
    std::vector<Asked> m_asked;
    BackgroundWork m_work;
    BackgroundWork m_telling; ///< each waits to see its program end
    BackgroundWork m_waits;   ///< for what runs on
    LatestRun m_quits;
};

} // namespace swabby
