#include "app/ApplicationFlows.h"
#include "app/settings/Settings.h"
#include "engine/state/AppState.h"
#include "support/TemporaryMachine.h"
#include "ui/WindowLibrary.h"
#include "ui/qmltypes/MainWindowView.h"
#include "ui/qmltypes/Theme.h"

#include <QtGui/QGuiApplication>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QTest>

using namespace swabby;

namespace {

QJsonObject fullMachine()
{
    return {{u"now"_qs, 1'790'000'000},
            {u"cpuTicks"_qs, QJsonArray{QJsonArray{0, 0, 0, 0}, QJsonArray{90, 0, 10, 0}}},
            {u"memory"_qs,
             QJsonObject{{u"pageSize"_qs, 4096}, {u"activePages"_qs, 950}, {u"physicalBytes"_qs, 4'096'000}}},
            {u"disk"_qs, QJsonObject{{u"freeBytes"_qs, 600}, {u"totalBytes"_qs, 1000}}}};
}

QQuickItem *itemNamed(QQuickItem *from, const QString &name)
{
    if (from->isVisible() && from->property("name").toString() == name)
        return from;
    for (QQuickItem *child : from->childItems())
        if (QQuickItem *found = itemNamed(child, name))
            return found;
    return nullptr;
}

} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<TemporaryMachine>(fullMachine());
        m_folder->setProcesses({"10 1 30 1.0 1000 /Applications/Mill.app/Contents/MacOS/Mill"});
        m_state = std::make_unique<AppState>(m_folder->open(), Record::nothing);
        Settings(*m_state->machine().settings).setHasCompletedOnboarding(true);
        m_flows = std::make_unique<ApplicationFlows>(*m_state);
        m_stays = true;
        m_hasQuit = false;
        open();
    }

    void cleanup()
    {
        m_open.reset();
        m_flows.reset();
        m_state.reset();
    }

    void figuresAppearOnceTheyAreKnown()
    {
        QVERIFY(m_open->view->isRefreshing());
        QCOMPARE(gaugeCount(), 0);
        refresh();
        QVERIFY(gaugeCount() >= 3);
        QCOMPARE(m_open->view->state()->property("healthWord").toString(), u"Struggling"_qs);
        QCOMPARE(m_open->window->title(), u"Overview"_qs);
    }

    void theKeyboardGoesEverywhere()
    {
        refresh();
        press(Qt::Key_Down); // the sidebar has the keyboard at first
        QCOMPARE(m_open->view->selection(), MainSection::swabbyCheck);
        press(Qt::Key_Down);
        QCOMPARE(m_open->view->selection(), MainSection::speed);
        press(Qt::Key_Up);
        press(Qt::Key_Up);
        QCOMPARE(m_open->view->selection(), MainSection::overview);
        press(Qt::Key_5, Qt::ControlModifier);
        QCOMPARE(m_open->view->selection(), MainSection::network);
        press(Qt::Key_8, Qt::ControlModifier);
        QCOMPARE(m_open->view->selection(), MainSection::developer);
        press(Qt::Key_R, Qt::ControlModifier);
        QVERIFY(m_open->view->isRefreshing());
        const int before = m_state->refreshesApplied();
        QVERIFY(waitUntil([&] { return m_state->refreshesApplied() > before; }));
        QVERIFY(!m_open->view->isRefreshing());
    }

    void theSheetTakesTheKeyboardAndGivesItBack()
    {
        refresh();
        QQuickItem *button = itemNamed(m_open->window->contentItem(), u"What's going on"_qs);
        QVERIFY(button != nullptr);
        button->forceActiveFocus();
        press(Qt::Key_Space);
        QVERIFY(isShowingDetail());
        for (int tab = 0; tab < 8; ++tab) {
            press(Qt::Key_Tab);
            QVERIFY2(isInSheet(m_open->window->activeFocusItem()), "the keyboard left the sheet");
        }
        press(Qt::Key_2, Qt::ControlModifier); // what lies below does not listen
        QCOMPARE(m_open->view->selection(), MainSection::overview);
        press(Qt::Key_Escape);
        QVERIFY(!isShowingDetail());
        QCOMPARE(m_open->window->activeFocusItem(), button);
        press(Qt::Key_Space);
        press(Qt::Key_Return); // the prominent button
        QVERIFY(!isShowingDetail());
    }

    void theArrowsLeadFromRowToRow()
    {
        m_folder->setProcesses({"10 1 30 1.0 2000 /Applications/Mill.app/Contents/MacOS/Mill",
                                "11 1 20 1.0 1000 /Applications/Loom.app/Contents/MacOS/Loom"});
        refresh();
        m_open->view->select(MainSection::speed);
        const auto control = [this](const QString &name) {
            return itemNamed(m_open->window->contentItem(), name);
        };
        QVERIFY(control(u"Pin app: Mill"_qs) != nullptr);
        control(u"Pin app: Mill"_qs)->forceActiveFocus();
        press(Qt::Key_Down);
        QCOMPARE(m_open->window->activeFocusItem(), control(u"Pin app: Loom"_qs));
        press(Qt::Key_Down); // the last row
        QCOMPARE(m_open->window->activeFocusItem(), control(u"Pin app: Loom"_qs));
        press(Qt::Key_Up);
        press(Qt::Key_Up); // the nearest in the line above is the search
        QCOMPARE(m_open->window->activeFocusItem()->inputMethodQuery(Qt::ImEnabled).toBool(), true);
    }

    void theKeyboardIsNeverLost()
    {
        refresh();
        m_open->view->select(MainSection::speed);
        QQuickItem *pin = itemNamed(m_open->window->contentItem(), u"Pin app: Mill"_qs);
        QVERIFY(pin != nullptr);
        pin->forceActiveFocus();
        press(Qt::Key_4, Qt::ControlModifier); // its page goes
        press(Qt::Key_Down);
        QCOMPARE(m_open->view->selection(), MainSection::network);
    }

    void anIssueLeadsToItsSection()
    {
        refresh();
        m_open->view->setProperty("showHealthDetail", true);
        int memoryIssue = -1;
        const QList<HealthIssue> &issues = m_state->healthIssues();
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
        m_state->requestMainSection(MainSection::battery);
        open();
        QCOMPARE(m_open->view->selection(), MainSection::battery);
        QVERIFY(!m_state->requestedMainSection());
        m_open.reset();
        open();
        QCOMPARE(m_open->view->selection(), MainSection::overview);
    }

    void askingAgainForTheCheckStartsAnotherOne()
    {
        refresh();
        m_state->requestMainSection(MainSection::swabbyCheck);
        CheckView &check = *m_open->view->check();
        QVERIFY(waitUntil([&] { return m_finishedChecks == 1 && !check.isScanning(); }));
        m_state->requestMainSection(MainSection::speed);
        m_state->requestMainSection(MainSection::speed);
        QVERIFY(!check.isScanning());
        m_state->requestMainSection(MainSection::swabbyCheck); // selecting the section begins one anyway
        m_state->requestMainSection(MainSection::swabbyCheck); // and one that runs goes on
        QVERIFY(waitUntil([&] { return m_finishedChecks == 2 && !check.isScanning(); }));
        m_state->requestMainSection(MainSection::swabbyCheck);
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
        press(Qt::Key_Return); // keeps it open
        QVERIFY(!m_hasQuit && m_open->window->isVisible());
        m_open->window->close();
        QQuickItem *button = itemNamed(m_open->window->contentItem(), u"Quit Swabby"_qs);
        QVERIFY(button != nullptr);
        button->forceActiveFocus();
        press(Qt::Key_Space);
        QVERIFY(m_hasQuit);
    }

    void aPinIsStoredAndShown()
    {
        refresh();
        press(Qt::Key_3, Qt::ControlModifier);
        QQuickItem *pin = itemNamed(m_open->window->contentItem(), u"Pin app: Mill"_qs);
        QVERIFY(pin != nullptr);
        pin->forceActiveFocus();
        press(Qt::Key_Space);
        QCOMPARE(m_state->pinnedNames(), std::set<QString>{u"Mill"_qs});
        QVERIFY(itemNamed(m_open->window->contentItem(), u"Unpin app: Mill"_qs) == pin); // and still focused
        QVERIFY(pin->hasActiveFocus());
    }

