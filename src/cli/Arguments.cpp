#include "cli/Arguments.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace swabby {
namespace {

struct Verb {
    const char *name;
    const char *usage;
    int fewestOperands;
    int mostOperands;
    const char *options; ///< the options of its own, separated by blanks
};

constexpr int anyNumber = std::numeric_limits<int>::max();

constexpr std::array verbs = {
    Verb{"snapshot", "snapshot", 0, 0, ""},
    Verb{"watch", "watch [--refreshes N] [--interval SECONDS] [--snooze SECONDS]", 0, 0,
         "refreshes interval snooze"},
    Verb{"history", "history", 0, 0, ""},
    Verb{"startup", "startup [disable ID | enable ID | reveal ID | disabled]", 0, 2, ""},
    Verb{"ask", "ask QUESTION", 1, 1, ""},
    Verb{"explain", "explain --pid PID | --item ID", 0, 0, "pid item"},
    Verb{"key", "key set | key delete | key status", 1, 1, ""},
    Verb{"caches", "caches [--unknown | --vet]", 0, 0, "unknown vet"},
    Verb{"duplicates", "duplicates [DIR...]", 0, anyNumber, ""},
    Verb{"deep-scan", "deep-scan", 0, 0, ""},
    Verb{"apps", "apps [BUNDLEID]", 0, 1, ""},
    Verb{"developer", "developer", 0, 0, ""},
    Verb{"items", "items", 0, 0, ""},
    Verb{"remove", "remove ID... [--yes]", 1, anyNumber, "yes"},
    Verb{"put-back", "put-back", 0, 0, ""},
    Verb{"quit", "quit PID [--force] [--yes]", 1, 1, "force yes"},
    Verb{"check", "check", 0, 0, ""},
    Verb{"settings", "settings [KEY [VALUE | --unset]]", 0, 2, "unset"},
    Verb{"pin", "pin NAME", 1, 1, ""},
    Verb{"context", "context", 0, 0, ""},
};

QString verbNames()
{
    QStringList names;
    for (const Verb &verb : verbs)
        names.append(QLatin1String(verb.name));
    return names.join(QStringLiteral(", "));
}

QString helpText()
{
    QString text = QStringLiteral("swabbyctl [--machine DIR] VERB [ARGUMENT...] [--json]\n\n");
    for (const Verb &verb : verbs)
        text += QStringLiteral("  swabbyctl ") + QLatin1String(verb.usage) + QLatin1Char('\n');
    return text + QStringLiteral("\n  --machine DIR  look after the Mac that a folder describes\n"
                                 "  --json         one JSON document instead of text\n"
                                 "  --             ends the options\n");
}

WrongUsage wrong(const QString &what, const Verb *verb)
{
    return {what + QStringLiteral("; usage: swabbyctl ") +
            (verb ? QLatin1String(verb->usage)
                  : QStringLiteral("[--machine DIR] VERB [--json], VERB one of ") + verbNames())};
}

std::optional<double> secondsFrom(const QString &text)
{
    bool parsed = false;
    const double seconds = text.toDouble(&parsed);
    return parsed && std::isfinite(seconds) && seconds >= 0 ? std::optional(seconds) : std::nullopt;
}

} // namespace

