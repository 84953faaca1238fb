#include "ai/Prompts.h"

#include "engine/ProgramFigures.h"
#include "engine/WholeNumber.h"

#include <QtCore/QStringList>

namespace swabby::Prompts {
namespace {

QString plural(qint64 count, const QString &word)
{
    return QString::number(count) + QLatin1Char(' ') + word + (count == 1 ? QString() : QStringLiteral("s"));
}

} // namespace

QString explainInstructions(const MachineWords &words)
{
    return QStringLiteral(
               "You are helping a completely non-technical person understand something running on "
               "their %1. They do not know what a \"process,\" \"PID,\" \"CPU,\" or \"login item\" "
               "means, so never use those words — say \"program\" or \"app\" and \"your %2\" "
               "instead. Answer in 2-3 short, warm, plain-English sentences, no markdown, no lists, "
               "no technical terms. Say clearly whether it's normally fine to quit or turn off, or "
               "whether they should be careful, and why, in everyday language a curious 10-year-old "
               "could follow.%3")
        .arg(words.described, words.computer, words.aboutMarks);
}

const QString &weeklySummaryInstructions()
{
    static const QString text =
        QStringLiteral("Write one short, warm, friendly sentence for a weekly check-up notification. No "
                       "jargon, no markdown, just plain conversational English.");
    return text;
}

QString askInstructions(const MachineWords &words)
{
    return QStringLiteral(
               "You are a friendly, plain-English assistant helping a completely non-technical person "
               "understand their %1. You're given a live snapshot of its CPU, memory, storage, "
               "battery, and the apps currently running, plus a question. Answer in 2-3 short, warm "
               "sentences with no jargon — say \"program\" or \"app,\" never \"process,\" \"PID,\" or "
               "\"CPU\" as a raw term (say \"power\" or \"speed\" instead). Always name the specific "
               "app responsible when the data clearly points to one.\n\nRespond with ONLY a JSON "
               "object, no markdown, no code fences, exactly this shape:\n{\"appToQuit\": \"<exact "
               "app name from the list, or empty string if none is clearly responsible>\", "
               "\"explanation\": \"<your 2-3 sentence answer>\"}%2")
        .arg(words.described, words.aboutMarks);
}

QString checkInstructions(const MachineWords &words)
{
    return QStringLiteral(
               "You are a friendly assistant summarizing the results of a full health check on a "
               "non-technical person's %1. No jargon, no markdown, warm and plain-spoken, like a "
               "mechanic who respects that you don't know cars.\n\nRespond with ONLY a JSON object, "
               "no markdown, no code fences, exactly this shape:\n{\"headline\": \"<4-6 words, no "
               "trailing punctuation, reassuring if nothing was found>\", \"summary\": \"<2-3 "
               "sentence plain-English summary, most important first>\"}%2")
        .arg(words.described, words.aboutMarks);
}

QString cacheInstructions(const MachineWords &words)
{
    return QStringLiteral(
               "You are a cautious %1 expert reviewing folder names in %2 for "
               "safety, for a non-technical user. Default to \"looks safe\" for ordinary "
               "app/vendor-named cache folders. Only say it's not safe if the name suggests something "
               "unusual. Keep the reason to one short, plain-English sentence.\n\nRespond with ONLY a "
               "JSON object, no markdown, no code fences, exactly this shape:\n{\"looksSafe\": true "
               "or false, \"reason\": \"<one short plain-English sentence>\"}%3")
        .arg(words.system, words.cacheFolder, words.aboutMarks);
}

QString explainProcess(const MachineWords &words, const ProcessSample &process)
{
    return QStringLiteral("Process name: ") + words.marked(process.name) + QStringLiteral("\nPath: ") +
           words.marked(process.path, longestPath) + QStringLiteral("\nCurrent CPU usage: ") +
           percentText(process.cpuPercent) + loadScaleText(words) +
           QStringLiteral("\nCurrent memory usage: ") + QString::number(wholeNumber(process.memPercent)) +
           QStringLiteral("%\n\nWhat is this process, and is it safe to quit right now?");
}

QString explainLoginItem(const MachineWords &words, const LoginItem &item)
{
    const QString path = item.programPath.isEmpty()
                             ? QStringLiteral("(classic login item, no path available)")
                             : words.marked(item.programPath, longestPath);
    const QString note = item.isOrphaned
                             ? QStringLiteral("Note: its program file no longer exists on disk (orphaned).")
                         : item.isAppleSigned ? words.isTheSystems
                                              : words.isNotTheSystems;
    return QStringLiteral("Login item / background task label: ") + words.marked(item.label) +
           QStringLiteral("\nProgram path: ") + path + QLatin1Char('\n') + note +
           QStringLiteral("\n\nWhat does this likely do, and is it safe to disable?");
}

QString weeklySummary(const QString &freedText, qint64 attentionCount)
{
    return QStringLiteral("This week, Swabby ") +
           (freedText.isEmpty() ? QStringLiteral("didn't free up any storage space")
                                : QStringLiteral("freed up ") + freedText + QStringLiteral(" of storage")) +
           QStringLiteral(" and caught ") + plural(attentionCount, QStringLiteral("thing")) +
           QStringLiteral(" that needed the user's attention (like an app using too much power or memory).");
}

QString ask(const MachineWords &words, const QString &question, const QString &systemContext)
{
    return QStringLiteral("Here's what's currently happening on the user's %1:\n").arg(words.computer) +
           systemContext + QStringLiteral("\n\nThe user asked: \"") + question +
           QStringLiteral("\"\n\nAnswer their question using the information above.");
}

QStringList checkFindings(const MachineWords &words, qint64 itemCount, const QString &totalBytesText,
                          const std::optional<QString> &topProcessName, qint64 loginItemCount)
{
    QStringList findings;
    if (itemCount >= 1)
        findings.append(plural(itemCount, QStringLiteral("thing")) +
                        QStringLiteral(" worth cleaning up, about ") + totalBytesText +
                        QStringLiteral(" total"));
    if (topProcessName)
        findings.append(words.marked(*topProcessName) + QStringLiteral(" is using a lot of power right now"));
    if (loginItemCount > 0)
        findings.append(plural(loginItemCount, QStringLiteral("startup item")) +
                        QStringLiteral(" worth a second look"));
    return findings;
}

QString checkSummary(const MachineWords &words, const QStringList &findings)
{
    const QString nothing = QStringLiteral("Nothing notable — everything looks tidy and healthy.");
    return QStringLiteral("A full check of the user's %1 just finished. Here's what it found:\n")
               .arg(words.computer) +
           (findings.isEmpty() ? nothing : QStringLiteral("- ") + findings.join(QStringLiteral("\n- ")));
}

QString cacheFolder(const MachineWords &words, const QString &name, const QString &sizeText)
{
    return QStringLiteral("There's a folder called \"") + words.marked(name) +
           QStringLiteral("\" inside %1 on %2, currently ").arg(words.cacheFolder, words.ofOneKind) +
           sizeText +
           QStringLiteral(".\nFolders in %1 are almost always safe, regenerable cache data "
                          "that apps rebuild "
                          "automatically — but occasionally a folder there is misleadingly named or holds "
                          "something less "
                          "safe to lose.\n\nBased on the folder name alone, does this look like an ordinary, "
                          "safe-to-clear "
                          "app cache?")
               .arg(words.cacheFolder);
}

} // namespace swabby::Prompts
