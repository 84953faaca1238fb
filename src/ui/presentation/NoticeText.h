#pragma once

#include <QtCore/QString>

namespace swabby {

/// What came of something else than was asked for.
enum class Notice {
    notStored,         ///< a setting
    historyNotStored,  ///< for the named reason
    notFollowed,       ///< by the system, of a setting that it keeps
    notAPath,          ///< what was typed
    notThere,          ///< at the named path
    notTaken,          ///< what was typed; the name is what is taken
    nothingToShowWith, ///< a file or the system's settings
    notQuit,           ///< the named program
    isGone,            ///< the named program, before it was quit
    holdsSession,      ///< the named program, which is not quit from here
    isRunning,         ///< the named application, which was to be removed
};

/// The quiet word about it; the name, or the reason, is made harmless.
QString noticeText(Notice notice, const QString &name = {});

} // namespace swabby
