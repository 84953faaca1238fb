#include "platform/linux/PrivateBus.h"
#include "platform/linux/desktop/StatusNotifierItem.h"
#include "support/TemporaryMachine.h"

#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusObjectPath>
#include <QtDBus/QDBusPendingCall>
#include <QtDBus/QDBusVariant>
#include <QtDBus/QDBusVirtualObject>
#include <QtTest/QSignalSpy>

using namespace swabby;
using namespace std::chrono_literals;

namespace {

const QString watcherName = u"org.kde.StatusNotifierWatcher"_qs;
const QString itemPath = QLatin1String(StatusNotifierObject::path);
const QString itemInterface = QLatin1String(StatusNotifierObject::interface);
const QString menuPath = QLatin1String(BusMenu::path);
const QString menuInterface = u"com.canonical.dbusmenu"_qs;

/// A panel's side of the conversation, on a connection of its own and by another implementation.
class StandInPanel : public QDBusVirtualObject {
    Q_OBJECT

public:
    explicit StandInPanel(const std::string &busAddress)
        : m_bus(QDBusConnection::connectToBus(QString::fromStdString(busAddress), u"panel"_qs))
    {
        m_bus.registerVirtualObject(u"/StatusNotifierWatcher"_qs, this);
        for (const char *signal : {"NewIcon", "NewToolTip"})
            m_bus.connect({}, itemPath, itemInterface, QLatin1String(signal), this, SLOT(hear(QDBusMessage)));
    }
    ~StandInPanel() override { QDBusConnection::disconnectFromBus(u"panel"_qs); }

    void come() { QVERIFY(m_bus.registerService(watcherName)); }
    void go() { m_bus.unregisterService(watcherName); }
    void announceHost()
    {
        hasHost = true;
        m_bus.send(QDBusMessage::createSignal(u"/StatusNotifierWatcher"_qs, watcherName,
                                              u"StatusNotifierHostRegistered"_qs));
    }

    void answerAtLast()
    {
        isSilent = false;
        for (const QDBusMessage &message : std::exchange(m_unanswered, {}))
            handleMessage(message, m_bus);
    }

    /// The item's answer to a call; an error when there is none.
    QDBusMessage ask(const QString &path, const QString &interface, const QString &method,
                     const QVariantList &arguments)
    {
        QDBusMessage call = QDBusMessage::createMethodCall(items.value(0), path, interface, method);
        call.setArguments(arguments);
        const QDBusPendingCall pending = m_bus.asyncCall(call);
        waitUntil([&] { return pending.isFinished(); });
        return pending.reply();
    }
    QVariantMap properties()
    {
        const auto answer =
            ask(itemPath, u"org.freedesktop.DBus.Properties"_qs, u"GetAll"_qs, {itemInterface});
        return qdbus_cast<QVariantMap>(answer.arguments().value(0));
    }

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        if (isSilent) {
            m_unanswered.append(message);
            return true;
        }
        if (message.member() == u"Get")
            return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(hasHost))));
        items.append(message.arguments().value(0).toString());
        return connection.send(message.createReply());
    }

    bool hasHost = true;
    bool isSilent = false;
    QStringList items;
    QStringList heard;

private Q_SLOTS:
    void hear(const QDBusMessage &message) { heard.append(message.member()); }

private:
    QDBusConnection m_bus;
    QList<QDBusMessage> m_unanswered;
};

TrayPicture pictureOf(const QColor &color, const QString &tip)
{
    const auto draw = [color](int side) {
        QImage image(side, side, QImage::Format_ARGB32);
        image.fill(color);
        return image;
    };
    return {draw, tip};
}

/// The first pixel's bytes of each size that the item offers.
QMap<int, QByteArray> firstPixels(const QVariant &pixmaps)
{
    QMap<int, QByteArray> pixels;
    const auto list = pixmaps.value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        int width = 0;
        int height = 0;
        QByteArray bytes;
        list.beginStructure();
        list >> width >> height >> bytes;
        list.endStructure();
        if (width == height && bytes.size() == width * height * 4)
            pixels.insert(width, bytes.left(4));
    }
    list.endArray();
    return pixels;
}

} // namespace

class StatusNotifierTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bus = std::make_unique<PrivateBus>();
        if (m_bus->address.empty())
            QSKIP("no message bus on this machine");
        m_panel = std::make_unique<StandInPanel>(m_bus->address);
    }

    void cleanup() { m_panel.reset(); }

    void aPanelReadsTheItem()
    {
        m_panel->come();
        const auto item = shownItem(pictureOf(QColor(0x12, 0x34, 0x56, 0x78), u"46%"_qs));
        QVERIFY(item);
        const QVariantMap properties = m_panel->properties();
        QCOMPARE(properties[u"Status"_qs].toString(), u"Active"_qs);
        QCOMPARE(properties[u"IconName"_qs].toString(), QString()); // or the pixels would not count
        QCOMPARE(properties[u"ItemIsMenu"_qs].toBool(), false);
        QCOMPARE(properties[u"Menu"_qs].value<QDBusObjectPath>().path(), menuPath);
        const auto pixels = firstPixels(properties[u"IconPixmap"_qs]);
        QCOMPARE(pixels.keys(), (QList<int>{16, 22, 24, 32, 48, 64}));
        QCOMPARE(pixels[22].toHex(), QByteArray("78123456")); // alpha first, whatever this processor likes

        item->show(pictureOf(Qt::red, u"100%"_qs));
        QVERIFY(waitUntil([&] { return m_panel->heard == QStringList{u"NewIcon"_qs, u"NewToolTip"_qs}; }));
        const QVariantMap later = m_panel->properties();
        QCOMPARE(firstPixels(later[u"IconPixmap"_qs])[16].toHex(), QByteArray("ffff0000"));
        const auto tip = later[u"ToolTip"_qs].value<QDBusArgument>();
        QString icon, title, text;
        tip.beginStructure();
        tip >> icon;
        tip.beginArray();
        tip.endArray();
        tip >> title >> text;
        QCOMPARE(title + u'|' + text, u"Swabby|100%"_qs);
        QCOMPARE(m_panel->items.size(), 1); // a new picture is no new item
    }

    void clicksSayWhereAndTheMenuWhat()
    {
        m_panel->come();
        const auto item = shownItem(pictureOf(Qt::red, {}));
        QVERIFY(item);
        QList<QRect> activated, menuWanted;
        connect(item.get(), &TrayItem::activated, this, [&](const QRect &where) { activated += where; });
        connect(item.get(), &TrayItem::menuWanted, this, [&](const QRect &where) { menuWanted += where; });
        const QRect there(640, 12, 1, 1);
        for (const auto &[method, place] : {std::pair{u"Activate"_qs, there.topLeft()},
                                            {u"SecondaryActivate"_qs, there.topLeft()},
                                            {u"ContextMenu"_qs, there.topLeft()},
                                            {u"Activate"_qs, QPoint()}}) // that one does not know
            QCOMPARE(m_panel->ask(itemPath, itemInterface, method, {place.x(), place.y()}).type(),
                     QDBusMessage::ReplyMessage);
        QCOMPARE(activated, (QList{there, there, QRect()}));
        QCOMPARE(menuWanted, QList{there});

        QList<TrayCommand> chosen;
        connect(item.get(), &TrayItem::commanded, this, [&](TrayCommand command) { chosen += command; });
        const auto report = [&](int line, const QString &event) {
            const QVariant nothing = QVariant::fromValue(QDBusVariant(0));
            return m_panel->ask(menuPath, menuInterface, u"Event"_qs, {line, event, nothing, 0U}).type();
        };
        const QMap<QString, int> lines = menuLines();
        for (const auto &[line, command] : {std::pair{u"Open Swabby"_qs, TrayCommand::openMainWindow},
                                            {u"Ask AI"_qs, TrayCommand::openAskWindow},
                                            {u"Settings"_qs, TrayCommand::openSettingsWindow},
                                            {u"Refresh now"_qs, TrayCommand::refresh},
                                            {u"Quit Swabby"_qs, TrayCommand::quit}}) {
            QVERIFY2(lines.contains(line), qPrintable(line));
            QCOMPARE(report(lines[line], u"hovered"_qs), QDBusMessage::ReplyMessage);
            QVERIFY(chosen.isEmpty());
            QCOMPARE(report(lines[line], u"clicked"_qs), QDBusMessage::ReplyMessage);
            QCOMPARE(std::exchange(chosen, {}), QList{command});
            const auto label =
                m_panel->ask(menuPath, menuInterface, u"GetProperty"_qs, {lines[line], u"label"_qs});
            QCOMPARE(label.arguments().value(0).value<QDBusVariant>().variant().toString(), line);
        }
        QCOMPARE(report(lines[u"separator"_qs], u"clicked"_qs), QDBusMessage::ReplyMessage);
        for (const int stranger : {-1, int(lines.size()) + 1})
            QCOMPARE(report(stranger, u"clicked"_qs), QDBusMessage::ErrorMessage);
        QVERIFY(chosen.isEmpty());
    }

    void theItemFollowsThePanel()
    {
        const auto item = makeItem(30s);
        const auto isAt = [&](TrayItem::Place place) {
            return waitUntil([&] { return item->place() == place; });
        };
        const auto isTakenIn = [&](int times) {
            return waitUntil([&] { return m_panel->items.size() == times; }) &&
                   item->place() == TrayItem::Place::there;
        };
        item->show(pictureOf(Qt::red, {}));
        QVERIFY(isAt(TrayItem::Place::none));
        m_panel->hasHost = false; // somebody keeps the list, but nobody shows it
        m_panel->come();
        m_panel->announceHost();
        QVERIFY(isTakenIn(1));

        m_panel->go();
        QVERIFY(isAt(TrayItem::Place::none));
        m_panel->come();
        QVERIFY(isTakenIn(2));

        m_panel->go();
        QVERIFY(isAt(TrayItem::Place::none));
        item->hide();
        m_panel->come();
        QVERIFY(isAt(TrayItem::Place::there));
        m_panel->properties();              // by when it would have been here
        QCOMPARE(m_panel->items.size(), 2); // a hidden one does not come back by itself
        item->show(pictureOf(Qt::red, {}));
        QVERIFY(isTakenIn(3));
    }

    void aSilentPanelIsNoneUntilItSpeaks()
    {
        m_panel->isSilent = true;
        m_panel->come();
        const auto item = makeItem(50ms);
        QVERIFY(item->place() == TrayItem::Place::unknown);
        QVERIFY(waitUntil([&] { return item->place() == TrayItem::Place::none; }));
        item->show(pictureOf(Qt::red, {}));
        m_panel->answerAtLast();
        QVERIFY(waitUntil([&] { return m_panel->items.size() == 1; }));
        QVERIFY(item->place() == TrayItem::Place::there);
    }

    void aBusThatHangsHoldsNobodyUp()
    {
        for (const auto &[answer, hangsUp] :
             {std::pair{"", false}, {"OK 0123\r\n", false}, {"OK 0123\r\n", true}}) {
            const RudeBus bus(answer, hangsUp);
            StatusNotifierItem item(bus.address(), 50ms);
            item.show(pictureOf(Qt::red, {}));
            QVERIFY(waitUntil([&] { return item.place() == TrayItem::Place::none; }));
        }
        const StatusNotifierItem nowhere("unix:path=/nowhere/bus", 50ms);
        QVERIFY(nowhere.place() == TrayItem::Place::none);
    }