private:
    void open()
    {
        m_open = openMainWindow({.state = m_state.get(),
                                 .ai = &m_flows->ai,
                                 .cleanup = &m_flows->cleanup,
                                 .quitting = &m_flows->quitting,
                                 .startup = &m_flows->startup,
                                 .theme = ThemeChoice::light,
                                 .staysWithoutWindow = [this] { return m_stays; },
                                 .quit = [this] { m_hasQuit = true; }});
        QVERIFY(m_open != nullptr);
        m_open->engine->theme->setStill(true);
        m_finishedChecks = 0;
        QObject::connect(m_open->view->check(), &CheckView::finished, m_open->view.get(),
                         [this] { ++m_finishedChecks; });
        m_open->window->show();
        m_open->window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(m_open->window.get()));
    }

    void refresh()
    {
        while (m_state->refreshesApplied() < refreshesUntilFigures(m_state->machine())) {
            const int before = m_state->refreshesApplied();
            m_state->refresh();
            QVERIFY(waitUntil([&] { return m_state->refreshesApplied() > before; }));
        }
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(m_open->window.get(), key, modifiers);
    }

    int gaugeCount() const { return m_open->view->state()->gauges()->count(); }
    bool isShowingDetail() const { return m_open->view->property("showHealthDetail").toBool(); }

    static bool isInSheet(const QQuickItem *item)
    {
        for (; item != nullptr; item = item->parentItem())
            if (QString::fromLatin1(item->metaObject()->className()).startsWith(u"HealthDetailSheet"_qs))
                return true;
        return false;
    }

    int m_finishedChecks = 0;
    std::unique_ptr<TemporaryMachine> m_folder;
    std::unique_ptr<AppState> m_state;
    std::unique_ptr<ApplicationFlows> m_flows;
    std::unique_ptr<OpenWindow<MainWindowView>> m_open;
    bool m_stays = true;
    bool m_hasQuit = false;
};

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
