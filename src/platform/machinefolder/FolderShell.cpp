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

FolderShell::FolderShell(const QString &folder, const Clock &clock, const EventLog &events, StopToken stop)
    : m_folder(QFile::encodeName(folder).toStdString()),
      m_clock(clock),
      m_events(events),
      m_shell(std::move(stop))
{
}

std::optional<std::string> FolderShell::run(const std::string &executable,
                                            const std::vector<std::string> &arguments, ToolOutput output,
                                            const StopToken &stop)
{
    const auto writeEvent = [&] {
        QJsonArray words = {textOf(executable)};
        for (const std::string &argument : arguments)
            words.append(textOf(argument));
        m_events.write(QStringLiteral("run"), words);
    };
    return m_shell.runWith({{"MACHINE_DIR", m_folder}, {"MACHINE_NOW", secondsText(m_clock.now())}},
                           m_folder + "/root" + executable, arguments, output, stop, writeEvent);
}

} // namespace swabby
