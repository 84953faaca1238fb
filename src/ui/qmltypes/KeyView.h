#pragma once

#include "platform/BackgroundWork.h"
#include "platform/Machine.h"
#include "ui/presentation/SettingsText.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace swabby {

/// The person's own key for the assistant. It goes to the system's keeper of passwords and is never shown
/// again.
class KeyView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the settings")
    Q_PROPERTY(bool isStored READ isStored NOTIFY changed)
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY changed)
    Q_PROPERTY(QString sentence READ sentence NOTIFY changed)
    Q_PROPERTY(QString placeholder READ placeholder NOTIFY changed)

public:
    /// The work is where the system's keeper is waited for.
    KeyView(std::shared_ptr<Machine> machine, BackgroundWork &work, QObject *parent);

    bool isStored() const { return m_standing == KeyStanding::stored; }
    bool isBusy() const { return m_isBusy; }
    /// Whether there is a key, or what went wrong.
    QString sentence() const { return keySentence(m_standing, m_isBusy); }
    QString placeholder() const { return keyPlaceholder(isStored()); }

    /// Looks whether there is one.
    void look();
    Q_INVOKABLE void save(const QString &key);
    Q_INVOKABLE void remove();

Q_SIGNALS:
    void changed();

private:
    void begin(std::function<KeyStanding(SecretStore &)> task);

    std::shared_ptr<Machine> m_machine;
    BackgroundWork &m_work;
    KeyStanding m_standing = KeyStanding::unknown;
    bool m_isBusy = false;
};

} // namespace swabby
