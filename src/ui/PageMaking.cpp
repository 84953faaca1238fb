#include "ui/PageMaking.h"

#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickWindow>

#include <chrono>

namespace swabby {
namespace {

using namespace std::chrono_literals;

// The toolkit waits five milliseconds before it draws a frame.
constexpr auto portion = 5ms;
constexpr auto betweenPortions = 12ms;

} // namespace

PageMaking::PageMaking()
{
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(betweenPortions);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { makePortion(); });
}

void PageMaking::incubatingObjectCountChanged(int count)
{
    if (count == 0)
        m_timer.stop();
    else if (!m_timer.isActive())
        m_timer.start();
}

void PageMaking::finish()
{
    constexpr int longest = 1'000; // milliseconds
    while (incubatingObjectCount() > 0)
        incubateFor(longest);
}

void PageMaking::makePortion()
{
    incubateFor(static_cast<int>(portion.count()));
    // What is made, but not yet seen, is prepared for drawing portion by portion too.
    for (QWindow *window : QGuiApplication::allWindows())
        if (auto *shown = qobject_cast<QQuickWindow *>(window); shown != nullptr && shown->isVisible())
            shown->update();
}

} // namespace swabby
