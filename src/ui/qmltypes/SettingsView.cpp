#include "ui/qmltypes/SettingsView.h"

#include "platform/WhenDone.h"
#include "startup/LoginAtLogin.h"
#include "state/AppState.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QJsonArray>
#include <QtQml/QQmlEngine>

namespace swabby {
namespace {

constexpr int errandsAtOnce = 2;

std::shared_ptr<Machine> machineOf(const UserInterfaceContext &context)
{
    return context.state == nullptr ? nullptr : context.state->sharedMachine();
}

} // namespace

SettingsView::SettingsView(const UserInterfaceContext &context, QObject *parent)
    : QObject(parent),
      m_context(context),
      m_ownErrands(errandsAtOnce),
      m_errands(context.errands != nullptr ? *context.errands : m_ownErrands),
      m_key(machineOf(context), m_errands)
{
    QJSEngine::setObjectOwnership(&m_key, QJSEngine::CppOwnership);
    QJSEngine::setObjectOwnership(&m_thresholds, QJSEngine::CppOwnership);
    if (m_context.state == nullptr)
        return;
    connect(m_context.state, &AppState::changed, this, &SettingsView::changed);
    connect(this, &SettingsView::tabChanged, this, [this] {
        m_notice.clear();
        Q_EMIT changed();
    });
    read();
    m_key.look();
    const auto asking =
        m_errands.ask([machine = machineOf(m_context)] { return machine->login->isEnabled(); });
    whenDone(this, asking, [this](bool isEnabled) {
        m_opensAtLogin = isEnabled;
        Q_EMIT changed();
    });
}

void SettingsView::read()
{
    const Settings settings(*m_context.state->machine().settings);
    m_sliders = thresholdSettings(settings);
    m_thresholds.show(m_sliders, [](const SliderSetting &slider) { return slider.key; });
    m_reminder = reminderSetting(settings);
    m_showInDock = settings.value(setting<"showInDock">);
    m_isCompact = settings.value(setting<"rowDensity">) == RowDensity::compact;
    m_notifyOnRed = settings.value(setting<"notifyOnRed">);
    m_notifyOnStorage = settings.value(setting<"notifyOnStorage">);
    m_aiEnabled = settings.value(setting<"aiEnabled">);
    m_neverRemove = settings.value(setting<"neverRemove">);
    Q_EMIT changed();
}

void SettingsView::reload()
{
    if (m_context.state != nullptr && m_pendingWrites == 0)
        read();
}

void SettingsView::write(const SettingKey &key, const QJsonValue &value)
{
    Q_EMIT changed();
    if (m_context.state == nullptr)
        return;
    ++m_pendingWrites;
    const auto writing = m_context.state->bookkeeping().ask([machine = machineOf(m_context), &key, value] {
        return Settings(*machine->settings).store(key, value);
    });
    whenDone(this, writing, [this, &key](bool isWritten) {
        --m_pendingWrites;
        m_notice = isWritten ? QString() : QStringLiteral("That could not be kept. Is the disk full?");
        if (isWritten && &key == &setting<"showInDock"> && m_context.dockChoiceChanged)
            m_context.dockChoiceChanged();
        reload();
        m_context.state->noteStoredSetting();
    });
}

void SettingsView::setSwitch(const QString &name, bool isOn)
{
    const auto turn = [&](const Setting<bool> &key, bool &shown) {
        if (name != QLatin1String(key.name))
            return;
        shown = isOn;
        write(key, isOn);
    };
    turn(setting<"showInDock">, m_showInDock);
    turn(setting<"notifyOnRed">, m_notifyOnRed);
    turn(setting<"notifyOnStorage">, m_notifyOnStorage);
    turn(setting<"aiEnabled">, m_aiEnabled);
}

void SettingsView::setNumber(const QString &name, double value)
{
    const auto move = [&](SliderSetting &slider) {
        const SliderSetting moved = movedTo(slider, value);
        if (slider.key != name || moved == slider)
            return;
        slider = moved;
        write(*Settings::find(name), moved.value);
    };
    move(m_reminder);
    for (SliderSetting &slider : m_sliders)
        move(slider);
    m_thresholds.show(m_sliders, [](const SliderSetting &slider) { return slider.key; });
}

void SettingsView::setCompact(bool isCompact)
{
    if (isCompact == m_isCompact)
        return;
    m_isCompact = isCompact;
    write(setting<"rowDensity">, isCompact ? QStringLiteral("compact") : QStringLiteral("comfortable"));
}

void SettingsView::setOpensAtLogin(bool opens)
{
    if (m_context.state == nullptr)
        return;
    m_opensAtLogin = opens;
    Q_EMIT changed();
    const auto changing = m_errands.ask([machine = machineOf(m_context), opens] {
        LoginAtLogin::setEnabled(opens, *machine->login);
        return machine->login->isEnabled();
    });
    whenDone(this, changing, [this, opens](bool isEnabled) {
        m_opensAtLogin = isEnabled;
        m_notice =
            isEnabled == opens ? QString() : QStringLiteral("That could not be changed on this computer.");
        Q_EMIT changed();
    });
}

void SettingsView::restoreThresholds()
{
    for (const SliderSetting &slider : m_sliders)
        write(*Settings::find(slider.key), QJsonValue::Undefined);
}

QString SettingsView::snoozed() const
{
    if (m_context.state == nullptr)
        return {};
    return snoozeSentence(m_context.state->snoozedUntil(), m_context.state->machine().clock->now(),
                          QLocale());
}

void SettingsView::snooze(int minutes)
{
    if (m_context.state != nullptr)
        m_context.state->snoozeUntil(m_context.state->machine().clock->now() + minutes * 60.0);
}

void SettingsView::endSnooze()
{
    if (m_context.state != nullptr)
        m_context.state->snoozeUntil(std::nullopt);
}

bool SettingsView::addExcluded(const QString &typed)
{
    const QString home = m_context.state ? m_context.state->machine().places.home : QString();
    const auto path = excludedPath(typed, home);
    m_notice =
        path ? QString() : QStringLiteral("Write the whole path of a file or folder, beginning with / or ~.");
    if (path && !m_neverRemove.contains(*path)) {
        m_neverRemove.append(*path);
        storeExcluded();
    }
    Q_EMIT changed();
    return path.has_value();
}

void SettingsView::addDropped(const QList<QUrl> &files)
{
    for (const QUrl &file : files)
        if (!addExcluded(file.toLocalFile()))
            return;
}

void SettingsView::removeExcluded(int index)
{
    if (index < 0 || index >= m_neverRemove.size())
        return;
    m_neverRemove.removeAt(index);
    storeExcluded();
}

void SettingsView::storeExcluded()
{
    write(setting<"neverRemove">, QJsonArray::fromStringList(m_neverRemove));
}

QString SettingsView::about() const
{
    const QString version = QCoreApplication::applicationVersion();
    const QString name =
        QStringLiteral("Swabby") + (version.isEmpty() ? QString() : QLatin1Char(' ') + version);
    return name + QStringLiteral(" · Free software under the Apache License 2.0");
}

} // namespace swabby
