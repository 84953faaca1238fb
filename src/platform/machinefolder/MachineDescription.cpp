#include "platform/machinefolder/MachineDescription.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <cmath>
#include <limits>

namespace swabby {
namespace {

/// A JSON number that is whole and fits.
template <typename Integer>
std::optional<Integer> wholeNumber(const QJsonValue &value)
{
    const double number = value.toDouble(std::nan(""));
    if (!value.isDouble() || std::trunc(number) != number ||
        number < static_cast<double>(std::numeric_limits<Integer>::min()) ||
        number > static_cast<double>(std::numeric_limits<Integer>::max()))
        return std::nullopt;
    return static_cast<Integer>(value.toInteger());
}

std::uint64_t countUnder(const QJsonObject &object, const char *key)
{
    const auto number = wholeNumber<std::int64_t>(object.value(QLatin1String(key)));
    return number && *number > 0 ? static_cast<std::uint64_t>(*number) : 0;
}

/// The value for the given sample of a list whose last element repeats.
QJsonValue sampleOf(const QJsonArray &samples, int index)
{
    return samples.isEmpty() ? QJsonValue() : samples.at(std::min<qsizetype>(index, samples.size() - 1));
}

/// A way down from a folder; empty for anything that leads out of it.
std::filesystem::path placeBelow(const QJsonValue &value)
{
    const std::filesystem::path path =
        std::filesystem::path(QFile::encodeName(value.toString()).toStdString()).lexically_normal();
    return path.is_absolute() || path.empty() || *path.begin() == ".." || path == "."
               ? std::filesystem::path()
               : path;
}

std::optional<CpuTicks> ticksFrom(const QJsonValue &value)
{
    const QJsonArray ticks = value.toArray();
    if (ticks.size() != 4)
        return std::nullopt;
    std::uint64_t values[4] = {};
    for (int i = 0; i < 4; ++i) {
        const auto number = wholeNumber<std::int64_t>(ticks.at(i));
        if (!number || *number < 0)
            return std::nullopt;
        values[i] = static_cast<std::uint64_t>(*number);
    }
    return CpuTicks{.user = values[0], .system = values[1], .idle = values[2], .nice = values[3]};
}

std::optional<ThermalState> thermalStateOf(const QString &name)
{
    if (name == QLatin1String("nominal"))
        return ThermalState::nominal;
    if (name == QLatin1String("fair"))
        return ThermalState::fair;
    if (name == QLatin1String("serious"))
        return ThermalState::serious;
    if (name == QLatin1String("critical"))
        return ThermalState::critical;
    return std::nullopt;
}

} // namespace

std::shared_ptr<MachineDescription> MachineDescription::read(const QString &folder, QString *problem)
{
    QFile file(folder + QStringLiteral("/machine.json"));
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) {
        *problem =
            QStringLiteral("%1 cannot be read; a machine folder holds a machine.json").arg(file.fileName());
        return nullptr;
    }
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    if (!document.isObject()) {
        *problem = QStringLiteral("%1 is no JSON object; {} describes a machine with nothing known")
                       .arg(file.fileName());
        return nullptr;
    }
    return std::make_shared<MachineDescription>(document.object());
}

std::optional<double> MachineDescription::now() const
{
    const QJsonValue value = m_facts.value(QLatin1String("now"));
    return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
}

std::optional<CpuTicks> MachineDescription::nextCpuTicks()
{
    return ticksFrom(sampleOf(m_facts.value(QLatin1String("cpuTicks")).toArray(), m_cpuSamples++));
}

std::optional<CpuTicks> MachineDescription::cpuTicksAtStart() const
{
    return ticksFrom(m_facts.value(QLatin1String("cpuTicksAtStart")));
}

std::optional<MemoryPages> MachineDescription::memoryPages() const
{
    const QJsonValue memory = m_facts.value(QLatin1String("memory"));
    if (!memory.isObject())
        return std::nullopt;
    const QJsonObject counts = memory.toObject();
    return MemoryPages{.pageSize = countUnder(counts, "pageSize"),
                       .active = countUnder(counts, "activePages"),
                       .wired = countUnder(counts, "wiredPages"),
                       .compressed = countUnder(counts, "compressorPages")};
}

std::uint64_t MachineDescription::physicalMemory() const
{
    return countUnder(m_facts.value(QLatin1String("memory")).toObject(), "physicalBytes");
}

std::uint64_t MachineDescription::swapUsedBytes() const
{
    return countUnder(m_facts.value(QLatin1String("memory")).toObject(), "swapUsedBytes");
}

