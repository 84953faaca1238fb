#include "ui/PopoverPresenter.h"

#include "platform/desktop/Display.h"
#include "ui/presentation/PopoverText.h"
#include "ui/qmltypes/PopoverView.h"

#include <QtGui/QCursor>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>

#include <chrono>

namespace swabby {

using namespace std::chrono_literals;

PopoverPresenter::PopoverPresenter(const UserInterfaceContext &context,
                                   std::function<std::shared_ptr<WindowEngine>()> makeEngine,
                                   MakeWindow<PopoverView> *make)
    : m_context(context), m_makeEngine(std::move(makeEngine)), m_make(make)
{
    m_keeping.setSingleShot(true);
    m_keeping.setInterval(1min);
    connect(&m_keeping, &QTimer::timeout, this, [this] {
        drop();
        Q_EMIT dropped();
    });
}

PopoverPresenter::~PopoverPresenter()
{
    drop();
}

// A window that goes says so in ways that nobody should follow any more.
void PopoverPresenter::drop()
{
    if (m_open != nullptr)
        window()->disconnect(this);
    m_open.reset();
}

bool PopoverPresenter::make()
{
    m_open = m_make(m_context, m_makeEngine());
    if (m_open == nullptr)
        return false;
    connect(window(), &QWindow::activeChanged, this, &PopoverPresenter::followActivity);
    connect(window(), &QWindow::visibleChanged, this, &PopoverPresenter::followVisibility);
    connect(window(), &QWindow::heightChanged, this, &PopoverPresenter::place);
    return true;
}

void PopoverPresenter::toggle(const QRect &statusItem)
{
    if (m_open != nullptr && window()->isVisible()) {
        window()->close();
        return;
    }
    // The press on the item has just taken the panel's activity, and with that closed it: this is its click.
    constexpr qint64 clickMilliseconds = 200;
    if (m_sinceTurnedAway.isValid() && !m_sinceTurnedAway.hasExpired(clickMilliseconds))
        return;
    // A desktop may begin or cease to blend windows, which a window follows only when it is made.
    if (m_open != nullptr && m_open->view->isBlended() != blendsWindows())
        drop();
    if (m_open == nullptr && !make())
        return;
    m_keeping.stop();
    m_statusItem = statusItem.isEmpty() ? QRect(QCursor::pos(), QSize(1, 1)) : statusItem;
    m_open->view->setShowHealthDetail(false);
    place();
    window()->show();
    window()->raise();
    window()->requestActivate();
}

void PopoverPresenter::place()
{
    const QScreen *screen = QGuiApplication::screenAt(m_statusItem.center());
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return;
    // The panel stands there; its shadow may reach further.
    const int margin = window()->property("margin").toInt();
    const QSize panel = window()->size().shrunkBy(QMargins(margin, margin, margin, margin));
    window()->setPosition(popoverPosition(m_statusItem, panel, screen->availableGeometry()) -
                          QPoint(margin, margin));
}

void PopoverPresenter::followActivity()
{
    if (window()->isActive() || !window()->isVisible())
        return;
    m_sinceTurnedAway.start();
    window()->close();
}

void PopoverPresenter::followVisibility(bool isVisible)
{
    if (!isVisible)
        m_keeping.start();
}

} // namespace swabby
