#include "Desk.h"
#include "settings/Settings.h"
#include "support/LoopbackServer.h"
#include "ui/qmltypes/AskView.h"
#include "ui/qmltypes/MainWindowView.h"
#include "ui/qmltypes/PopoverView.h"

#include <QtCore/QDir>
#include <QtGui/QGuiApplication>

using namespace swabby;

namespace {

// Mill is an application that does not quit when it is asked to.
const QJsonObject refusing = {
    {u"runningApplications"_qs, QJsonArray{QJsonObject{{u"pid"_qs, 10}, {u"terminates"_qs, false}}}}};
const QJsonObject obliging = {{u"runningApplications"_qs, QJsonArray{QJsonObject{{u"pid"_qs, 10}}}}};

} // namespace

/// What a person does with the real windows, from the first press to what comes of it on the machine.
class WindowFlowsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(refusing); }

    void cleanup()
    {
        m_open.reset();
        m_desk.reset();
    }

    void aRunawayProgramIsQuitFromItsCard()
    {
        openAt(MainSection::speed);
        pressHere(u"Quit Mill"_qs); // the card's button; the row's has the same words and does it gently
        QVERIFY(confirmation().isOpen());
        QCOMPARE(confirmation().text().title, u"Force quit Mill?"_qs);
        QVERIFY(events(u"signal"_qs).isEmpty());
        pressHere(u"Force Quit"_qs);
        QVERIFY(!confirmation().isOpen());
        QVERIFY(waitUntil([&] { return m_desk->state.processes().isEmpty(); }));
        QCOMPARE(events(u"signal"_qs), (QJsonArray{QJsonObject{{u"pid"_qs, 10}, {u"signal"_qs, 9}}}));
    }

    void aFailureIsSaidInPlace_data()
    {
        QTest::addColumn<MainSection>("section");
        QTest::addColumn<QStringList>("pressed");
        QTest::addColumn<QString>("lastPress"); // after the machine has changed
        QTest::addColumn<QString>("said");
        QTest::addColumn<QString>("row");
        QTest::newRow("quit") << MainSection::speed << QStringList{u"Quit Mill"_qs} << u"Force Quit"_qs
                              << u"Mill could not be quit. It may have ended already."_qs << u"More: Mill"_qs;
        const QString comesBack = u"It could not be turned off for good: it may be stopped now, but it will "
                                  "come back at the next login."_qs;
        const QString settings = u"Open Startup Items in System Settings"_qs;
        QTest::newRow("disable") << MainSection::startup << QStringList{} << u"Disable: org.mill"_qs
                                 << comesBack << settings;
        QTest::newRow("disable what was explained")
            << MainSection::startup << QStringList{u"What is this? org.mill"_qs} << u"Disable"_qs << comesBack
            << settings;
        QTest::newRow("disable in a check") << MainSection::swabbyCheck << QStringList{}
                                            << u"Disable: org.mill"_qs << comesBack << u"Scan Again"_qs;
        QTest::newRow("removal") << MainSection::storage
                                 << QStringList{u"Coding tool cache (pip)"_qs, u"Review and clean up"_qs}
                                 << u"Remove"_qs
                                 << u"Coding tool cache (pip) is still here, at least in part."_qs
                                 << u"Coding tool cache (pip)"_qs;
    }
    void aFailureIsSaidInPlace()
    {
        QFETCH(MainSection, section);
        QFETCH(QStringList, pressed);
        QFETCH(QString, lastPress);
        QFETCH(QString, said);
        QFETCH(QString, row);
        begin({{u"unsignalablePids"_qs, QJsonArray{10}}});
        openAt(section);
        for (const QString &name : pressed)
            pressHere(name);
        QVERIFY(waitUntil([&] { return itemNamed(*m_open->window, lastPress) != nullptr; }));
        QVERIFY(QFile::remove(agent()));
        // Another folder in its place, made beside it so that it cannot have the same number.
        const QString caches = m_desk->folder.home() + u"/Library/Caches/"_qs;
        m_desk->folder.writeFile(u"home/Library/Caches/other/x"_qs, "x");
        QVERIFY(QDir(caches + u"pip"_qs).removeRecursively());
        QVERIFY(QDir().rename(caches + u"other"_qs, caches + u"pip"_qs));
        pressHere(lastPress);
        QVERIFY2(waitUntil([&] { return textOf(*m_open->window).contains(said); }),
                 qPrintable(textOf(*m_open->window)));
        QVERIFY(!confirmation().isOpen());
        QCOMPARE(QGuiApplication::topLevelWindows().size(), 1);
        for (const char *kind : {"signal", "terminate", "delete", "trash"})
            QVERIFY2(events(QLatin1String(kind)).isEmpty(), kind);
        if (itemNamed(*m_open->window, u"Dismiss"_qs) != nullptr) {
            pressHere(u"Dismiss"_qs);
            QVERIFY(!textOf(*m_open->window).contains(said));
        }
        // What stayed is listed as before.
        QVERIFY(waitUntil([&] { return itemNamed(*m_open->window, row) != nullptr; }));
    }

    void aStartupItemIsTurnedOffAndOnAgain()
    {
        openAt(MainSection::startup);
        pressHere(u"Disable: org.mill"_qs);
        QVERIFY(waitUntil([&] { return m_desk->state.loginItems().isEmpty(); }));
        QVERIFY(!QFile::exists(agent()));
        pressHere(u"Turn on again: org.mill"_qs);
        QVERIFY(waitUntil([&] { return QFile::exists(agent()); }));
        QVERIFY(waitUntil([&] { return !m_desk->state.loginItems().isEmpty(); }));
    }

    void somethingIsExplainedAndTheAnswerOnlyOffers()
    {
        openAt(MainSection::startup);
        pressHere(u"What is this? org.mill"_qs);
        ExplainView &explanation = *m_open->view->coordinator()->explanation();
        QVERIFY(explanation.isOpen());
        QVERIFY(waitUntil([&] { return !explanation.isLoading(); }));
        QCOMPARE(explanation.text(), u"Couldn't get an explanation right now."_qs);
        QCOMPARE(explanation.subject().recommendation, u"Recommended: Force Quit"_qs); // its program is gone
        QTest::keyClick(m_open->window.get(), Qt::Key_Escape);
        QVERIFY(!explanation.isOpen());
        QCOMPARE(m_desk->state.loginItems().size(), 1);
    }

    void aCheckFindsRemovesAndPutsBack()
    {
        for (const char *name : {"a.bin", "b.bin"})
            m_desk->folder.writeFile(u"home/Downloads/"_qs + QLatin1String(name), QByteArray(9'000, 'x'));
        openAt(MainSection::overview);
        m_open->view->openCheck();
        CheckView &check = *m_open->view->check();
        QVERIFY(waitUntil([&] { return !check.isScanning() && check.canRemove(); }));
        QCOMPARE(check.removeLabel(), u"Remove Everything"_qs);
        pressHere(u"Show what is behind it: a.bin ×2"_qs);
        QVERIFY(
            waitUntil([&] { return itemNamed(*m_open->window, u"Show in folder: b.bin"_qs) != nullptr; }));
        pressHere(u"Hide what is behind it: a.bin ×2"_qs);
        pressHere(u"Coding tool cache (pip)"_qs); // its box
        QCOMPARE(check.removeLabel(), u"Remove 1 Items"_qs);
        pressHere(u"Remove 1 Items"_qs);
        QCOMPARE(confirmation().text().title, u"Remove a.bin ×2?"_qs);
        QCOMPARE(confirmation().text().details.size(), 2);
        QCOMPARE(confirmation().text().details.first().fate, u"stays"_qs);
        QTest::keyClick(m_open->window.get(), Qt::Key_Return); // on Cancel's side
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
        QCOMPARE(confirmation().text().details.size(), pieces.size());
        for (const QString &piece : pieces)
            QVERIFY2(waitUntil([&] {
                         return itemNamed(*m_open->window,
                                          u"Show in folder: "_qs + QFileInfo(piece).fileName()) != nullptr;
                     }),
                     qPrintable(piece));
        pressHere(u"Remove"_qs);
        QVERIFY(waitUntil([&] { return m_desk->state.lastCleanup().has_value(); }));
        QVERIFY2(textOf(*m_open->window).contains(u"Removed 1 item — freed 6.1 MB"_qs),
                 qPrintable(textOf(*m_open->window)));
        for (const QString &piece : pieces) {
            QVERIFY2(!has(piece), qPrintable(piece));
            QVERIFY2(has(u".Trash/"_qs + QFileInfo(piece).fileName()), qPrintable(piece));
        }
        QVERIFY(itemNamed(*m_open->window, u"Remove: Loom"_qs) == nullptr);
        pressHere(u"Put back"_qs);
        QVERIFY(waitUntil([&] { return events(u"putBack"_qs).size() == pieces.size(); }));
        for (const QString &piece : pieces)
            QVERIFY2(has(piece), qPrintable(piece));
    }

    void theProgramThatTheAnswerBlamesIsQuit()
    {
        const LoopbackServer server(always(
            httpAnswer(200, modelReply(uR"({"explanation": "Mill is busy.", "appToQuit": "mill"})"_qs))));
        qputenv("SWABBY_AI_PROXY_URL", server.url().toEncoded());
        begin(obliging);
        qunsetenv("SWABBY_AI_PROXY_URL");
        m_desk->refresh();
        const auto ask = shown(openAskWindow(m_desk->context()));
        for (const char letter : {'W', 'h', 'y', '?'})
            QTest::keyClick(ask->window.get(), letter); // the field has the keyboard
        QTest::keyClick(ask->window.get(), Qt::Key_Return);
        press(*ask->window, u"Quit mill"_qs);
        QVERIFY(server.requests().value(0).prompt().contains(u"\"Why?\""_qs));
        QVERIFY(textOf(*ask->window).contains(u"Mill is busy."_qs));
        QVERIFY(events(u"terminate"_qs).isEmpty());
        press(*ask->window, u"Quit"_qs);
        QVERIFY(waitUntil([&] { return m_desk->state.processes().isEmpty(); }));
        QCOMPARE(events(u"terminate"_qs), QJsonArray{10});
        QVERIFY(events(u"signal"_qs).isEmpty());
        press(*ask->window, u"Quit mill"_qs); // what it offers may be gone
        QVERIFY(!ask->view->confirmation()->isOpen());
        QVERIFY(textOf(*ask->window).contains(u"mill is not running any more."_qs));
    }

    void askingTwiceOpensOneWindow()
    {
        m_desk->refresh();
        WindowLibrary library(m_desk->context());
        library.openMainWindow();
        auto *main = qobject_cast<QQuickWindow *>(QGuiApplication::topLevelWindows().value(0));
        QVERIFY(main != nullptr && QTest::qWaitForWindowActive(main));
        for (int times = 0; times < 2; ++times) {
            main->requestActivate();
            QVERIFY(QTest::qWaitForWindowActive(main));
            press(*main, u"Ask AI"_qs);
            QVERIFY(waitUntil([&] { return QGuiApplication::focusWindow() != main; }));
            QWindow *ask = QGuiApplication::focusWindow();
            QCOMPARE(ask->title(), u"Ask Swabby"_qs);
            QCOMPARE(ask->property("wasThere").toBool(), times == 1);
            ask->setProperty("wasThere", true);
            QCOMPARE(QGuiApplication::topLevelWindows().size(), 2);
        }
    }

    void everyPathThatGoesCanBeReachedInTheQuestion()
    {
        open();
        constexpr int groups = 500;
        std::vector<RemovableItem> items;
        items.reserve(groups);
        for (int group = 0; group < groups; ++group)
            items.push_back(RemovableItem::of(DuplicateGroup{
                {"/kept/" + std::to_string(group), "/gone/copy " + std::to_string(group)}, 5'000}));
        confirmation().askToRemove(items);
        QCOMPARE(confirmation().details()->count(), 1'000);
        const auto isThere = [&](int group) {
            return itemNamed(*m_open->window, u"Show in folder: copy "_qs + QString::number(group)) !=
                   nullptr;
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
        openAt(MainSection::startup);
        pressHere(u"More: org.mill"_qs);
        QTest::keyClick(m_open->window.get(), Qt::Key_Return); // the first one shows the file
        QVERIFY(waitUntil([&] { return events(u"reveal"_qs).size() == 1; }));
        pressHere(u"More: org.mill"_qs);
        QTest::keyClick(m_open->window.get(), Qt::Key_Escape);
        QTest::keyClick(m_open->window.get(), Qt::Key_Return); // opens it again: the button has the keyboard
        QTest::keyClick(m_open->window.get(), Qt::Key_Down);
        QTest::keyClick(m_open->window.get(), Qt::Key_Return);
        QVERIFY(waitUntil([&] { return events(u"open"_qs).size() == 1; }));
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
        QCOMPARE(m_desk->state.requestedMainSection(), MainSection::storage);
        open();
        QCOMPARE(m_open->view->selection(), MainSection::storage);
        QVERIFY(!m_desk->state.requestedMainSection().has_value());
    }

    void theWelcomeIsShownUntilItIsFinished()
    {
        Settings settings(*m_desk->state.machine().settings);
        settings.store(setting<"hasCompletedOnboarding">, false);
        for (int times = 0; times < 2; ++times) {
            m_open.reset();
            openAt(MainSection::overview);
            QVERIFY(itemNamed(*m_open->window, u"Get started"_qs) != nullptr);
        }
        pressHere(u"Get started"_qs);
        QVERIFY(waitUntil([&] { return settings.value(setting<"hasCompletedOnboarding">); }));
        m_open.reset();
        open();
        QVERIFY(itemNamed(*m_open->window, u"Get started"_qs) == nullptr);
    }

private:
    void begin(const QJsonObject &facts)
    {
        m_open.reset();
        m_desk = std::make_unique<Desk>(facts);
        m_desk->folder.writeFile(u"home/Library/LaunchAgents/org.mill.plist"_qs,
                                 "<plist version=\"1.0\"><dict><key>Label</key><string>org.mill</string>"
                                 "<key>Program</key><string>/nowhere/mill</string></dict></plist>");
        m_desk->folder.writeFile(u"home/Library/Caches/pip/x"_qs, "x");
        m_desk->folder.addTool(u"/usr/bin/du"_qs, "[ -e \"$2\" ] && echo 2000 x");
    }

    void open() { m_open = shown(openMainWindow(m_desk->context())); }
    void openAt(MainSection section)
    {
        m_desk->refresh();
        open();
        m_open->view->select(section);
    }
    void pressHere(const QString &name) { press(*m_open->window, name); }

    ConfirmationView &confirmation() { return *m_open->view->coordinator()->confirmation(); }
    QJsonArray events(const QString &kind) const { return m_desk->folder.events(kind); }
    bool has(const QString &below) const { return QFile::exists(m_desk->folder.home() + u'/' + below); }
    QString agent() const { return m_desk->folder.home() + u"/Library/LaunchAgents/org.mill.plist"_qs; }

    std::unique_ptr<Desk> m_desk;
    std::unique_ptr<OpenWindow<MainWindowView>> m_open;
};

QTEST_MAIN(WindowFlowsTest)
#include "WindowFlowsTest.moc"
