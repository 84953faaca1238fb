#include "Desk.h"
#include "settings/Settings.h"
#include "ui/PopoverPresenter.h"
#include "ui/qmltypes/PopoverView.h"
#include "ui/qmltypes/SettingsView.h"

#include <QtCore/QDir>
#include <QtGui/QAccessible>

using namespace swabby;

namespace {

/// Everything that a screen reader is told of in there.
QList<QAccessibleInterface *> spokenIn(QAccessibleInterface *from)
{
    QList<QAccessibleInterface *> all = {from};
    for (int child = 0; child < from->childCount(); ++child)
        all += spokenIn(from->child(child));
    return all;
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
    }
    void cleanup() { m_desk.reset(); }

    void thePanelLeadsEverywhere()
    {
        const auto open = shown(openPopover(context()));
        QVERIFY(!open->view->isHealthy());
        press(*open->window, open->view->healthWord());
        QVERIFY(open->view->showHealthDetail());
        show(*open->window);
        open->view->openIssue(0);
        QCOMPARE(m_desk->state.requestedMainSection(), m_desk->state.healthIssues().first().section);
        QVERIFY(!open->view->showHealthDetail());
        QVERIFY(!open->window->isVisible());
        for (const QString &button : {u"Ask AI"_qs, u"Swabby Check"_qs}) {
            show(*open->window);
            press(*open->window, button);
        }
        QCOMPARE(m_desk->state.requestedMainSection(), MainSection::swabbyCheck);
        QCOMPARE(m_opened, u"main ask main "_qs);
    }

