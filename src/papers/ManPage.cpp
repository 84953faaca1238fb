#include "papers/ManPage.h"

namespace swabby {
namespace {

QString escaped(QString text)
{
    text.replace(QLatin1Char('\\'), QStringLiteral("\\e")).replace(QLatin1Char('-'), QStringLiteral("\\-"));
    // A line that began with one would be a request.
    return text.startsWith(QLatin1Char('.')) || text.startsWith(QLatin1Char('\''))
               ? QStringLiteral("\\&") + text
               : text;
}

QString section(const char *title)
{
    return QStringLiteral(".SH ") + QLatin1String(title) + QLatin1Char('\n');
}

QString entry(const QString &term, const QString &text)
{
    return QStringLiteral(".TP\n\\fB%1\\fR\n%2.\n").arg(escaped(term), escaped(text));
}

QString capital(const QString &text)
{
    return text.left(1).toUpper() + text.mid(1);
}

} // namespace

QString manPage(const CommandWords &program, const QString &version)
{
    QString page = QStringLiteral(".TH %1 1 \"\" \"Swabby %2\" \"User Commands\"\n")
                       .arg(program.name.toUpper(), version);
    page += section("NAME") + program.name + QStringLiteral(" \\- ") + escaped(program.summary) +
            QLatin1Char('\n');
    page += section("SYNOPSIS") + escaped(program.usage) + QLatin1Char('\n');
    if (!program.verbs.isEmpty())
        page += section("VERBS");
    for (const VerbWords &verb : program.verbs)
        page += entry(verb.usage, capital(verb.does));
    page += section("OPTIONS");
    for (const OptionWords &option : program.options) {
        QString text = capital(option.does);
        if (!option.takes.isEmpty())
            text += QStringLiteral(": ") + option.takes.join(QStringLiteral(", "));
        page += entry((QStringLiteral("--") + option.name + QLatin1Char(' ') + option.value).trimmed(), text);
    }
    page += section("EXIT STATUS") +
            QStringLiteral(
                "0 when done, 1 when what was asked for was not done, and 2, with one line on standard "
                "error, when it was asked wrongly.\n");
    page += section("FILES") + entry(QStringLiteral("~/.config/Swabby/"), QStringLiteral("The preferences")) +
            entry(QStringLiteral("~/.local/share/Swabby/"),
                  QStringLiteral("The last 24 hours of load, and what the last removal moved to the Trash")) +
            entry(QStringLiteral("~/.local/state/Swabby/"), QStringLiteral("Where the windows stood"));
    const bool isTerminals = program.name.endsWith(QLatin1String("ctl"));
    return page + section("SEE ALSO") +
           QStringLiteral(".BR %1 (1)\n").arg(QLatin1String(isTerminals ? "swabby" : "swabbyctl"));
}

} // namespace swabby
