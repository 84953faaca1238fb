#pragma once

#include "platform/StartupSource.h"

#include <QtCore/QString>

#include <vector>

namespace swabby {

/// What the file name of a definition that was set aside ends in; systems that look for definitions by their
/// ending do not see it.
inline constexpr auto setAsideEnding = ".disabled";

inline QString asideName(const QString &definitionPath)
{
    return definitionPath + QLatin1String(setAsideEnding);
}

/// Changes what of the user's own starts by itself. Blocks (tools, files): background work, or a terminal.
class StartupControl {
public:
    virtual ~StartupControl() = default;

    /// Ends the job for this session. That it did not run, or could not be ended, is not told.
    virtual void endJob(const QString &label, const QString &definitionPath) = 0;
    /// Lets the job start again in this session, where the system can do that.
    virtual void beginJob(const QString &definitionPath) = 0;

    /// Renames the definition to its name with the ending above, where it starts nothing any more, and never
    /// over something of that name; everybody's that can be overridden stays, and is. False when everything
    /// stays as it was.
    virtual bool setAside(const QString &definitionPath) = 0;
    /// The way back, with the path the definition had before. Also never over something.
    virtual bool putBack(const QString &definitionPath) = 0;
    /// What was set aside, each with the path its definition had before.
    virtual std::vector<StartupEntry> setAsideEntries() = 0;
};

} // namespace swabby