std::variant<Arguments, WrongUsage, Information> parseArguments(const QStringList &commandLine)
{
    QCommandLineParser parser;
    parser.addOptions({{QStringLiteral("machine"), {}, QStringLiteral("DIR")},
                       {QStringLiteral("json"), {}},
                       {QStringLiteral("unset"), {}},
                       {QStringLiteral("yes"), {}},
                       {QStringLiteral("force"), {}},
                       {QStringLiteral("unknown"), {}},
                       {QStringLiteral("vet"), {}},
                       {QStringLiteral("refreshes"), {}, QStringLiteral("N")},
                       {QStringLiteral("interval"), {}, QStringLiteral("SECONDS")},
                       {QStringLiteral("snooze"), {}, QStringLiteral("SECONDS")},
                       {QStringLiteral("pid"), {}, QStringLiteral("PID")},
                       {QStringLiteral("item"), {}, QStringLiteral("ID")},
                       {{QStringLiteral("h"), QStringLiteral("help")}, {}},
                       {{QStringLiteral("v"), QStringLiteral("version")}, {}}});
    if (!parser.parse(commandLine))
        return wrong(parser.errorText().remove(QLatin1Char('.')), nullptr);
    if (parser.isSet(QStringLiteral("help")))
        return Information{helpText()};
    if (parser.isSet(QStringLiteral("version")))
        return Information{QStringLiteral("swabbyctl ") + QCoreApplication::applicationVersion() +
                           QLatin1Char('\n')};

    const QStringList words = parser.positionalArguments();
    if (words.isEmpty())
        return wrong(QStringLiteral("no verb given"), nullptr);
    const auto verb = std::find_if(verbs.begin(), verbs.end(), [&](const Verb &known) {
        return words.first() == QLatin1String(known.name);
    });
    if (verb == verbs.end())
        return wrong(QStringLiteral("no verb \"%1\"").arg(words.first()), nullptr);

    Arguments arguments;
    arguments.verb = words.first();
    arguments.operands = words.mid(1);
    if (arguments.operands.size() < verb->fewestOperands || arguments.operands.size() > verb->mostOperands)
        return wrong(QStringLiteral("%1 takes another number of arguments").arg(arguments.verb), &*verb);
    const QStringList own = QString::fromLatin1(verb->options).split(QLatin1Char(' '));
    for (const char *option :
         {"unset", "refreshes", "interval", "snooze", "pid", "item", "yes", "force", "unknown", "vet"})
        if (parser.isSet(QLatin1String(option)) && !own.contains(QLatin1String(option)))
            return wrong(QStringLiteral("%1 knows no --%2").arg(arguments.verb, QLatin1String(option)),
                         &*verb);

    arguments.json = parser.isSet(QStringLiteral("json"));
    arguments.unset = parser.isSet(QStringLiteral("unset"));
    arguments.yes = parser.isSet(QStringLiteral("yes"));
    arguments.force = parser.isSet(QStringLiteral("force"));
    arguments.unknown = parser.isSet(QStringLiteral("unknown"));
    arguments.vet = parser.isSet(QStringLiteral("vet"));
    if (arguments.unknown && arguments.vet)
        return wrong(QStringLiteral("--unknown and --vet exclude each other"), &*verb);
    if (arguments.unset && arguments.operands.size() != 1)
        return wrong(QStringLiteral("--unset takes one key and no value"), &*verb);
    if (parser.isSet(QStringLiteral("machine")))
        arguments.machineFolder = parser.value(QStringLiteral("machine"));
    if (parser.isSet(QStringLiteral("refreshes"))) {
        bool parsed = false;
        arguments.refreshes = parser.value(QStringLiteral("refreshes")).toInt(&parsed);
        if (!parsed || *arguments.refreshes < 1)
            return wrong(QStringLiteral("--refreshes takes a whole number from 1"), &*verb);
    }
    if (parser.isSet(QStringLiteral("interval"))) {
        const auto interval = secondsFrom(parser.value(QStringLiteral("interval")));
        if (!interval)
            return wrong(QStringLiteral("--interval takes seconds from 0"), &*verb);
        arguments.interval = *interval;
    }
    if (parser.isSet(QStringLiteral("snooze"))) {
        arguments.snooze = secondsFrom(parser.value(QStringLiteral("snooze")));
        if (!arguments.snooze)
            return wrong(QStringLiteral("--snooze takes seconds from 0"), &*verb);
    }
    if (parser.isSet(QStringLiteral("item")))
        arguments.item = parser.value(QStringLiteral("item"));
    if (parser.isSet(QStringLiteral("pid"))) {
        bool parsed = false;
        arguments.pid = parser.value(QStringLiteral("pid")).toInt(&parsed);
        if (!parsed)
            return wrong(QStringLiteral("--pid takes a process id"), &*verb);
    }
    return arguments;
}

} // namespace swabby
