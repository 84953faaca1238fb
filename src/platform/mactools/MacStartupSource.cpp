#include "platform/mactools/MacStartupSource.h"

#include "platform/MachineFolder.h"
#include "platform/mactools/LaunchdText.h"
#include "platform/mactools/PropertyList.h"
#include "platform/mactools/ToolQuestions.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace swabby {
namespace {

bool isAppleSigned(Shell &shell, const QString &path)
{
    const auto text = ToolQuestions::signature(path.toStdString()).ask(shell);
    return text && namesAppleAuthority(*text);
}

LoadedJob loadedInfo(Shell &shell, const QString &label, LoginItemScope scope, quint32 userId)
{
    const auto text =
        ToolQuestions::job(label.toStdString(), scope == LoginItemScope::globalDaemon, userId).ask(shell);
    return text ? parseLoadedJob(*text) : LoadedJob();
}

} // namespace

std::vector<StartupEntry> MacStartupSource::entries()
{
    std::vector<StartupEntry> entries;
    addFolder(m_places.home + QStringLiteral("/Library/LaunchAgents"), LoginItemScope::userAgent, entries);
    addFolder(m_places.root + QStringLiteral("/Library/LaunchAgents"), LoginItemScope::globalAgent, entries);
    addFolder(m_places.root + QStringLiteral("/Library/LaunchDaemons"), LoginItemScope::globalDaemon,
              entries);
    addClassicItems(entries);
    return entries;
}

void MacStartupSource::addFolder(const QString &folder, LoginItemScope scope,
                                 std::vector<StartupEntry> &entries)
{
    for (QDirIterator files(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
         files.hasNext();) {
        const QString path = files.next();
        QFile file(path);
        // Opening a pipe would wait for its writer.
        if (!path.endsWith(QLatin1String(".plist")) || !QFileInfo(path).isFile() ||
            !file.open(QIODevice::ReadOnly))
            continue;
        std::optional<LaunchJob> job = parseLaunchJob(file.read(largestPropertyList + 1));
        if (!job)
            continue;
        job->programPath = withoutMark(job->programPath, m_places.root);
        const QString label = job->label.value_or(files.fileName());
        if (label.startsWith(QLatin1String("com.apple.")))
            continue;
        // A job whose program is unknown is not held against its maker.
        const bool isSigned = job->programPath.isEmpty() || isAppleSigned(m_shell, job->programPath);
        const LoadedJob loaded = loadedInfo(m_shell, label, scope, m_places.userId);
        entries.push_back(
            {.label = label,
             .definitionPath = path,
             .programPath = job->programPath,
             .scope = scope,
             .isLoaded = loaded.isLoaded,
             .programIsMissing = !job->programPath.isEmpty() && !QFileInfo::exists(job->programPath),
             .isVendorSigned = isSigned,
             .pid = loaded.pid});
    }
}

void MacStartupSource::addClassicItems(std::vector<StartupEntry> &entries)
{
    const auto text = ToolQuestions::loginItems().ask(m_shell, ToolOutput::apart);
    if (!text)
        return;
    m_permissions.note(Permission::automation, refusesAppleEvents(*text));
    for (const QString &name : parseLoginItemNames(*text))
        entries.push_back({.label = name,
                           .definitionPath = {},
                           .programPath = {},
                           .scope = LoginItemScope::classicLoginItem,
                           .isLoaded = true,
                           .programIsMissing = false,
                           .isVendorSigned = true,
                           .pid = std::nullopt});
}

} // namespace swabby