private:
    /// The menu's lines by their labels, each with its number.
    QMap<QString, int> menuLines()
    {
        const auto layout =
            m_panel->ask(menuPath, menuInterface, u"GetLayout"_qs, {0, -1, QStringList()}).arguments();
        QMap<QString, int> lines;
        const auto root = layout.value(1).value<QDBusArgument>();
        int id = -1;
        QVariantMap properties;
        root.beginStructure();
        root >> id >> properties;
        root.beginArray();
        while (!root.atEnd()) {
            QDBusVariant child;
            root >> child;
            const auto line = child.variant().value<QDBusArgument>();
            line.beginStructure();
            line >> id >> properties;
            line.endStructure();
            lines[properties.value(u"label"_qs, properties.value(u"type"_qs)).toString()] = id;
        }
        return lines;
    }
    std::unique_ptr<StatusNotifierItem> makeItem(std::chrono::milliseconds patience) const
    {
        return std::make_unique<StatusNotifierItem>(m_bus->address, patience);
    }

    /// One that the panel has taken in; null when it did not.
    std::unique_ptr<StatusNotifierItem> shownItem(const TrayPicture &picture)
    {
        auto item = makeItem(30s);
        item->show(picture);
        return waitUntil([&] { return !m_panel->items.isEmpty(); }) ? std::move(item) : nullptr;
    }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<StandInPanel> m_panel;
};

QTEST_MAIN(StatusNotifierTest)
#include "StatusNotifierTest.moc"
