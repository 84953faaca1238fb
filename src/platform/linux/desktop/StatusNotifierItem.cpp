#include "platform/linux/desktop/StatusNotifierItem.h"

namespace swabby {
namespace {

constexpr auto watcher = "org.kde.StatusNotifierWatcher";
constexpr auto watcherPath = "/StatusNotifierWatcher";

/// While a desktop starts, an answer may take this long; nobody waits for it.
constexpr std::chrono::milliseconds watcherPatience{60'000};

} // namespace

StatusNotifierItem::StatusNotifierItem(const std::string &busAddress, std::chrono::milliseconds patience)
{
    Bus bus = beginBus(busAddress);
    if (!bus) {
        m_place = Place::none;
        return;
    }
    m_loop = std::make_unique<BusLoop>(std::move(bus), [this](sd_bus_message *signal) { follow(signal); });
    m_object = std::make_unique<StatusNotifierObject>(
        m_loop->bus(),
        StatusNotifierObject::Clicks{[this](const QRect &where) { Q_EMIT activated(where); },
                                     [this](const QRect &where) { Q_EMIT menuWanted(where); }});
    m_menu =
        std::make_unique<BusMenu>(m_loop->bus(), [this](TrayCommand command) { Q_EMIT commanded(command); });
    m_loop->listenForOwner(watcher);
    for (const char *signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        m_loop->listen(watcher, watcherPath, watcher, signal);
    // The bus itself may be the one that never answers.
    m_firstAnswer.setSingleShot(true);
    connect(&m_firstAnswer, &QTimer::timeout, this, [this] { setPlace(Place::none); });
    m_firstAnswer.start(patience);
    lookForPanel();
}

StatusNotifierItem::~StatusNotifierItem() = default;

TrayItem::Place StatusNotifierItem::place() const
{
    const bool hasHungUp = m_loop != nullptr && !m_loop->isAlive();
    return hasHungUp ? Place::none : m_place;
}

void StatusNotifierItem::show(const TrayPicture &picture)
{
    if (m_loop == nullptr)
        return;
    m_object->setPicture(picture);
    m_isWanted = true;
    if (!m_hasEntered) {
        enter();
        return;
    }
    announce("NewIcon");
    announce("NewToolTip");
}

// The protocol has no word for leaving; a panel that asks for such items is also the one to be in.
void StatusNotifierItem::hide()
{
    m_isWanted = false;
}

void StatusNotifierItem::follow(sd_bus_message *signal)
{
    const char *name = nullptr;
    const char *before = nullptr;
    const char *now = nullptr;
    if (sd_bus_message_is_signal(signal, nullptr, "NameOwnerChanged") > 0) {
        m_hasEntered = false; // whoever keeps the list from now on has not heard of it
        if (sd_bus_message_read(signal, "sss", &name, &before, &now) > 0 && *now == '\0') {
            setPlace(Place::none);
            return;
        }
    }
    lookForPanel();
}

void StatusNotifierItem::lookForPanel()
{
    BusMessage question = busQuestion(m_loop->bus(), watcher, watcherPath, "org.freedesktop.DBus.Properties",
                                      "Get", ServiceStart::never);
    if (question)
        sd_bus_message_append(question.get(), "ss", watcher, "IsStatusNotifierHostRegistered");
    m_loop->call(std::move(question), watcherPatience, [this](sd_bus_message *answer) {
        int isThere = 0;
        const bool isAnswered = answer != nullptr && sd_bus_message_read(answer, "v", "b", &isThere) > 0;
        setPlace(isAnswered && isThere != 0 ? Place::there : Place::none);
        enter();
    });
}

void StatusNotifierItem::enter()
{
    const char *ourName = nullptr;
    if (m_hasEntered || !m_isWanted || place() != Place::there ||
        sd_bus_get_unique_name(m_loop->bus(), &ourName) < 0)
        return;
    m_hasEntered = true;
    BusMessage request = busQuestion(m_loop->bus(), watcher, watcherPath, watcher,
                                     "RegisterStatusNotifierItem", ServiceStart::never);
    if (request)
        sd_bus_message_append(request.get(), "s", ourName);
    m_loop->call(std::move(request), watcherPatience, [this](sd_bus_message *answer) {
        if (answer != nullptr)
            return;
        m_hasEntered = false;
        setPlace(Place::none);
    });
}

void StatusNotifierItem::setPlace(Place place)
{
    m_firstAnswer.stop();
    if (m_place == place)
        return;
    m_place = place;
    Q_EMIT placeChanged();
}

void StatusNotifierItem::announce(const char *change)
{
    sd_bus_message *signal = nullptr;
    if (place() == Place::there &&
        sd_bus_message_new_signal(m_loop->bus(), &signal, StatusNotifierObject::path,
                                  StatusNotifierObject::interface, change) >= 0)
        m_loop->send(BusMessage(signal));
}

} // namespace swabby
