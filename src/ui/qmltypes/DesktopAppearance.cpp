#include "ui/qmltypes/DesktopAppearance.h"

#include <QtCore/QEvent>
#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusPendingReply>
#include <QtDBus/QDBusVariant>
#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>

#include <algorithm>
#include <array>

namespace swabby {
namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");
const QString accentColor = QStringLiteral("accent-color");
const QString desktopInterface = QStringLiteral("org.gnome.desktop.interface");
const QString enableAnimations = QStringLiteral("enable-animations");

// The portal's older call wraps the value twice.
QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

// Red, green and blue from 0 to 1; anything outside says that there is none.
std::optional<QColor> accentFrom(const QVariant &value)
{
    if (!value.canConvert<QDBusArgument>())
        return std::nullopt;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(ddd)"))
        return std::nullopt;
    std::array<double, 3> parts{};
    argument.beginStructure();
    for (double &part : parts)
        argument >> part;
    argument.endStructure();
    if (!std::all_of(parts.begin(), parts.end(), [](double part) { return part >= 0 && part <= 1; }))
        return std::nullopt;
    return QColor::fromRgbF(static_cast<float>(parts[0]), static_cast<float>(parts[1]),
                            static_cast<float>(parts[2]));
}

} // namespace

DesktopAppearance::DesktopAppearance(QObject *parent) : QObject(parent)
{
    qGuiApp->installEventFilter(this);
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (QGuiApplication::platformName() == QLatin1String("offscreen") || !bus.isConnected())
        return;
    // A slot is refused as long as nobody has used the type of its value.
    qRegisterMetaType<QDBusVariant>("QDBusVariant");
    bus.connect(service, path, interface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    ask(appearance, colorScheme);
    ask(appearance, accentColor);
    ask(desktopInterface, enableAnimations);
}

bool DesktopAppearance::isDark() const
{
    return m_prefersDark.value_or(QGuiApplication::palette().color(QPalette::Window).lightnessF() < 0.5F);
}

bool DesktopAppearance::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qGuiApp)
        Q_EMIT changed();
    return QObject::eventFilter(watched, event);
}

void DesktopAppearance::settingChanged(const QString &space, const QString &key, const QDBusVariant &value)
{
    take(space, key, value.variant());
}

void DesktopAppearance::ask(const QString &space, const QString &key)
{
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
    call.setArguments({space, key});
    auto *watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, space, key] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isValid())
            take(space, key, reply.value().variant());
        watcher->deleteLater();
    });
}

void DesktopAppearance::take(const QString &space, const QString &key, const QVariant &value)
{
    const QVariant plain = unwrapped(value);
    if (space == appearance && key == colorScheme) {
        const uint scheme = plain.toUInt(); // 0 leaves it open, 1 is dark, 2 is light
        m_prefersDark = scheme == 0 ? std::nullopt : std::optional(scheme == 1);
    } else if (space == appearance && key == accentColor) {
        m_accent = accentFrom(plain);
    } else if (space == desktopInterface && key == enableAnimations) {
        m_reducesMotion = !plain.toBool();
    } else {
        return;
    }
    Q_EMIT changed();
}

} // namespace swabby
