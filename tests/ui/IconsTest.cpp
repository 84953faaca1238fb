#include "app/ApplicationFlows.h"
#include "platform/BackgroundWork.h"
#include "settings/Settings.h"
#include "state/AppState.h"
#include "support/IconFiles.h"
#include "support/TemporaryMachine.h"
#include "ui/WindowLibrary.h"
#include "ui/presentation/IconPicture.h"
#include "ui/qmltypes/IconStore.h"
#include "ui/qmltypes/MainWindowView.h"
#include "ui/qmltypes/ProgramIcon.h"
#include "ui/qmltypes/Theme.h"

#include <QtCore/QBuffer>
#include <QtCore/QSemaphore>
#include <QtCore/QTemporaryFile>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickWindow>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace swabby;

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

/// Ten levels of ten copies each.
QByteArray bomb()
{
    QByteArray content = R"(<defs><rect id="c0" width="16" height="16"/>)";
    for (int level = 1; level <= 10; ++level) {
        const QByteArray use = "<use xlink:href=\"#c" + QByteArray::number(level - 1) + "\"/>";
        content += "<g id=\"c" + QByteArray::number(level) + "\">" + use.repeated(10) + "</g>";
    }
    return svg(content + R"(</defs><use xlink:href="#c10"/>)");
}

/// Icons that are found when somebody lets them be: those of a machine, or one for all.
class HeldIcons final : public ProgramIcons {
public:
    explicit HeldIcons(std::unique_ptr<ProgramIcons> icons = nullptr) : m_icons(std::move(icons)) {}

    QByteArray picture(const IconOwner &owner, const IconRequest &request) override
    {
        gate.acquire();
        asked.append(QString::fromStdString(owner.program.native()));
        if (m_icons)
            return m_icons->picture(owner, request);
        return owner.program == "/none" ? QByteArray() : png(64, 64);
    }

    QSemaphore gate;
    QStringList asked; ///< to be read while nothing is being looked up

private:
    const std::unique_ptr<ProgramIcons> m_icons;
};

QList<ProgramIcon *> iconsIn(QQuickItem *item)
{
    QList<ProgramIcon *> icons;
    if (auto *icon = qobject_cast<ProgramIcon *>(item); icon != nullptr && icon->isVisible())
        icons.append(icon);
    for (QQuickItem *child : item->childItems())
        icons += iconsIn(child);
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
    void pictures_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QSize>("size");
        const QByteArray sound = png(64, 64);
        QTest::newRow("a picture") << sound << QSize(32, 32);
        QTest::newRow("a small one") << png(8, 8) << QSize(32, 32);
        QTest::newRow("a wide one") << png(64, 32) << QSize(32, 16);
        QTest::newRow("the largest") << png(1024, 1024) << QSize(32, 32);
        QTest::newRow("too large") << png(1025, 8) << QSize();
        QTest::newRow("one that says it is gigantic") << pngHead(100'000) << QSize();
        QTest::newRow("cut off in its head") << sound.left(20) << QSize();
        QTest::newRow("another format") << QByteArray("GIF89a\1\0\1\0\0\0\0;", 14) << QSize();
        QTest::newRow("a drawing") << svg(R"(<rect width="16" height="16" fill="teal"/>)") << QSize(32, 32);
        const auto filtered = [](const QByteArray &filter) {
            return svg("<filter id=\"f\" color-interpolation-filters=\"sRGB\">" + filter +
                       "</filter><rect width=\"16\" height=\"16\" fill=\"teal\" filter=\"url(#f)\"/>");
        };
        const QByteArray endless = R"(<feTurbulence baseFrequency="9" numOctaves="1000000"/>)";
        QTest::newRow("a drawing with a glow") << filtered(R"(<feOffset dx="0"/>)") << QSize(32, 32);
        QTest::newRow("a filter without an end") << filtered(endless) << QSize();
        QTest::newRow("a filter that ends the program")
            << filtered(R"(<feConvolveMatrix order="100" kernelMatrix="1"/>)") << QSize();
        const QByteArray hiding = "<!DOCTYPE svg [<!ENTITY f '<fe&#84;urbulence numOctaves=\"1000000\"/>'>]>";
        QTest::newRow("the same behind another name")
            << filtered("&f;").insert(qstrlen(R"(<?xml version="1.0"?>)"), hiding) << QSize();
        QTest::newRow("the same in another encoding")
            << filtered("+ADw-feTurbulence numOctaves=\"1000000\"/+AD4-")
                   .replace("?>", " encoding=\"UTF-7\"?>")
            << QSize();
        QTest::newRow("half a drawing") << svg({}).left(60) << QSize();
        QTest::newRow("a page") << QByteArray("<html><body>no drawing</body></html>") << QSize();
        QTest::newRow("a drawing of copies of copies") << bomb() << QSize();
        QTest::newRow("half a megabyte of blanks and a drawing")
            << QByteArray(512 * 1024, ' ') + svg({}) << QSize();
        QTest::newRow("nothing") << QByteArray() << QSize();
    }
    void pictures()
    {
        QFETCH(const QByteArray, file);
        const QImage picture = iconPicture(file, 32);
        QTEST(picture.isNull() ? QSize() : picture.size(), "size");
        if (!picture.isNull())
            QCOMPARE(picture.pixelColor(picture.rect().center()), QColor(iconColor));
    }

    void aDrawingShowsNothingOfOtherFiles()
    {
        QTemporaryFile secret(QDir::tempPath() + u"/XXXXXX.png"_qs);
        QVERIFY(secret.open());
        secret.write(png(16, 16));
        secret.close();
        for (const QString &address : {secret.fileName(), u"file://"_qs + secret.fileName()}) {
            const QImage picture = iconPicture(
                svg("<image width=\"16\" height=\"16\" xlink:href=\"" + address.toUtf8() + "\"/>"), 32);
            if (!picture.isNull())
                QCOMPARE(picture.pixelColor(16, 16).alpha(), 0);
        }
    }

    void eachIconIsLookedUpOnceWhileNothingWaits()
    {
        const auto machine = std::make_shared<Machine>();
        auto held = std::make_unique<HeldIcons>();
        HeldIcons &icons = *held;
        machine->icons = std::move(held);
        BackgroundWork work(2);
        const auto letThrough = qScopeGuard([&icons] { icons.gate.release(100); });
        QQmlEngine engine;
        auto *store = new IconStore(&engine, machine, work);

        QObject asker;
        auto gone = std::make_unique<QObject>();
        const IconKey first = {{"/first", {}}, 32};
        const IconKey none = {{"/none", {}}, 32};
        for (const IconKey &key : {first, first, none})
            QVERIFY(!store->icon(key, &asker).has_value());
        QVERIFY(!store->icon({{"/gone", {}}, 32}, gone.get()).has_value());
        QVERIFY(store->icon({}, &asker)->isNull());
        gone.reset();
        QSignalSpy found(store, &IconStore::found);
        // Nothing is found yet, and this thread has come so far.
        QVERIFY(store->isBusy());
        icons.gate.release(10);
        QVERIFY(waitUntil([&] { return !store->isBusy(); }));
        QCOMPARE(icons.asked, QStringList({u"/first"_qs, u"/none"_qs}));
        QCOMPARE(found.count(), 3);
        QCOMPARE(store->icon(first, &asker)->size(), QSize(32, 32));
        QVERIFY(store->icon(none, &asker)->isNull());
        QVERIFY(!store->isBusy());
    }

    void onlySoManyAreKept()
    {
        const auto machine = std::make_shared<Machine>();
        auto held = std::make_unique<HeldIcons>();
        held->gate.release(1'000);
        machine->icons = std::move(held);
        BackgroundWork work(1);
        QQmlEngine engine;
        auto *store = new IconStore(&engine, machine, work);
        // Each of them takes a quarter of a mebibyte.
        for (int number = 0; number < 5; ++number)
            store->icon({{"/" + std::to_string(number), {}}, 256}, this);
        QVERIFY(waitUntil([&] { return !store->isBusy(); }));
        QVERIFY(store->icon({{"/4", {}}, 256}, this).has_value());
        QVERIFY(!store->icon({{"/0", {}}, 256}, this).has_value());
        QVERIFY(waitUntil([&] { return !store->isBusy(); }));
    }

    void theTileStandsUntilTheIconIsThere()
    {
        const TemporaryMachine folder({{u"now"_qs, 1'790'000'000}});
        folder.setProcesses({"10 1 30 1.0 1000 /Applications/Mill.app/Contents/MacOS/Mill",
                             "11 1 20 1.0 1000 /usr/libexec/wind"});
        folder.writeFile(u"root/Applications/Mill.app/Contents/Info.plist"_qs, bundleFacts("icon"));
        folder.writeFile(u"root/Applications/Mill.app/Contents/Resources/icon.icns"_qs,
                         iconFile({png(64, 64)}));
        const std::shared_ptr<Machine> machine = folder.open();
        auto held = std::make_unique<HeldIcons>(std::move(machine->icons));
        QSemaphore &gate = held->gate;
        machine->icons = std::move(held);
        AppState state(machine, Record::nothing);
        Settings(*state.machine().settings).store(setting<"hasCompletedOnboarding">, true);
        ApplicationFlows flows(state);
        const auto letThrough = qScopeGuard([&gate] { gate.release(100); });
        const auto open = openMainWindow(flows.windowContext(state, ThemeChoice::light));
        open->engine->theme->setStill(true);
        open->view->select(MainSection::speed);
        open->window->show();
        const auto refresh = [&state] {
            const int before = state.refreshesApplied();
            state.refresh();
            return waitUntil([&] { return state.refreshesApplied() > before; });
        };
        QVERIFY(refresh());
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
        folder.setProcesses({"10 1 35 1.0 1000 /Applications/Mill.app/Contents/MacOS/Mill",
                             "11 1 20 1.0 1000 /usr/libexec/wind"});
        QVERIFY(refresh());
        QVERIFY(!store->isBusy());
        QCOMPARE(iconsIn(open->window->contentItem()), icons);
        QCOMPARE(changes.count(), 1);
    }
};

QTEST_MAIN(IconsTest)
#include "IconsTest.moc"
