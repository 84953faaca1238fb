#pragma once

#include <QtCore/QString>

#include <functional>

namespace swabby {

/// A folder that describes a machine, and whether its programs are trusted.
struct MachineFolder {
    QString path;
    /// They run with the rights of whoever looks at the folder; else they count as missing.
    bool runsTools = false;
    /// Told in one line, once and on any thread, that a program that is there was not run.
    std::function<void(const QString &words)> remark = [](const QString & /*words*/) {};
};

} // namespace swabby
