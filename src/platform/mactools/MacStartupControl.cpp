#include "platform/mactools/MacStartupControl.h"

#include "platform/MachineFolder.h"
#include "platform/mactools/LaunchdText.h"
#include "platform/mactools/PropertyList.h"
#include "platform/posix/RenameWithoutReplacing.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace swabby {
namespace {

constexpr auto launchctl = "/bin/launchctl";

} // namespace

void MacStartupControl::endJob(const QString &label, const QString & /*definitionPath*/)
{
    m_shell.run(launchctl,
                {"bootout", QStringLiteral("gui/%1/%2").arg(m_places.userId).arg(label).toStdString()});
}

void MacStartupControl::beginJob(const QString &definitionPath)
{
    m_shell.run(launchctl, {"bootstrap", QStringLiteral("gui/%1").arg(m_places.userId).toStdString(),
                            QFile::encodeName(definitionPath).toStdString()});
}

bool MacStartupControl::setAside(const QString &definitionPath)
{
    return renameWithoutReplacing(definitionPath, asideName(definitionPath));
}

bool MacStartupControl::putBack(const QString &definitionPath)
{
    return renameWithoutReplacing(asideName(definitionPath), definitionPath);
}

std::vector<StartupEntry> MacStartupControl::setAsideEntries()
{
    std::vector<StartupEntry> entries;
    const QString ending = asideName(QStringLiteral(".plist"));
    for (QDirIterator files(m_places.home + QStringLiteral("/Library/LaunchAgents"),
                            QDir::Files | QDir::Hidden | QDir::System);
         files.hasNext();) {
        const QString path = files.next();
        QFile file(path);
        // Opening a pipe would wait for its writer.
        if (!path.endsWith(ending) || !QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
            continue;
        const QString definition = path.chopped(static_cast<qsizetype>(qstrlen(setAsideEnding)));
        const std::optional<LaunchJob> job = parseLaunchJob(file.read(largestPropertyList + 1));
        StartupEntry entry;
        entry.label = job && job->label ? *job->label : QFileInfo(definition).fileName();
        entry.definitionPath = definition;
        entry.programPath = job ? withoutMark(job->programPath, m_places.root) : QString();
        entry.programIsMissing = !entry.programPath.isEmpty() && !QFileInfo::exists(entry.programPath);
        entries.push_back(std::move(entry));
    }
    return entries;
}

} // namespace swabby
