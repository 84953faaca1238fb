#include "cli/Arguments.h"

#include "cli/Verbs.h"
#include "machine/MachineChoice.h"
#include "settings/Settings.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>
#include <QtCore/QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>

namespace swabby {
namespace {

/// An option: a switch, or the name of its value, how it is taken and what it takes in words.
struct Option {
    const char *name;
    const char *valueName;
    bool (*take)(Arguments &arguments, const QString &value);
    const char *takes;
    const char *does;
};

template <bool Arguments::*field>
constexpr Option flag(const char *name, const char *does)
{
    return {name, nullptr,
            [](Arguments &arguments, const QString & /*value*/) { return arguments.*field = true; }, nullptr,
            does};
}

template <std::optional<QString> Arguments::*field>
constexpr Option text(const char *name, const char *valueName, const char *does)
{
    return {name, valueName,
            [](Arguments &arguments, const QString &value) { return (arguments.*field = value).has_value(); },
            nullptr, does};
}

template <auto field>
constexpr Option seconds(const char *name, const char *does)
{
    return {name, "SECONDS",
            [](Arguments &arguments, const QString &value) {
                bool isNumber = false;
                const double number = value.toDouble(&isNumber);
                arguments.*field = number;
                return isNumber && std::isfinite(number) && number >= 0;
            },
            "seconds from 0", does};
}

template <auto field, int least>
constexpr Option wholeNumber(const char *name, const char *valueName, const char *takes, const char *does)
{
    return {name, valueName,
            [](Arguments &arguments, const QString &value) {
                bool isNumber = false;
                arguments.*field = value.toInt(&isNumber);
                return isNumber && arguments.*field >= least;
            },
            takes, does};
}

/// In the order in which they are refused to a verb that does not know them.
constexpr std::array options = {
    text<&Arguments::machineFolder>("machine", "DIR", "looks after the machine that a folder describes"),
    flag<&Arguments::runTools>("run-tools", "runs the programs in that folder, with your own rights"),
    flag<&Arguments::json>("json", "prints one JSON document instead of text"),
    flag<&Arguments::unset>("unset", "removes the stored value, so that the default is in force"),
    wholeNumber<&Arguments::refreshes, 1>("refreshes", "N", "a whole number from 1",
                                          "ends after so many lines"),
    seconds<&Arguments::interval>("interval", "waits so long between two refreshes"),
    seconds<&Arguments::snooze>("snooze", "keeps notifications back for so long"),
    wholeNumber<&Arguments::pid, std::numeric_limits<int>::min()>("pid", "PID", "a process id",
                                                                  "names a program by its process id"),
    text<&Arguments::item>("item", "ID", "names a startup item by its id"),
    flag<&Arguments::yes>("yes", "agrees to the question"),
    flag<&Arguments::force>("force", "ends it at once, without asking it to save"),
    flag<&Arguments::unknown>("unknown", "lists caches that no table knows"),
    flag<&Arguments::vet>("vet", "has those looked over by the assistant"),
    flag<&Arguments::withNames>("with-names", "keeps the names of programs, files and startup items"),
};

QString helpText(const MachineWords &words)
{
    QString text = QStringLiteral("swabbyctl [--machine DIR [--run-tools]] VERB [ARGUMENT...] [--json]\n\n");
    for (const Verb &verb : verbs())
        text += QStringLiteral("  swabbyctl ") + QLatin1String(verb.usage) + QLatin1Char('\n');
    return text + QStringLiteral("\n  --machine DIR  look after the %1 that a folder describes\n"
                                 "  --run-tools    run the programs in that folder, with your own rights\n"
                                 "  --json         one JSON document instead of text\n"
                                 "  --             ends the options\n")
                      .arg(words.computer);
}

WrongUsage wrong(const QString &what)
{
    QStringList names;
    for (const Verb &verb : verbs())
        names.append(verb.name());
    return {what +
            QStringLiteral("; usage: swabbyctl [--machine DIR [--run-tools]] VERB [--json], VERB one of ") +
            names.join(QStringLiteral(", "))};
}

WrongUsage wrong(const QString &what, const Verb &verb)
{
    return {what + QStringLiteral("; usage: swabbyctl ") + QLatin1String(verb.usage)};
}

/// The words of a verb's usage that stand for themselves.
QStringList fixedOperands(const Verb &verb)
{
    const QString name = verb.name();
    if (name == QLatin1String("settings")) {
        QStringList keys;
        for (const SettingKey *key : Settings::keys())
            keys.append(QLatin1String(key->name));
        return keys;
    }
    static const QRegularExpression separators(QStringLiteral("[\\[\\]| ]+"));
    QStringList words = QString::fromLatin1(verb.usage).split(separators, Qt::SkipEmptyParts);
    words.removeIf([&](const QString &word) {
        return word == name || word.startsWith(QLatin1Char('-')) || word != word.toLower();
    });
    return words;
}

} // namespace

CommandWords terminalWords()
{
    CommandWords words = {
        QStringLiteral("swabbyctl"),
        QStringLiteral("looks after a computer, in the terminal"),
        QStringLiteral("swabbyctl [--machine DIR [--run-tools]] VERB [ARGUMENT...] [--json]"),
        {},
        {}};
    for (const Option &option : options)
        words.options.append(
            {QLatin1String(option.name), QLatin1String(option.valueName), QLatin1String(option.does), {}});
    for (const Verb &verb : verbs()) {
        VerbWords row = {QLatin1String(verb.usage), QLatin1String(verb.does), {}, fixedOperands(verb)};
        for (const Option &option : options)
            if (verb.knows(option.name))
                row.options.append(QLatin1String(option.name));
        words.verbs.append(row);
    }
    return words;
}

std::variant<Arguments, WrongUsage, Information> parseArguments(const QStringList &commandLine)
{
    QCommandLineParser parser;
    for (const Option &option : options)
        parser.addOption({QLatin1String(option.name), {}, QLatin1String(option.valueName)});
    parser.addOptions({{{QStringLiteral("h"), QStringLiteral("help")}, {}},
                       {{QStringLiteral("v"), QStringLiteral("version")}, {}}});
    if (!parser.parse(commandLine))
        return wrong(parser.errorText().remove(QLatin1Char('.')));
    if (parser.isSet(QStringLiteral("help"))) {
        const QString machine = QStringLiteral("machine");
        return Information{helpText(
            chooseWords(parser.isSet(machine) ? std::optional(parser.value(machine)) : std::nullopt))};
    }
    if (parser.isSet(QStringLiteral("version")))
        return Information{QStringLiteral("swabbyctl ") + QCoreApplication::applicationVersion() +
                           QLatin1Char('\n')};

    Arguments arguments;
    arguments.operands = parser.positionalArguments();
    if (arguments.operands.isEmpty())
        return wrong(QStringLiteral("no verb given"));
    arguments.verb = arguments.operands.takeFirst();
    const auto verb = std::find_if(verbs().begin(), verbs().end(),
                                   [&](const Verb &known) { return arguments.verb == known.name(); });
    if (verb == verbs().end())
        return wrong(QStringLiteral("no verb \"%1\"").arg(arguments.verb));
    arguments.row = &*verb;

    if (arguments.operands.size() < verb->fewestOperands || arguments.operands.size() > verb->mostOperands)
        return wrong(QStringLiteral("%1 takes another number of arguments").arg(arguments.verb), *verb);
    std::vector<Option> given;
    std::copy_if(options.begin(), options.end(), std::back_inserter(given),
                 [&](const Option &option) { return parser.isSet(QLatin1String(option.name)); });
    for (const Option &option : given)
        if (!verb->knows(option.name))
            return wrong(QStringLiteral("%1 knows no --%2").arg(arguments.verb, QLatin1String(option.name)),
                         *verb);
    for (const Option &option : given)
        if (!option.take(arguments, option.valueName ? parser.value(QLatin1String(option.name)) : QString()))
            return wrong(
                QStringLiteral("--%1 takes %2").arg(QLatin1String(option.name), QLatin1String(option.takes)),
                *verb);
    if (arguments.runTools && !arguments.machineFolder)
        return wrong(QStringLiteral("--run-tools stands beside --machine DIR"));
    if (arguments.unknown && arguments.vet)
        return wrong(QStringLiteral("--unknown and --vet exclude each other"), *verb);
    if (arguments.unset && arguments.operands.size() != 1)
        return wrong(QStringLiteral("--unset takes one key and no value"), *verb);
    return arguments;
}

} // namespace swabby
