#include "Desk.h"
#include "ui/qmltypes/MainWindowView.h"

using namespace swabby;

class MainWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_desk = std::make_unique<Desk>();
        m_stays = true;
        m_hasQuit = false;
        open();
    }

    void cleanup()
    {
        m_open.reset();
        m_desk.reset();
    }

    void figuresAppearOnceTheyAreKnown()
    {
        QVERIFY(m_open->view->isRefreshing());
        QCOMPARE(m_open->view->state()->gauges()->count(), 3); // which say that they are being measured
        m_desk->refresh();
        QVERIFY(m_open->view->state()->gauges()->count() >= 3);
        QCOMPARE(m_open->view->state()->property("healthWord").toString(), u"Struggling"_qs);
        QCOMPARE(m_open->window->title(), u"Overview"_qs);
    }

    void theKeyboardGoesEverywhere()
    {
        m_desk->refresh();
        type(Qt::Key_Down); // the sidebar has the keyboard at first
        QCOMPARE(m_open->view->selection(), MainSection::swabbyCheck);
        type(Qt::Key_Down);
        QCOMPARE(m_open->view->selection(), MainSection::speed);
        type(Qt::Key_Up);
        type(Qt::Key_Up);
        QCOMPARE(m_open->view->selection(), MainSection::overview);
        type(Qt::Key_5, Qt::ControlModifier);
        QCOMPARE(m_open->view->selection(), MainSection::network);
        type(Qt::Key_8, Qt::ControlModifier);
        QCOMPARE(m_open->view->selection(), MainSection::developer);
        type(Qt::Key_R, Qt::ControlModifier);
        QVERIFY(m_open->view->isRefreshing());
        const int before = m_desk->state.refreshesApplied();
        QVERIFY(waitUntil([&] { return m_desk->state.refreshesApplied() > before; }));
        QVERIFY(!m_open->view->isRefreshing());
    }

    void theSheetTakesTheKeyboardAndGivesItBack()
    {
        m_desk->refresh();
        pressHere(u"What's going on"_qs);
        QQuickItem *button = itemNamed(*m_open->window, u"What's going on"_qs);
        QVERIFY(isShowingDetail());
        for (int tab = 0; tab < 8; ++tab) {
            type(Qt::Key_Tab);
            QVERIFY2(isInSheet(m_open->window->activeFocusItem()), "the keyboard left the sheet");
        }
        type(Qt::Key_2, Qt::ControlModifier); // what lies below does not listen
        QCOMPARE(m_open->view->selection(), MainSection::overview);
        type(Qt::Key_Escape);
        QVERIFY(!isShowingDetail());
        QCOMPARE(m_open->window->activeFocusItem(), button);
        type(Qt::Key_Space);
        type(Qt::Key_Return); // the prominent button
        QVERIFY(!isShowingDetail());
    }

    void theArrowsLeadFromRowToRow()
    {
        m_desk->folder.setProcesses({"10 1 30 1.0 2000 /Applications/Mill.app/Contents/MacOS/Mill",
                                     "11 1 20 1.0 1000 /Applications/Loom.app/Contents/MacOS/Loom"});
        m_desk->refresh();
        m_open->view->select(MainSection::speed);
        const auto control = [this](const QString &name) { return itemNamed(*m_open->window, name); };
        QVERIFY(control(u"Pin app: Mill"_qs) != nullptr);
        control(u"Pin app: Mill"_qs)->forceActiveFocus();
        type(Qt::Key_Down);
        QCOMPARE(m_open->window->activeFocusItem(), control(u"Pin app: Loom"_qs));
        type(Qt::Key_Down); // the last row
        QCOMPARE(m_open->window->activeFocusItem(), control(u"Pin app: Loom"_qs));
        type(Qt::Key_Up);
        type(Qt::Key_Up); // the nearest in the line above is the search
        QCOMPARE(m_open->window->activeFocusItem()->inputMethodQuery(Qt::ImEnabled).toBool(), true);
    }

    void theKeyboardIsNeverLost()
    {
        m_desk->refresh();
        m_open->view->select(MainSection::speed);
        QQuickItem *pin = itemNamed(*m_open->window, u"Pin app: Mill"_qs);
        QVERIFY(pin != nullptr);
        pin->forceActiveFocus();
        type(Qt::Key_4, Qt::ControlModifier); // its page goes
        type(Qt::Key_Down);
        QCOMPARE(m_open->view->selection(), MainSection::network);
    }

    void anIssueLeadsToItsSection()
    {
        m_desk->refresh();
        m_open->view->setProperty("showHealthDetail", true);
        int memoryIssue = -1;
        const QList<HealthIssue> &issues = m_desk->state.healthIssues();
        for (int index = 0; index < issues.size(); ++index)
            if (issues.at(index).action && std::holds_alternative<OpenSection>(*issues.at(index).action))
                memoryIssue = index;
        QVERIFY(memoryIssue >= 0);
        m_open->view->performIssue(memoryIssue);
        QVERIFY(!isShowingDetail());
        QCOMPARE(m_open->view->selection(), MainSection::speed);
        m_open->view->performIssue(999);
        QCOMPARE(m_open->view->selection(), MainSection::speed);
    }

    void aRequestMadeWhileClosedIsHonoured()
    {
        m_open.reset();
        m_desk->state.requestMainSection(MainSection::battery);
        open();
        QCOMPARE(m_open->view->selection(), MainSection::battery);
        QVERIFY(!m_desk->state.requestedMainSection());
        m_open.reset();
        open();
        QCOMPARE(m_open->view->selection(), MainSection::overview);
    }

    void askingAgainForTheCheckStartsAnotherOne()
    {
        m_desk->refresh();
        m_desk->state.requestMainSection(MainSection::swabbyCheck);
        CheckView &check = *m_open->view->check();
        QVERIFY(waitUntil([&] { return m_finishedChecks == 1 && !check.isScanning(); }));
        m_desk->state.requestMainSection(MainSection::speed);
        m_desk->state.requestMainSection(MainSection::speed);
        QVERIFY(!check.isScanning());
        m_desk->state.requestMainSection(MainSection::swabbyCheck); // selecting the section begins one anyway
        m_desk->state.requestMainSection(MainSection::swabbyCheck); // and one that runs goes on
        QVERIFY(waitUntil([&] { return m_finishedChecks == 2 && !check.isScanning(); }));
        m_desk->state.requestMainSection(MainSection::swabbyCheck);
        QVERIFY(waitUntil([&] { return m_finishedChecks == 3; }));
    }

    void closingTheOnlyWayInAsksFirst()
    {
        m_open->window->close();
        QVERIFY(!m_open->window->isVisible());
        m_open->window->show();
        m_stays = false;
        m_open->window->close();
        QVERIFY(m_open->window->isVisible());
        QVERIFY(m_open->view->property("showLastWindowNotice").toBool());
        type(Qt::Key_Return); // keeps it open
        QVERIFY(!m_hasQuit && m_open->window->isVisible());
        m_open->window->close();
        pressHere(u"Quit Swabby"_qs);
        QVERIFY(m_hasQuit);
    }

    void aPinIsStoredAndShown()
    {
        m_desk->refresh();
        type(Qt::Key_3, Qt::ControlModifier);
        pressHere(u"Pin app: Mill"_qs);
        QCOMPARE(m_desk->state.pinnedNames(), std::set<QString>{u"Mill"_qs});
        QQuickItem *pin = itemNamed(*m_open->window, u"Unpin app: Mill"_qs);
        QVERIFY(pin != nullptr && pin->hasActiveFocus());
    }

    // Figures change once a minute, and must take nothing out of anybody's hands.
    void aRowStaysWhatItIsThroughARefresh_data()
    {
        QTest::addColumn<QList<QByteArray>>("next");
        const QByteArray mill = "10 1 %1 1.0 1000 /Applications/Mill.app/Contents/MacOS/Mill";
        const QByteArray loom = "20 1 40 1.0 1000 /Applications/Loom.app/Contents/MacOS/Loom";
        const auto millAt = [&](const char *load) { return QByteArray(mill).replace("%1", load); };
        QTest::newRow("other figures") << QList<QByteArray>{millAt("60"), loom};
        QTest::newRow("another order") << QList<QByteArray>{loom, millAt("20")};
        QTest::newRow("one less") << QList<QByteArray>{millAt("95")};
    }
    void aRowStaysWhatItIsThroughARefresh()
    {
        QFETCH(QList<QByteArray>, next);
        m_desk->folder.setProcesses({"10 1 95 1.0 1000 /Applications/Mill.app/Contents/MacOS/Mill",
                                     "20 1 40 1.0 1000 /Applications/Loom.app/Contents/MacOS/Loom"});
        m_desk->refresh();
        m_open->view->select(MainSection::speed);
        pressHere(u"More: Mill"_qs);
        QVERIFY(!m_open->window->grabWindow().isNull());
        QQuickItem *menu = m_open->window->activeFocusItem();
        QQuickItem *more = itemNamed(*m_open->window, u"More: Mill"_qs);
        QQuickItem *pin = itemNamed(*m_open->window, u"Pin app: Mill"_qs);
        refreshTo(next);
        QCOMPARE(itemNamed(*m_open->window, u"More: Mill"_qs), more);
        QVERIFY(more->property("isOpen").toBool());
        QCOMPARE(m_open->window->activeFocusItem(), menu);
        type(Qt::Key_Escape);
        QCOMPARE(m_open->window->activeFocusItem(), more);

        pin->forceActiveFocus();
        refreshTo(next);
        QVERIFY(pin->hasActiveFocus());
    }

