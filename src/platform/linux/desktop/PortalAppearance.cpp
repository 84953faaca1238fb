#include "platform/desktop/DesktopAppearance.h"
#include "platform/linux/BusLoop.h"
#include "platform/linux/desktop/ToolkitAppearance.h"

#include <QtGui/QGuiApplication>

#include <array>
#include <string_view>

namespace swabby {
namespace {

constexpr auto service = "org.freedesktop.portal.Desktop";
constexpr auto path = "/org/freedesktop/portal/desktop";
constexpr auto settingsInterface = "org.freedesktop.portal.Settings";

/// While a desktop starts, an answer may take this long; nobody waits for it.
constexpr std::chrono::milliseconds portalPatience{60'000};

/// A type of the bus and what it contains, as its signatures write them.
struct ValueType {
    char type = 0;
    std::string_view contents = {};
};

/// Steps into the variant that comes next; the portal's older call wraps its value twice.
ValueType unwrap(sd_bus_message *message)
{
    char type = 0;
    const char *contents = nullptr;
    while (sd_bus_message_peek_type(message, &type, &contents) > 0) {
        if (type != SD_BUS_TYPE_VARIANT)
            return {.type = type, .contents = contents == nullptr ? "" : contents};
        if (sd_bus_message_enter_container(message, type, contents) < 0)
            break;
    }
    return {};
}

void readColorScheme(sd_bus_message *message, ValueType value, Appearance &appearance)
{
    std::uint32_t scheme = 0; // leaves it open; 1 is dark, 2 is light
    if (value.type != SD_BUS_TYPE_UINT32 || sd_bus_message_read_basic(message, value.type, &scheme) < 0)
        return;
    appearance.prefersDark = scheme == 0 ? std::nullopt : std::optional(scheme == 1);
}

/// Red, green and blue from 0 to 1; anything outside says that there is none.
void readAccent(sd_bus_message *message, ValueType value, Appearance &appearance)
{
    appearance.accent.reset();
    std::array<double, 3> parts{};
    if (value.type != SD_BUS_TYPE_STRUCT || value.contents != "ddd" ||
        sd_bus_message_read(message, "(ddd)", &parts[0], &parts[1], &parts[2]) < 0 ||
        !std::all_of(parts.begin(), parts.end(), [](double part) { return part >= 0 && part <= 1; }))
        return;
    appearance.accent = QColor::fromRgbF(static_cast<float>(parts[0]), static_cast<float>(parts[1]),
                                         static_cast<float>(parts[2]));
}

void readAnimations(sd_bus_message *message, ValueType value, Appearance &appearance)
{
    int moves = 1;
    if (value.type == SD_BUS_TYPE_BOOLEAN && sd_bus_message_read_basic(message, value.type, &moves) >= 0)
        appearance.reducesMotion = moves == 0;
}

struct PortalSetting {
    const char *space;
    const char *key;
    void (*read)(sd_bus_message *message, ValueType value, Appearance &appearance);
};

constexpr PortalSetting settings[] = {
    {"org.freedesktop.appearance", "color-scheme", readColorScheme},
    {"org.freedesktop.appearance", "accent-color", readAccent},
    {"org.gnome.desktop.interface", "enable-animations", readAnimations},
};

/// What the desktop's settings portal says.
class PortalAppearance final : public DesktopAppearance {
public:
    explicit PortalAppearance(Bus bus)
        : m_loop(std::move(bus), [this](sd_bus_message *signal) { follow(signal); })
    {
        m_loop.listen(service, path, settingsInterface, "SettingChanged");
        for (const PortalSetting &setting : settings)
            ask(setting);
    }

private:
    void ask(const PortalSetting &setting)
    {
        BusMessage question =
            busQuestion(m_loop.bus(), service, path, settingsInterface, "Read", ServiceStart::whenNeeded);
        if (question && sd_bus_message_append(question.get(), "ss", setting.space, setting.key) < 0)
            question.reset();
        m_loop.call(std::move(question), portalPatience, [this, &setting](sd_bus_message *answer) {
            if (answer != nullptr)
                take(setting, answer);
        });
    }

    void follow(sd_bus_message *signal)
    {
        const char *space = nullptr;
        const char *key = nullptr;
        if (sd_bus_message_read(signal, "ss", &space, &key) < 0)
            return;
        for (const PortalSetting &setting : settings)
            if (std::string_view(space) == setting.space && std::string_view(key) == setting.key)
                take(setting, signal);
    }

    void take(const PortalSetting &setting, sd_bus_message *message)
    {
        Appearance appearance = now();
        setting.read(message, unwrap(message), appearance);
        say(appearance);
    }

    BusLoop m_loop;
};

/// The portal's word, where it has one; else what the toolkits are told.
class LinuxAppearance final : public DesktopAppearance {
public:
    explicit LinuxAppearance(Bus bus)
        : m_portal(bus ? std::make_unique<PortalAppearance>(std::move(bus)) : nullptr)
    {
        if (m_portal)
            connect(m_portal.get(), &DesktopAppearance::changed, this, &LinuxAppearance::combine);
        connect(&m_toolkit, &DesktopAppearance::changed, this, &LinuxAppearance::combine);
        combine();
    }

private:
    void combine()
    {
        Appearance appearance = m_portal ? m_portal->now() : Appearance();
        if (!appearance.prefersDark)
            appearance.prefersDark = m_toolkit.now().prefersDark;
        say(appearance);
    }

    const std::unique_ptr<PortalAppearance> m_portal;
    ToolkitAppearance m_toolkit;
};

} // namespace

std::unique_ptr<DesktopAppearance> makeDesktopAppearance()
{
    // What is drawn for a test or a picture looks the same on every desktop.
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        return std::make_unique<DesktopAppearance>();
    return std::make_unique<LinuxAppearance>(beginBus(qgetenv("DBUS_SESSION_BUS_ADDRESS").toStdString()));
}

} // namespace swabby
