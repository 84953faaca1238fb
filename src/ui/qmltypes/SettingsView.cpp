#include "ui/qmltypes/SettingsView.h"

#include "flows/startup/StartupFlow.h"
#include "platform/WhenDone.h"
#include "startup/LoginAtLogin.h"
#include "ui/presentation/NoticeText.h"
#include "ui/presentation/PlainWords.h"

#include <utility>

namespace swabby {
namespace {

/// The problem as a sentence; for none, the one that is left.
QString notStoredText(const QString &problem)
{
    return problem.isEmpty() ? noticeText(Notice::notStored, QStringLiteral("The setting"))
                             : sentence(problem);
}

} // namespace

SettingsView::SettingsView(const UserInterfaceContext &context)
    : m_context(context), m_key(context, this), m_folder(context, this)
{
    connect(&m_folder, &FolderView::chosen, this, &SettingsView::keep);
    connect(&m_context.state, &AppState::changed, this, &SettingsView::changed);
    connect(this, &SettingsView::tabChanged, this, &SettingsView::dismissNotice);
    read();
    m_key.look();
    connect(&m_context.startup, &StartupFlow::disabledItemsChanged, this, &SettingsView::lookAtLogin);
    lookAtLogin();
}

void SettingsView::lookAtLogin()
{
    const auto asking = m_context.systemCalls.ask(
        [machine = m_context.state.sharedMachine()] { return machine->login->isEnabled(); });
    whenDone(this, asking, [this](bool isEnabled) {
        m_login = loginSetting(isEnabled);
        Q_EMIT changed();
    });
}

void SettingsView::read()
{
    const Settings settings(*m_context.state.machine().settings);
    const MachineWords &words = m_context.state.machine().words;
    m_sliders = thresholdSettings(settings, words);
    m_thresholds.show(m_sliders, [](const SliderSetting &slider) { return slider.key; });
    m_reminder = reminderSetting(settings);
    m_dock = dockSetting(settings);
    m_redNotification = redNotificationSetting(settings, words);
    m_storageNotification = storageNotificationSetting(settings);
    m_weekly = weeklySetting(settings);
    m_assistant = assistantSetting(settings);
    m_model = modelSetting(settings);
    m_address = addressSetting(settings);
    m_isCompact = settings.value(setting<"rowDensity">) == RowDensity::compact;
    m_theme = settings.value(setting<"theme">);
    m_neverRemove = settings.value(setting<"neverRemove">);
    showKept();
    const QString problem = settings.neverRemove(m_context.state.machine().places.home).problem;
    m_problem = problem.isEmpty() ? QString() : sentence(problem);
    Q_EMIT changed();
}

void SettingsView::say(const Word &word)
{
    m_notice = word.text;
    m_noticeIsTrouble = word.isTrouble;
    Q_EMIT changed();
}

void SettingsView::openPermissionSettings(int what)
{
    swabby::openPermissionSettings(what, m_context, this, [this](const QString &notice) { say({notice}); });
}

void SettingsView::reload()
{
    // Once it was answered nobody is asked again, and the answer of today comes in.
    m_context.state.machine().notifier->requestPermission();
    if (m_pendingWrites == 0)
        read();
}

void SettingsView::write(const SettingKey &key, const QJsonValue &value)
{
    const auto store = [&key, value](Settings &settings) {
        return Word{settings.store(key, value) ? QString() : notStoredText(settings.problem())};
    };
    change(store, [this, &key] {
        if (key == setting<"showInDock">)
            m_context.dockChoiceChanged();
    });
}

void SettingsView::change(const std::function<Word(Settings &settings)> &work,
                          const std::function<void()> &onStored)
{
    Q_EMIT changed();
    ++m_pendingWrites;
    const auto writing = m_context.state.bookkeeping().ask([machine = m_context.state.sharedMachine(), work] {
        Settings settings(*machine->settings);
        return work(settings);
    });
    whenDone(this, writing, [this, onStored](const Word &word) {
        --m_pendingWrites;
        say(word);
        if (word.text.isEmpty())
            onStored();
        reload();
        m_context.state.noteStoredSetting();
    });
}

void SettingsView::toggle(const QString &key)
{
    for (SwitchSetting *changed :
         {&m_dock, &m_redNotification, &m_storageNotification, &m_weekly, &m_assistant})
        if (changed->key == key) {
            changed->isOn = !changed->isOn;
            write(*Settings::find(key), changed->isOn);
        }
}

void SettingsView::setText(const QString &name, const QString &typed)
{
    const SettingKey &key = *Settings::find(name);
    const QString text = typed.trimmed();
    const QJsonValue value = Settings::parse(key, text);
    if (value.isUndefined()) {
        for (const TextSetting &field : {m_model, m_address})
            if (field.key == name)
                say({notTakenText(field.label, Settings::expectedText(key))});
        return;
    }
    for (TextSetting *changed : {&m_model, &m_address})
        if (changed->key == name && std::exchange(changed->value, text) != text)
            write(key, text.isEmpty() ? QJsonValue(QJsonValue::Undefined) : value);
}

void SettingsView::setNumber(const QString &name, double value)
{
    const auto move = [&](SliderSetting &slider) {
        const SliderSetting moved = movedTo(slider, value, m_sliders);
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

void SettingsView::setTheme(int theme)
{
    if (theme == this->theme())
        return;
    m_theme = static_cast<ThemeChoice>(theme);
    write(setting<"theme">, QLatin1String(setting<"theme">.words.at(static_cast<std::size_t>(theme))));
}

void SettingsView::toggleLogin()
{
    const bool opens = !m_login.isOn;
    m_login = loginSetting(opens);
    Q_EMIT changed();
    const auto changing = m_context.systemCalls.ask([machine = m_context.state.sharedMachine(), opens] {
        LoginAtLogin::setEnabled(opens, *machine->login);
        return machine->login->isEnabled();
    });
    whenDone(this, changing, [this, opens](bool isEnabled) {
        m_login = loginSetting(isEnabled);
        say({isEnabled == opens ? QString() : noticeText(Notice::notFollowed, m_login.label)});
        m_context.startup.noteLoginSetting();
    });
}

void SettingsView::restoreThresholds()
{
    for (const SliderSetting &slider : m_sliders)
        write(*Settings::find(slider.key), QJsonValue::Undefined);
}

bool SettingsView::addExcluded(const QString &typed)
{
    const auto path = excludedPath(typed, m_context.state.machine().places.home);
    if (path)
        keep(*path);
    say({path ? QString() : noticeText(Notice::notAPath)});
    return path.has_value();
}

void SettingsView::keep(const QString &path)
{
    if (m_neverRemove.contains(path))
        return;
    m_neverRemove.append(path);
    setExcluded(path, true);
}

void SettingsView::addDropped(const QList<QUrl> &files)
{
    for (const QUrl &file : files)
        if (!addExcluded(file.toLocalFile()))
            return;
}

void SettingsView::removeExcluded(const QString &path)
{
    if (m_neverRemove.removeAll(path) > 0)
        setExcluded(path, false);
}

void SettingsView::showKept()
{
    m_keptRows.show(m_neverRemove, [](const QString &path) { return path; });
}

void SettingsView::setExcluded(const QString &path, bool isKept)
{
    showKept();
    change([path, isKept](Settings &settings) {
        if (!settings.setNeverRemoved(path, isKept))
            return Word{notStoredText(settings.neverRemove({}).problem)};
        return Word{isKept && isMissing(path) ? noticeText(Notice::notThere, path) : QString(), false};
    });
}

} // namespace swabby
