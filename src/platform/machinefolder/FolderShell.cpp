#include "platform/machinefolder/FolderShell.h"

#include "platform/Utf8.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>

namespace swabby {
namespace {

std::string secondsText(double seconds)
{
    return QByteArray::number(seconds, 'f', QLocale::FloatingPointShortest).toStdString();
}

} // namespace

FolderShell::FolderShell(MachineFolder folder, const Clock &clock, const EventLog &events, StopToken stop)
    : m_folder(std::move(folder)),
      m_answers(m_folder.path),
      m_path(QFile::encodeName(m_folder.path).toStdString()),
      m_clock(clock),
      m_events(events),
      m_shell(std::move(stop))
{
}

std::optional<std::string> FolderShell::perform(const std::string &executable,
                                                const std::vector<std::string> &arguments, ToolOutput output,
                                                const StopToken &stop)
{
    if (!runs(executable))
        return m_answers.next(executable, arguments);
    const auto writeEvent = [&] {
        QJsonArray words = {textOf(executable)};
        for (const std::string &argument : arguments)
            words.append(textOf(argument));
        m_events.write(QStringLiteral("run"), words);
    };
    return m_shell.runWith({{"MACHINE_DIR", m_path}, {"MACHINE_NOW", secondsText(m_clock.now())}},
                           m_path + "/root" + executable, arguments, output, stop, writeEvent);
}

bool FolderShell::has(const std::string &executable)
{
    return runs(executable) || m_answers.knows(executable);
}

bool FolderShell::runs(const std::string &executable)
{
    const bool isThere = m_shell.has(m_path + "/root" + executable);
    if (isThere && !m_folder.runsTools && !m_answers.knows(executable))
        std::call_once(
            m_hasRemarked, m_folder.remark,
            QStringLiteral("the programs in this machine folder count as missing; --run-tools runs "
                           "them, with your own rights"));
    return isThere && m_folder.runsTools;
}

} // namespace swabby
