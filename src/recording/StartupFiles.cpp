#include "recording/StartupFiles.h"

#include "platform/MachineFolder.h"
#include "platform/Utf8.h"
#include "platform/mactools/ToolQuestions.h"
#include "recording/MacTexts.h"
#include "recording/PropertyLists.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>

namespace swabby {
namespace {

const QString ending = QStringLiteral(".plist");

std::filesystem::path pathOf(const QString &name)
{
    return QFile::encodeName(name).toStdString();
}

class StartupFiles {
public:
    StartupFiles(Machine &machine, Rewriting &rewriting, FolderWriter &folder, ToolTexts &texts)
        : m_machine(machine), m_rewriting(rewriting), m_folder(folder), m_texts(texts)
    {
    }

    void add(const StartupEntry &entry)
    {
        const QString label = m_rewriting.name(entry.label);
        const std::string program = programPlace(entry);
        write(entry, folderOf(entry.scope), {});
        const auto add = [&](const ToolQuestion &question, const std::string &text) {
            m_texts.addMissing(question.executable, question.arguments, text);
        };
        add(ToolQuestions::job(label.toStdString(), entry.scope == LoginItemScope::globalDaemon,
                               m_machine.places.userId),
            jobText({entry.isLoaded, entry.pid}));
        if (!program.empty())
            add(ToolQuestions::signature(program), signatureText(entry.isVendorSigned));
    }

    void addTurnedOff(const StartupEntry &entry)
    {
        write(entry, folderOf(LoginItemScope::userAgent), QLatin1String(setAsideEnding));
    }

private:
    static std::string folderOf(LoginItemScope scope)
    {
        return placeIn(scope == LoginItemScope::userAgent      ? "home/Library/LaunchAgents/"
                       : scope == LoginItemScope::globalDaemon ? "root/Library/LaunchDaemons/"
                                                               : "root/Library/LaunchAgents/");
    }

    /// Empty when nobody knows it. One that is missing on a described machine is looked for where it says.
    std::string programPlace(const StartupEntry &entry)
    {
        return entry.programPath.startsWith(QLatin1Char('/')) ? m_rewriting.path(pathOf(entry.programPath))
                                                              : std::string();
    }

    void write(const StartupEntry &entry, const std::string &folder, const QString &aside)
    {
        const std::string program = programPlace(entry);
        if (program.starts_with(folderMark) && !entry.programIsMissing)
            m_folder.addFile(program);
        std::vector<std::pair<QString, QString>> texts = {
            {QStringLiteral("Label"), m_rewriting.name(entry.label)}};
        if (!program.empty())
            texts.emplace_back(QStringLiteral("Program"), textOf(program));
        QString file = m_rewriting.name(QFileInfo(entry.definitionPath).fileName());
        if (!file.endsWith(ending))
            file += ending;
        // Elsewhere two folders of one kind may have the same.
        while (m_files.contains(textOf(folder) + file))
            file.insert(file.size() - ending.size(), QLatin1Char('+'));
        m_files.insert(textOf(folder) + file);
        m_folder.addFile(folder + (file + aside).toStdString(), propertyList(texts));
    }

    Machine &m_machine;
    Rewriting &m_rewriting;
    FolderWriter &m_folder;
    ToolTexts &m_texts;
    QSet<QString> m_files;
};

} // namespace

void addStartupFiles(const Heard &heard, Machine &machine, Rewriting &rewriting, FolderWriter &folder,
                     ToolTexts &texts)
{
    StartupFiles files(machine, rewriting, folder, texts);
    QStringList classic;
    for (const StartupEntry &entry : heard.startup)
        if (entry.scope == LoginItemScope::classicLoginItem)
            classic.append(rewriting.name(entry.label));
        else
            files.add(entry);
    for (const StartupEntry &entry : machine.startupControl->setAsideEntries())
        files.addTurnedOff(entry);
    const ToolQuestion items = ToolQuestions::loginItems();
    if (!classic.isEmpty())
        texts.addMissing(items.executable, items.arguments,
                         classic.join(QStringLiteral(", ")).toStdString() + '\n');
}

} // namespace swabby
