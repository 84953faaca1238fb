#pragma once

#include "cleanup/Quitting.h"

#include <QtCore/QString>

namespace swabby {

/// What came of something else than was asked for.
enum class Notice {
    notStored,         ///< the named setting
    historyNotStored,  ///< for the named reason
    notFollowed,       ///< by the system, of the named setting that it keeps
    notAPath,          ///< what was typed
    notThere,          ///< at the named path
    nothingToShowWith, ///< the named file or window of the system's
    isGone,            ///< the named program, before it was quit
    isRunning,         ///< the named application, which was to be removed
};

/// The quiet word about it; the name, or the reason, is made harmless.
QString noticeText(Notice notice, const QString &name = {});
/// That what was typed for the named setting was not kept, and what it takes.
QString notTakenText(const QString &name, const QString &taken);

/// About a program that is not quit from here.
QString notQuitHereText(const ProcessSample &process);
/// About one that was to be quit by these means; empty when it is gone.
QString quitText(const ProcessSample &process, Quitting::Means means, Quitting::Outcome outcome);

/// Why a window cannot be opened, of what the toolkit said of its files: one line without a full stop, which
/// names the module that is not installed and what Debian calls it.
QString unopenedText(const QString &errors);

} // namespace swabby
