#include "platform/linux/LinuxNotifier.h"

#include "platform/linux/BusLoop.h"

#include <QtCore/QStringList>

#include <deque>
#include <map>
#include <utility>

namespace swabby {
namespace {

constexpr auto service = "org.freedesktop.Notifications";
constexpr auto path = "/org/freedesktop/Notifications";

/// A server that takes longer than this is not there for us.
constexpr std::chrono::milliseconds serverPatience{10'000};
/// What the program's end waits for the notifications that are on their way.
constexpr std::chrono::milliseconds farewell{1'000};

QStringList textsIn(sd_bus_message *answer)
{
    QStringList texts;
    const char *text = nullptr;
    if (sd_bus_message_enter_container(answer, SD_BUS_TYPE_ARRAY, "s") < 0)
        return texts;
    while (sd_bus_message_read(answer, "s", &text) > 0)
        texts.append(QString::fromUtf8(text));
    return texts;
}

} // namespace

/// One connection and what is on its way over it.
class LinuxNotifier::Connection {
public:
    explicit Connection(Bus bus)
        : m_loop(std::move(bus), [this](sd_bus_message *signal) { takeSignal(signal); })
    {
        for (const char *signal : {"ActionInvoked", "NotificationClosed"})
            m_loop.listen(service, path, service, signal);
    }

    ~Connection()
    {
        m_loop.processFor(farewell, [this] { return m_waiting.empty(); });
    }

    bool isAlive() const { return m_loop.isAlive(); }

    void post(const Notification &notification, std::function<void()> opened)
    {
        m_waiting.push_back({notification, std::move(opened)});
        sendNext();
    }

private:
    struct Waiting {
        Notification notification;
        std::function<void()> opened;
    };

    // What the server can show is asked each time: it may have been replaced by another since.
    void sendNext()
    {
        if (m_isSending || m_waiting.empty())
            return;
        m_isSending = true;
        m_loop.call(
            busQuestion(m_loop.bus(), service, path, service, "GetCapabilities", ServiceStart::whenNeeded),
            serverPatience, [this](sd_bus_message *answer) {
                // Where nothing is known, text is escaped: an entity too many beats a link too many.
                send(answer ? textsIn(answer) : QStringList{QStringLiteral("body-markup")});
            });
    }

    void send(const QStringList &capabilities)
    {
        m_loop.call(notifyMessage(m_waiting.front().notification, capabilities), serverPatience,
                    [this](sd_bus_message *answer) {
                        std::uint32_t id = 0;
                        if (answer && sd_bus_message_read(answer, "u", &id) > 0)
                            m_opened[id] = std::move(m_waiting.front().opened);
                        m_waiting.pop_front();
                        m_isSending = false;
                        sendNext();
                    });
    }

    BusMessage notifyMessage(const Notification &notification, const QStringList &capabilities)
    {
        BusMessage message =
            busQuestion(m_loop.bus(), service, path, service, "Notify", ServiceStart::whenNeeded);
        const bool rendersMarkup = capabilities.contains(QStringLiteral("body-markup"));
        const QByteArray title = notification.title.toUtf8();
        const QByteArray body =
            (rendersMarkup ? notification.body.toHtmlEscaped() : notification.body).toUtf8();
        constexpr std::uint32_t replacesNone = 0;
        constexpr std::int32_t serversOwnTime = -1;
        const bool hasActions = capabilities.contains(QStringLiteral("actions"));
        bool isWhole =
            message && sd_bus_message_append(message.get(), "susss", "Swabby", replacesNone, "com.swabby.app",
                                             title.constData(), body.constData()) >= 0;
        isWhole =
            isWhole && (hasActions ? sd_bus_message_append(message.get(), "as", 2, "default", "Open Swabby")
                                   : sd_bus_message_append(message.get(), "as", 0)) >= 0;
        isWhole = isWhole &&
                  sd_bus_message_append(message.get(), "a{sv}i", 2, "desktop-entry", "s", "com.swabby.app",
                                        "sound-name", "s", "dialog-information", serversOwnTime) >= 0;
        return isWhole ? std::move(message) : nullptr;
    }

    void takeSignal(sd_bus_message *signal)
    {
        std::uint32_t id = 0;
        if (sd_bus_message_read(signal, "u", &id) <= 0)
            return;
        const auto found = m_opened.find(id);
        if (found == m_opened.end())
            return;
        if (sd_bus_message_is_signal(signal, service, "NotificationClosed") > 0) {
            m_opened.erase(found);
            return;
        }
        // The call may lead to another post.
        if (const auto opened = found->second)
            opened();
    }

    bool m_isSending = false;
    std::deque<Waiting> m_waiting;
    std::map<std::uint32_t, std::function<void()>> m_opened;
    BusLoop m_loop; // last: its callbacks reach into everything above
};

LinuxNotifier::LinuxNotifier(std::string busAddress) : m_busAddress(std::move(busAddress)) {}

LinuxNotifier::~LinuxNotifier() = default;

void LinuxNotifier::post(const Notification &notification, std::function<void()> opened)
{
    if (!m_connection || !m_connection->isAlive()) {
        m_connection.reset();
        if (Bus bus = beginBus(m_busAddress))
            m_connection = std::make_unique<Connection>(std::move(bus));
    }
    if (m_connection)
        m_connection->post(notification, std::move(opened));
}

} // namespace swabby
