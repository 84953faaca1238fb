#include "ui/WindowLibrary.h"

#include "platform/desktop/Display.h"
#include "platform/posix/MemoryThrift.h"
#include "settings/Settings.h"
#include "state/AppState.h"
#include "ui/PopoverPresenter.h"
#include "ui/Screenshots.h"
#include "ui/presentation/NoticeText.h"
#include "ui/presentation/Words.h"
#include "ui/qmltypes/AskView.h"
#include "ui/qmltypes/IconStore.h"
#include "ui/qmltypes/MainWindowView.h"
#include "ui/qmltypes/PopoverView.h"
#include "ui/qmltypes/SettingsView.h"
#include "ui/qmltypes/Theme.h"

#include <QtGui/QGuiApplication>
#include <QtQml/QQmlComponent>

#include <chrono>
#include <utility>

namespace swabby {

using namespace std::chrono_literals;

namespace {

// A few cards and lines need no graphics driver, which would cost more memory than all the rest.
void drawInSoftware()
{
    static const bool isChosen = [] {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
        return true;
    }();
    Q_UNUSED(isChosen)
}

ThemeChoice storedTheme(const AppState &state)
{
    return Settings(*state.machine().settings).value(setting<"theme">);
}

void nameInTitle(QWindow &window)
{
    const auto complete = [&window](const QString &title) {
        const QString name = QGuiApplication::applicationDisplayName();
        if (!title.endsWith(name))
            window.setTitle(title + QStringLiteral(" — ") + name);
    };
    QObject::connect(&window, &QWindow::windowTitleChanged, &window, complete);
    complete(window.title());
}

/// The property "view" of the file's window is a view that is made from the context alone.
template <typename View>
std::unique_ptr<OpenWindow<View>> openWindow(const UserInterfaceContext &context, const QString &file,
                                             std::shared_ptr<WindowEngine> engine)
{
    auto open = std::make_unique<OpenWindow<View>>();
    open->engine = engine ? std::move(engine) : std::make_shared<WindowEngine>(context);
    open->view = std::make_unique<View>(context);
    QQmlEngine::setObjectOwnership(open->view.get(), QQmlEngine::CppOwnership);
    QQmlComponent component(&open->engine->engine, QUrl(QStringLiteral("qrc:/qt/qml/Swabby/Ui/") + file));
    // One that lacks a module must not be begun at all.
    QObject *root = component.isReady()
                        ? component.createWithInitialProperties(
                              {{QStringLiteral("view"), QVariant::fromValue<QObject *>(open->view.get())}})
                        : nullptr;
    open->window.reset(qobject_cast<QQuickWindow *>(root));
    if (open->window != nullptr)
        return open;
    delete root;
    context.cannotOpen(unopenedText(component.errorString()));
    return nullptr;
}

} // namespace

WindowEngine::WindowEngine(const UserInterfaceContext &context)
    : theme(new Theme(context.theme, &engine)),
      icons(new IconStore(&engine, context.state.sharedMachine(), context.systemCalls))
{
    new Words(context.state.machine().words, &engine);
    drawInSoftware();
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine.setIncubationController(&making);
}

std::unique_ptr<OpenWindow<MainWindowView>> openMainWindow(const UserInterfaceContext &context,
                                                           std::shared_ptr<WindowEngine> engine)
{
    return openWindow<MainWindowView>(context, QStringLiteral("MainWindow.qml"), std::move(engine));
}

std::unique_ptr<OpenWindow<AskView>> openAskWindow(const UserInterfaceContext &context,
                                                   std::shared_ptr<WindowEngine> engine)
{
    return openWindow<AskView>(context, QStringLiteral("AskWindow.qml"), std::move(engine));
}

std::unique_ptr<OpenWindow<SettingsView>> openSettingsWindow(const UserInterfaceContext &context,
                                                             std::shared_ptr<WindowEngine> engine)
{
    return openWindow<SettingsView>(context, QStringLiteral("SettingsWindow.qml"), std::move(engine));
}

std::unique_ptr<OpenWindow<PopoverView>> openPopover(const UserInterfaceContext &context,
                                                     std::shared_ptr<WindowEngine> engine)
{
    return openWindow<PopoverView>(context, QStringLiteral("Popover.qml"), std::move(engine));
}

std::unique_ptr<OpenWindow<PopoverView>> openItemMenu(const UserInterfaceContext &context,
                                                      std::shared_ptr<WindowEngine> engine)
{
    return openWindow<PopoverView>(context, QStringLiteral("ItemMenu.qml"), std::move(engine));
}

WindowLibrary::WindowLibrary(UserInterfaceContext context)
    : m_context(std::move(context)), m_storedTheme(storedTheme(m_context.state)), m_places(m_context.state)
{
    m_context.openMainWindow = [this] { openMainWindow(); };
    m_context.openAskWindow = [this] { openAskWindow(); };
    m_context.openSettingsWindow = [this] { openSettingsWindow(); };
    m_context.openAssistantSettings = [this] {
        openSettingsWindow();
        if (m_settings != nullptr)
            m_settings->view->showAssistant();
    };
    QObject::connect(&m_context.state, &AppState::changed, &m_closing, [this] { followTheme(); });
    // Whoever has just closed the last window may open one again.
    m_keeping.setSingleShot(true);
    m_keeping.setInterval(1min);
    QObject::connect(&m_keeping, &QTimer::timeout, &m_keeping, [this] {
        m_kept.reset();
        giveMemoryBack();
    });
    m_settling.setSingleShot(true);
    m_settling.setInterval(3s);
    QObject::connect(&m_settling, &QTimer::timeout, &m_settling, [this] {
        if (const auto engine = m_engine.lock())
            engine->engine.collectGarbage();
        // Not on this thread, which somebody may be scrolling with.
        m_context.systemCalls.queue(&giveMemoryBack);
    });
}

WindowLibrary::~WindowLibrary()
{
    if (const auto engine = m_engine.lock())
        engine->making.finish();
}

std::shared_ptr<WindowEngine> WindowLibrary::sharedEngine()
{
    std::shared_ptr<WindowEngine> engine = m_engine.lock();
    if (!engine) {
        engine = std::make_shared<WindowEngine>(m_context);
        m_engine = engine;
    }
    return engine;
}

// What the program was started with counts until somebody chooses.
void WindowLibrary::followTheme()
{
    const ThemeChoice stored = storedTheme(m_context.state);
    if (std::exchange(m_storedTheme, stored) == stored)
        return;
    m_context.theme = stored;
    if (const auto engine = m_engine.lock())
        engine->theme->setChoice(stored);
}

template <typename View>
void WindowLibrary::present(std::unique_ptr<OpenWindow<View>> &open, MakeWindow<View> *make, const char *name)
{
    if (open == nullptr) {
        open = make(m_context, sharedEngine());
        if (open == nullptr)
            return;
        m_places.follow(*open->window, QLatin1String(name));
        if (wantsNameInTitles())
            nameInTitle(*open->window);
        // A closed window is let go whole: the next one begins anew.
        const auto drop = [this, &open] {
            if (open == nullptr || open->window->isVisible())
                return;
            m_kept = open->engine;
            m_kept->making.finish();
            open.reset();
            giveMemoryBack();
            m_keeping.start();
        };
        QObject::connect(open->window.get(), &QWindow::visibleChanged, &m_closing,
                         [this, drop](bool isVisible) {
                             if (!isVisible)
                                 QMetaObject::invokeMethod(&m_closing, drop, Qt::QueuedConnection);
                         });
    }
    // Not show(), which would take a maximized one back.
    QWindow *window = open->window.get();
    window->setWindowStates(window->windowStates() & ~Qt::WindowStates(Qt::WindowMinimized));
    window->setVisible(true);
    window->raise();
    window->requestActivate();
    m_settling.start();
}

void WindowLibrary::openMainWindow()
{
    present(m_main, &swabby::openMainWindow, "main");
    if (m_main != nullptr)
        QObject::connect(m_main->view.get(), &MainWindowView::selectionChanged, &m_settling,
                         qOverload<>(&QTimer::start), Qt::UniqueConnection);
}

void WindowLibrary::openAskWindow()
{
    present(m_ask, &swabby::openAskWindow, "ask");
}

void WindowLibrary::openSettingsWindow()
{
    present(m_settings, &swabby::openSettingsWindow, "settings");
}

void WindowLibrary::togglePopover(const QRect &statusItem)
{
    toggle(m_popover, &swabby::openPopover, statusItem);
}

void WindowLibrary::toggleItemMenu(const QRect &statusItem)
{
    toggle(m_itemMenu, &swabby::openItemMenu, statusItem);
}

void WindowLibrary::toggle(std::unique_ptr<PopoverPresenter> &presenter, MakeWindow<PopoverView> *make,
                           const QRect &statusItem)
{
    if (presenter == nullptr) {
        presenter = std::make_unique<PopoverPresenter>(
            m_context, [this] { return sharedEngine(); }, make);
        QObject::connect(presenter.get(), &PopoverPresenter::dropped, &giveMemoryBack);
    }
    presenter->toggle(statusItem);
}

std::optional<QString> WindowLibrary::renderScreenshots(const QString &folder, const QSize &mainWindow)
{
    return swabby::renderScreenshots(m_context, folder, mainWindow);
}

} // namespace swabby
