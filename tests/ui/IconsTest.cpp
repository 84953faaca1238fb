#include "Desk.h"
#include "support/IconFiles.h"
#include "support/Table.h"
#include "ui/presentation/IconPainter.h"
#include "ui/qmltypes/IconStore.h"
#include "ui/qmltypes/MainWindowView.h"
#include "ui/qmltypes/ProgramIcon.h"

#include <QtCore/QBuffer>
#include <QtCore/QSemaphore>
#include <QtCore/QTemporaryFile>
#include <QtTest/QSignalSpy>

#include <mutex>
#include <set>

using namespace swabby;
using namespace std::chrono_literals;

namespace {

constexpr auto iconColor = QColorConstants::Svg::teal;

QByteArray png(int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(iconColor);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "png");
    return buffer.data();
}

QByteArray svg(const QByteArray &content)
{
    return R"(<?xml version="1.0"?><svg xmlns="http://www.w3.org/2000/svg" )"
           R"(xmlns:xlink="http://www.w3.org/1999/xlink" width="16" height="16">)" +
           content + "</svg>";
}

/// In 32 pixels; null when there is no picture.
QImage drawn(const QByteArray &file)
{
    static IconPainter painter;
    return painter.draw(file, 32, 1s).value_or(QImage());
}

const auto hostileIcons = u"ui/hostile_icons"_qs;

/// Icons that are found when somebody lets them be: those of a machine, or one for all.
class HeldIcons final : public ProgramIcons {
public:
    explicit HeldIcons(std::unique_ptr<ProgramIcons> icons = nullptr) : m_icons(std::move(icons)) {}

    QByteArray picture(const IconOwner &owner, const IconRequest &request) override
    {
        gate.acquire();
        const QString program = QString::fromStdString(owner.program.native());
        {
            const std::scoped_lock lock(m_mutex);
            asked.insert(program);
        }
        if (m_icons)
            return m_icons->picture(owner, request);
        if (program.endsWith(u".svg"_qs))
            return fixture(hostileIcons + program);
        return owner.program == "/none" ? QByteArray() : png(64, 64);
    }

    QSemaphore gate;
    std::set<QString> asked; ///< to be read while nothing is being looked up

private:
    std::mutex m_mutex;
    const std::unique_ptr<ProgramIcons> m_icons;
};

