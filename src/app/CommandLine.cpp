#include "app/CommandLine.h"

namespace swabby {
namespace {

const QString usage = QStringLiteral("swabby [--machine DIR] [--section NAME] [--theme light|dark|system] "
                                     "[--screenshots OUT] [--background]");

struct Reader {
    QStringList arguments;
    QString *problem;
    CommandLine result;

    bool fail(const QString &words)
    {
        *problem = words;
        return false;
    }

    bool takeFlag(const QString &name)
    {
        if (name == QLatin1String("--background"))
            result.isBackground = true;
        else if (name == QLatin1String("--help") || name == QLatin1String("-h"))
            result.wantsHelp = true;
        else if (name == QLatin1String("--version"))
            result.wantsVersion = true;
        else
            return false;
        return true;
    }

    bool takeValue(const QString &name, const QString &value)
    {
        if (name == QLatin1String("--machine"))
            result.machineFolder = value;
        else if (name == QLatin1String("--screenshots"))
            result.screenshotsFolder = value;
        else if (name == QLatin1String("--section"))
            return takeSection(value);
        else
            return takeTheme(value);
        return true;
    }

    bool takeSection(const QString &value)
    {
        result.section = sectionFrom(value);
        if (result.section)
            return true;
        QStringList names;
        for (const MainSection section : allSections)
            names.append(sectionName(section));
        return fail(QStringLiteral("unknown section \"%1\"; the sections are %2")
                        .arg(value, names.join(QStringLiteral(", "))));
    }

    bool takeTheme(const QString &value)
    {
        static const QStringList names = {QStringLiteral("system"), QStringLiteral("light"),
                                          QStringLiteral("dark")};
        const auto index = names.indexOf(value);
        if (index < 0)
            return fail(
                QStringLiteral("unknown theme \"%1\"; the themes are light, dark, system").arg(value));
        result.theme = static_cast<ThemeChoice>(index);
        return true;
    }

    bool read()
    {
        static const QStringList withValue = {QStringLiteral("--machine"), QStringLiteral("--section"),
                                              QStringLiteral("--theme"), QStringLiteral("--screenshots")};
        while (!arguments.isEmpty()) {
            const QString argument = arguments.takeFirst();
            if (takeFlag(argument))
                continue;
            const auto equals = argument.indexOf(QLatin1Char('='));
            const QString name = argument.left(equals);
            if (!withValue.contains(name))
                return fail(QStringLiteral("unknown argument \"%1\"; use %2").arg(argument, usage));
            if (equals < 0 && arguments.isEmpty())
                return fail(QStringLiteral("%1 needs a value; use %2").arg(name, usage));
            const QString value = equals < 0 ? arguments.takeFirst() : argument.mid(equals + 1);
            if (value.isEmpty())
                return fail(QStringLiteral("%1 needs a value; use %2").arg(name, usage));
            if (!takeValue(name, value))
                return false;
        }
        return true;
    }
};

} // namespace

std::optional<CommandLine> parseCommandLine(const QStringList &arguments, QString *problem)
{
    Reader reader = {arguments, problem, {}};
    if (!reader.read())
        return std::nullopt;
    return reader.result;
}

QString commandLineHelp()
{
    return QStringLiteral(
               "Usage: %1\n"
               "\n"
               "Watches over this computer from the menu bar and tells in plain words how it is doing.\n"
               "\n"
               "  --machine DIR       look after the machine that a folder describes\n"
               "  --section NAME      open the window at a section, such as overview or speed\n"
               "  --theme NAME        light, dark or system\n"
               "  --screenshots OUT   draw every view into PNG files in the folder OUT, and end\n"
               "  --background        start without a window, for starts at login\n"
               "  --help, --version   say this, or the version, and end\n")
        .arg(usage);
}

} // namespace swabby
