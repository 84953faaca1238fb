#include "app/AppDelegate.h"
#include "app/ApplicationFlows.h"
#include "app/CommandLine.h"
#include "app/StatusItemController.h"
#include "app/TitleImage.h"
#include "settings/Settings.h"
#include "state/AppState.h"
#include "support/Table.h"
#include "support/TemporaryMachine.h"
#include "ui/presentation/ThemeColors.h"

#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>
#include <QtTest/QTest>

using namespace swabby;

namespace {

/// A panel that comes and goes as the test says.
class StandInItem : public TrayItem {
public:
    Place place() const override { return m_place; }
    void show(const TrayPicture &picture) override { tip = picture.tip; }
    void hide() override { tip.clear(); }
    void setPlace(Place place)
    {
        m_place = place;
        Q_EMIT placeChanged();
    }

    QString tip; ///< empty while it is not shown

private:
    Place m_place = Place::unknown;
};

} // namespace

class ShellTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void argumentsAreRead()
    {
        QString problem;
        const auto full =
            parseCommandLine({u"--machine"_qs, u"/m"_qs, u"--run-tools"_qs, u"--section=speed"_qs,
                              u"--theme"_qs, u"dark"_qs, u"--background"_qs},
                             &problem);
        QVERIFY2(full, qPrintable(problem));
        QCOMPARE(full->machineFolder, u"/m"_qs);
        QCOMPARE(full->section, MainSection::speed);
        QCOMPARE(full->theme, ThemeChoice::dark);
        QVERIFY(full->runsTools && full->isBackground && !full->screenshotsFolder);
        QVERIFY(!parseCommandLine({}, &problem)->theme);
    }

    void wrongArgumentsAreExplained()
    {
        compareTable(fixture(u"app/wrong_arguments.txt"_qs), [](const Cells &row) {
            QString problem;
            const auto read = parseCommandLine(row.text(0).split(u' '), &problem);
            return !read && problem.contains(row.text(1)) && !problem.contains(u'\n') ? row.text(1) : problem;
        });
    }

    void theTitleImageKeepsItsMeasures()
    {
        const QImage small = renderTitleImage({u"5%"_qs, TitleColor::red}, 1);
        const QImage wide = renderTitleImage({u"1000000%"_qs, TitleColor::green}, 1);
        const QImage twice = renderTitleImage({u"5%"_qs, TitleColor::red}, 2);
        QVERIFY(wide.width() > small.width()); // as wide as the wider line
        QCOMPARE(wide.height(), small.height());
        // A load that changes moves nothing.
        QCOMPARE(renderTitleImage({u"8888888%"_qs, TitleColor::green}, 1).width(),
                 renderTitleImage({u"1111111%"_qs, TitleColor::green}, 1).width());
        QVERIFY(qAbs(twice.width() - 2 * small.width()) <= 2);
        QCOMPARE(small.pixelColor(0, 0).alpha(), 0);
        // The upper line starts below the margin, in translucent white; the lower one is in the colour.
        QVERIFY(!hasInk(small, 0, 6));
        QVERIFY(hasInk(small, 6, 10));
        QVERIFY(hasColor(small, titleColor(TitleColor::red)));
        QVERIFY(!hasColor(small, titleColor(TitleColor::green)));
    }

    void theTraySquareCanBeReadOnAnyPanel()
    {
        for (const TitleColor color : {TitleColor::green, TitleColor::yellow, TitleColor::red})
            for (const int size : {16, 22, 24, 32, 48, 64})
                for (const char *text : {"5%", "46%", "100%"}) {
                    const QImage image = renderTraySquare({QLatin1String(text), color}, size);
                    const QColor ground = image.pixelColor(size / 2, 1);
                    QVERIFY(contrastRatio(titleColor(color), ground) >= 4.5);
                    QCOMPARE(ground.alpha(), 255); // so the panel's colour does not matter
                    QVERIFY(hasColor(image, titleColor(color), size < 32 ? 60 : 4));
                    QVERIFY2(!hasInkAtTheEdge(image, ground), text);
                }
    }

    void theItemTakesTheBestPlace()
    {
        const QJsonArray ticks = {QJsonArray{0, 0, 0, 0}, QJsonArray{46, 0, 54, 0}};
        const TemporaryMachine folder({{u"now"_qs, 1'790'000'000}, {u"cpuTicks"_qs, ticks}});
        AppState state(folder.open(), Record::nothing);
        TrayItems items;
        items.push_back(std::make_unique<StandInItem>());
        items.push_back(std::make_unique<StandInItem>());
        auto &best = static_cast<StandInItem &>(*items[0]);
        auto &spare = static_cast<StandInItem &>(*items[1]);
        QStringList done;
        const auto note = [&](const QString &what) { return [&done, what] { done += what; }; };
        StatusItemController controller(
            state,
            {.openMainWindow = note(u"main"_qs),
             .openAskWindow = note(u"ask"_qs),
             .openSettingsWindow = note(u"settings"_qs),
             .togglePopover = [&](const QRect &where) { done += u"panel at %1"_qs.arg(where.x()); },
             .toggleItemMenu = [&](const QRect &where) { done += u"menu at %1"_qs.arg(where.x()); },
             .quit = note(u"quit"_qs)},
            std::move(items));
        spare.setPlace(TrayItem::Place::there);
        QVERIFY(controller.place() == TrayItem::Place::there &&
                spare.tip.isEmpty()); // the better one may still turn up
        best.setPlace(TrayItem::Place::none);
        QCOMPARE(spare.tip, u"0%"_qs);
        best.setPlace(TrayItem::Place::there);
        QCOMPARE(best.tip + u'|' + spare.tip, u"0%|"_qs);
        best.setPlace(TrayItem::Place::none);
        QCOMPARE(best.tip + u'|' + spare.tip, u"|0%"_qs);
        spare.setPlace(TrayItem::Place::none);
        QVERIFY(controller.place() == TrayItem::Place::none && spare.tip.isEmpty());

        Q_EMIT best.activated(QRect(7, 0, 1, 1));
        Q_EMIT best.menuWanted(QRect(8, 0, 1, 1));
        for (const TrayCommand command : {TrayCommand::openMainWindow, TrayCommand::openAskWindow,
                                          TrayCommand::openSettingsWindow, TrayCommand::quit})
            Q_EMIT best.commanded(command);
        QVERIFY(done.isEmpty()); // the panel's own business comes first
        const QStringList all = {u"panel at 7"_qs, u"menu at 8"_qs, u"main"_qs,
                                 u"ask"_qs,        u"settings"_qs,  u"quit"_qs};
        QVERIFY(waitUntil([&] { return done == all; }));
        best.setPlace(TrayItem::Place::there);
        for (const QString &tip : {u"0%"_qs, u"46%"_qs}) {
            const int before = state.refreshesApplied();
            Q_EMIT best.commanded(TrayCommand::refresh);
            QVERIFY(waitUntil([&] { return state.refreshesApplied() > before && best.tip == tip; }));
        }
    }

    void theDockFollowsSettingAndWindows()
    {
        const TemporaryMachine folder({{u"now"_qs, 1'790'000'000}});
        AppState state(folder.open(), Record::nothing);
        Settings(*state.machine().settings).store(setting<"showInDock">, false);
        ApplicationFlows flows(state);
        AppDelegate delegate(state, flows, ThemeChoice::light);
        delegate.applicationDidFinishLaunching();
        const auto policy = [&] { return folder.events(u"activationPolicy"_qs).last().toString(); };
        QCOMPARE(policy(), u"accessory"_qs);
        QWindow window;
        window.show();
        QVERIFY(waitUntil([&] { return policy() == u"regular"_qs; }));
        QTimer::singleShot(0, this, [&] {
            QTest::keyClick(&window, Qt::Key_Q, Qt::ControlModifier);
            QTimer::singleShot(0, [] { QCoreApplication::exit(1); });
        });
        QCOMPARE(QCoreApplication::exec(), 0);
        window.close();
        QVERIFY(waitUntil([&] { return policy() == u"accessory"_qs; }));
        window.setFlags(Qt::Popup);
        window.show();
        delegate.syncActivationPolicy();
        QCOMPARE(policy(), u"accessory"_qs);
        window.close();

        delegate.openMainWindowAt(MainSection::battery); // as a click on a notification does
        const QWindowList windows = QGuiApplication::topLevelWindows();
        const auto main =
            std::find_if(windows.begin(), windows.end(), [](auto *one) { return one->isVisible(); });
        QVERIFY(main != windows.end());
        QCOMPARE((*main)->title(), u"Battery"_qs);
        const auto paper = [&] { return (*main)->property("color").value<QColor>(); };
        QCOMPARE(paper(), lightColors().window);
        Settings(*state.machine().settings).store(setting<"theme">, u"dark"_qs);
        state.noteStoredSetting();
        QCOMPARE(paper(), darkColors().window); // whatever it was started with
    }

private:
    static bool hasInk(const QImage &image, int from, int to)
    {
        QImage clear(image.width(), to - from, image.format());
        clear.fill(Qt::transparent);
        return image.copy(0, from, image.width(), to - from) != clear;
    }

    static bool hasColor(const QImage &image, const QColor &color, int tolerance = 8)
    {
        const auto isNear = [&](int value, int wanted) { return qAbs(value - wanted) <= tolerance; };
        for (int at = 0; at < image.height() * image.width(); ++at) {
            const QColor pixel = image.pixelColor(at % image.width(), at / image.width());
            if (pixel.alpha() > 200 && isNear(pixel.red(), color.red()) &&
                isNear(pixel.green(), color.green()) && isNear(pixel.blue(), color.blue()))
                return true;
        }
        return false;
    }

    static bool hasInkAtTheEdge(const QImage &image, const QColor &ground)
    {
        const int last = image.width() - 1;
        for (int at = image.width() / 4; at < image.width() * 3 / 4; ++at)
            for (const QPoint &point : {QPoint(at, 0), QPoint(at, last), QPoint(0, at), QPoint(last, at)})
                if (image.pixelColor(point) != ground)
                    return true;
        return false;
    }
};

QTEST_MAIN(ShellTest)
#include "ShellTest.moc"
