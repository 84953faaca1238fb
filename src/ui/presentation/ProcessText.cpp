#include "ui/presentation/ProcessText.h"

#include "engine/ByteCount.h"
#include "engine/ProgramFigures.h"
#include "ui/presentation/PlainWords.h"
#include "ui/presentation/ThemeColors.h"

#include <QtCore/QRegularExpression>

#include <algorithm>

namespace swabby {
namespace {

/// A load to the nearest percent.
QString roundedLoad(double cpuPercent, const MachineWords &words)
{
    return coresText(cpuPercent, words).value_or(QString::asprintf("%.0f%%", cpuPercent));
}

void describeActivity(ProcessRowText &row, const ProcessSample &process, const MachineWords &words)
{
    row.detail = programMemoryText(process.rssBytes, words);
    row.value = roundedLoad(process.cpuPercent, words);
    row.isEmphasized = process.cpuPercent > 50;
    row.fraction = process.cpuPercent / 100;
    row.tint = row.isEmphasized ? Tint::red : Tint::accent;
}

void describeEnergy(ProcessRowText &row, const ProcessSample &process, const MachineWords &words)
{
    row.detail = programMemoryText(process.rssBytes, words);
    row.value = energyWord(process.energyImpact);
    row.isEmphasized = process.energyImpact >= 40;
    row.fraction = process.energyImpact / 100;
    row.tint = process.energyImpact >= 40   ? Tint::red
               : process.energyImpact >= 10 ? Tint::orange
                                            : Tint::accent;
}

void describeNetwork(ProcessRowText &row, const ProcessSample &process)
{
    row.value = networkRate(process.networkBytesPerSec);
    row.detail = row.value;
    row.isEmphasized = process.networkBytesPerSec >= 1'000'000;
    row.fraction = static_cast<double>(process.networkBytesPerSec) / 4'000'000;
    row.tint = row.isEmphasized ? Tint::red : Tint::accent;
}

/// Of a name that begins with an address turned round, what follows the country and the kind of address.
QString makersPart(const QString &name)
{
    static const QRegularExpression address(
        QStringLiteral("^(?:[a-z]{2}\\.(?:com?|org|net|ac|gov)\\.(?=.)|[a-z]{2}\\.(?=[^.]+\\.)|"
                       "(?:com|org|net|edu|gov|info|app|dev)\\.(?=.))"));
    return QString(name).remove(address);
}

} // namespace

ProgramNames programNames(const ProcessSample &process)
{
    ProgramNames names = {process.title.isEmpty() ? process.name : process.title,
                          process.title.isEmpty() ? process.path.section(QLatin1Char('/'), -1)
                                                  : process.name};
    if (names.second.compare(names.first, Qt::CaseInsensitive) == 0)
        names.second.clear();
    return names;
}

QString ProcessRowText::pinLabel() const
{
    return isPinned ? QStringLiteral("Unpin app") : QStringLiteral("Pin app");
}

ProcessRowText processRowText(const ProcessSample &process, ProcessRowMode mode, bool isPinned,
                              const MachineWords &words)
{
    ProcessRowText row;
    row.pid = process.pid;
    row.name = oneLine(programNames(process).first);
    row.tile = tileOf(process);
    row.trust = process.trustRatio();
    row.trustSymbol = trustSymbol(row.trust);
    row.isPinned = isPinned;
    row.canQuit = process.mayBeQuit();
    switch (mode) {
    case ProcessRowMode::activity:
        describeActivity(row, process, words);
        break;
    case ProcessRowMode::battery:
        describeEnergy(row, process, words);
        break;
    case ProcessRowMode::network:
        describeNetwork(row, process);
        break;
    }
    row.detail += programRemark(process);
    row.fraction = std::clamp(row.fraction, 0.0, 1.0);
    return row;
}

QList<ProcessRowText> processRowTexts(const QList<ProcessSample> &processes, ProcessRowMode mode,
                                      const std::set<QString> &pinnedNames, const MachineWords &words)
{
    QList<ProcessRowText> rows;
    rows.reserve(processes.size());
    for (const ProcessSample &process : processes)
        rows.append(processRowText(process, mode, pinnedNames.contains(process.name), words));
    return rows;
}

QList<ProcessRowText> topProcessTexts(const QList<ProcessSample> &processes,
                                      const std::set<QString> &pinnedNames, const MachineWords &words)
{
    QList<ProcessRowText> rows =
        processRowTexts(processes.mid(0, 1), ProcessRowMode::activity, pinnedNames, words);
    for (ProcessRowText &row : rows)
        row.detail = programMemoryText(processes.first().rssBytes, words) + QStringLiteral(" memory") +
                     programRemark(processes.first());
    return rows;
}

QString programRemark(const ProcessSample &process)
{
    QString remark;
    for (const QString &part :
         {programNames(process).second, process.owner.isEmpty() ? QString() : whyNotQuit(process)})
        if (!part.isEmpty())
            remark += QStringLiteral(" · ") + oneLine(part);
    return remark;
}

QString noProcessesText(bool isKnown)
{
    return isKnown ? QStringLiteral("No processes found.") : QStringLiteral("Measuring…");
}

QList<BrowserRowText> browserRowTexts(const QList<BrowserRollupEntry> &entries, const MachineWords &words)
{
    QList<BrowserRowText> rows;
    rows.reserve(entries.size());
    for (const BrowserRollupEntry &entry : entries)
        rows.append({oneLine(entry.browserName),
                     QString::number(entry.processCount) + QStringLiteral(" tabs & helpers"),
                     programMemoryText(entry.totalMemBytes, words),
                     roundedLoad(entry.totalCPUPercent, words) + QStringLiteral(" busy")});
    return rows;
}

QString trustSymbol(int trustRatio)
{
    return trustRatio > 49 ? QStringLiteral("star.fill") : QStringLiteral("star");
}

QString energyWord(double energyImpact)
{
    return energyImpact >= 40   ? QStringLiteral("High")
           : energyImpact >= 10 ? QStringLiteral("Moderate")
                                : QStringLiteral("Low");
}

QString networkRate(std::int64_t bytesPerSec)
{
    return fileByteCount(bytesPerSec) + QStringLiteral("/s");
}

QString tileLetter(const QString &name)
{
    for (const char32_t code : makersPart(name).toStdU32String())
        if (QChar::isLetterOrNumber(code))
            return QString::fromUcs4(&code, 1).toUpper();
    return QStringLiteral("?");
}

int tileColorIndex(const QString &name)
{
    quint32 hash = 2'166'136'261U;
    for (const char byte : name.toUtf8())
        hash = (hash ^ static_cast<unsigned char>(byte)) * 16'777'619U;
    return static_cast<int>(hash % static_cast<quint32>(tileColors().size()));
}

QList<ProcessSample> filteredProcesses(const QList<ProcessSample> &processes, const QString &searchText)
{
    if (searchText.trimmed().isEmpty())
        return processes;
    const QString wanted = searchText.toLower();
    QList<ProcessSample> found;
    for (const ProcessSample &process : processes) {
        const ProgramNames names = programNames(process);
        for (const QString &name : {process.name, names.first, names.second})
            if (name.toLower().contains(wanted)) {
                found.append(process);
                break;
            }
    }
    return found;
}

QList<ProcessSample> withOthers(QList<ProcessSample> processes, const QList<ProcessSample> &others)
{
    std::set<std::int32_t> known;
    for (const ProcessSample &process : processes)
        known.insert(process.pid);
    for (const ProcessSample &other : others)
        if (known.insert(other.pid).second)
            processes.append(other);
    return processes;
}

QString moreFoundText(qsizetype count)
{
    return count == 0 ? QString() : QString::number(count) + QStringLiteral(" more — type more of the name.");
}

} // namespace swabby
