#include "app/ApplicationFlows.h"
#include "app/settings/Settings.h"
#include "engine/state/AppState.h"
#include "support/TemporaryMachine.h"
#include "ui/PopoverPresenter.h"
#include "ui/WindowLibrary.h"
#include "ui/qmltypes/AskView.h"
#include "ui/qmltypes/PopoverView.h"
#include "ui/qmltypes/SettingsView.h"
#include "ui/qmltypes/Theme.h"

#include <QtGui/QAccessible>
#include <QtQuick/QQuickItem>
#include <QtTest/QTest>

using namespace swabby;

namespace {

void collect(QQuickItem *item, QList<QQuickItem *> &controls)
{
    if (!item->isVisible())
        return;
    if (item->activeFocusOnTab())
        controls.append(item);
    for (QQuickItem *child : item->childItems())
        collect(child, controls);
}

QList<QQuickItem *> controlsOf(const QQuickWindow &window)
{
    QList<QQuickItem *> controls;
    collect(window.contentItem(), controls);
    return controls;
}

QQuickItem *controlNamed(const QQuickWindow &window, const QString &name)
{
    for (QQuickItem *control : controlsOf(window))
        if (control->property("name").toString() == name)
            return control;
    return nullptr;
}

void press(const QQuickWindow &window, const QString &name)
{
    QQuickItem *control = controlNamed(window, name);
    QVERIFY2(control != nullptr, qPrintable(name));
    QMetaObject::invokeMethod(control, "trigger");
}

// A picture lays everything out.
void show(QQuickWindow &window)
{
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(!window.grabWindow().isNull());
}

void verifyControls(const QQuickWindow &window)
{
    for (QQuickItem *control : controlsOf(window)) {
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(control);
        const QByteArray what =
            control->metaObject()->className() + control->property("name").toString().toUtf8();
        // A secret's field is kept from screen readers; its frame stands for it.
        constexpr int password = 2;
        if (control->property("echoMode").toInt() == password)
            accessible = QAccessible::queryAccessibleInterface(control->parentItem());
        QVERIFY2(accessible != nullptr && !accessible->text(QAccessible::Name).isEmpty(), what);
        QVERIFY2(control->width() >= 24 && control->height() >= 24, what);
    }
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
        QTest::failOnWarning(QRegularExpression(u".*(Error|qrc:).*"_qs));
        m_folder = std::make_unique<TemporaryMachine>(
            QJsonObject{{u"now"_qs, 1'790'000'000},
                        {u"disk"_qs, QJsonObject{{u"freeBytes"_qs, 1}, {u"totalBytes"_qs, 1000}}}});
        m_folder->setProcesses({"10 1 30 1.0 1000 /Applications/Mill.app/Contents/MacOS/Mill"});
        m_state = std::make_unique<AppState>(m_folder->open(), Record::nothing);
        m_flows = std::make_unique<ApplicationFlows>(*m_state);
        m_state->refresh();
        QVERIFY(waitUntil([this] { return m_state->refreshesApplied() > 0; }));
        m_opened.clear();
        m_context = {.state = m_state.get(),
                     .ai = &m_flows->ai,
                     .cleanup = &m_flows->cleanup,
                     .quitting = &m_flows->quitting,
                     .startup = &m_flows->startup,
                     .quit = [this] { m_opened += u"quit "_qs; },
                     .dockChoiceChanged = [this] { m_opened += u"dock "_qs; },
                     .openMainWindow = [this] { m_opened += u"main "_qs; },
                     .openAskWindow = [this] { m_opened += u"ask "_qs; },
                     .openSettingsWindow = [this] { m_opened += u"settings "_qs; }};
    }

    void cleanup()
    {
        m_flows.reset();
        m_state.reset();
    }

    void thePanelLeadsEverywhere()
    {
        const auto open = openPopover(m_context);
        open->engine->theme->setStill(true);
        show(*open->window);
        verifyControls(*open->window);
        QVERIFY(!open->view->isHealthy());
        press(*open->window, open->view->healthWord());
        QVERIFY(open->view->showHealthDetail());
        verifyControls(*open->window);
        open->view->openIssue(0);
        QCOMPARE(m_state->requestedMainSection(), m_state->healthIssues().first().section);
        QVERIFY(!open->view->showHealthDetail());
        QVERIFY(!open->window->isVisible());
        show(*open->window);
        press(*open->window, u"Ask AI"_qs);
        press(*open->window, u"Swabby Check"_qs);
        QCOMPARE(m_state->requestedMainSection(), MainSection::swabbyCheck);
        QCOMPARE(m_opened, u"main ask main "_qs);
    }

    void theItemsMenuIsWorkedByKeyAndPointer()
    {
        const auto open = openItemMenu(m_context);
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
        PopoverPresenter presenter(m_context,
                                   [] { return std::make_shared<WindowEngine>(ThemeChoice::light); });
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

    void anOfferToQuitAsksBack()
    {
        const auto open = openAskWindow(m_context);
        open->engine->theme->setStill(true);
        show(*open->window);
        open->view->setQuestion(u"  \n "_qs);
        open->view->ask();
        QVERIFY(!open->view->isAsking());
        open->view->showAnswer(u"Why?"_qs, {u"Mill is busy."_qs, u"mill"_qs, {}});
        show(*open->window);
        verifyControls(*open->window);
        press(*open->window, u"Quit mill"_qs);
        QVERIFY(open->view->confirmation()->isOpen());
        QTRY_VERIFY(controlNamed(*open->window, u"Cancel"_qs) != nullptr);
        press(*open->window, u"Cancel"_qs);
        QVERIFY(!open->view->confirmation()->isOpen());
        open->view->showAnswer(u"Why?"_qs, {u"It was that."_qs, u"Gone"_qs, {}});
        press(*open->window, u"Quit Gone"_qs);
        QVERIFY(!open->view->confirmation()->isOpen());
        QCOMPARE(open->view->notice(), u"Gone is not running any more."_qs);
    }

    void aKeyIsReadOutToNobody()
    {
        const auto open = openSettingsWindow(m_context);
        open->engine->theme->setStill(true);
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
        const auto open = openSettingsWindow(m_context);
        open->engine->theme->setStill(true);
        show(*open->window);
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
        const Settings settings(*m_state->machine().settings);
        QVERIFY(waitUntil([&] { return !settings.neverRemove().isEmpty(); }));
        QVERIFY(!settings.showInDock());
        QCOMPARE(settings.cpuRed(), 70.0);
        QCOMPARE(settings.rowDensity(), RowDensity::compact);
        QCOMPARE(settings.neverRemove(), QStringList{m_state->machine().places.home + u"/Music"_qs});
        QTRY_COMPARE(m_opened, u"dock "_qs);
        open->view->restoreThresholds();
        QVERIFY(waitUntil([&] { return settings.cpuRed() == 85; }));
        open->view->snooze(30);
        QCOMPARE(m_state->snoozedUntil(), std::optional(1'790'000'000.0 + 1'800));
        open->view->endSnooze();
        QVERIFY(open->view->snoozed().isEmpty());
    }

    void theKeyIsKeptAndTakenAway()
    {
        const auto open = openSettingsWindow(m_context);
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
    std::unique_ptr<TemporaryMachine> m_folder;
    std::unique_ptr<AppState> m_state;
    std::unique_ptr<ApplicationFlows> m_flows;
    UserInterfaceContext m_context;
    QString m_opened;
};

QTEST_MAIN(SmallWindowsTest)
#include "SmallWindowsTest.moc"
