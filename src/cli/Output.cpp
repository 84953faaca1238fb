#include "cli/Output.h"

#include "platform/HarmlessText.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace swabby {
namespace {

bool isTerminal()
{
    static const bool result = ::isatty(STDOUT_FILENO) == 1 && !qEnvironmentVariableIsSet("NO_COLOR");
    return result;
}

QString withCode(const QString &text, const char *code)
{
    return isTerminal() ? QStringLiteral("\x1b[%1m%2\x1b[0m").arg(QLatin1String(code), text) : text;
}

} // namespace

void print(const QByteArray &text)
{
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stdout);
    std::fflush(stdout);
}

void print(const QString &text)
{
    print(text.toUtf8());
}

void printProblem(const QString &line)
{
    const QByteArray text = harmless(line).toUtf8() + '\n';
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stderr);
}

QString inColor(const QString &text, HealthLevel level)
{
    return withCode(text, level == HealthLevel::red ? "31" : level == HealthLevel::yellow ? "33" : "32");
}

QString inBold(const QString &text)
{
    return withCode(text, "1");
}

QString table(const std::vector<QStringList> &rows, const std::vector<int> &rightAligned)
{
    std::vector<qsizetype> widths;
    for (const QStringList &row : rows) {
        widths.resize(std::max(widths.size(), static_cast<std::size_t>(row.size())));
        for (qsizetype column = 0; column < row.size(); ++column)
            widths[static_cast<std::size_t>(column)] =
                std::max(widths[static_cast<std::size_t>(column)], row[column].size());
    }
    QString text;
    for (const QStringList &row : rows) {
        QString line;
        for (qsizetype column = 0; column < row.size(); ++column) {
            const bool isFigure =
                std::find(rightAligned.begin(), rightAligned.end(), column) != rightAligned.end();
            const qsizetype width = widths[static_cast<std::size_t>(column)];
            line += QStringLiteral("  ") +
                    (isFigure ? row[column].rightJustified(width) : row[column].leftJustified(width));
        }
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        text += line + QLatin1Char('\n');
    }
    return text;
}

QString harmless(const QString &text)
{
    return oneLine(text, QChar::ReplacementCharacter);
}

QString harmlessText(const QString &text)
{
    return harmlessLines(text, QChar::ReplacementCharacter);
}

QString pathText(const std::filesystem::path &path)
{
    return harmless(textOf(path.native()));
}

} // namespace swabby
