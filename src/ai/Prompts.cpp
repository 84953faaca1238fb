#include "ai/Prompts.h"

#include "engine/WholeNumber.h"

#include <QtCore/QStringList>

namespace swabby::Prompts {
namespace {

QString plural(qint64 count, const QString &word)
{
    return QString::number(count) + QLatin1Char(' ') + word + (count == 1 ? QString() : QStringLiteral("s"));
}

} // namespace

const QString &explainInstructions()
{
    static const QString text =
        QStringLiteral("You are helping a completely non-technical person understand something running on "
                       "their Mac. They do not know what a \"process,\" \"PID,\" \"CPU,\" or \"login item\" "
                       "means, so never use those words — say \"program\" or \"app\" and \"your Mac\" "
                       "instead. Answer in 2-3 short, warm, plain-English sentences, no markdown, no lists, "
                       "no technical terms. Say clearly whether it's normally fine to quit or turn off, or "
                       "whether they should be careful, and why, in everyday language a curious 10-year-old "
                       "could follow.");
    return text;
}

const QString &weeklySummaryInstructions()
{
    static const QString text =
        QStringLiteral("Write one short, warm, friendly sentence for a weekly check-up notification. No "
                       "jargon, no markdown, just plain conversational English.");
    return text;
}

const QString &askInstructions()
{
    static const QString text = QStringLiteral(
        "You are a friendly, plain-English assistant helping a completely non-technical person "
        "understand their Mac. You're given a live snapshot of its CPU, memory, storage, "
        "battery, and the apps currently running, plus a question. Answer in 2-3 short, warm "
        "sentences with no jargon — say \"program\" or \"app,\" never \"process,\" \"PID,\" or "
        "\"CPU\" as a raw term (say \"power\" or \"speed\" instead). Always name the specific "
        "app responsible when the data clearly points to one.\n\nRespond with ONLY a JSON "
        "object, no markdown, no code fences, exactly this shape:\n{\"appToQuit\": \"<exact "
        "app name from the list, or empty string if none is clearly responsible>\", "
        "\"explanation\": \"<your 2-3 sentence answer>\"}");
    return text;
}

const QString &checkInstructions()
{
    static const QString text =
        QStringLiteral("You are a friendly assistant summarizing the results of a full health check on a "
                       "non-technical person's Mac. No jargon, no markdown, warm and plain-spoken, like a "
                       "mechanic who respects that you don't know cars.\n\nRespond with ONLY a JSON object, "
                       "no markdown, no code fences, exactly this shape:\n{\"headline\": \"<4-6 words, no "
                       "trailing punctuation, reassuring if nothing was found>\", \"summary\": \"<2-3 "
                       "sentence plain-English summary, most important first>\"}");
    return text;
}

const QString &cacheInstructions()
{
    static const QString text = QStringLiteral(
        "You are a cautious macOS expert reviewing folder names in ~/Library/Caches for "
        "safety, for a non-technical user. Default to \"looks safe\" for ordinary "
        "app/vendor-named cache folders. Only say it's not safe if the name suggests something "
        "unusual. Keep the reason to one short, plain-English sentence.\n\nRespond with ONLY a "
        "JSON object, no markdown, no code fences, exactly this shape:\n{\"looksSafe\": true "
        "or false, \"reason\": \"<one short plain-English sentence>\"}");
    return text;
}

QString explainProcess(const QString &name, const QString &path, double cpuPercent, double memPercent)
{
    return QStringLiteral("Process name: ") + name + QStringLiteral("\nPath: ") + path +
           QStringLiteral("\nCurrent CPU usage: ") + QString::number(wholeNumber(cpuPercent)) +
           QStringLiteral("%\nCurrent memory usage: ") + QString::number(wholeNumber(memPercent)) +
           QStringLiteral("%\n\nWhat is this process, and is it safe to quit right now?");
}

QString explainLoginItem(const LoginItem &item)
{
    const QString path = item.programPath.isEmpty()
                             ? QStringLiteral("(classic login item, no path available)")
                             : item.programPath;
    const QString note = item.isOrphaned
                             ? QStringLiteral("Note: its program file no longer exists on disk (orphaned).")
                         : item.isAppleSigned ? QStringLiteral("It is Apple-signed.")
                                              : QStringLiteral("It is not signed by Apple.");
    return QStringLiteral("Login item / background task label: ") + item.label +
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

QString ask(const QString &question, const QString &systemContext)
{
    return QStringLiteral("Here's what's currently happening on the user's Mac:\n") + systemContext +
           QStringLiteral("\n\nThe user asked: \"") + question +
           QStringLiteral("\"\n\nAnswer their question using the information above.");
}

QStringList checkFindings(qint64 itemCount, const QString &totalBytesText,
                          const std::optional<QString> &topProcessName, qint64 loginItemCount)
{
    QStringList findings;
    if (itemCount >= 1)
        findings.append(plural(itemCount, QStringLiteral("thing")) +
                        QStringLiteral(" worth cleaning up, about ") + totalBytesText +
                        QStringLiteral(" total"));
    if (topProcessName)
        findings.append(*topProcessName + QStringLiteral(" is using a lot of power right now"));
    if (loginItemCount > 0)
        findings.append(plural(loginItemCount, QStringLiteral("startup item")) +
                        QStringLiteral(" worth a second look"));
    return findings;
}

QString checkSummary(const QStringList &findings)
{
    const QString nothing = QStringLiteral("Nothing notable — everything looks tidy and healthy.");
    return QStringLiteral("A full check of the user's Mac just finished. Here's what it found:\n") +
           (findings.isEmpty() ? nothing : QStringLiteral("- ") + findings.join(QStringLiteral("\n- ")));
}

QString cacheFolder(const QString &name, const QString &sizeText)
{
    return QStringLiteral("There's a folder called \"") + name +
           QStringLiteral("\" inside ~/Library/Caches on a Mac, currently ") + sizeText +
           QStringLiteral(".\nFolders in ~/Library/Caches are almost always safe, regenerable cache data "
                          "that apps rebuild "
                          "automatically — but occasionally a folder there is misleadingly named or holds "
                          "something less "
                          "safe to lose.\n\nBased on the folder name alone, does this look like an ordinary, "
                          "safe-to-clear "
                          "app cache?");
}

} // namespace swabby::Prompts
