#include "ui/WindowPlaces.h"

#include "platform/desktop/Display.h"
#include "platform/posix/OwnFolder.h"
#include "platform/posix/SmallFile.h"
#include "platform/posix/WholeFile.h"
#include "state/AppState.h"
#include "ui/presentation/WindowPlace.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>

#include <chrono>
#include <functional>

namespace swabby {

using namespace std::chrono_literals;

namespace {

constexpr std::int64_t largestFile = 100'000;

/// A window's place while it is open. Told some moments after the window has come to rest, and at its end.
class FollowedWindow : public QObject {
public:
    FollowedWindow(QWindow &window, const std::optional<WindowPlace> &known,
                   std::function<void(const WindowPlace &)> changed)
        : QObject(&window), m_window(window), m_changed(std::move(changed))
    {
        m_place = known.value_or(WindowPlace{std::nullopt, window.size()});
        m_resting.setSingleShot(true);
        m_resting.setInterval(300ms);
        connect(&m_resting, &QTimer::timeout, this, &FollowedWindow::look);
        connect(qGuiApp, &QCoreApplication::aboutToQuit, this, &FollowedWindow::look);
        window.installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::Move:
        case QEvent::Resize:
        case QEvent::WindowStateChange:
            m_resting.start();
            break;
        case QEvent::Close:
            look();
            break;
        default:
            break;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void look()
    {
        m_resting.stop();
        const Qt::WindowStates states = m_window.windowStates();
        if (!m_window.isVisible() || states.testAnyFlags(Qt::WindowMinimized | Qt::WindowFullScreen))
            return;
        WindowPlace now = m_place;
        now.isMaximized = states.testFlag(Qt::WindowMaximized);
        if (!now.isMaximized) {
            now.size = m_window.size();
            if (placesWindows())
                now.corner = m_window.framePosition();
        }
        if (now != std::exchange(m_place, now))
            m_changed(now);
    }

    QWindow &m_window;
    std::function<void(const WindowPlace &)> m_changed;
    WindowPlace m_place;
    QTimer m_resting;
};

void put(QWindow &window, const WindowPlace &wanted)
{
    QList<QRect> screens;
    for (const QScreen *screen : QGuiApplication::screens())
        screens.append(screen->availableGeometry());
    const bool hasOneSize = window.minimumSize() == window.maximumSize();
    WindowPlace place = wanted;
    if (hasOneSize)
        place.size = window.size();
    place = placedOn(screens, place, window.minimumSize());
    if (!hasOneSize)
        window.resize(place.size);
    if (place.corner && placesWindows())
        window.setFramePosition(*place.corner);
    if (place.isMaximized)
        window.setWindowStates(Qt::WindowMaximized);
}

} // namespace

WindowPlaces::WindowPlaces(AppState &state) : m_state(state), m_file(state.machine().places.windowPlaces)
{
    if (!m_file.isEmpty())
        m_kept =
            QJsonDocument::fromJson(smallFile(QFile::encodeName(m_file).toStdString(), largestFile)).object();
}

void WindowPlaces::follow(QWindow &window, const QString &name)
{
    if (m_file.isEmpty())
        return;
    const auto known = windowPlaceFrom(m_kept.value(name).toObject());
    if (known)
        put(window, *known);
    new FollowedWindow(window, known,
                       [this, name](const WindowPlace &place) { keep(name, jsonOf(place)); }); // the window's
}

void WindowPlaces::keep(const QString &name, const QJsonObject &place)
{
    m_kept.insert(name, place);
    m_state.bookkeeping().queue([file = m_file, text = QJsonDocument(m_kept).toJson()] {
        if (makeOwnFolder(QFileInfo(file).absolutePath()))
            saveWholeFile(file, text, FileAudience::owner);
    });
}

} // namespace swabby