VolumeCapacity MachineDescription::disk() const
{
    const QJsonObject disk = m_facts.value(QLatin1String("disk")).toObject();
    return {.freeBytes = wholeNumber<std::int64_t>(disk.value(QLatin1String("freeBytes"))).value_or(0),
            .totalBytes = wholeNumber<std::int64_t>(disk.value(QLatin1String("totalBytes"))).value_or(0),
            .mountPoint = {}};
}

ThermalState MachineDescription::nextThermalState()
{
    const QJsonValue value = m_facts.value(QLatin1String("thermalState"));
    const QJsonValue state = value.isArray() ? sampleOf(value.toArray(), m_thermalSamples++) : value;
    return thermalStateOf(state.toString()).value_or(ThermalState::nominal);
}

std::optional<PowerSource> MachineDescription::powerSource() const
{
    const QJsonValue value = m_facts.value(QLatin1String("powerSource"));
    if (!value.isObject())
        return std::nullopt;
    const QJsonObject source = value.toObject();
    const QJsonValue isCharging = source.value(QLatin1String("Is Charging"));
    return PowerSource{.currentCapacity = wholeNumber<int>(source.value(QLatin1String("Current Capacity"))),
                       .isCharging = isCharging.isBool() ? std::optional(isCharging.toBool()) : std::nullopt,
                       .timeToEmpty = wholeNumber<int>(source.value(QLatin1String("Time to Empty"))),
                       .timeToFullCharge =
                           wholeNumber<int>(source.value(QLatin1String("Time to Full Charge")))};
}

std::uint32_t MachineDescription::userId() const
{
    constexpr std::uint32_t firstUser = 501;
    return wholeNumber<std::uint32_t>(m_facts.value(QLatin1String("userID"))).value_or(firstUser);
}

std::optional<std::int32_t> MachineDescription::ownProcessId() const
{
    return wholeNumber<std::int32_t>(m_facts.value(QLatin1String("ownProcessID")));
}

QString MachineDescription::bundleId() const
{
    return m_facts.value(QLatin1String("bundleID")).toString(QStringLiteral("com.swabby.app"));
}

std::vector<DescribedApplication> MachineDescription::runningApplications() const
{
    std::vector<DescribedApplication> applications;
    for (const QJsonValue &described : m_facts.value(QLatin1String("runningApplications")).toArray()) {
        const QJsonObject facts = described.toObject();
        const auto pid = wholeNumber<std::int32_t>(facts.value(QLatin1String("pid")));
        if (pid)
            applications.push_back(
                {.application = {.pid = *pid, .bundleId = facts.value(QLatin1String("bundleID")).toString()},
                 .terminates = facts.value(QLatin1String("terminates")).toBool(true)});
    }
    return applications;
}

std::set<std::int32_t> MachineDescription::unsignalablePids() const
{
    std::set<std::int32_t> pids;
    for (const QJsonValue &described : m_facts.value(QLatin1String("unsignalablePids")).toArray())
        if (const auto pid = wholeNumber<std::int32_t>(described))
            pids.insert(*pid);
    return pids;
}

std::filesystem::path MachineDescription::cachesFolder() const
{
    return placeBelow(m_facts.value(QLatin1String("cachesFolder")));
}

std::vector<KnownCache> MachineDescription::knownCaches() const
{
    std::vector<KnownCache> caches;
    for (const QJsonValue &described : m_facts.value(QLatin1String("knownCaches")).toArray())
        if (const std::filesystem::path path = placeBelow(described[QLatin1String("path")]); !path.empty())
            caches.push_back({path, described[QLatin1String("description")].toString()});
    return caches;
}

std::vector<std::filesystem::path> MachineDescription::trashRefuses() const
{
    std::vector<std::filesystem::path> paths;
    for (const QJsonValue &path : m_facts.value(QLatin1String("trashRefuses")).toArray())
        if (path.isString())
            paths.emplace_back(QFile::encodeName(path.toString()).toStdString());
    return paths;
}

Permissions::Refused MachineDescription::notAllowed() const
{
    Permissions::Refused refused;
    for (const QJsonValue &name : m_facts.value(QLatin1String("notAllowed")).toArray())
        for (std::size_t index = 0; index < permissionNames.size(); ++index)
            if (name.toString() == QLatin1String(permissionNames[index]))
                refused.insert(static_cast<Permission>(index));
    return refused;
}

} // namespace swabby
