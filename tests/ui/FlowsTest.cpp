#include "app/ApplicationFlows.h"
#include "app/settings/Settings.h"
#include "engine/state/AppState.h"
#include "support/TemporaryMachine.h"
#include "ui/WindowLibrary.h"
#include "ui/qmltypes/MainWindowView.h"
#include "ui/qmltypes/PopoverView.h"
#include "ui/qmltypes/Theme.h"

#include <QtQuick/QQuickItem>
#include <QtTest/QTest>

using namespace swabby;

namespace {

/// The first visible thing that presents itself by that name.
QQuickItem *itemNamed(QQuickItem *from, const QString &name)
{
    if (!from->isVisible())
        return nullptr;
    if (from->property("name").toString() == name)
        return from;
    for (QQuickItem *child : from->childItems())
        if (QQuickItem *found = itemNamed(child, name))
            return found;
    return nullptr;
}

QQuickItem *itemBeginning(QQuickItem *from, const QString &start)
{
    if (!from->isVisible())
        return nullptr;
    if (from->property("name").toString().startsWith(start))
        return from;
    for (QQuickItem *child : from->childItems())
        if (QQuickItem *found = itemBeginning(child, start))
            return found;
    return nullptr;
}

} // namespace

/// What a person does with the real window, from the first press to what comes of it on the machine.
class FlowsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<TemporaryMachine>(
            QJsonObject{{u"now"_qs, 1'790'000'000},
                        {u"cpuTicks"_qs, QJsonArray{QJsonArray{0, 0, 0, 0}, QJsonArray{90, 0, 10, 0}}},
                        {u"runningApplications"_qs,
                         QJsonArray{QJsonObject{{u"pid"_qs, 10}, {u"terminates"_qs, false}}}}});
        m_folder->setProcesses({"10 1 95 1.0 1000 /Applications/Mill.app/Contents/MacOS/Mill"});
        m_folder->writeFile(u"home/Library/LaunchAgents/org.mill.plist"_qs,
                            "<plist version=\"1.0\"><dict><key>Label</key><string>org.mill</string>"
                            "<key>Program</key><string>/nowhere/mill</string></dict></plist>");
        m_state = std::make_unique<AppState>(m_folder->open(), Record::nothing);
        m_flows = std::make_unique<ApplicationFlows>(*m_state);
    }

    void cleanup()
    {
        m_open.reset();
        m_flows.reset();
        m_state.reset();
    }

    void aRunawayProgramIsQuitFromItsCard()
    {
        open();
        m_open->view->select(MainSection::speed);
        press(u"Quit Mill"_qs); // the card's button; the row's has the same words and does the same gently
        QVERIFY(confirmation().isOpen());
        QCOMPARE(confirmation().text().title, u"Force quit Mill?"_qs);
        QVERIFY(m_folder->events(u"signal"_qs).isEmpty());
        press(u"Force Quit"_qs);
        QVERIFY(!confirmation().isOpen());
        QVERIFY(waitUntil([&] { return m_state->processes().isEmpty(); }));
        QCOMPARE(m_folder->events(u"signal"_qs),
                 (QJsonArray{QJsonObject{{u"pid"_qs, 10}, {u"signal"_qs, 9}}}));
    }

    void aQuitThatDoesNotWorkIsSaidInPlace()
    {
        open();
        m_open->view->quitProcess(10);
        m_folder->setProcesses({"10 1 95 1.0 1000 /Applications/Other.app/Contents/MacOS/Other"});
        m_open->view->coordinator()->confirmation()->cancel();
        m_open->view->quitProcess(10);
        m_open->view->coordinator()->confirmation()->confirm();
        QVERIFY(waitUntil([&] { return !m_open->view->coordinator()->notice().isEmpty(); }));
        QVERIFY(m_folder->events(u"signal"_qs).isEmpty());
        QVERIFY(itemNamed(m_open->window->contentItem(), u"Dismiss"_qs) != nullptr);
        press(u"Dismiss"_qs);
        QVERIFY(m_open->view->coordinator()->notice().isEmpty());
    }

    void aStartupItemIsTurnedOffAndOnAgain()
    {
        open();
        m_open->view->select(MainSection::startup);
        press(u"Disable: org.mill"_qs);
        QVERIFY(waitUntil([&] { return m_state->loginItems().isEmpty(); }));
        QVERIFY(waitUntil([&] {
            return itemNamed(m_open->window->contentItem(), u"Turn on again: org.mill"_qs) != nullptr;
        }));
        const QString definition = m_folder->home() + u"/Library/LaunchAgents/org.mill.plist"_qs;
        QVERIFY(!QFile::exists(definition));
        press(u"Turn on again: org.mill"_qs);
        QVERIFY(waitUntil([&] { return QFile::exists(definition); }));
        QVERIFY(waitUntil([&] { return !m_state->loginItems().isEmpty(); }));
    }

    void somethingIsExplainedAndTheAnswerOnlyOffers()
    {
        open();
        m_open->view->select(MainSection::startup);
        press(u"What is this? org.mill"_qs);
        ExplainView &explanation = *m_open->view->coordinator()->explanation();
        QVERIFY(explanation.isOpen());
        QVERIFY(waitUntil([&] { return !explanation.isLoading(); }));
        QCOMPARE(explanation.text(), u"Couldn't get an explanation right now."_qs);
        QCOMPARE(explanation.recommendation(), u"Recommended: Force Quit"_qs); // its program is gone
        QTest::keyClick(m_open->window.get(), Qt::Key_Escape);
        QVERIFY(!explanation.isOpen());
        QCOMPARE(m_state->loginItems().size(), 1);
    }

    void aCheckFindsRemovesAndPutsBack()
    {
        m_folder->addTool(u"/usr/bin/du"_qs, "[ -e \"$2\" ] && echo 2000 x");
        for (const char *name : {"a.bin", "b.bin"})
            m_folder->writeFile(u"home/Downloads/"_qs + QLatin1String(name), QByteArray(9'000, 'x'));
        m_folder->writeFile(u"home/Library/Caches/pip/x"_qs, "x");
        open();
        m_open->view->openCheck();
        CheckView &check = *m_open->view->check();
        QVERIFY(waitUntil([&] { return !check.isScanning() && check.canRemove(); }));
        QCOMPARE(check.removeLabel(), u"Remove Everything"_qs);
        press(u"Show what is behind it: a.bin ×2"_qs);
        QVERIFY(waitUntil([&] {
            return itemNamed(m_open->window->contentItem(), u"Show in folder: b.bin"_qs) != nullptr;
        }));
        press(u"Hide what is behind it: a.bin ×2"_qs);
        press(u"Coding tool cache (pip)"_qs); // its box
        QCOMPARE(check.removeLabel(), u"Remove 1 Items"_qs);
        press(u"Remove 1 Items"_qs);
        QCOMPARE(confirmation().text().title, u"Remove a.bin ×2?"_qs);
        QCOMPARE(confirmation().text().details.size(), 2);
        QCOMPARE(confirmation().text().details.first().fate, u"stays"_qs);
        QTest::keyClick(m_open->window.get(), Qt::Key_Return); // on Cancel's side
        QVERIFY(!confirmation().isOpen());
        QVERIFY(m_folder->events(u"trash"_qs).isEmpty());
        press(u"Remove 1 Items"_qs);
        press(u"Remove"_qs);
        QVERIFY(waitUntil([&] { return m_state->lastCleanupSuccess().has_value(); }));
        QCOMPARE(m_folder->events(u"trash"_qs).size(), 1);
        QVERIFY(m_folder->events(u"delete"_qs).isEmpty());
        press(u"Put back"_qs);
        QVERIFY(waitUntil([&] { return m_folder->events(u"putBack"_qs).size() == 1; }));
        QVERIFY(QFile::exists(m_folder->home() + u"/Downloads/a.bin"_qs));
        QVERIFY(QFile::exists(m_folder->home() + u"/Downloads/b.bin"_qs));
    }

    void everyPathThatGoesCanBeReachedInTheQuestion()
    {
        open();
        std::vector<RemovableItem> items;
        for (int group = 0; group < 500; ++group)
            items.push_back(RemovableItem::fromDuplicate(
                {{"/kept/" + std::to_string(group), "/gone/copy " + std::to_string(group)}, 5'000}));
        confirmation().askToRemove(items);
        QCOMPARE(confirmation().details()->count(), 1'000);
        const auto isThere = [&](int group) {
            return itemNamed(m_open->window->contentItem(),
                             u"Show in folder: copy "_qs + QString::number(group)) != nullptr;
        };
        QVERIFY(waitUntil([&] { return isThere(0); }));
        QVERIFY(!isThere(499));
        QTest::keyClick(m_open->window.get(), Qt::Key_End);
        QVERIFY(waitUntil([&] { return isThere(499); }));
        QTest::keyClick(m_open->window.get(), Qt::Key_PageUp);
        QVERIFY(waitUntil([&] { return isThere(490); }));
        QTest::keyClick(m_open->window.get(), Qt::Key_Return); // still on Cancel's side
        QVERIFY(!confirmation().isOpen());
    }

    void aRowsFurtherActionsAreChosenWithTheKeyboard()
    {
        open();
        m_open->view->select(MainSection::startup);
        press(u"More: org.mill"_qs);
        QTest::keyClick(m_open->window.get(), Qt::Key_Return); // the first one shows the file
        QVERIFY(waitUntil([&] { return m_folder->events(u"reveal"_qs).size() == 1; }));
        press(u"More: org.mill"_qs);
        QTest::keyClick(m_open->window.get(), Qt::Key_Escape);
        QTest::keyClick(m_open->window.get(), Qt::Key_Return); // opens it again: the button has the keyboard
        QTest::keyClick(m_open->window.get(), Qt::Key_Down);
        QTest::keyClick(m_open->window.get(), Qt::Key_Return);
        QVERIFY(waitUntil([&] { return m_folder->events(u"open"_qs).size() == 1; }));
    }

    void aChipOfThePanelLeadsToItsSection()
    {
        open();
        bool hasOpened = false;
        UserInterfaceContext context = this->context();
        context.openMainWindow = [&] { hasOpened = true; };
        m_open.reset();
        const auto panel = openPopover(context);
        QVERIFY(panel != nullptr);
        panel->engine->theme->setStill(true);
        panel->window->show();
        QQuickItem *chip = nullptr;
        QVERIFY(waitUntil([&] {
            chip = itemBeginning(panel->window->contentItem(), u"Storage, "_qs);
            return chip != nullptr;
        }));
        chip->forceActiveFocus();
        QMetaObject::invokeMethod(chip, "trigger");
        QVERIFY(hasOpened);
        QCOMPARE(m_state->requestedMainSection(), MainSection::storage);
        open();
        QCOMPARE(m_open->view->selection(), MainSection::storage);
        QVERIFY(!m_state->requestedMainSection().has_value());
    }

    void theWelcomeIsShownUntilItIsFinished()
    {
        Settings settings(*m_state->machine().settings);
        settings.setHasCompletedOnboarding(false);
        open();
        QVERIFY(m_open->view->property("showWelcome").toBool());
        m_open.reset();
        open();
        QVERIFY(m_open->view->property("showWelcome").toBool());
        m_open->view->finishWelcome();
        QVERIFY(waitUntil([&] { return settings.hasCompletedOnboarding(); }));
        m_open.reset();
        open();
        QVERIFY(!m_open->view->property("showWelcome").toBool());
    }

private:
    void open()
    {
        if (m_state->refreshesApplied() == 0) {
            Settings(*m_state->machine().settings)
                .setHasCompletedOnboarding(QString::fromLatin1(QTest::currentTestFunction()) !=
                                           u"theWelcomeIsShownUntilItIsFinished"_qs);
            for (int refreshes = 1; refreshes <= refreshesUntilFigures(m_state->machine()); ++refreshes) {
                m_state->refresh();
                QVERIFY(waitUntil([&] { return m_state->refreshesApplied() == refreshes; }));
            }
        }
        m_open = openMainWindow(context());
        QVERIFY(m_open != nullptr);
        m_open->engine->theme->setStill(true);
        m_open->window->show();
        m_open->window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(m_open->window.get()));
    }

    UserInterfaceContext context() const
    {
        return {.state = m_state.get(),
                .ai = &m_flows->ai,
                .cleanup = &m_flows->cleanup,
                .quitting = &m_flows->quitting,
                .startup = &m_flows->startup,
                .theme = ThemeChoice::light};
    }

    /// Presses the control as somebody with a keyboard does.
    void press(const QString &name)
    {
        QQuickItem *item = nullptr;
        QVERIFY2(
            waitUntil([&] { return (item = itemNamed(m_open->window->contentItem(), name)) != nullptr; }),
            qPrintable(name));
        item->forceActiveFocus();
        QTest::keyClick(m_open->window.get(), Qt::Key_Space);
    }

    ConfirmationView &confirmation() { return *m_open->view->coordinator()->confirmation(); }

    std::unique_ptr<TemporaryMachine> m_folder;
    std::unique_ptr<AppState> m_state;
    std::unique_ptr<ApplicationFlows> m_flows;
    std::unique_ptr<OpenWindow<MainWindowView>> m_open;
};

QTEST_MAIN(FlowsTest)
#include "FlowsTest.moc"
