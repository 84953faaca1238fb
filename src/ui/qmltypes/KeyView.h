#pragma once

#include "platform/LatestRun.h"
#include "platform/SecretStore.h"
#include "ui/presentation/SettingsText.h"
#include "ui/qmltypes/WindowContext.h"

#include <QCoroTask>

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace swabby {

/// The person's own key for the assistant. It goes to the system's keeper of passwords and is never shown
/// again.
class KeyView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the settings")
    Q_PROPERTY(bool isStored READ isStored NOTIFY changed)
    Q_PROPERTY(bool isGood READ isGood NOTIFY changed)
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY changed)
    Q_PROPERTY(QString sentence READ sentence NOTIFY changed)
    Q_PROPERTY(QString placeholder READ placeholder NOTIFY changed)

public:
    KeyView(const UserInterfaceContext &context, QObject *parent);

    bool isStored() const
    {
        return m_standing == KeyStanding::stored || m_standing == KeyStanding::works ||
               m_standing == KeyStanding::worksNot || m_standing == KeyStanding::notRemoved;
    }
    bool isGood() const { return m_standing == KeyStanding::stored || m_standing == KeyStanding::works; }
    bool isBusy() const { return m_isBusy; }
    /// Whether there is a key, or what went wrong.
    QString sentence() const { return keySentence(m_standing, m_isBusy, m_reason); }
    QString placeholder() const { return keyPlaceholder(isStored()); }

    /// Looks whether there is one.
    void look();
    /// Stores the key and tries it once.
    Q_INVOKABLE void save(const QString &key);
    Q_INVOKABLE void remove();

Q_SIGNALS:
    void changed();

private:
    void begin(std::function<KeyStanding(SecretStore &)> task,
               void (KeyView::*then)(KeyStanding standing) = &KeyView::settle);
    void settle(KeyStanding standing);
    void tryOut(KeyStanding standing);
    QCoro::Task<> tryKey();

    UserInterfaceContext m_context;
    QString m_reason; ///< why it does not work
    KeyStanding m_standing = KeyStanding::unknown;
    bool m_isBusy = false;
    LatestRun m_trial;
};

} // namespace swabby