    void theItemsMenuIsWorkedByKeyPointerAndReader()
    {
        const auto open = openItemMenu(context());
        QQuickWindow &menu = *open->window;
        show(menu);
        QTest::mouseMove(&menu, QPoint(1, 1));
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return})
            QTest::keyClick(&menu, key);
        QVERIFY(!menu.isVisible());
        show(menu);
        QTest::mouseClick(&menu, Qt::LeftButton, {}, QPoint(40, 20));
        QVERIFY(!menu.isVisible());
        QCOMPARE(m_opened, u"ask main "_qs);
        m_opened.clear();
        for (const auto &[line, what] : {std::pair{u"Open Swabby"_qs, u"main "_qs},
                                         {u"Ask AI"_qs, u"ask "_qs},
                                         {u"Settings"_qs, u"settings "_qs},
                                         {u"Refresh now"_qs, QString()},
                                         {u"Quit Swabby"_qs, u"quit "_qs}}) {
            QVERIFY(!open->view->isRefreshing());
            show(menu);
            for (QAccessibleInterface *spoken : spokenIn(QAccessible::queryAccessibleInterface(&menu)))
                if (spoken->text(QAccessible::Name) == line)
                    spoken->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
            QCOMPARE(std::exchange(m_opened, {}), what);
            QCOMPARE(open->view->isRefreshing(), what.isEmpty());
            QVERIFY(!menu.isVisible());
            QVERIFY(waitUntil([&] { return !open->view->isRefreshing(); }));
        }
    }

    void theSamePanelIsShownAgainAndFolded()
    {
        const UserInterfaceContext own = m_desk->context();
        PopoverPresenter presenter(own, [&own] { return std::make_shared<WindowEngine>(own); });
        presenter.toggle(QRect(100, 0, 20, 20));
        QQuickWindow *panel = presenter.window();
        QVERIFY(panel->isVisible());
        auto *view = qvariant_cast<PopoverView *>(panel->property("view"));
        view->setShowHealthDetail(true);
        presenter.toggle({});
        QVERIFY(!panel->isVisible());
        presenter.toggle({});
        QCOMPARE(presenter.window(), panel);
        QVERIFY(panel->isVisible() && !view->showHealthDetail());
        // A press on its item takes its activity and is no wish to see it again.
        QVERIFY(QTest::qWaitForWindowActive(panel, patience));
        connect(panel, &QWindow::visibleChanged, &presenter, [&](bool isVisible) {
            if (!isVisible)
                presenter.toggle({});
        });
        QWindow other;
        other.show();
        other.requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(&other, patience));
        QVERIFY(!panel->isVisible());
    }

    void aKeyIsReadOutToNobody()
    {
        const auto open = shown(openSettingsWindow(context()));
        open->view->setProperty("tab", 3);
        show(*open->window);
        press(*open->window, u"API key"_qs, Qt::Key_S);
        QQuickItem *field = open->window->activeFocusItem();
        QVERIFY(field->property("echoMode").isValid() && field->setProperty("text", u"sk-canary"_qs));
        QString all;
        for (QAccessibleInterface *spoken :
             spokenIn(QAccessible::queryAccessibleInterface(open->window.get())))
            all += spoken->text(QAccessible::Name) + spoken->text(QAccessible::Value);
        QVERIFY2(all.contains(u"API key"_qs) && !all.contains(u"canary"_qs), qPrintable(all));
    }

    void aFieldHasItsMenuAndAFolderIsChosen()
    {
        const QString home = m_desk->state.machine().places.home;
        QVERIFY(QDir(home).mkpath(u"Music/Mine"_qs));
        const auto open = shown(openSettingsWindow(context()));
        press(*open->window, u"Path of a file or folder to keep"_qs, Qt::Key_X);
        const auto choose = [&](int line) {
            QTest::keyClick(open->window.get(), Qt::Key_F10, Qt::ShiftModifier);
            QVERIFY(waitUntil([&] { return textOf(*open->window).contains(u"Select All"_qs); }));
            for (int step = 0; step < line; ++step)
                QTest::keyClick(open->window.get(), Qt::Key_Down);
            QTest::keyClick(open->window.get(), Qt::Key_Return);
        };
        QQuickItem *field = open->window->activeFocusItem();
        const auto text = [&] { return field->property("text").toString(); };
        for (const auto &[line, left] : {std::pair(3, u"x"_qs), {0, QString()}, {2, u"x"_qs}}) {
            choose(line);
            QVERIFY(waitUntil([&] { return text() == left; }));
        }
        press(*open->window, u"Choose folder…"_qs);
        press(*open->window, u"Music"_qs);
        // One that was not looked into yet is not kept.
        QVERIFY(waitUntil([&] { return itemNamed(*open->window, u"Keep this folder"_qs)->isEnabled(); }));
        press(*open->window, u"Keep this folder"_qs);
        const RowModel &kept = *open->view->neverRemove();
        const QModelIndex first = kept.index(0);
        QVERIFY(waitUntil(
            [&] { return kept.data(first, RowModel::entryRole) == QVariant(home + u"/Music"_qs); }));
        // One that is allowed again keeps its place until pointer and keyboard are elsewhere.
        QVERIFY(
            waitUntil([&] { return itemNamed(*open->window, u"Allow cleaning here again"_qs) != nullptr; }));
        show(*open->window); // lays the new row out
        QQuickItem *button = itemNamed(*open->window, u"Allow cleaning here again"_qs);
        const QPoint middle = button->mapToScene({12, 12}).toPoint();
        QTest::mouseMove(open->window.get(), middle - QPoint(1, 1));
        QTest::mouseMove(open->window.get(), middle);
        QTest::mouseClick(open->window.get(), Qt::LeftButton, {}, middle);
        QVERIFY(waitUntil([&] { return kept.data(first, RowModel::leavingRole).toBool(); }));
        field->forceActiveFocus();
        QTest::mouseMove(open->window.get(), {3, 3});
        QVERIFY(waitUntil([&] { return kept.count() == 0; }));
    }

    void settingsAreWrittenToTheirKeys()
    {
        const auto open = shown(openSettingsWindow(context()));
        for (const int tab : {1, 2, 3, 0}) {
            open->view->setProperty("tab", tab);
            show(*open->window);
        }
        press(*open->window, u"Show Swabby in the Dock"_qs);
        open->view->setNumber(u"cpuRed"_qs, 71);
        open->view->setCompact(true);
        open->view->setTheme(static_cast<int>(ThemeChoice::dark));
        QVERIFY(open->view->addExcluded(u"~/Music"_qs));
        QVERIFY(!open->view->addExcluded(u"Music"_qs));
        const Machine &machine = m_desk->state.machine();
        const Settings settings(*machine.settings);
        QVERIFY(waitUntil([&] { return !settings.value(setting<"neverRemove">).isEmpty(); }));
        QVERIFY(!settings.value(setting<"showInDock">));
        QCOMPARE(settings.value(setting<"cpuRed">), 70.0);
        QCOMPARE(settings.value(setting<"rowDensity">), RowDensity::compact);
        QCOMPARE(settings.value(setting<"theme">), ThemeChoice::dark);
        QCOMPARE(settings.value(setting<"neverRemove">), QStringList{machine.places.home + u"/Music"_qs});
        QVERIFY(waitUntil([&] { return m_opened == u"dock "_qs; }));
        open->view->restoreThresholds();
        QVERIFY(waitUntil([&] { return settings.value(setting<"cpuRed">) == 85; }));
        open->view->snooze(30);
        QCOMPARE(m_desk->state.snoozedUntil(), std::optional(1'790'000'000.0 + 1'800));
        open->view->endSnooze();
        QVERIFY(!open->view->isSnoozed());

        // A folder in the file's place cannot be written to.
        m_desk->state.bookkeeping().wait();
        const QString file = machine.places.preferences + u"/com.swabby.app.json"_qs;
        QVERIFY(QFile::remove(file) && QDir().mkdir(file));
        press(*open->window, u"Show Swabby in the Dock"_qs);
        QVERIFY(waitUntil([&] { return textOf(*open->window).contains(u"(it is no regular file)"_qs); }));
    }

    void theKeyIsKeptAndTakenAway()
    {
        const auto open = openSettingsWindow(context());
        KeyView *key = open->view->key();
        const auto isSettled = [&] { return waitUntil([&] { return !key->isBusy(); }); };
        QVERIFY(isSettled() && !key->isStored());
        key->save(u" a key \n"_qs);
        QVERIFY2(isSettled() && key->isStored(), qPrintable(key->sentence()));
        key->remove();
        QVERIFY2(isSettled() && !key->isStored(), qPrintable(key->sentence()));
    }

private:
    UserInterfaceContext context()
    {
        UserInterfaceContext context = m_desk->context();
        const auto note = [this](const QString &what) { return [this, what] { m_opened += what; }; };
        context.dockChoiceChanged = note(u"dock "_qs);
        context.openMainWindow = note(u"main "_qs);
        context.openAskWindow = note(u"ask "_qs);
        context.openSettingsWindow = note(u"settings "_qs);
        context.quit = note(u"quit "_qs);
        return context;
    }

    std::unique_ptr<Desk> m_desk;
    QString m_opened;
};

QTEST_MAIN(SmallWindowsTest)
#include "SmallWindowsTest.moc"