/// A store of such icons, one for all.
struct Shelf {
    Shelf()
    {
        auto held = std::make_unique<HeldIcons>();
        icons = held.get();
        machine->icons = std::move(held);
    }
    ~Shelf() { icons->gate.release(1'000); }
    bool settles() const
    {
        icons->gate.release(1'000);
        return waitUntil([this] { return !store->isBusy(); });
    }

    const std::shared_ptr<Machine> machine = std::make_shared<Machine>();
    HeldIcons *icons = nullptr;
    BackgroundWork work{2};
    QQmlEngine engine;
    IconStore *const store = new IconStore(&engine, machine, work);
};

QList<ProgramIcon *> iconsIn(QQuickItem *item)
{
    QList<ProgramIcon *> icons;
    for (QQuickItem *one : visibleItems(item))
        if (auto *icon = qobject_cast<ProgramIcon *>(one))
            icons.append(icon);
    return icons;
}

bool hasTile(const ProgramIcon *icon)
{
    return icon->parentItem()->childItems().first()->isVisible();
}

} // namespace

class IconsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void pictures()
    {
        const auto filtered = [](const QByteArray &filter) {
            return svg("<filter id=\"f\" color-interpolation-filters=\"sRGB\">" + filter +
                       "</filter><rect width=\"16\" height=\"16\" fill=\"teal\" filter=\"url(#f)\"/>");
        };
        compareTable(fixture(u"ui/pictures.txt"_qs), [&](const Cells &row) {
            const QByteArray kind = row[1].first(std::max<qsizetype>(row[1].indexOf(' '), 0));
            const QByteArray rest = row[1].mid(kind.size() + 1);
            const QImage picture =
                drawn(kind == "png"      ? png(rest.split(' ')[0].toInt(), rest.split(' ')[1].toInt())
                      : kind == "svg"    ? svg(rest)
                      : kind == "filter" ? filtered(rest)
                                         : row[1]);
            if (picture.isNull())
                return u"none"_qs;
            const bool isFilled = picture.pixelColor(picture.rect().center()) == QColor(iconColor);
            return isFilled ? u"%1x%2"_qs.arg(picture.width()).arg(picture.height()) : u"another colour"_qs;
        });
        // One that says it is gigantic, and halves.
        for (const QByteArray &file : {pngHead(100'000), png(64, 64).left(20), svg({}).left(60)})
            QVERIFY2(drawn(file).isNull(), file.left(200));
    }

    void aDrawingShowsNothingOfOtherFiles()
    {
        QTemporaryFile secret(QDir::tempPath() + u"/XXXXXX.png"_qs);
        QVERIFY(secret.open());
        secret.write(png(16, 16));
        secret.close();
        for (const QString &address : {secret.fileName(), u"file://"_qs + secret.fileName()}) {
            const QByteArray image =
                "<image width=\"16\" height=\"8\" xlink:href=\"" + address.toUtf8() + "\"/>";
            const QImage picture = drawn(svg("<rect y=\"8\" width=\"16\" height=\"8\"/>" + image));
            QVERIFY(!picture.isNull());
            QCOMPARE(picture.pixelColor(16, 4).alpha(), 0);
        }
    }

    void eachIconIsLookedUpOnceWhileNothingWaits()
    {
        Shelf shelf;
        QObject asker;
        auto gone = std::make_unique<QObject>();
        const IconKey first = {{"/first", {}}, 32};
        const IconKey none = {{"/none", {}}, 32};
        for (const IconKey &key : {first, first, none})
            QVERIFY(!shelf.store->icon(key, &asker).has_value());
        QVERIFY(!shelf.store->icon({{"/gone", {}}, 32}, gone.get()).has_value());
        QVERIFY(shelf.store->icon({}, &asker)->isNull());
        gone.reset();
        const QSignalSpy found(shelf.store, &IconStore::found);
        // Nothing is found yet, and this thread has come so far.
        QVERIFY(shelf.store->isBusy());
        QVERIFY(shelf.settles());
        QCOMPARE(shelf.icons->asked, (std::set{u"/first"_qs, u"/none"_qs}));
        QCOMPARE(found.count(), 2);
        QCOMPARE(shelf.store->icon(first, &asker)->size(), QSize(32, 32));
        QVERIFY(shelf.store->icon(none, &asker)->isNull());
        QVERIFY(!shelf.store->isBusy());
    }

    void aHostileIconHoldsUpNoOther()
    {
        Shelf shelf;
        const QStringList hostile =
            QDir(QStringLiteral(SWABBY_FIXTURES "/") + hostileIcons).entryList({u"*.svg"_qs});
        QStringList wanted = hostile + QStringList({u"one"_qs, u"two"_qs, u"three"_qs});
        QStringList found;
        connect(shelf.store, &IconStore::found, this, [&](const IconKey &key) {
            found.append(QString::fromStdString(key.owner.program.filename()));
            QCOMPARE(shelf.store->icon(key, this)->isNull(), hostile.contains(found.last()));
        });
        for (const QString &name : wanted)
            QVERIFY(!shelf.store->icon({{"/" + name.toStdString(), {}}, 32}, this).has_value());
        QVERIFY(shelf.settles());
        const QStringList inTime = found.first(found.indexOf(QRegularExpression(u"^hangs.*"_qs)));
        for (const char *name : {"one", "two", "three"})
            QVERIFY(inTime.contains(QLatin1String(name)));
        found.sort();
        wanted.sort();
        QCOMPARE(found, wanted);
    }

    void onlySoManyAreKept()
    {
        Shelf shelf;
        // Each of them takes a quarter of a mebibyte.
        for (int number = 0; number < 5; ++number) {
            shelf.store->icon({{"/" + std::to_string(number), {}}, 256}, this);
            QVERIFY(shelf.settles());
        }
        QVERIFY(shelf.store->icon({{"/4", {}}, 256}, this).has_value());
        QVERIFY(!shelf.store->icon({{"/0", {}}, 256}, this).has_value());
        QVERIFY(shelf.settles());
    }

    void theTileStandsUntilTheIconIsThere()
    {
        Desk desk;
        const QByteArray wind = "11 1 20 1.0 1000 /usr/libexec/wind";
        desk.folder.setProcesses({"10 1 30 1.0 1000 /Applications/Mill.app/Contents/MacOS/Mill", wind});
        desk.folder.writeFile(u"root/Applications/Mill.app/Contents/Info.plist"_qs, bundleFacts("icon"));
        desk.folder.writeFile(u"root/Applications/Mill.app/Contents/Resources/icon.icns"_qs,
                              iconFile({png(64, 64)}));
        auto &machinesOwn = desk.state.sharedMachine()->icons;
        auto held = std::make_unique<HeldIcons>(std::move(machinesOwn));
        QSemaphore &gate = held->gate;
        machinesOwn = std::move(held);
        const auto letThrough = qScopeGuard([&gate] { gate.release(100); });
        const auto open = shown(openMainWindow(desk.context()));
        open->view->select(MainSection::speed);
        desk.refresh();
        const QList<ProgramIcon *> icons = iconsIn(open->window->contentItem());
        QCOMPARE(icons.size(), 2);
        ProgramIcon *mill = icons.first();
        for (const ProgramIcon *icon : icons)
            QVERIFY(!icon->isThere() && hasTile(icon));

        QSignalSpy changes(mill, &ProgramIcon::isThereChanged);
        IconStore *store = open->engine->icons;
        gate.release(100);
        QVERIFY(waitUntil([&] { return !store->isBusy(); }));
        QVERIFY(mill->isThere() && !hasTile(mill));
        QVERIFY(!icons.last()->isThere() && hasTile(icons.last()));
        const QImage shown = open->window->grabWindow();
        const QPointF center = mill->mapToScene({mill->width() / 2, mill->height() / 2});
        QCOMPARE(shown.pixelColor((center * shown.devicePixelRatio()).toPoint()), QColor(iconColor));

        // Another load in the same row is no reason to look again, or to blink.
        desk.folder.setProcesses({"10 1 35 1.0 1000 /Applications/Mill.app/Contents/MacOS/Mill", wind});
        desk.refresh();
        QVERIFY(!store->isBusy());
        QCOMPARE(iconsIn(open->window->contentItem()), icons);
        QCOMPARE(changes.count(), 1);
    }
};

QTEST_MAIN(IconsTest)
#include "IconsTest.moc"