private:
    void open()
    {
        UserInterfaceContext context = m_desk->context();
        context.staysWithoutWindow = [this] { return m_stays; };
        context.quit = [this] { m_hasQuit = true; };
        m_open = shown(openMainWindow(context));
        m_finishedChecks = 0;
        QObject::connect(m_open->view->check(), &CheckView::finished, m_open->view.get(),
                         [this] { ++m_finishedChecks; });
    }

    void refreshTo(const QList<QByteArray> &processes)
    {
        m_desk->folder.setProcesses(processes);
        m_desk->refresh();
        QVERIFY(!m_open->window->grabWindow().isNull()); // laid out anew
    }

    void pressHere(const QString &name) { press(*m_open->window, name); }
    void type(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(m_open->window.get(), key, modifiers);
    }

    bool isShowingDetail() const { return m_open->view->property("showHealthDetail").toBool(); }

    static bool isInSheet(const QQuickItem *item)
    {
        for (; item != nullptr; item = item->parentItem())
            if (QString::fromLatin1(item->metaObject()->className()).startsWith(u"HealthDetailSheet"_qs))
                return true;
        return false;
    }

    int m_finishedChecks = 0;
    std::unique_ptr<Desk> m_desk;
    std::unique_ptr<OpenWindow<MainWindowView>> m_open;
    bool m_stays = true;
    bool m_hasQuit = false;
};

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
