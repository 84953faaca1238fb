#include "platform/linux/LinuxPowerSupply.h"

#include "platform/linux/BatteryFiles.h"
#include "platform/linux/KernelFile.h"

#include <algorithm>

namespace swabby {

namespace {

BatteryFile filesIn(const std::string &folder)
{
    return [folder](const std::string &name) { return fileText(folder + '/' + name); };
}

} // namespace

LinuxPowerSupply::LinuxPowerSupply(std::string folder) : m_folder(std::move(folder)) {}

std::optional<PowerSource> LinuxPowerSupply::firstSource()
{
    const std::string folder = battery();
    return folder.empty() ? std::nullopt : std::optional(powerSourceFrom(filesIn(folder)));
}

BatteryHealth LinuxPowerSupply::healthAndCycles()
{
    const std::string folder = battery();
    return folder.empty() ? BatteryHealth() : batteryHealthFrom(filesIn(folder));
}

std::string LinuxPowerSupply::battery() const
{
    std::vector<std::string> names = folderEntries(m_folder);
    std::sort(names.begin(), names.end());
    for (const std::string &name : names) {
        std::string folder = m_folder + '/' + name;
        if (trimmed(fileText(folder + "/type")) == "Battery" &&
            trimmed(fileText(folder + "/scope")) != "Device" && fileNumber(folder + "/present") != 0)
            return folder;
    }
    return {};
}

} // namespace swabby
