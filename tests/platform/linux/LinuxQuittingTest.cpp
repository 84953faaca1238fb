#include "PrivateBus.h"
#include "StandIn.h"
#include "platform/linux/LinuxProcessControl.h"
#include "platform/linux/ProcessOwner.h"
#include "platform/linux/ProgramWindows.h"
#include "platform/linux/QuitActions.h"
#include "platform/posix/LateLibrary.h"
#include "platform/posix/PosixShell.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVariant>
#include <QtDBus/QDBusVirtualObject>
#include <QtTest/QTest>

#include <future>
#include <xcb/xcb.h>

using namespace swabby;

namespace {

/// A program that says over the bus how to end it, as some do.
class Quittable : public QDBusVirtualObject {
public:
    explicit Quittable(QString kind) : m_kind(std::move(kind)) {}

    QString introspect(const QString &path) const override
    {
        return path == u"/mill" ? u"<node name=\"MainWindow_1\"/><node name=\"../x\"/>"_qs : QString();
    }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &bus) override
    {
        const QString call = message.path() + u' ' + message.interface() + u' ' + message.member();
        const QVariant yes = !m_kind.contains(u"disabled"_qs);
        QVariant answer;
        if (m_kind.startsWith(u"kde"_qs) &&
            call == u"/mill/MainWindow_1 org.kde.KMainWindow actionIsEnabled"_qs)
            answer = yes;
        else if (m_kind.startsWith(u"mpris"_qs) &&
                 call == u"/org/mpris/MediaPlayer2 org.freedesktop.DBus.Properties Get"_qs)
            answer = QVariant::fromValue(QDBusVariant(yes));
        else if (const QString taken = message.member() + message.arguments().value(0).toString();
                 QStringList{u"activateActionfile_quit"_qs, u"Quit"_qs}.contains(taken))
            this->taken = taken;
        return answer.isValid() && bus.send(message.createReply(answer));
    }

    QString taken;

private:
    const QString m_kind;
};

/// A display of its own, without a window manager, and a program with windows on it: this one.
class Display {
public:
    Display()
    {
        m_server.start(u"Xvfb"_qs, {u"-displayfd"_qs, u"1"_qs, u"-nolisten"_qs, u"tcp"_qs});
        if (!m_server.waitForReadyRead(10'000))
            return;
        name = ':' + m_server.readLine().trimmed().toStdString();
        connection = xcb_connect(name.c_str(), nullptr);
        root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    }
    ~Display()
    {
        xcb_disconnect(connection);
        m_server.kill();
        m_server.waitForFinished();
    }
    Display(const Display &) = delete;
    Display &operator=(const Display &) = delete;

    xcb_atom_t atom(const char *word) const
    {
        auto *reply = xcb_intern_atom_reply(
            connection, xcb_intern_atom(connection, 0, std::uint16_t(qstrlen(word)), word), nullptr);
        const xcb_atom_t atom = reply->atom;
        std::free(reply);
        return atom;
    }
    void set(xcb_window_t window, const char *property, const std::vector<std::uint32_t> &numbers) const
    {
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atom(property), XCB_ATOM_ATOM, 32,
                            std::uint32_t(numbers.size()), numbers.data());
    }
    xcb_window_t open(bool takesQuestion) const
    {
        const xcb_window_t window = xcb_generate_id(connection);
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, root, 0, 0, 9, 9, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        if (takesQuestion)
            set(window, "WM_PROTOCOLS", {atom("WM_DELETE_WINDOW")});
        set(window, "_NET_WM_PID", {1}); // which is not true
        xcb_map_window(connection, window);
        return window;
    }
    /// The windows that messages so far are about.
    std::vector<xcb_window_t> asked() const
    {
        std::vector<xcb_window_t> windows;
        atom("until here");
        while (xcb_generic_event_t *event = xcb_poll_for_event(connection)) {
            const auto *message = reinterpret_cast<const xcb_client_message_event_t *>(event);
            if ((event->response_type & 0x7f) == XCB_CLIENT_MESSAGE)
                windows.push_back(message->window);
            std::free(event);
        }
        return windows;
    }

    std::string name; ///< empty when there is none
    xcb_connection_t *connection = nullptr;
    xcb_window_t root = XCB_NONE;

private:
    QProcess m_server;
};

} // namespace

class LinuxQuittingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whoseItIs()
    {
        QCOMPARE(processOwner("/proc", ::getpid()) + processOwner("/proc", 0), QString());
        QCOMPARE(processOwner("/proc", 1), ::geteuid() == 0 ? QString() : u"the system"_qs);
        if (::geteuid() != 0)
            QSKIP("only root gives files away");
        const StandIn proc;
        proc.write("7/stat", "");
        for (const auto &[user, owner] : {std::pair(2u, u"the system"_qs),
                                          {999u, u"the system"_qs},
                                          {65'534u, u"the system"_qs},
                                          {54'321u, u"another user"_qs}}) {
            QCOMPARE(::chown(proc.path("7").c_str(), user, user), 0);
            QCOMPARE(processOwner(proc.path(), 7), owner);
        }
    }

    void offersOnTheBus()
    {
        const PrivateBus bus;
        if (bus.address.empty())
            QSKIP("no message bus on this machine");
        LinuxProcessControl control("/proc");
        const ProcessIdentity self = *control.identify(::getpid());
        ProcessIdentity other = self;
        ++other.started;
        const auto offers = [&](QuitAction what, const ProcessIdentity &process) {
            auto answer = std::async(std::launch::async,
                                     [&] { return offersQuit(what, bus.address, process, control, {}); });
            return waitUntil([&] {
                       return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
                   }) &&
                   answer.get();
        };
        // The kind of program and its name; what is taken.
        compareTable(fixture(u"linux/quit_actions.txt"_qs), [&](const Cells &row) {
            const QString name = row.text(1);
            QDBusConnection program =
                QDBusConnection::connectToBus(QString::fromStdString(bus.address), row.text(0));
            Quittable object(row.text(0));
            program.registerVirtualObject(u"/"_qs, &object, QDBusConnection::SubPath);
            program.registerService(name);
            const bool isOffered = offers(QuitAction::look, self);
            const bool isOthers = offers(QuitAction::take, other) || offers(QuitAction::look, {1, 0});
            if (isOthers || !object.taken.isEmpty() || offers(QuitAction::take, self) != isOffered)
                return u"it asks whom it should not"_qs;
            const bool isTaken = !isOffered || waitUntil([&] { return !object.taken.isEmpty(); });
            program.unregisterService(name);
            QDBusConnection::disconnectFromBus(row.text(0));
            return isTaken && isOffered ? object.taken : u"nothing"_qs;
        });
    }

    void anXServerThatIsNotThereIsNotStarted()
    {
        const std::string socket = "/tmp/.X11-unix/X1";
        const std::string listening = "Num RefCount Protocol Flags Type St Inode Path\n"
                                      "0: 00000002 00000000 00010000 0001 01 7 " +
                                      socket + "\n";
        const std::string other = "0: 00000003 00000000 00000000 0001 03 8 @" + socket;
        QVERIFY(isInUse(socket, "") && !isInUse(socket, listening + other + "2\n"));
        QVERIFY(isInUse(socket, listening + other + "\n"));
        PosixShell shell({});
        QVERIFY(ProgramWindows(shell, "/bin/echo", ":1").askable().empty());
        QVERIFY(!ProgramWindows(shell, "/bin/echo", ":1").askToClose(0));
        QVERIFY(ProgramWindows(shell, "/bin/echo", ":1").askToClose(7));
        QVERIFY(!ProgramWindows(shell, "/bin/echo", ":1", [] { return false; }).askToClose(7));
    }

    void windowsAreAskedToClose()
    {
        const Display display;
        if (display.name.empty())
            QSKIP("no display on this machine");
        qputenv("DISPLAY", display.name.c_str());
        PosixShell shell({});
        const ProgramWindows windows(shell, ownFolder() / windowsProgram, display.name);
        const std::unordered_set<std::int32_t> self = {::getpid()};
        const auto asked = [&] {
            return windows.askToClose(::getpid()) ? display.asked() : std::vector<xcb_window_t>();
        };
        // Who does not take the question would be ended by it, panels are none to close.
        display.open(false);
        const xcb_window_t panel = display.open(true);
        display.set(panel, "_NET_WM_WINDOW_TYPE", {display.atom("_NET_WM_WINDOW_TYPE_DOCK")});
        QVERIFY(display.asked().empty() && windows.askable().empty() && !windows.askToClose(::getpid()));
        const xcb_window_t editor = display.open(true);
        const xcb_window_t dialog = display.open(true);
        display.set(dialog, "WM_TRANSIENT_FOR", {editor});
        display.asked();
        QCOMPARE(windows.askable(), self); // and not the first process, which they all call theirs
        QVERIFY(!windows.askToClose(1));
        QCOMPARE(asked(), std::vector{editor});
        // By the window manager where there is one, also what is not on the screen now.
        QVERIFY(windows.holders().empty());
        xcb_unmap_window(display.connection, editor);
        display.set(display.root, "_NET_CLIENT_LIST", {panel, editor, dialog, 4711});
        display.set(display.root, "_NET_SUPPORTED", {display.atom("_NET_CLOSE_WINDOW")});
        display.set(display.root, "_NET_SUPPORTING_WM_CHECK", {panel});
        const std::uint32_t manager = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
        xcb_change_window_attributes(display.connection, display.root, XCB_CW_EVENT_MASK, &manager);
        display.asked();
        QVERIFY(windows.holders().empty()); // left behind by one that has ended
        display.set(panel, "_NET_SUPPORTING_WM_CHECK", {panel});
        display.asked();
        QCOMPARE(windows.holders(), self);
        QCOMPARE(asked(), std::vector{editor});
        display.set(display.root, "_NET_SUPPORTING_WM_CHECK", {});
        xcb_set_selection_owner(display.connection, panel, display.atom("_NET_SYSTEM_TRAY_S0"),
                                XCB_CURRENT_TIME);
        display.asked();
        QCOMPARE(windows.holders(), self);
        QVERIFY(ProgramWindows(shell, ownFolder() / windowsProgram, {}).holders().empty());
    }

    // Each look starts a program, and on many desktops there is no panel to find.
    void theDesktopIsLookedForEverMoreRarely()
    {
        const StandIn files;
        files.writeProgram("look");
        files.write("look", "#!/bin/sh\necho >>\"$0.looks\"; cat \"$0.found\"\n");
        PosixShell shell({});
        LinuxProcessControl control("/proc");
        DesktopHolders holders(ProgramWindows(shell, files.path("look"), ":0"), control);
        const auto looksInCalls = [&](int calls) {
            const auto looks = [&] {
                return QFileInfo(QString::fromStdString(files.path("look.looks"))).size();
            };
            const qint64 before = looks();
            for (int call = 0; call < calls; ++call)
                holders.pids();
            return looks() - before;
        };
        QCOMPARE(looksInCalls(46), 5);
        QProcess panel;
        panel.start(u"sleep"_qs, {u"100"_qs});
        QVERIFY(panel.waitForStarted());
        const auto pid = static_cast<std::int32_t>(panel.processId());
        files.write("look.found", std::to_string(::getpid()) + "\n" + std::to_string(pid) + "\n");
        QCOMPARE(looksInCalls(60), 1);
        QCOMPARE(holders.pids(), (std::unordered_set<std::int32_t>{::getpid(), pid}));
        panel.kill();
        QVERIFY(panel.waitForFinished());
        QCOMPARE(looksInCalls(3), 2);
        QCOMPARE(holders.pids(), std::unordered_set<std::int32_t>{::getpid()});
    }

    void whatTheHelperSays()
    {
        QCOMPARE(processIdsFrom("7\nx\n\n-1\n8 9\n0\n10"), (std::unordered_set<std::int32_t>{7, 10}));
    }
};

QTEST_GUILESS_MAIN(LinuxQuittingTest)
#include "LinuxQuittingTest.moc"
