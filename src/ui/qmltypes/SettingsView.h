#pragma once

#include "platform/BackgroundWork.h"
#include "state/AppState.h"
#include "ui/presentation/SettingsText.h"
#include "ui/qmltypes/FolderView.h"
#include "ui/qmltypes/KeyView.h"
#include "ui/qmltypes/PermissionRequest.h"
#include "ui/qmltypes/RowModel.h"
#include "ui/qmltypes/WindowContext.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QObject>
#include <QtCore/QUrl>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <memory>

namespace swabby {

/// The preferences and the exclude list. What is changed shows at once and is written behind it, in order.
class SettingsView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(int tab MEMBER m_tab NOTIFY tabChanged)
    Q_PROPERTY(bool isCompact MEMBER m_isCompact NOTIFY changed)
    Q_PROPERTY(bool hasDock READ hasDock CONSTANT)
    Q_PROPERTY(int theme READ theme NOTIFY changed)
    Q_PROPERTY(swabby::SwitchSetting dock MEMBER m_dock NOTIFY changed)
    Q_PROPERTY(swabby::SwitchSetting login MEMBER m_login NOTIFY changed)
    Q_PROPERTY(swabby::SwitchSetting redNotification MEMBER m_redNotification NOTIFY changed)
    Q_PROPERTY(swabby::SwitchSetting storageNotification MEMBER m_storageNotification NOTIFY changed)
    Q_PROPERTY(swabby::SwitchSetting weekly MEMBER m_weekly NOTIFY changed)
    Q_PROPERTY(swabby::PermissionRequest silenced READ silenced NOTIFY changed)
    Q_PROPERTY(swabby::SwitchSetting assistant MEMBER m_assistant NOTIFY changed)
    Q_PROPERTY(swabby::TextSetting model MEMBER m_model NOTIFY changed)
    Q_PROPERTY(swabby::TextSetting address MEMBER m_address NOTIFY changed)
    Q_PROPERTY(QString whatIsSent READ whatIsSent CONSTANT)
    Q_PROPERTY(swabby::SliderSetting reminder MEMBER m_reminder NOTIFY changed)
    Q_PROPERTY(swabby::RowModel *neverRemove READ neverRemove CONSTANT)
    Q_PROPERTY(QString notice READ notice NOTIFY changed)
    Q_PROPERTY(bool noticeEnds READ noticeEnds NOTIFY changed)
    Q_PROPERTY(bool noticeIsTrouble READ noticeIsTrouble NOTIFY changed)
    Q_PROPERTY(bool isSnoozed READ isSnoozed NOTIFY changed)
    Q_PROPERTY(QString snoozed READ snoozed NOTIFY changed)
    Q_PROPERTY(QString about READ about CONSTANT)
    Q_PROPERTY(swabby::RowModel *thresholds READ thresholds CONSTANT)
    Q_PROPERTY(swabby::KeyView *key READ key CONSTANT)
    Q_PROPERTY(swabby::FolderView *folder READ folder CONSTANT)

public:
    explicit SettingsView(const UserInterfaceContext &context);

    bool hasDock() const { return m_context.state.machine().dock->isThere(); }
    int theme() const { return static_cast<int>(m_theme); }
    RowModel *thresholds() { return &m_thresholds; }
    /// The places that are kept, by their paths.
    RowModel *neverRemove() { return &m_keptRows; }
    KeyView *key() { return &m_key; }
    /// Where a folder is looked for that is never to be removed.
    FolderView *folder() { return &m_folder; }
    bool isSnoozed() const
    {
        return swabby::isSnoozed(m_context.state.snoozedUntil(), m_context.state.machine().clock->now());
    }
    /// Until when the notifications are silent, in a sentence.
    QString snoozed() const
    {
        return snoozeSentence(m_context.state.snoozedUntil(), m_context.state.machine().clock->now(),
                              m_weekly.isOn, QLocale());
    }
    /// Why no notification would appear.
    PermissionRequest silenced() const
    {
        return {Permission::notifications, m_context.state.refused(), m_context.state.machine().words};
    }
    /// What became of the last change, else why nothing can be stored or removed; empty when all is well.
    QString notice() const { return m_notice.isEmpty() ? m_problem : m_notice; }
    /// It is about the last change, and goes after a while.
    bool noticeEnds() const { return !m_notice.isEmpty(); }
    bool noticeIsTrouble() const { return m_noticeIsTrouble || m_notice.isEmpty(); }
    Q_INVOKABLE void dismissNotice() { say({}); }
    QString whatIsSent() const { return whatIsSentText(); }
    QString about() const { return aboutText(QCoreApplication::applicationVersion()); }

    /// Stores the other position of the switch with that key.
    Q_INVOKABLE void toggle(const QString &key);
    /// Stores what was typed, or a word about it when it is none that the setting takes; nothing removes.
    Q_INVOKABLE void setText(const QString &name, const QString &typed);
    /// Turns to what is about the assistant.
    void showAssistant() { setProperty("tab", assistantTab); }
    /// Stores a figure, brought onto its slider's stops.
    Q_INVOKABLE void setNumber(const QString &name, double value);
    Q_INVOKABLE void setCompact(bool isCompact);
    Q_INVOKABLE void setTheme(int theme);
    Q_INVOKABLE void toggleLogin();
    Q_INVOKABLE void restoreThresholds();
    Q_INVOKABLE void snooze(int minutes)
    {
        m_context.state.snoozeUntil(m_context.state.machine().clock->now() + minutes * 60.0);
    }
    Q_INVOKABLE void openPermissionSettings(int what);
    Q_INVOKABLE void endSnooze() { m_context.state.snoozeUntil(std::nullopt); }
    /// False, and a word about it, when that is no whole path.
    Q_INVOKABLE bool addExcluded(const QString &typed);
    Q_INVOKABLE void addDropped(const QList<QUrl> &files);
    Q_INVOKABLE void removeExcluded(const QString &path);
    /// Reads everything anew, for what another program may have changed.
    Q_INVOKABLE void reload();

Q_SIGNALS:
    void changed();
    void tabChanged();

private:
    static constexpr int assistantTab = 3; ///< in SettingsWindow.qml

    void read();
    /// Whether Swabby opens at login may be changed on the startup page too.
    void lookAtLogin();
    /// Stores, or removes for an undefined value.
    void write(const SettingKey &key, const QJsonValue &value);
    /// What is said of a change.
    struct Word {
        QString text;
        bool isTrouble = true;
    };
    void say(const Word &word);
    /// Does the work behind the window, shows what it says, and calls on when that is nothing.
    void change(
        const std::function<Word(Settings &settings)> &work, const std::function<void()> &onStored = [] {});
    void keep(const QString &path);
    void setExcluded(const QString &path, bool isKept);
    void showKept();

    UserInterfaceContext m_context;
    KeyView m_key;
    FolderView m_folder;
    RowModel m_thresholds{this};
    QList<SliderSetting> m_sliders;
    SliderSetting m_reminder;
    TextSetting m_model;
    TextSetting m_address;
    RowModel m_keptRows{this};
    QStringList m_neverRemove;
    QString m_notice;
    bool m_noticeIsTrouble = true;
    QString m_problem;
    int m_tab = 0;
    int m_pendingWrites = 0;
    bool m_isCompact = false;
    ThemeChoice m_theme = ThemeChoice::system;
    SwitchSetting m_dock;
    SwitchSetting m_login = loginSetting(false);
    SwitchSetting m_redNotification;
    SwitchSetting m_storageNotification;
    SwitchSetting m_weekly;
    SwitchSetting m_assistant;
};

} // namespace swabby
