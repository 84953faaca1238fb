#pragma once

#include "ui/qmltypes/WindowContext.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace swabby {

class MainWindowCoordinator;

/// What the last removal did, while that is news, what stayed, until it is read, and the way back.
class RemovalBannerView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(bool isRemoving READ isRemoving NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(bool canPutBack READ canPutBack NOTIFY changed)

public:
    RemovalBannerView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator,
                      QObject *parent = nullptr);

    bool isRemoving() const;
    /// Empty when there is no news.
    QString text() const;
    bool canPutBack() const;
    Q_INVOKABLE void putBack();

Q_SIGNALS:
    void changed();

private:
    UserInterfaceContext m_context;
    MainWindowCoordinator &m_coordinator;
    bool m_asked = false; ///< for the way back, here
};

} // namespace swabby
