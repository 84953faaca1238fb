#include "cli/Arguments.h"

#include "cli/Verbs.h"
#include "machine/MachineChoice.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>

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
};

template <bool Arguments::*field>
constexpr Option flag(const char *name)
{
    return {name, nullptr,
            [](Arguments &arguments, const QString & /*value*/) { return arguments.*field = true; }, nullptr};
}

template <std::optional<QString> Arguments::*field>
constexpr Option text(const char *name, const char *valueName)
{
    return {name, valueName,
            [](Arguments &arguments, const QString &value) { return (arguments.*field = value).has_value(); },
            nullptr};
}

template <auto field>
constexpr Option seconds(const char *name)
{
    return {name, "SECONDS",
            [](Arguments &arguments, const QString &value) {
                bool isNumber = false;
                const double number = value.toDouble(&isNumber);
                arguments.*field = number;
                return isNumber && std::isfinite(number) && number >= 0;
            },
            "seconds from 0"};
}

template <auto field, int least>
constexpr Option wholeNumber(const char *name, const char *valueName, const char *takes)
{
    return {name, valueName,
            [](Arguments &arguments, const QString &value) {
                bool isNumber = false;
                arguments.*field = value.toInt(&isNumber);
                return isNumber && arguments.*field >= least;
            },
            takes};
}

/// In the order in which they are refused to a verb that does not know them.
constexpr std::array options = {
    text<&Arguments::machineFolder>("machine", "DIR"),
    flag<&Arguments::runTools>("run-tools"),
    flag<&Arguments::json>("json"),
    flag<&Arguments::unset>("unset"),
    wholeNumber<&Arguments::refreshes, 1>("refreshes", "N", "a whole number from 1"),
    seconds<&Arguments::interval>("interval"),
    seconds<&Arguments::snooze>("snooze"),
    wholeNumber<&Arguments::pid, std::numeric_limits<int>::min()>("pid", "PID", "a process id"),
    text<&Arguments::item>("item", "ID"),
    flag<&Arguments::yes>("yes"),
    flag<&Arguments::force>("force"),
    flag<&Arguments::unknown>("unknown"),
    flag<&Arguments::vet>("vet"),
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

} // namespace

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
