#pragma once

#include "ui/WindowLibrary.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QTimer>

namespace swabby {

/// Shows the small panel beside the item in the menu bar and closes it when the person turns elsewhere. The
/// same panel is shown again; a while after it was closed it is let go.
class PopoverPresenter : public QObject {
    Q_OBJECT

public:
    /// makeEngine gives the engine of the windows that are open, or a new one; make says which panel it is.
    PopoverPresenter(const UserInterfaceContext &context,
                     std::function<std::shared_ptr<WindowEngine>()> makeEngine,
                     MakeWindow<PopoverView> *make = &openPopover);
    ~PopoverPresenter() override;

    /// Shows the panel beside that rectangle of the screen (at the pointer when it is empty), or closes it.
    void toggle(const QRect &statusItem);
    /// The panel while it is kept, shown or not; null else.
    QQuickWindow *window() const { return m_open ? m_open->window.get() : nullptr; }

Q_SIGNALS:
    /// The panel was let go.
    void dropped();

private:
    bool make();
    void drop();
    void place();
    void followActivity();
    void followVisibility(bool isVisible);

    const UserInterfaceContext &m_context;
    std::function<std::shared_ptr<WindowEngine>()> m_makeEngine;
    MakeWindow<PopoverView> *m_make;
    std::unique_ptr<OpenWindow<PopoverView>> m_open;
    QRect m_statusItem;
    QElapsedTimer m_sinceTurnedAway;
    QTimer m_keeping;
};

} // namespace swabby
