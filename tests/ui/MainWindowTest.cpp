#include "WindowTest.h"

#include <algorithm>

using namespace swabby;

namespace {

const QByteArray mill = "10 1 95 1.0 1000 /Applications/Mill.app/Contents/MacOS/Mill";
const QByteArray loom = "20 1 40 1.0 1000 /Applications/Loom.app/Contents/MacOS/Loom";
const QByteArray idleMill = "10 1 20 1.0 1000 /Applications/Mill.app/Contents/MacOS/Mill";

} // namespace

class MainWindowTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        begin();
        m_stays = true;
        m_hasQuit = false;
        openCounting();
    }
    void cleanup() { end(); }

    void figuresAppearAndTheKeyboardGoesEverywhere()
    {
        QVERIFY(view().isRefreshing());
        QCOMPARE(view().state()->gauges()->count(), 3); // which say that they are being measured
        m_desk->refresh();
        QCOMPARE(view().state()->property("healthWord").toString(), u"Struggling"_qs);
        // The sidebar has the keyboard at first.
        for (const auto &[key, modifiers, section] :
             {std::tuple{Qt::Key_Down, Qt::NoModifier, MainSection::swabbyCheck},
              {Qt::Key_Down, Qt::NoModifier, MainSection::speed},
              {Qt::Key_Up, Qt::NoModifier, MainSection::swabbyCheck},
              {Qt::Key_Up, Qt::NoModifier, MainSection::overview},
              {Qt::Key_8, Qt::ControlModifier, MainSection::developer}}) {
            type(key, modifiers);
            QCOMPARE(view().selection(), section);
        }
        const int before = m_desk->state.refreshesApplied();
        type(Qt::Key_R, Qt::ControlModifier);
        QVERIFY(view().isRefreshing());
        QVERIFY(waitUntil([&] { return m_desk->state.refreshesApplied() > before; }));
        QVERIFY(!view().isRefreshing());
        // What had the keyboard goes with its page.
        view().select(MainSection::speed);
        item(u"Pin app: Mill"_qs)->forceActiveFocus();
        type(Qt::Key_4, Qt::ControlModifier);
        type(Qt::Key_Down);
        QCOMPARE(view().selection(), MainSection::network);
    }

    void theSheetTakesTheKeyboardAndGivesItBack()
    {
        m_desk->refresh();
        pressHere(u"What's going on"_qs);
        QQuickItem *button = item(u"What's going on"_qs);
        QVERIFY(isShowingDetail());
        for (int tab = 0; tab < 8; ++tab) {
            type(Qt::Key_Tab);
            QVERIFY2(isInSheet(window().activeFocusItem()), "the keyboard left the sheet");
        }
        type(Qt::Key_2, Qt::ControlModifier); // what lies below does not listen
        QCOMPARE(view().selection(), MainSection::overview);
        type(Qt::Key_Escape);
        QVERIFY(!isShowingDetail());
        QCOMPARE(window().activeFocusItem(), button);
        type(Qt::Key_Space);
        type(Qt::Key_Return); // the prominent button
        QVERIFY(!isShowingDetail());
    }

    void aPinIsKeptAndTheArrowsLeadFromRowToRow()
    {
        m_desk->folder.setProcesses({mill, loom});
        m_desk->refresh();
        type(Qt::Key_3, Qt::ControlModifier);
        pressHere(u"Pin app: Mill"_qs);
        QCOMPARE(m_desk->state.pinnedNames(), std::set<QString>{u"Mill"_qs});
        const QQuickItem *pin = item(u"Unpin app: Mill"_qs);
        QVERIFY(pin != nullptr && pin->hasActiveFocus());
        for (int presses = 0; presses < 2; ++presses) { // the second one at the last row
            type(Qt::Key_Down);
            QCOMPARE(window().activeFocusItem(), item(u"Pin app: Loom"_qs));
        }
        type(Qt::Key_Up);
        type(Qt::Key_Up); // the nearest in the line above is the search
        QVERIFY(window().activeFocusItem()->inputMethodQuery(Qt::ImEnabled).toBool());
    }

    void aPageFollowsWheelBarAndFingerButNoMouse()
    {
        QList<QByteArray> many;
        for (int pid = 10; pid < 40; ++pid)
            many.append(QByteArray::number(pid) + " 1 5 1.0 1000 /usr/bin/thing" + QByteArray::number(pid));
        view().select(MainSection::speed);
        refreshTo(many);
        QQuickItem *page = nullptr;
        for (QQuickItem *item : visibleItems(window().contentItem()))
            if (item->inherits("QQuickFlickable"))
                page = item;
        QVERIFY(page != nullptr);
        const auto place = [page] { return page->property("contentY").toDouble(); };
        const double end = page->property("contentHeight").toDouble() - page->height();
        const auto at = [page](double x, double y) { return page->mapToScene({x, y}).toPoint(); };
        const QPoint middle = at(page->width() / 2, 200);
        const auto drag = [this](QPoint from, QPoint to) {
            QTest::mousePress(&window(), Qt::LeftButton, {}, from);
            for (const double share : {0.3, 0.6, 1.0})
                QTest::mouseMove(&window(), from + (to - from) * share);
            QTest::mouseRelease(&window(), Qt::LeftButton, {}, to);
        };
        drag(middle, middle - QPoint(0, 150));
        QCOMPARE(place(), 0.0);
        // A tooltip goes with what it is about.
        QTest::mouseMove(&window(), item(u"Pin app: thing10"_qs)->mapToScene({5, 5}).toPoint());
        const auto hints = [this] { return textOf(window()).count(u"Pin app"_qs); };
        QVERIFY(waitUntil([&] { return hints() == 1; }));
        QWheelEvent turn(middle, window().mapToGlobal(middle), {}, {0, -120}, {}, {}, {}, false);
        QCoreApplication::sendEvent(&window(), &turn);
        QCOMPARE(place(), 72.0);
        QVERIFY(!window().grabWindow().isNull());
        QVERIFY(waitUntil([&] { return hints() == 0; }));
        drag(at(page->width() - 6, 20), at(page->width() - 6, page->height() - 1));
        QVERIFY(qAbs(place() - end) < 1);
        const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
        QTest::touchEvent(&window(), screen.get()).press(0, middle);
        for (const int distance : {30, 60, 90})
            QTest::touchEvent(&window(), screen.get()).move(0, middle + QPoint(0, distance));
        QTest::touchEvent(&window(), screen.get()).release(0, middle + QPoint(0, 90));
        QVERIFY(waitUntil([&] { return place() < end - 20; }));
    }

    void anIssueLeadsToItsSection()
    {
        m_desk->refresh();
        view().setProperty("showHealthDetail", true);
        const QList<HealthIssue> &issues = m_desk->state.healthIssues();
        int leading = 0;
        while (!issues.at(leading).action || !std::holds_alternative<OpenSection>(*issues.at(leading).action))
            ++leading;
        view().performIssue(leading);
        QVERIFY(!isShowingDetail());
        QCOMPARE(view().selection(), MainSection::speed);
        view().performIssue(999);
        QCOMPARE(view().selection(), MainSection::speed);
    }

    void theTroubleComesFirstAndCanBeActedOn()
    {
        const QString memory = u"Urgent: It's almost out of memory…"_qs;
        const auto quits = [this] {
            const QList<QQuickItem *> items = visibleItems(window().contentItem());
            return std::ranges::count_if(
                items, [](const QQuickItem *one) { return one->property("isDestructive").toBool(); });
        };
        m_desk->refresh();
        const QString text = textOf(window());
        QList<qsizetype> places;
        for (const char *words : {"Issues detected", "Why it matters", "It's almost out of memory",
                                  "Mill is using", "Speed\n", "Last 24 hours"})
            places.append(text.indexOf(QLatin1String(words)));
        QVERIFY2(!places.contains(-1) && std::ranges::is_sorted(places), qPrintable(text));
        QCOMPARE(quits(), 1);
        QVERIFY(item(u"Look into it"_qs) == nullptr);
        pressHere(u"Urgent: Mill is using…"_qs);
        pressHere(memory);
        QVERIFY(comes(u"Look into it"_qs));
        QCOMPARE(quits(), 1); // the first card's
        pressHere(memory);
        QVERIFY(goes(u"Look into it"_qs));

        const QQuickItem *check = item(u"Swabby Check, Issues…"_qs);
        QTest::mouseClick(&window(), Qt::LeftButton, {}, check->mapToScene({90, 30}).toPoint());
        QVERIFY(isShowingDetail());
        type(Qt::Key_Escape);

        view().select(MainSection::speed);
        view().setProperty("speedView", 1);
        pressHere(memory);
        pressHere(u"Look into it"_qs);
        QCOMPARE(view().property("speedView").toInt(), 0);
        QCOMPARE(window().activeFocusItem(), item(u"What is this? Mill"_qs));

        for (const int checks : {1, 2}) {
            type(Qt::Key_2, Qt::ControlModifier);
            QVERIFY(waitUntil([&] { return m_finishedChecks == checks && !view().check()->isScanning(); }));
        }
    }

    void askingAgainForTheCheckStartsAnotherOne()
    {
        m_desk->refresh();
        const auto request = [this](MainSection section) { m_desk->state.requestMainSection(section); };
        const auto hasFinished = [this](int checks) {
            return waitUntil([&] { return m_finishedChecks == checks && !view().check()->isScanning(); });
        };
        request(MainSection::swabbyCheck);
        QVERIFY(hasFinished(1));
        request(MainSection::speed);
        request(MainSection::speed);
        QVERIFY(!view().check()->isScanning());
        request(MainSection::swabbyCheck); // selecting the section begins one anyway
        request(MainSection::swabbyCheck); // and one that runs goes on
        QVERIFY(hasFinished(2));
        request(MainSection::swabbyCheck);
        QVERIFY(hasFinished(3));
    }

    void closingTheOnlyWayInAsksFirst()
    {
        window().close();
        QVERIFY(!window().isVisible());
        window().show();
        m_stays = false;
        view().setProperty("showWelcome", true);
        m_desk->refresh();
        QVERIFY(says(u"Ctrl+Q"_qs));
        view().setProperty("showWelcome", false);
        window().close();
        QVERIFY(window().isVisible());
        QVERIFY(view().property("showLastWindowNotice").toBool());
        type(Qt::Key_Return); // keeps it open
        QVERIFY(!m_hasQuit && window().isVisible());
        window().close();
        pressHere(u"Quit Swabby"_qs);
        QVERIFY(m_hasQuit);
    }

    void aPageStaysUntilTheNextOneStands()
    {
        m_desk->refresh();
        m_open->engine->theme->setStill(false);
        view().select(MainSection::speed);
        QVERIFY(item(u"What's going on"_qs) != nullptr);
        QVERIFY(item(u"Pin app: Mill"_qs) == nullptr);
        QVERIFY(comes(u"Pin app: Mill"_qs) && item(u"What's going on"_qs) == nullptr);
        // Whoever goes on sees only where that ends, also back where it began.
        for (const MainSection end : {MainSection::overview, MainSection::speed, MainSection::overview}) {
            for (const MainSection passed : {MainSection::network, MainSection::startup, end})
                view().select(passed);
            QVERIFY(comes(end == MainSection::overview ? u"What's going on"_qs : u"Pin app: Mill"_qs));
            QVERIFY(goes(end == MainSection::overview ? u"Pin app: Mill"_qs : u"What's going on"_qs));
        }
    }

    // Figures change once a minute, and must take nothing out of anybody's hands.
    void aRowStaysWhatItIsThroughARefresh()
    {
        view().select(MainSection::speed);
        for (const auto &next : {QList{idleMill, loom}, {loom, idleMill}, {mill}}) {
            refreshTo({mill, loom});
            pressHere(u"More: Mill"_qs);
            QVERIFY(!window().grabWindow().isNull());
            QQuickItem *menu = window().activeFocusItem();
            QQuickItem *more = item(u"More: Mill"_qs);
            QQuickItem *pin = item(u"Pin app: Mill"_qs);
            refreshTo(next);
            QCOMPARE(item(u"More: Mill"_qs), more);
            QVERIFY(more->property("isOpen").toBool());
            QCOMPARE(window().activeFocusItem(), menu);
            type(Qt::Key_Escape);
            QCOMPARE(window().activeFocusItem(), more);
            pin->forceActiveFocus();
            refreshTo({loom, mill});
            QVERIFY(pin->hasActiveFocus());
        }
    }

private:
    UserInterfaceContext context() override
    {
        UserInterfaceContext context = WindowTest::context();
        context.panelPlace = [this] { return m_stays ? TrayItem::Place::there : TrayItem::Place::none; };
        context.quit = [this] { m_hasQuit = true; };
        return context;
    }
    void openCounting()
    {
        open();
        m_finishedChecks = 0;
        connect(view().check(), &CheckView::finished, this, [this] { ++m_finishedChecks; });
    }
    void refreshTo(const QList<QByteArray> &processes)
    {
        m_desk->folder.setProcesses(processes);
        m_desk->refresh();
        QVERIFY(!window().grabWindow().isNull()); // laid out anew
    }
    bool isShowingDetail() { return view().property("showHealthDetail").toBool(); }
    static bool isInSheet(const QQuickItem *item)
    {
        for (; item != nullptr; item = item->parentItem())
            if (QString::fromLatin1(item->metaObject()->className()).startsWith(u"HealthDetailSheet"_qs))
                return true;
        return false;
    }

    int m_finishedChecks = 0;
    bool m_stays = true;
    bool m_hasQuit = false;
};

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
