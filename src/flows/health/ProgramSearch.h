#pragma once

#include "platform/BackgroundWork.h"
#include "platform/LatestRun.h"
#include "state/AppState.h"

#include <QtCore/QObject>

#include <optional>

namespace swabby {

/// Everything that runs, the most load and memory first. Blocks for the system's listing.
QList<ProcessSample> everythingThatRuns(Machine &machine);

/// The one of them that somebody calls by this name, whatever the case: by its whole name first, then by a
/// part of it. None for a blank name.
std::optional<ProcessSample> programCalled(const QString &name, const QList<ProcessSample> &programs);

/// What runs, for as long as somebody searches it: what is published of it are short lists. Main thread.
class ProgramSearch : public QObject {
    Q_OBJECT

public:
    /// The work stands longer than this: a listing that hangs keeps nobody from closing a window.
    ProgramSearch(AppState &state, BackgroundWork &work);

    /// Looks now, and again after every refresh, until nobody searches any more.
    void setWanted(bool isWanted);
    /// Looks again, when somebody searches.
    void look();
    /// What ran when it looked last; nothing while nobody searches.
    const QList<ProcessSample> &programs() const { return m_programs; }

Q_SIGNALS:
    void changed();

private:
    AppState &m_state;
    BackgroundWork &m_work;
    bool m_isWanted = false;
    bool m_wantsAnother = false; ///< look, after the one under way
    QList<ProcessSample> m_programs;
    LatestRun m_look;
};

} // namespace swabby
