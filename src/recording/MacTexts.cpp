#include "recording/MacTexts.h"

#include "engine/Samplers.h"
#include "platform/mactools/PsText.h"
#include "platform/mactools/ToolQuestions.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>

#include <cmath>

namespace swabby {
namespace {

constexpr std::uint64_t kibibyte = 1024;

QString figure(double number)
{
    return QString::fromLatin1(QByteArray::number(number, 'f', QLocale::FloatingPointShortest));
}

/// The path that has the program's name at its end, which is where a Mac's list has it.
QString commandOf(const ProcessRow &row, Rewriting &rewriting)
{
    if (row.isApp && !row.path.contains(QLatin1String(".app/Contents/MacOS/")))
        return rewriting.command(QStringLiteral("/Applications/%1.app/Contents/MacOS/%1").arg(row.name));
    if (nameOfCommand(row.path) == row.name)
        return rewriting.command(row.path);
    return rewriting.command(row.path.left(row.path.lastIndexOf(QLatin1Char('/')) + 1) + row.name);
}

std::string listing(const std::vector<ProcessRow> &rows, Rewriting &rewriting)
{
    QString text = QStringLiteral("PID PPID %CPU %MEM RSS COMM\n");
    for (const ProcessRow &row : rows)
        text += QStringLiteral("%1 %2 %3 %4 %5 ")
                    .arg(row.pid)
                    .arg(row.parentPid)
                    .arg(figure(row.cpuPercent), figure(row.memPercent))
                    .arg(row.residentBytes / kibibyte) +
                commandOf(row, rewriting) + QLatin1Char('\n');
    return text.toStdString();
}

/// Every program, the browsers' with shares of what they take together.
std::string weights(const Heard &heard, const QList<BrowserRollupEntry> &browsers, Rewriting &rewriting)
{
    std::map<QString, std::uint64_t> shares;
    std::map<QString, std::uint64_t> rests;
    for (const BrowserRollupEntry &browser : browsers) {
        const auto count = static_cast<std::uint64_t>(std::max(browser.processCount, 1));
        shares[browser.browserName] = browser.totalMemBytes / kibibyte / count;
        rests[browser.browserName] = browser.totalMemBytes / kibibyte % count;
    }
    QString text = QStringLiteral("%CPU RSS COMM\n");
    for (const ProcessWeight &weight : heard.weights) {
        const QString group = BrowserRollup::groupName(weight.name).value_or(weight.name);
        std::uint64_t kibibytes = weight.residentBytes / kibibyte;
        if (const auto share = shares.find(group); share != shares.end())
            kibibytes = share->second + std::exchange(rests[group], 0);
        text += QStringLiteral("%1 %2 ").arg(figure(weight.cpuPercent)).arg(kibibytes) +
                rewriting.command(weight.name) + QLatin1Char('\n');
    }
    return text.toStdString();
}

/// Twice the head, as of a tool that measures between two looks.
std::string measured(const char *head, const QString &rows)
{
    return std::string(head) + '\n' + head + '\n' + rows.toStdString();
}

std::string drains(const Heard &heard, Rewriting &rewriting)
{
    QString rows;
    for (const PowerRow &row : heard.drains)
        rows += QStringLiteral("%1 ").arg(row.pid) + rewriting.command(row.command) + QLatin1Char(' ') +
                figure(row.power) + QLatin1Char('\n');
    return measured("PID COMMAND POWER", rows);
}

std::string traffic(const Heard &heard)
{
    QString rows;
    for (const NetworkRow &row : heard.traffic)
        rows += QStringLiteral("program.%1,%2,%3,\n").arg(row.pid).arg(row.bytesIn).arg(row.bytesOut);
    return measured(",bytes_in,bytes_out,", rows);
}

void addTimes(const Heard &heard, ToolTexts &texts)
{
    if (!heard.bootEpoch)
        return;
    const auto boot = static_cast<qint64>(*heard.bootEpoch);
    const auto add = [&](const ToolQuestion &question, const QString &text) {
        texts.addMissing(question.executable, question.arguments, text.toStdString());
    };
    add(ToolQuestions::bootTime(), QStringLiteral("{ sec = %1, usec = 0 }\n").arg(boot));
    for (const auto &[pid, epoch] : heard.startEpochs) {
        // As many whole seconds apart as they were.
        const auto start = boot + static_cast<qint64>(std::floor(epoch - *heard.bootEpoch));
        add(ToolQuestions::startTime(pid), QLocale::c().toString(QDateTime::fromSecsSinceEpoch(start),
                                                                 QStringLiteral("ddd MMM d HH:mm:ss yyyy")) +
                                               QLatin1Char('\n'));
    }
}

} // namespace

std::string jobText(const LoadedJob &job)
{
    if (!job.isLoaded)
        return "Could not find service\n";
    return "service = {\n" + (job.pid ? "\tpid = " + std::to_string(*job.pid) + '\n' : std::string()) + "}\n";
}

std::string signatureText(bool isTheVendors)
{
    return isTheVendors ? "Authority=Apple\n" : "Signature=other\n";
}

void addMissingTexts(const Heard &heard, const QList<BrowserRollupEntry> &browsers, Rewriting &rewriting,
                     ToolTexts &texts)
{
    const auto add = [&](const ToolQuestion &question, const std::string &text) {
        texts.addMissing(question.executable, question.arguments, text);
    };
    addTimes(heard, texts);
    if (heard.batteryHealth.cycles || heard.batteryHealth.healthPercent) {
        std::string report;
        if (heard.batteryHealth.cycles)
            report += "Cycle Count: " + std::to_string(*heard.batteryHealth.cycles) + '\n';
        if (heard.batteryHealth.healthPercent)
            report += "Maximum Capacity: " + std::to_string(*heard.batteryHealth.healthPercent) + "%\n";
        add(ToolQuestions::battery(), report);
    }
    if (!heard.busiest || !heard.largest)
        return;
    add(ToolQuestions::busiest(), listing(*heard.busiest, rewriting));
    add(ToolQuestions::largest(), listing(*heard.largest, rewriting));
    std::map<std::int32_t, ProcessRow> rows = heard.matched;
    for (const auto *list : {&*heard.busiest, &*heard.largest})
        for (const ProcessRow &row : *list)
            rows.try_emplace(row.pid, row);
    std::vector<ProcessRow> all;
    for (const auto &[pid, row] : rows)
        all.push_back(row);
    add(ToolQuestions::processes(), listing(all, rewriting));
    add(ToolQuestions::weights(), weights(heard, browsers, rewriting));
    add(ToolQuestions::power(), drains(heard, rewriting));
    add(ToolQuestions::traffic(), traffic(heard));
}

} // namespace swabby
