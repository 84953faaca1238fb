#include "platform/linux/EnabledUnits.h"

#include "platform/Utf8.h"

#include <algorithm>

namespace swabby {

namespace {

/// How the names of the system's own units begin.
constexpr std::string_view plumbing =
    "accounts-daemon acpid alsa- anacron apparmor apt- at-spi atd. auditd avahi- blk-availability "
    "bluetooth bolt. chrony cloud- colord console- cron. crond. cups dbus dconf debug-shell dirmngr "
    "display-manager dm-event dmraid dnf- dpkg- e2scrub emergency evolution- firewalld fwupd gcr- gdm "
    "geoclue getty gnome- gpg-agent gpm. grub gssproxy gvfs haveged ibus ifupdown import-state "
    "initial-setup irqbalance iscsi keyboard-setup kmod lightdm lm-sensors lm_sensors localsearch "
    "logrotate low-memory-monitor lvm2 man-db mcelog mdmonitor ModemManager motd netplan network "
    "NetworkManager nfs- nftables nis-domainname nvidia- obex. ondemand oomd open-vm-tools packagekit "
    "pipewire plasma- plymouth polkit power-profiles pppd procps pulseaudio qemu-guest quota raspi- "
    "rc-local remote- resolvconf rng-tools rngd rpcbind rsync. rsyslog rtkit sddm secureboot selinux "
    "serial-getty setvtrgb smartd smartmontools snapd. speech-dispatcher spice-vdagent sssd switcheroo "
    "sysstat systemd- thermald tracker- tuned ua- ubuntu- udisks ufw unattended-upgrades upower usbmuxd "
    "user-dirs vboxadd vgauth vmtoolsd whoopsie wireplumber wpa_supplicant xdg- ";

bool isTimer(std::string_view unit)
{
    return unit.ends_with(".timer");
}

} // namespace

bool isSystemPlumbing(std::string_view unit)
{
    for (std::string_view rest = plumbing; !rest.empty();) {
        const std::string_view start = nextWord(rest);
        if (!start.empty() && unit.starts_with(start))
            return true;
    }
    return false;
}

EnabledUnits::EnabledUnits(UnitFolders folders, ProgramFolders programs)
    : m_folders(std::move(folders)), m_programs(std::move(programs))
{
    for (const char *folder : {"/usr/local/sbin", "/usr/local/bin", "/usr/sbin", "/usr/bin"})
        m_serviceFolders.push_back(m_programs.root + folder);
}

std::vector<EnabledUnit> EnabledUnits::list()
{
    std::vector<EnabledUnit> units;
    addFolder(m_folders.user, LoginItemScope::userAgent, units);
    addFolder(m_folders.global, LoginItemScope::globalAgent, units);
    addFolder(m_folders.system, LoginItemScope::globalDaemon, units);
    return units;
}

void EnabledUnits::addFolder(const std::string &folder, LoginItemScope scope, std::vector<EnabledUnit> &units)
{
    std::vector<std::string> targets = folderEntries(folder);
    std::sort(targets.begin(), targets.end());
    std::vector<std::string> seen;
    for (const std::string &target : targets) {
        if (!target.ends_with(".wants") && !target.ends_with(".requires"))
            continue;
        std::vector<std::string> names = folderEntries(folder + '/' + target);
        std::sort(names.begin(), names.end());
        for (const std::string &name : names) {
            const bool isUnit = name.ends_with(".service") || isTimer(name);
            if (!isUnit || std::find(seen.begin(), seen.end(), name) != seen.end())
                continue;
            auto unit = enabledUnit(folder + '/' + target + '/' + name, name, folder);
            if (!unit)
                continue;
            seen.push_back(name);
            unit->entry.scope = scope;
            units.push_back(std::move(*unit));
        }
    }
}

std::optional<EnabledUnit> EnabledUnits::enabledUnit(const std::string &link, const std::string &name,
                                                     const std::string &folder)
{
    const std::string definition = withoutLinks(link);
    const bool isVendorDefined = isVendorDefinition(definition, m_programs.root);
    if (isVendorDefined && (isTimer(name) || isSystemPlumbing(name)))
        return std::nullopt;
    auto file = m_cache.get(definition, unitFileFrom);
    if (!file)
        return std::nullopt;

    EnabledUnit unit;
    unit.entry.label = textOf(unitLabel(*file, {name, m_programs.home}));
    unit.unit = name;
    unit.service = name;
    if (isTimer(name)) {
        unit.service =
            file->activates.empty() ? name.substr(0, name.rfind('.')) + ".service" : file->activates;
        file = m_cache.get(std::string(parentFolder(definition)) + '/' + unit.service, unitFileFrom);
        if (!file)
            file = m_cache.get(folder + '/' + unit.service, unitFileFrom);
    }
    const auto words =
        file ? unitCommand(file->command, {unit.service, m_programs.home}) : std::vector<std::string>();
    const std::string program = startedProgram(words, m_serviceFolders);
    if (program.empty())
        return std::nullopt;

    unit.entry.definitionPath = textOf(link);
    unit.entry.programPath = textOf(program);
    unit.entry.programIsMissing = !isThere(program);
    unit.entry.isVendorSigned = isVendorDefined && isVendorProgram(withoutLinks(program), m_programs.root);
    return unit;
}

} // namespace swabby
