#include "app/CommandLine.h"

#include "settings/SettingTable.h"

#include <QtCore/QCommandLineParser>

namespace swabby {
namespace {

const QString usage =
    QStringLiteral("swabby [--machine DIR [--run-tools]] [--section NAME] [--theme light|dark|system] "
                   "[--screenshots OUT] [--background]");

QStringList sectionNames()
{
    QStringList names;
    for (const MainSection section : allSections)
        names.append(sectionName(section));
    return names;
}

} // namespace

std::optional<CommandLine> parseCommandLine(const QStringList &arguments, QString *problem)
{
    static const QStringList valued = {QStringLiteral("machine"), QStringLiteral("section"),
                                       QStringLiteral("theme"), QStringLiteral("screenshots")};
    QCommandLineParser parser;
    for (const QString &name : valued)
        parser.addOption({name, {}, name});
    parser.addOptions({{QStringLiteral("background"), {}},
                       {QStringLiteral("run-tools"), {}},
                       {{QStringLiteral("h"), QStringLiteral("help")}, {}},
                       {QStringLiteral("version"), {}}});
    const bool isParsed = parser.parse(QStringList(QString()) + arguments);

    const auto refuse = [&](const QString &words) {
        *problem = words;
        return std::nullopt;
    };
    const auto given = [&](const QString &name) {
        return parser.isSet(name) ? std::optional(parser.value(name)) : std::nullopt;
    };
    for (const QString &name : valued)
        if (given(name) == QString())
            return refuse(QStringLiteral("--%1 needs a value; use %2").arg(name, usage));
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
    return QStringLiteral("Usage: %1\n"
                          "\n"
                          "Watches over this computer from the %2 and tells in plain words how it is doing.\n"
                          "\n"
                          "  --machine DIR       look after the machine that a folder describes\n"
                          "  --run-tools         run the programs in that folder, with your own rights\n"
                          "  --section NAME      open the window at a section, such as overview or speed\n"
                          "  --theme NAME        light, dark or system\n"
                          "  --screenshots OUT   draw every view into PNG files in the folder OUT, and end\n"
                          "  --background        start without a window, for starts at login\n"
                          "  --help, --version   say this, or the version, and end\n")
        .arg(usage, words.panel);
}

} // namespace swabby
