#include "cli/Output.h"
#include "cli/StateJson.h"
#include "cli/Verbs.h"
#include "settings/Settings.h"

#include <unistd.h>

namespace swabby {
namespace {

QString plainText(const QJsonValue &value)
{
    if (value.isNull())
        return QStringLiteral("none");
    return value.isString() ? harmless(value.toString()) : QString::fromUtf8(jsonText(value));
}

void printValue(const Arguments &arguments, const QJsonValue &value)
{
    print(arguments.json ? jsonText(value) + '\n' : plainText(value).toUtf8() + '\n');
}

void printAll(const Arguments &arguments, const Settings &settings)
{
    QJsonObject all;
    std::vector<QStringList> rows;
    for (const SettingKey *key : Settings::keys()) {
        const QJsonValue value = settings.effective(*key);
        all.insert(QLatin1String(key->name), value);
        rows.push_back({QLatin1String(key->name), plainText(value)});
    }
    print(arguments.json ? jsonText(all) + '\n' : table(rows).toUtf8());
}

/// Says of paths to keep that nothing is there yet: one may be misspelt.
void hintAtMissing(const QStringList &paths)
{
    for (const QString &path : paths)
        if (isMissing(path))
            printProblem(
                QStringLiteral("swabbyctl: nothing is at %1 yet; what comes there will be kept").arg(path));
}

/// A person at a terminal hears that a warning can never show; scripts read what they always did.
void hintAtThresholds(const SettingKey &key, const Settings &settings)
{
    for (const Thresholds &pair : thresholdPairs) {
        const double warning = settings.value(pair.warning);
        const double critical = settings.value(pair.critical);
        if ((key == pair.warning || key == pair.critical) && critical <= warning &&
            ::isatty(STDERR_FILENO) == 1)
            printProblem(
                QStringLiteral("swabbyctl: %1 (%2) is not above %3 (%4), so nothing is only warned of")
                    .arg(QLatin1String(pair.critical.name))
                    .arg(critical)
                    .arg(QLatin1String(pair.warning.name))
                    .arg(warning));
    }
}

int wrong(const QString &line)
{
    printProblem(line);
    return wrongUsage;
}

} // namespace

int runSettings(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    Settings settings(*machine->settings);
    if (arguments.operands.isEmpty()) {
        printAll(arguments, settings);
        printSettingsProblem(*machine);
        return done;
    }
    const SettingKey *key = Settings::find(arguments.operands.first());
    if (!key)
        return wrong(QStringLiteral("swabbyctl: no setting \"%1\"; swabbyctl settings lists them")
                         .arg(arguments.operands.first()));
    bool changed = true;
    if (arguments.unset) {
        changed = settings.unset(*key);
    } else if (arguments.operands.size() == 2) {
        const QJsonValue value = Settings::parse(*key, arguments.operands.last());
        if (value.isUndefined())
            return wrong(
                QStringLiteral("swabbyctl: %1 takes %2, not \"%3\"")
                    .arg(QLatin1String(key->name), Settings::expectedText(*key), arguments.operands.last()));
        changed = settings.store(*key, value);
    }
    printValue(arguments, settings.effective(*key));
    if (!changed)
        return statusOfWriting(changed, *machine);
    printSettingsProblem(*machine);
    if (arguments.operands.size() > 1 && *key == setting<"neverRemove">)
        hintAtMissing(settings.neverRemove(machine->places.home).paths);
    if (arguments.unset || arguments.operands.size() > 1)
        hintAtThresholds(*key, settings);
    return done;
}

} // namespace swabby
