#include "WindowTest.h"
#include "settings/Settings.h"
#include "support/LoopbackServer.h"
#include "support/Table.h"
#include "ui/presentation/Sections.h"
#include "ui/qmltypes/AskView.h"
#include "ui/qmltypes/PopoverView.h"
#include "ui/qmltypes/SettingsView.h"

#include <QtCore/QDir>
#include <QtCore/QJsonDocument>
#include <QtGui/QGuiApplication>

using namespace swabby;

namespace {

const QByteArray mill = "10 1 95 1.0 %1 /Applications/Mill.app/Contents/MacOS/Mill";
const QString pip = u"Coding tool cache (pip)"_qs;

} // namespace

/// What a person does with the real windows, from the first press to what comes of it on the machine.
class WindowFlowsTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init() { beginWith({}); }
    void cleanup() { end(); }

    void aRunawayProgramIsQuitFromItsCard()
    {
        openAt(MainSection::speed);
        m_desk->state.machine().clock->advance(900);
        m_desk->folder.setProcesses({QByteArray(mill).replace("%1", "90000")});
        m_desk->refresh();
        QCOMPARE(view().state()->leaks()->count(), 1);
        pressHere(u"Urgent: Mill is using…"_qs); // which comes behind the memory
        pressHere(u"Quit Mill"_qs); // the card's button; the row's has the same words and does it gently
        QVERIFY(confirmation().isOpen());
        QCOMPARE(confirmation().text().title, u"Force quit Mill?"_qs);
        QVERIFY(events(u"signal"_qs).isEmpty());
        pressHere(u"Force Quit"_qs);
        QVERIFY(!confirmation().isOpen());
        QVERIFY(waitUntil([&] { return m_desk->state.processes().isEmpty(); }));
        QCOMPARE(events(u"signal"_qs), (QJsonArray{QJsonObject{{u"pid"_qs, 10}, {u"signal"_qs, 9}}}));
        leavePage();
        QVERIFY(waitUntil([&] { return view().state()->leaks()->count() == 0; }));
    }

    void nobodyIsOfferedTheEndOfTheirSession()
    {
        const QString dock = u"10 1 95 1.0 %1 /System/Library/CoreServices/Dock.app/Contents/MacOS/Dock"_qs;
        m_desk->folder.setProcesses({dock.arg(1000).toUtf8()});
        m_desk->refresh();
        m_desk->state.machine().clock->advance(900);
        m_desk->folder.setProcesses({dock.arg(90'000'000).toUtf8()});
        for (const MainSection section :
             {MainSection::overview, MainSection::speed, MainSection::swabbyCheck}) {
            openAt(section);
            QCOMPARE(view().state()->leaks()->count(), 1);
            QVERIFY(m_desk->state.processes().first().holdsSession);
            QVERIFY(waitUntil([&] { return !view().check()->isScanning(); }));
            view().explainProcess(10);
            QVERIFY(says(u"Safe to Keep Running"_qs));
            for (const char *offer : {"Quit…", "Force Quit…", "More…"})
                QVERIFY2(item(QString::fromUtf8(offer)) == nullptr, offer);
        }
        AskView ask(m_desk->context());
        ask.showAnswer(u"Why?"_qs, {u"Dock is busy."_qs, u"dock"_qs, {}});
        QCOMPARE(ask.quitLabel(), QString());
        view().quitProcess(10); // as from a row of before
        QVERIFY(!confirmation().isOpen());
        QCOMPARE(view().coordinator()->notice(),
                 u"Dock keeps your session running, so it is not quit here."_qs);
        // That another one has ended meanwhile takes nothing of it back.
        Q_EMIT view().coordinator()->confirmation()->quitEnded({}, u"Mill is still running."_qs);
        QVERIFY(!view().coordinator()->notice().isEmpty());
    }

    void aFailureIsSaidInPlace_data()
    {
        QTest::addColumn<QByteArray>("line");
        for (const QByteArray &line : fixture(u"ui/failures_are_said_in_place.txt"_qs).trimmed().split('\n'))
            QTest::newRow(line.first(line.indexOf('|', line.indexOf('|') + 1))) << line;
    }
    // The section, what is pressed there, the last of it after the machine has changed, what is said then,
    // and what is listed as before.
    void aFailureIsSaidInPlace()
    {
        QFETCH(QByteArray, line);
        const Cells row(line);
        QStringList pressed = row.text(1).split(u"; "_qs);
        const QString said = row.text(2);
        beginWith({{u"unsignalablePids"_qs, QJsonArray{10}}});
        const QString builds = u"Library/Developer/Xcode/DerivedData"_qs;
        m_desk->folder.writeFile(u"home/"_qs + builds + u"/x"_qs, "x");
        openAt(*sectionFrom(row.text(0)));
        const QString last = pressed.takeLast();
        for (const QString &name : pressed)
            pressHere(name);
        QVERIFY(comes(last));
        QVERIFY(QFile::remove(agent()));
        // Others in their place, made beside them so that they cannot have the same number.
        const QDir home(m_desk->folder.home());
        m_desk->folder.writeFile(u"home/other/x"_qs, "x");
        for (const QString &place : {u"Library/Caches/pip"_qs, builds}) {
            QVERIFY(QDir(home.filePath(place)).removeRecursively());
            QVERIFY(QFile::link(home.filePath(u"other"_qs), home.filePath(place)));
        }
        pressHere(last);
        QVERIFY2(says(said), qPrintable(textOf(window())));
        QVERIFY(!confirmation().isOpen());
        QCOMPARE(QGuiApplication::topLevelWindows().size(), 1);
        for (const char *kind : {"signal", "terminate", "delete", "trash"})
            QVERIFY2(events(QLatin1String(kind)).isEmpty(), kind);
        if (item(u"Dismiss"_qs) != nullptr) {
            const MainSection here = view().selection();
            if (here == MainSection::startup)
                view().select(MainSection::overview);
            else
                pressHere(u"Dismiss"_qs);
            QVERIFY(!textOf(window()).contains(said));
            view().select(here);
        }
        QVERIFY2(comes(row.text(3)), qPrintable(textOf(window())));
    }

    void whatHasToBeAllowedIsSaidWhereItIsMissing_data()
    {
        QTest::addColumn<QByteArray>("line");
        for (const QByteArray &line : fixture(u"ui/what_has_to_be_allowed.txt"_qs).trimmed().split('\n'))
            QTest::newRow(line) << line;
    }
    // The page, what is not allowed, what is pressed there, what is said then, the button beside it, and what
    // of the system's settings that opens.
    void whatHasToBeAllowedIsSaidWhereItIsMissing()
    {
        QFETCH(QByteArray, line);
        const Cells row(line);
        beginWith({{u"notAllowed"_qs, QJsonDocument::fromJson(row[1]).array()},
                   {u"trashRefuses"_qs, QJsonArray{QDir::tempPath()}}});
        m_desk->folder.writeFile(u"home/.Trash/x"_qs, "x");
        m_desk->folder.writeFile(u"home/Applications/Loom.app/Contents/Info.plist"_qs,
                                 "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key>"
                                 "<string>org.example.loom</string></dict></plist>");
        m_desk->folder.addTool(u"/usr/bin/osascript"_qs, "echo 'error: may not. (-1743)' >&2");
        std::unique_ptr<OpenWindow<SettingsView>> settings;
        if (const auto section = sectionFrom(row.text(0))) {
            openAt(*section);
        } else {
            settings = shown(openSettingsWindow(context()));
            settings->view->setProperty("tab", 1);
        }
        QQuickWindow &here = settings ? *settings->window : window();
        for (const QString &step : row.text(2).split(u"; "_qs, Qt::SkipEmptyParts))
            press(here, step);
        QVERIFY2(waitUntil([&] { return textOf(here).contains(row.text(3)); }), qPrintable(textOf(here)));
        for (const char *button : {"Open Full Disk Access", "Open App Management", "Open Automation"})
            if (row.text(4) != QLatin1String(button))
                QVERIFY2(itemNamed(here, QLatin1String(button)) == nullptr, button);
        if (row.text(4).isEmpty())
            return;
        press(here, row.text(4));
        QVERIFY(waitUntil([&] { return !events(u"open"_qs).isEmpty(); }));
        QCOMPARE(events(u"open"_qs), QJsonArray{u"x-apple.systempreferences:com.apple."_qs + row.text(5)});
    }

    void aStartupItemIsExplainedShownAndTurnedOffAndOnAgain()
    {
        openAt(MainSection::startup);
        pressHere(u"What is this? org.mill"_qs);
        ExplainView &explanation = *view().coordinator()->explanation();
        QVERIFY(explanation.isOpen());
        QVERIFY(waitUntil([&] { return !explanation.isLoading(); }));
        QVERIFY(!explanation.text().isEmpty());
        QCOMPARE(explanation.subject().recommendation, u"Recommended: Force Quit"_qs); // its program is gone
        type(Qt::Key_Escape);
        QVERIFY(!explanation.isOpen());
        QCOMPARE(m_desk->state.loginItems().size(), 1);

        // Its further actions are chosen with the keyboard.
        pressHere(u"More: org.mill"_qs);
        type(Qt::Key_Return); // the first one shows the file
        QVERIFY(waitUntil([&] { return events(u"reveal"_qs).size() == 1; }));
        pressHere(u"More: org.mill"_qs);
        type(Qt::Key_Escape);
        type(Qt::Key_Return); // opens it again: the button has the keyboard
        type(Qt::Key_Down);
        type(Qt::Key_Return);
        QVERIFY(waitUntil([&] { return events(u"open"_qs).size() == 1; }));

        pressHere(u"Disable: org.mill"_qs);
        QVERIFY(waitUntil([&] { return m_desk->state.loginItems().isEmpty(); }));
        QVERIFY(!QFile::exists(agent()));
        pressHere(u"Turn on again: org.mill"_qs);
        QVERIFY(waitUntil([&] { return QFile::exists(agent()); }));
        QVERIFY(waitUntil([&] { return !m_desk->state.loginItems().isEmpty(); }));
    }

    void aCheckFindsRemovesAndPutsBack()
    {
        for (const char *name : {"a.bin", "b.bin"})
            m_desk->folder.writeFile(u"home/Downloads/"_qs + QLatin1String(name), QByteArray(9'000, 'x'));
        openAt(MainSection::overview);
        view().openCheck();
        CheckView &check = *view().check();
        QVERIFY(waitUntil([&] { return !check.isScanning() && check.canRemove(); }));
        QCOMPARE(check.removeLabel(), u"Remove Everything"_qs);
        pressHere(u"Quit: Mill"_qs);
        pressHere(u"Quit"_qs);
        leavePage();
        QVERIFY(goes(u"Quit: Mill"_qs));
        pressHere(u"Show what is behind it: a.bin ×2"_qs);
        QVERIFY(comes(u"Show in folder: b.bin"_qs));
        pressHere(u"Hide what is behind it: a.bin ×2"_qs);
        pressHere(pip); // its box
        QCOMPARE(check.removeLabel(), u"Remove 1 Items"_qs);
        pressHere(u"Remove 1 Items"_qs);
        QCOMPARE(confirmation().text().title, u"Remove a.bin ×2?"_qs);
        QCOMPARE(confirmation().lines()->count(), 2);
        QVERIFY(says(QRegularExpression(u"b.bin\nto the Trash[^\n]*\na.bin\nstays"_qs)));
        type(Qt::Key_Return); // on Cancel's side
        QVERIFY(!confirmation().isOpen());
        QVERIFY(events(u"trash"_qs).isEmpty());
        pressHere(u"Remove 1 Items"_qs);
        pressHere(u"Remove"_qs);
        QVERIFY(waitUntil([&] { return m_desk->state.lastCleanup().has_value(); }));
        QCOMPARE(events(u"trash"_qs).size(), 1);
        QVERIFY(events(u"delete"_qs).isEmpty());
        pressHere(u"Put back"_qs);
        QVERIFY(waitUntil([&] { return events(u"putBack"_qs).size() == 1; }));
        QVERIFY(has(u"Downloads/a.bin"_qs) && has(u"Downloads/b.bin"_qs));
    }

    void aFigureCoversWhatItSaysAndFollowsARemoval()
    {
        // Each thing in a folder takes 2 MB there.
        m_desk->folder.addTool(u"/usr/bin/du"_qs,
                               "[ -e \"$2\" ] && echo $((2000 * $(ls -A \"$2\" | wc -l))) x");
        for (const char *name : {"Downloads/a.bin", "Downloads/b.bin", ".Trash/old"})
            m_desk->folder.writeFile(u"home/"_qs + QLatin1String(name), QByteArray(9'000, 'x'));
        const auto saysLine = [this](const QString &words) {
            return waitUntil([&] { return textOf(window()).split(u'\n').contains(words); });
        };
        openAt(MainSection::storage);
        QVERIFY(saysLine(u"4.1 MB of what is used can be cleared: caches"_qs));
        pressHere(u"Scan for duplicates: Duplicates"_qs);
        QVERIFY(saysLine(u"4.1 MB of what is used can be cleared: caches and duplicates"_qs));
        pressHere(u"a.bin ×2"_qs);
        pressHere(pip);
        QCOMPARE(view().storage()->queueText(), u"Cleanup Queue · 2 items · 2.1 MB"_qs);
        pressHere(u"Review and clean up"_qs);
        pressHere(u"Remove All"_qs);
        QVERIFY(saysLine(u"2 MB of what is used can be cleared: caches"_qs));
        QVERIFY(saysLine(u"4.1 MB of what is used can be cleared: caches"_qs)); // two things in the Trash
        pressHere(u"Put back"_qs);
        QVERIFY(saysLine(u"2.1 MB of what is used can be cleared: caches and duplicates"_qs));

        view().openCheck();
        QVERIFY(saysLine(u"2.1 MB can be cleared: caches and duplicates"_qs));
        pressHere(u"Remove Everything"_qs);
        pressHere(u"Remove All"_qs);
        QVERIFY(saysLine(u"Removed since: 2 items · 2.1 MB"_qs));
        pressHere(u"Put back"_qs);
        QVERIFY(saysLine(u"9 KB can be cleared: duplicates"_qs));
        QVERIFY(saysLine(u"Removed since: 1 item · 2 MB"_qs));
    }

    void aSearchGoesThroughEverythingThatRuns()
    {
        QList<QByteArray> rows = {QByteArray(mill).replace("%1", "1000")};
        for (int pid = 20; pid < 80; ++pid)
            rows.append(QByteArray::number(pid) + " 1 5 1.0 1000 /opt/spindle" + QByteArray::number(pid));
        m_desk->folder.setProcesses(rows + QList<QByteArray>{"99 1 0.0 0.0 10 /opt/Quiet Weaver"});
        openAt(MainSection::speed);
        QVERIFY(item(u"Quit Quiet Weaver"_qs) == nullptr);
        for (const auto &[text, found, more] :
             {std::tuple{u"weav"_qs, u"Quit Quiet Weaver"_qs, QString()},
              {u"spindle"_qs, u"Quit spindle69"_qs, u"10 more — type more of the name."_qs}}) {
            view().state()->setSearchText(text);
            QVERIFY2(comes(found), qPrintable(found));
            QCOMPARE(view().state()->moreFound(), more);
        }
        view().state()->setSearchText(u"weav"_qs);
        pressHere(u"Quit Quiet Weaver"_qs);
        QVERIFY(confirmation().isOpen());
        view().state()->setSearchText({});
        QCOMPARE(view().state()->processes()->count(), 8);
    }

    void anAppIsUninstalledWithWhatItLeavesBehind()
    {
        m_desk->folder.writeFile(u"home/Applications/Loom.app/Contents/Info.plist"_qs,
                                 "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key>"
                                 "<string>org.example.loom</string></dict></plist>");
        const QStringList pieces = {u"Applications/Loom.app"_qs, u"Library/Application Support/Loom"_qs,
                                    u"Library/Preferences/org.example.loom.plist"_qs};
        m_desk->folder.writeFile(u"home/"_qs + pieces.at(1) + u"/notes"_qs, "x");
        m_desk->folder.writeFile(u"home/"_qs + pieces.at(2), "x");
        openAt(MainSection::storage);
        pressHere(u"Show installed apps: App Uninstaller"_qs);
        pressHere(u"Remove: Loom"_qs);
        QVERIFY(waitUntil([&] { return confirmation().isOpen(); }));
        QCOMPARE(confirmation().lines()->count(), pieces.size());
        for (const QString &piece : pieces)
            QVERIFY2(comes(u"Show in folder: "_qs + QFileInfo(piece).fileName()), qPrintable(piece));
        pressHere(u"Remove"_qs);
        QVERIFY(waitUntil([&] { return m_desk->state.lastCleanup().has_value(); }));
        QVERIFY(says(u"Removed 1 item — freed 6.1 MB"_qs));
        for (const QString &piece : pieces)
            QVERIFY2(!has(piece) && has(u".Trash/"_qs + QFileInfo(piece).fileName()), qPrintable(piece));
        QVERIFY(says(u"No longer in this list"_qs)); // the keyboard is still there
        leavePage();
        QVERIFY(goes(u"Remove: Loom"_qs));
        pressHere(u"Put back"_qs);
        QVERIFY(waitUntil([&] { return events(u"putBack"_qs).size() == pieces.size(); }));
        for (const QString &piece : pieces)
            QVERIFY2(has(piece), qPrintable(piece));
        QVERIFY(comes(u"Remove: Loom"_qs));
    }

    void anAppThatRunsIsQuitWhereItIsToBeRemoved()
    {
        beginWith({{u"runningApplications"_qs,
                    QJsonArray{QJsonObject{{u"pid"_qs, 10}, {u"bundleID"_qs, u"org.example.mill"_qs}}}}});
        m_desk->folder.writeFile(u"home/Applications/Mill.app/Contents/Info.plist"_qs,
                                 "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key>"
                                 "<string>org.example.mill</string></dict></plist>");
        openAt(MainSection::storage);
        pressHere(u"Show installed apps: App Uninstaller"_qs);
        QVERIFY(comes(u"Quit: Mill"_qs));
        QVERIFY(says(u"Running — quit it first"_qs));
        QVERIFY(!item(u"Remove: Mill"_qs)->isEnabled());
        pressHere(u"Quit: Mill"_qs);
        pressHere(u"Quit"_qs);
        QVERIFY(goes(u"Quit: Mill"_qs));
        QCOMPARE(events(u"terminate"_qs), QJsonArray{10});
        QVERIFY(item(u"Remove: Mill"_qs)->isEnabled());
    }

    void theProgramThatTheAnswerBlamesIsQuit()
    {
        const LoopbackServer server(always(
            httpAnswer(200, modelReply(uR"({"explanation": "Mill is busy.", "appToQuit": "mill"})"_qs))));
        qputenv("SWABBY_AI_PROXY_URL", server.url().toEncoded());
        beginWith({{u"runningApplications"_qs, QJsonArray{QJsonObject{{u"pid"_qs, 10}}}}});
        qunsetenv("SWABBY_AI_PROXY_URL");
        m_desk->refresh();
        const auto ask = shown(openAskWindow(m_desk->context()));
        for (const char letter : {'W', 'h', 'y', '?'})
            QTest::keyClick(ask->window.get(), letter); // the field has the keyboard
        QTest::keyClick(ask->window.get(), Qt::Key_Return);
        press(*ask->window, u"Quit mill"_qs);
        press(*ask->window, u"Cancel"_qs);
        QVERIFY(!ask->view->confirmation()->isOpen());
        show(*ask->window);
        press(*ask->window, u"Quit mill"_qs);
        QVERIFY(server.requests().value(0).prompt().contains(u"\"Why?\""_qs));
        QVERIFY(textOf(*ask->window).contains(u"Mill is busy."_qs));
        QVERIFY(events(u"terminate"_qs).isEmpty());
        press(*ask->window, u"Quit"_qs);
        QVERIFY(waitUntil([&] { return m_desk->state.processes().isEmpty(); }));
        QCOMPARE(events(u"terminate"_qs), QJsonArray{10});
        QVERIFY(events(u"signal"_qs).isEmpty());
        const auto isSaid = [&](const QString &words) { return textOf(*ask->window).contains(words); };
        press(*ask->window, u"Quit mill"_qs); // it runs on, on none of the lists
        press(*ask->window, u"Cancel"_qs);
        m_desk->folder.setProcesses({"20 1 40 1.0 1000 /Applications/Loom.app/Contents/MacOS/Loom"});
        QVERIFY(!isSaid(u"not running any more"_qs));
        press(*ask->window, u"Quit mill"_qs);
        QVERIFY(waitUntil([&] { return isSaid(u"mill is not running any more."_qs); }));
        QVERIFY(!ask->view->confirmation()->isOpen());
    }

    void askingTwiceOpensOneWindow()
    {
        WindowLibrary library(m_desk->context());
        library.openMainWindow();
        auto *main = qobject_cast<QQuickWindow *>(QGuiApplication::topLevelWindows().value(0));
        QVERIFY(main != nullptr);
        QWindow *ask = nullptr;
        for (int times = 0; times < 2; ++times) {
            main->requestActivate();
            QVERIFY(QTest::qWaitForWindowActive(main, patience));
            press(*main, u"Ask AI"_qs);
            QVERIFY(waitUntil([&] { return QGuiApplication::focusWindow() != main; }));
            QVERIFY(ask == nullptr || ask == QGuiApplication::focusWindow());
            ask = QGuiApplication::focusWindow();
            QCOMPARE(ask->title(), u"Ask Swabby"_qs);
            QCOMPARE(QGuiApplication::topLevelWindows().size(), 2);
        }
    }

    void everyPathThatGoesCanBeReachedInTheQuestion()
    {
        open();
        std::vector<RemovableItem> items;
        for (int group = 0; group < 500; ++group)
            items.push_back(RemovableItem::of(DuplicateGroup{
                {"/kept/" + std::to_string(group), "/gone/copy " + std::to_string(group)}, 5'000}));
        confirmation().askToRemove(items);
        QCOMPARE(confirmation().lines()->count(), 500);
        pressHere(u"Show what is behind it: 0 ×2"_qs);
        QVERIFY(comes(u"Show in folder: copy 0"_qs));
        QVERIFY(item(u"Show what is behind it: 499 ×2"_qs) == nullptr);
        type(Qt::Key_End);
        pressHere(u"Show what is behind it: 499 ×2"_qs);
        QVERIFY(comes(u"Show in folder: copy 499"_qs));
        type(Qt::Key_PageUp);
        QVERIFY(comes(u"Show what is behind it: 490 ×2"_qs));
        type(Qt::Key_Escape);
        QVERIFY(!confirmation().isOpen());
    }

    void aChipOfThePanelLeadsToItsSection()
    {
        m_desk->refresh();
        bool hasOpened = false;
        UserInterfaceContext context = m_desk->context();
        context.openMainWindow = [&] { hasOpened = true; };
        const auto panel = shown(openPopover(context));
        press(*panel->window, u"Storage, …"_qs);
        QVERIFY(hasOpened);
        for (const MainSection section : {MainSection::storage, MainSection::overview}) { // asked for once
            m_open.reset();
            open();
            QCOMPARE(view().selection(), section);
        }
    }

    void theWelcomeIsShownUntilItIsFinished()
    {
        Settings settings(*m_desk->state.machine().settings);
        settings.store(setting<"hasCompletedOnboarding">, false);
        for (int times = 0; times < 2; ++times) {
            m_open.reset();
            openAt(MainSection::overview);
            QVERIFY(item(u"Get started"_qs) != nullptr);
        }
        pressHere(u"Get started"_qs);
        QVERIFY(waitUntil([&] { return settings.value(setting<"hasCompletedOnboarding">); }));
        m_open.reset();
        open();
        QVERIFY(item(u"Get started"_qs) == nullptr);
    }

private:
    void beginWith(const QJsonObject &facts)
    {
        begin(facts);
        m_desk->folder.writeFile(u"home/Library/LaunchAgents/org.mill.plist"_qs,
                                 "<plist version=\"1.0\"><dict><key>Label</key><string>org.mill</string>"
                                 "<key>Program</key><string>/nowhere/mill</string></dict></plist>");
        m_desk->folder.writeFile(u"home/Library/Caches/pip/x"_qs, "x");
        m_desk->folder.addTool(u"/usr/bin/du"_qs, "[ -e \"$2\" ] && echo 2000 x");
    }
    QJsonArray events(const QString &kind) const { return m_desk->folder.events(kind); }
    bool has(const QString &below) const { return QFile::exists(m_desk->folder.home() + u'/' + below); }
    QString agent() const { return m_desk->folder.home() + u"/Library/LaunchAgents/org.mill.plist"_qs; }
};

QTEST_MAIN(WindowFlowsTest)
#include "WindowFlowsTest.moc"
