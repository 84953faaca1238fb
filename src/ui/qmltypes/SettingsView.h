#pragma once

#include "platform/BackgroundWork.h"
#include "ui/presentation/SettingsText.h"
#include "ui/qmltypes/KeyView.h"
#include "ui/qmltypes/RowModel.h"
#include "ui/qmltypes/WindowContext.h"

#include <QtCore/QObject>
#include <QtCore/QUrl>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace swabby {

/// The preferences and the exclude list. What is changed shows at once and is written behind it, in order.
class SettingsView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(int tab MEMBER m_tab NOTIFY tabChanged)
    Q_PROPERTY(bool showInDock MEMBER m_showInDock NOTIFY changed)
    Q_PROPERTY(bool opensAtLogin MEMBER m_opensAtLogin NOTIFY changed)
    Q_PROPERTY(bool isCompact MEMBER m_isCompact NOTIFY changed)
    Q_PROPERTY(bool notifyOnRed MEMBER m_notifyOnRed NOTIFY changed)
    Q_PROPERTY(bool notifyOnStorage MEMBER m_notifyOnStorage NOTIFY changed)
    Q_PROPERTY(bool aiEnabled MEMBER m_aiEnabled NOTIFY changed)
    Q_PROPERTY(swabby::SliderSetting reminder MEMBER m_reminder NOTIFY changed)
    Q_PROPERTY(QStringList neverRemove MEMBER m_neverRemove NOTIFY changed)
    Q_PROPERTY(QString notice MEMBER m_notice NOTIFY changed)
    Q_PROPERTY(QString snoozed READ snoozed NOTIFY changed)
    Q_PROPERTY(QString about READ about CONSTANT)
    Q_PROPERTY(swabby::RowModel *thresholds READ thresholds CONSTANT)
    Q_PROPERTY(swabby::KeyView *key READ key CONSTANT)

public:
    explicit SettingsView(const UserInterfaceContext &context, QObject *parent = nullptr);

    RowModel *thresholds() { return &m_thresholds; }
    KeyView *key() { return &m_key; }
    /// Until when the notifications are silent, in a sentence; empty when they are not.
    QString snoozed() const;
    QString about() const;

    /// Stores a switch under the setting's name.
    Q_INVOKABLE void setSwitch(const QString &name, bool isOn);
    /// Stores a figure, brought onto its slider's steps.
    Q_INVOKABLE void setNumber(const QString &name, double value);
    Q_INVOKABLE void setCompact(bool isCompact);
    Q_INVOKABLE void setOpensAtLogin(bool opens);
    Q_INVOKABLE void restoreThresholds();
    Q_INVOKABLE void snooze(int minutes);
    Q_INVOKABLE void endSnooze();
    /// False, and a word about it, when that is no whole path.
    Q_INVOKABLE bool addExcluded(const QString &typed);
    Q_INVOKABLE void addDropped(const QList<QUrl> &files);
    Q_INVOKABLE void removeExcluded(int index);
    /// Reads everything anew, for what another program may have changed.
    Q_INVOKABLE void reload();

Q_SIGNALS:
    void changed();
    void tabChanged();

private:
    void read();
    /// Stores, or removes for an undefined value.
    void write(const SettingKey &key, const QJsonValue &value);
    void storeExcluded();

    UserInterfaceContext m_context;
    BackgroundWork m_ownErrands; ///< where nobody else runs them
    BackgroundWork &m_errands;
    KeyView m_key;
    RowModel m_thresholds;
    QList<SliderSetting> m_sliders;
    SliderSetting m_reminder;
    QStringList m_neverRemove;
    QString m_notice;
    int m_tab = 0;
    int m_pendingWrites = 0;
    bool m_showInDock = true;
    bool m_opensAtLogin = false;
    bool m_isCompact = false;
    bool m_notifyOnRed = true;
    bool m_notifyOnStorage = true;
    bool m_aiEnabled = true;
};

} // namespace swabby
