#include "platform/linux/QuitActions.h"

#include "platform/linux/BusCall.h"

#include <QtCore/QXmlStreamReader>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace swabby {
namespace {

constexpr std::chrono::milliseconds waitForAnswers(1'000);

/// A conversation with a bus; what is not answered in time is as good as not there.
struct Talk {
    sd_bus *bus = nullptr;
    Steady::time_point end;

    template <typename... Arguments>
    BusMessage question(const std::string &service, const std::string &path, const char *interface,
                        const char *member, const char *types, Arguments... arguments) const
    {
        BusMessage made =
            busQuestion(bus, service.c_str(), path.c_str(), interface, member, ServiceStart::never);
        const bool isWhole = made && sd_bus_message_append(made.get(), types, arguments...) >= 0;
        return isWhole ? std::move(made) : nullptr;
    }

    template <typename... Arguments>
    BusMessage ask(const std::string &service, const std::string &path, const char *interface,
                   const char *member, const char *types = "", Arguments... arguments) const
    {
        return busAnswer(bus, question(service, path, interface, member, types, arguments...), end);
    }

    /// Without an answer, which may come only after the person has given one to the program.
    template <typename... Arguments>
    bool tell(const std::string &service, const std::string &path, const char *interface, const char *member,
              const char *types = "", Arguments... arguments) const
    {
        const BusMessage message = question(service, path, interface, member, types, arguments...);
        return message && sd_bus_message_set_expect_reply(message.get(), 0) >= 0 &&
               sd_bus_send(bus, message.get(), nullptr) >= 0 && sd_bus_flush(bus) >= 0;
    }

    template <typename... Arguments>
    BusMessage askBus(const char *member, const char *types = "", Arguments... arguments) const
    {
        constexpr auto driver = "org.freedesktop.DBus";
        return ask(driver, "/org/freedesktop/DBus", driver, member, types, arguments...);
    }
};

std::vector<std::string> textsIn(const BusMessage &answer)
{
    std::vector<std::string> texts;
    const char *text = nullptr;
    if (answer && sd_bus_message_enter_container(answer.get(), 'a', "s") > 0)
        while (sd_bus_message_read(answer.get(), "s", &text) > 0)
            texts.emplace_back(text);
    return texts;
}

/// Whether the answer, or the variant in it, is a yes.
bool isYes(const BusMessage &answer)
{
    int value = 0;
    if (!answer || (sd_bus_message_has_signature(answer.get(), "v") > 0 &&
                    sd_bus_message_enter_container(answer.get(), 'v', "b") <= 0))
        return false;
    return sd_bus_message_read(answer.get(), "b", &value) > 0 && value != 0;
}

/// A name that somebody wants to be found by, and the connection behind it, which is never anybody else's.
struct Service {
    std::string name;
    std::string connection;
};

std::vector<Service> servicesOf(std::int32_t pid, const Talk &talk)
{
    std::vector<Service> services;
    for (const std::string &name : textsIn(talk.askBus("ListNames"))) {
        std::uint32_t owner = 0;
        const char *connection = nullptr;
        if (name.starts_with(':'))
            continue;
        const BusMessage process = talk.askBus("GetConnectionUnixProcessID", "s", name.c_str());
        if (!process || sd_bus_message_read(process.get(), "u", &owner) <= 0 ||
            owner != static_cast<std::uint32_t>(pid))
            continue;
        const BusMessage behind = talk.askBus("GetNameOwner", "s", name.c_str());
        if (behind && sd_bus_message_read(behind.get(), "s", &connection) > 0)
            services.push_back({name, connection});
    }
    return services;
}

using Taking = std::function<bool()>; ///< empty: nothing is offered

/// Of GTK and whoever exports actions like it.
Taking applicationQuit(const Service &service, const Talk &talk)
{
    constexpr auto interface = "org.gtk.Actions";
    std::string path = '/' + service.name;
    std::replace(path.begin(), path.end(), '.', '/');
    std::replace(path.begin(), path.end(), '-', '_');
    const BusMessage about = talk.ask(service.connection, path, interface, "Describe", "s", "quit");
    int isEnabled = 0;
    const char *parameter = nullptr;
    if (!about || sd_bus_message_enter_container(about.get(), 'r', "bgav") <= 0 ||
        sd_bus_message_read(about.get(), "bg", &isEnabled, &parameter) <= 0 || isEnabled == 0 ||
        *parameter != '\0')
        return {};
    return
        [=] { return talk.tell(service.connection, path, interface, "Activate", "sava{sv}", "quit", 0, 0); };
}

/// The objects right below one.
std::vector<std::string> childrenOf(const Service &service, const std::string &path, const Talk &talk)
{
    const BusMessage answer =
        talk.ask(service.connection, path, "org.freedesktop.DBus.Introspectable", "Introspect");
    const char *text = nullptr;
    std::vector<std::string> children;
    if (!answer || sd_bus_message_read(answer.get(), "s", &text) <= 0)
        return children;
    int depth = 0;
    for (QXmlStreamReader xml(QString::fromUtf8(text)); !xml.atEnd();) {
        const auto token = xml.readNext();
        if (token == QXmlStreamReader::EndElement)
            --depth;
        if (token != QXmlStreamReader::StartElement || ++depth != 2 || xml.name() != QLatin1String("node"))
            continue;
        const std::string child = (path == "/" ? path : path + '/') +
                                  xml.attributes().value(QLatin1String("name")).toUtf8().toStdString();
        if (sd_bus_object_path_is_valid(child.c_str()) > 0)
            children.push_back(child);
    }
    return children;
}

/// Of KDE's main windows, each of which may still ask something.
Taking mainWindowQuit(const Service &service, const Talk &talk)
{
    constexpr auto interface = "org.kde.KMainWindow";
    // The objects are named for the program, and so is the service, a number of its own behind it.
    const std::string name = service.name.substr(service.name.rfind('.') + 1);
    for (const std::string &window : childrenOf(service, '/' + name.substr(0, name.find('-')), talk))
        if (window.find("/MainWindow_") != std::string::npos &&
            isYes(talk.ask(service.connection, window, interface, "actionIsEnabled", "s", "file_quit")))
            return [=] {
                return talk.tell(service.connection, window, interface, "activateAction", "s", "file_quit");
            };
    return {};
}

Taking playerQuit(const Service &service, const Talk &talk)
{
    constexpr auto interface = "org.mpris.MediaPlayer2";
    constexpr auto path = "/org/mpris/MediaPlayer2";
    if (!service.name.starts_with(std::string(interface) + '.') ||
        !isYes(talk.ask(service.connection, path, "org.freedesktop.DBus.Properties", "Get", "ss", interface,
                        "CanQuit")))
        return {};
    return [=] { return talk.tell(service.connection, path, interface, "Quit"); };
}

} // namespace

bool offersQuit(QuitAction what, const std::string &busAddress, const ProcessIdentity &process,
                ProcessControl &control, const StopToken &stop)
{
    const auto end = Steady::now() + waitForAnswers;
    const Bus bus = connectBus(busAddress, end, stop);
    if (!bus)
        return false;
    const Talk talk = {bus.get(), end};
    for (const Service &service : servicesOf(process.pid, talk))
        for (const auto find : {&applicationQuit, &mainWindowQuit, &playerQuit}) {
            const Taking taking = find(service, talk);
            // While it still stands, the connection is its own.
            if (taking && control.identify(process.pid) == process)
                return what == QuitAction::look || taking();
        }
    return false;
}

} // namespace swabby
