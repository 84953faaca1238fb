#include "Desk.h"
#include "settings/Settings.h"
#include "ui/PopoverPresenter.h"
#include "ui/qmltypes/AskView.h"
#include "ui/qmltypes/PopoverView.h"
#include "ui/qmltypes/SettingsView.h"

#include <QtGui/QAccessible>

using namespace swabby;

namespace {

void verifyControls(const QQuickWindow &window)
{
    for (QQuickItem *control : controlsOf(window))
        verifyControl(control);
}

/// Everything that a screen reader is told of an item and what lies in it.
QString spokenTexts(QAccessibleInterface *from)
{
    QString texts = from->text(QAccessible::Name) + from->text(QAccessible::Value);
    for (int child = 0; child < from->childCount(); ++child)
        texts += spokenTexts(from->child(child));
    return texts;
}

} // namespace

class SmallWindowsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_desk = std::make_unique<Desk>();
        m_desk->refresh();
        m_opened.clear();
        UserInterfaceContext &context = m_context.emplace(m_desk->context());
        context.dockChoiceChanged = [this] { m_opened += u"dock "_qs; };
        context.openMainWindow = [this] { m_opened += u"main "_qs; };
        context.openAskWindow = [this] { m_opened += u"ask "_qs; };
        context.openSettingsWindow = [this] { m_opened += u"settings "_qs; };
        context.quit = [this] { m_opened += u"quit "_qs; };
    }

    void cleanup()
    {
        m_context.reset();
        m_desk.reset();
    }

    void thePanelLeadsEverywhere()
    {
        const auto open = shown(openPopover(*m_context));
        verifyControls(*open->window);
        QVERIFY(!open->view->isHealthy());
        press(*open->window, open->view->healthWord());
        QVERIFY(open->view->showHealthDetail());
        verifyControls(*open->window);
        open->view->openIssue(0);
        QCOMPARE(m_desk->state.requestedMainSection(), m_desk->state.healthIssues().first().section);
        QVERIFY(!open->view->showHealthDetail());
        QVERIFY(!open->window->isVisible());
        show(*open->window);
        press(*open->window, u"Ask AI"_qs);
        show(*open->window);
        press(*open->window, u"Swabby Check"_qs);
        QCOMPARE(m_desk->state.requestedMainSection(), MainSection::swabbyCheck);
        QCOMPARE(m_opened, u"main ask main "_qs);
    }

    void theItemsMenuIsWorkedByKeyAndPointer()
    {
        const auto open = openItemMenu(*m_context);
        QQuickWindow &menu = *open->window;
        for (const int line : {1, 2, 3, 4, 5}) {
            show(menu);
            menu.requestActivate();
            QVERIFY(QTest::qWaitForWindowActive(&menu));
            for (int presses = 0; presses < 5; ++presses) // to the top, wherever the pointer is
                QTest::keyClick(&menu, Qt::Key_Up);
            for (int presses = 1; presses < line; ++presses)
                QTest::keyClick(&menu, Qt::Key_Down);
            QTest::keyClick(&menu, Qt::Key_Return);
            QVERIFY(!menu.isVisible());
        }
        QCOMPARE(m_opened, u"main ask settings quit "_qs);
        QVERIFY(open->view->isRefreshing());
        show(menu);
        QTest::mouseClick(&menu, Qt::LeftButton, {}, QPoint(40, 20));
        QCOMPARE(m_opened, u"main ask settings quit main "_qs);
        QVERIFY(!menu.isVisible());
        QVERIFY(spokenTexts(QAccessible::queryAccessibleInterface(&menu)).contains(u"Quit Swabby"_qs));
    }

    void theSamePanelIsShownAgainAndFolded()
    {
        PopoverPresenter presenter(*m_context, [this] { return std::make_shared<WindowEngine>(*m_context); });
        presenter.toggle(QRect(100, 0, 20, 20));
        QQuickWindow *panel = presenter.window();
        QVERIFY(panel->isVisible());
        qvariant_cast<PopoverView *>(panel->property("view"))->setShowHealthDetail(true);
        presenter.toggle({});
        QVERIFY(!panel->isVisible());
        presenter.toggle({});
        QCOMPARE(presenter.window(), panel);
        QVERIFY(panel->isVisible());
        QVERIFY(!qvariant_cast<PopoverView *>(panel->property("view"))->showHealthDetail());
    }

    void blanksAreNotAsked()
    {
        const auto open = shown(openAskWindow(*m_context));
        open->view->setQuestion(u"  \n "_qs);
        open->view->ask();
        QVERIFY(!open->view->isAsking());
        open->view->showAnswer(u"Why?"_qs, {u"Mill is busy."_qs, u"mill"_qs, {}});
        show(*open->window);
        verifyControls(*open->window);
        press(*open->window, u"Quit mill"_qs);
        press(*open->window, u"Cancel"_qs);
        QVERIFY(!open->view->confirmation()->isOpen());
    }

    void aKeyIsReadOutToNobody()
    {
        const auto open = shown(openSettingsWindow(*m_context));
        open->view->setProperty("tab", 3);
        show(*open->window);
        QQuickItem *field = nullptr;
        for (QQuickItem *control : controlsOf(*open->window))
            if (control->property("echoMode").isValid())
                field = control;
        QVERIFY(field != nullptr && field->setProperty("text", u"sk-canary"_qs));
        const QString spoken = spokenTexts(QAccessible::queryAccessibleInterface(open->window.get()));
        QVERIFY2(spoken.contains(u"API key"_qs), qPrintable(spoken));
        QVERIFY2(!spoken.contains(u"canary"_qs), qPrintable(spoken));
    }

    void settingsAreWrittenToTheirKeys()
    {
        const auto open = shown(openSettingsWindow(*m_context));
        for (int tab = 0; tab < 4; ++tab) {
            open->view->setProperty("tab", tab);
            show(*open->window);
            verifyControls(*open->window);
        }
        open->view->setProperty("tab", 0);
        press(*open->window, u"Show Swabby in the Dock"_qs);
        open->view->setNumber(u"cpuRed"_qs, 71);
        open->view->setCompact(true);
        QVERIFY(open->view->addExcluded(u"~/Music"_qs));
        QVERIFY(!open->view->addExcluded(u"Music"_qs));
        const Settings settings(*m_desk->state.machine().settings);
        QVERIFY(waitUntil([&] { return !settings.value(setting<"neverRemove">).isEmpty(); }));
        QVERIFY(!settings.value(setting<"showInDock">));
        QCOMPARE(settings.value(setting<"cpuRed">), 70.0);
        QCOMPARE(settings.value(setting<"rowDensity">), RowDensity::compact);
        QCOMPARE(settings.value(setting<"neverRemove">),
                 QStringList{m_desk->state.machine().places.home + u"/Music"_qs});
        QTRY_COMPARE(m_opened, u"dock "_qs);
        open->view->restoreThresholds();
        QVERIFY(waitUntil([&] { return settings.value(setting<"cpuRed">) == 85; }));
        open->view->snooze(30);
        QCOMPARE(m_desk->state.snoozedUntil(), std::optional(1'790'000'000.0 + 1'800));
        open->view->endSnooze();
        QVERIFY(!open->view->isSnoozed());
    }

    void theKeyIsKeptAndTakenAway()
    {
        const auto open = openSettingsWindow(*m_context);
        KeyView *key = open->view->key();
        QVERIFY(waitUntil([&] { return !key->isBusy(); }));
        QVERIFY(!key->isStored());
        key->save(u" a key \n"_qs);
        QVERIFY(waitUntil([&] { return !key->isBusy(); }));
        QVERIFY2(key->isStored(), qPrintable(key->sentence()));
        key->remove();
        QVERIFY(waitUntil([&] { return !key->isBusy(); }));
        QVERIFY2(!key->isStored(), qPrintable(key->sentence()));
    }

private:
    std::unique_ptr<Desk> m_desk;
    std::optional<UserInterfaceContext> m_context;
    QString m_opened;
};

QTEST_MAIN(SmallWindowsTest)
#include "SmallWindowsTest.moc"
