#include "app/CommandLine.h"

#include "settings/SettingTable.h"

#include <QtCore/QCommandLineParser>

#include <array>

namespace swabby {
namespace {

const QString usage =
    QStringLiteral("swabby [--machine DIR [--run-tools]] [--section NAME] [--theme light|dark|system] "
                   "[--screenshots OUT] [--background]");

struct Option {
    const char *name;
    const char *value; ///< what stands for it in the help; null for a switch
    const char *does;
};

constexpr std::array options = {
    Option{"machine", "DIR", "look after the machine that a folder describes"},
    Option{"run-tools", nullptr, "run the programs in that folder, with your own rights"},
    Option{"section", "NAME", "open the window at a section, such as overview or speed"},
    Option{"theme", "NAME", "light, dark or system"},
    Option{"screenshots", "OUT", "draw every view into PNG files in the folder OUT, and end"},
    Option{"background", nullptr, "start without a window, for starts at login"},
};

QStringList sectionNames()
{
    QStringList names;
    for (const MainSection section : allSections)
        names.append(sectionName(section));
    return names;
}

QStringList themeNames()
{
    QStringList names;
    for (const char *word : setting<"theme">.words)
        if (word != nullptr)
            names.append(QLatin1String(word));
    return names;
}

} // namespace

std::optional<CommandLine> parseCommandLine(const QStringList &arguments, QString *problem)
{
    QCommandLineParser parser;
    for (const Option &option : options)
        parser.addOption({QLatin1String(option.name), {}, QLatin1String(option.value)});
    parser.addOptions({{{QStringLiteral("h"), QStringLiteral("help")}, {}}, {QStringLiteral("version"), {}}});
    const bool isParsed = parser.parse(QStringList(QString()) + arguments);

    const auto refuse = [&](const QString &words) {
        *problem = words;
        return std::nullopt;
    };
    const auto given = [&](const QString &name) {
        return parser.isSet(name) ? std::optional(parser.value(name)) : std::nullopt;
    };
    for (const Option &option : options)
        if (option.value != nullptr && given(QLatin1String(option.name)) == QString())
            return refuse(
                QStringLiteral("--%1 needs a value; use %2").arg(QLatin1String(option.name), usage));
    QStringList strays = parser.positionalArguments();
    for (const QString &name : parser.unknownOptionNames())
        strays.append((name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--")) + name);
    if (!strays.isEmpty())
        return refuse(QStringLiteral("unknown argument \"%1\"; use %2").arg(strays.first(), usage));
    if (!isParsed)
        return refuse(parser.errorText().remove(QLatin1Char('.')) + QStringLiteral("; use ") + usage);

    CommandLine result;
    result.machineFolder = given(QStringLiteral("machine"));
    result.screenshotsFolder = given(QStringLiteral("screenshots"));
    result.runsTools = parser.isSet(QStringLiteral("run-tools"));
    if (result.runsTools && !result.machineFolder)
        return refuse(QStringLiteral("--run-tools stands beside --machine DIR; use ") + usage);
    result.isBackground = parser.isSet(QStringLiteral("background"));
    result.wantsHelp = parser.isSet(QStringLiteral("help"));
    result.wantsVersion = parser.isSet(QStringLiteral("version"));
    const QString section = parser.value(QStringLiteral("section"));
    result.section = sectionFrom(section);
    if (!section.isEmpty() && !result.section)
        return refuse(QStringLiteral("unknown section \"%1\"; the sections are %2")
                          .arg(section, sectionNames().join(QStringLiteral(", "))));
    if (const auto theme = given(QStringLiteral("theme"))) {
        const std::optional<int> word = setting<"theme">.wordIndex(*theme);
        if (!word)
            return refuse(
                QStringLiteral("unknown theme \"%1\"; the themes are light, dark, system").arg(*theme));
        result.theme = static_cast<ThemeChoice>(*word);
    }
    return result;
}

QString commandLineHelp(const MachineWords &words)
{
    QString text =
        QStringLiteral("Usage: %1\n"
                       "\n"
                       "Watches over this computer from the %2 and tells in plain words how it is doing.\n"
                       "\n")
            .arg(usage, words.panel);
    const auto add = [&text](const QString &option, const char *does) {
        text += QStringLiteral("  --%1%2\n").arg(option, -18).arg(QLatin1String(does));
    };
    for (const Option &option : options)
        add((QLatin1String(option.name) + QLatin1Char(' ') + QLatin1String(option.value)).trimmed(),
            option.does);
    add(QStringLiteral("help, --version"), "say this, or the version, and end");
    return text;
}

CommandWords applicationWords()
{
    CommandWords command = {
        QStringLiteral("swabby"),
        QStringLiteral("watches over this computer and tells in plain words how it is doing"),
        usage,
        {},
        {}};
    for (const Option &option : options) {
        const QString name = QLatin1String(option.name);
        command.options.append({name, QLatin1String(option.value), QLatin1String(option.does),
                                name == QLatin1String("section") ? sectionNames()
                                : name == QLatin1String("theme") ? themeNames()
                                                                 : QStringList()});
    }
    return command;
}

} // namespace swabby
