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

/// What stands for such a folder's own path in what was recorded, so that it may lie anywhere.
inline constexpr const char *folderMark = "$MACHINE_DIR";

/// A path of a definition in a machine folder, with the folder that has this root in the place of the mark;
/// as it stands on a real machine, which has none.
inline QString withoutMark(const QString &path, const QString &root)
{
    const QString mark = QLatin1String(folderMark);
    return root.isEmpty() || !path.startsWith(mark + QLatin1Char('/'))
               ? path
               : root.left(root.lastIndexOf(QLatin1Char('/'))) + path.mid(mark.size());
}

} // namespace swabby
