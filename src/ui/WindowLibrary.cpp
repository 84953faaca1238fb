#include "ui/WindowLibrary.h"

#include "engine/state/AppState.h"
#include "ui/PopoverPresenter.h"
#include "ui/Screenshots.h"
#include "ui/qmltypes/AskView.h"
#include "ui/qmltypes/IconStore.h"
#include "ui/qmltypes/MainWindowView.h"
#include "ui/qmltypes/PopoverView.h"
#include "ui/qmltypes/SettingsView.h"
#include "ui/qmltypes/Theme.h"

#include <QtCore/QTimer>
#include <QtQml/QQmlComponent>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace swabby {
namespace {

constexpr int errandsAtOnce = 4;

// Making a window and closing it free a lot in small pieces, which the allocator would keep.
void giveMemoryBack()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

// A few cards and lines need no graphics driver, which would cost more memory than all the rest.
void drawInSoftware()
{
    static const bool isChosen = [] {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
        return true;
    }();
    Q_UNUSED(isChosen)
}

} // namespace

WindowEngine::WindowEngine(ThemeChoice choice)
{
    drawInSoftware();
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    theme = new Theme(choice, &engine);
    icons = new IconStore(&engine);
}

void WindowEngine::findIcons(const UserInterfaceContext &context)
{
    if (context.state != nullptr)
        icons->setSource(context.state->sharedMachine(), context.errands);
}

std::unique_ptr<QQuickWindow> makeWindow(WindowEngine &engine, const QString &file, QObject *view)
{
    QQmlEngine::setObjectOwnership(view, QQmlEngine::CppOwnership);
    QQmlComponent component(&engine.engine, QUrl(QStringLiteral("qrc:/qt/qml/Swabby/Ui/") + file));
    QObject *root =
        component.createWithInitialProperties({{QStringLiteral("view"), QVariant::fromValue(view)}});
    std::unique_ptr<QQuickWindow> window(qobject_cast<QQuickWindow *>(root));
    if (window == nullptr) {
        delete root;
        qWarning("%s", qPrintable(component.errorString()));
    }
    return window;
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

WindowLibrary::WindowLibrary(UserInterfaceContext context)
    : m_context(std::move(context)), m_errands(errandsAtOnce)
{
    m_context.errands = &m_errands;
    m_context.openMainWindow = [this] { openMainWindow(); };
    m_context.openAskWindow = [this] { openAskWindow(); };
    m_context.openSettingsWindow = [this] { openSettingsWindow(); };
}

WindowLibrary::~WindowLibrary() = default;

std::shared_ptr<WindowEngine> WindowLibrary::sharedEngine()
{
    std::shared_ptr<WindowEngine> engine = m_engine.lock();
    if (!engine) {
        engine = std::make_shared<WindowEngine>(m_context.theme);
        m_engine = engine;
    }
    return engine;
}

template <typename View>
void WindowLibrary::present(std::unique_ptr<OpenWindow<View>> &open,
                            std::unique_ptr<OpenWindow<View>> (*make)(const UserInterfaceContext &,
                                                                      std::shared_ptr<WindowEngine>))
{
    if (open == nullptr) {
        open = make(m_context, sharedEngine());
        if (open == nullptr)
            return;
        // A closed window is let go whole: the next one begins anew.
        const auto drop = [&open] {
            if (open == nullptr || open->window->isVisible())
                return;
            open.reset();
            giveMemoryBack();
        };
        QObject::connect(open->window.get(), &QWindow::visibleChanged, &m_closing,
                         [this, drop](bool isVisible) {
                             if (!isVisible)
                                 QMetaObject::invokeMethod(&m_closing, drop, Qt::QueuedConnection);
                         });
    }
    QQuickWindow *window = open->window.get();
    window->show();
    window->raise();
    window->requestActivate();
    constexpr int settledMilliseconds = 3'000;
    QTimer::singleShot(settledMilliseconds, &m_closing, &giveMemoryBack);
}

void WindowLibrary::openMainWindow()
{
    present(m_main, &swabby::openMainWindow);
}

void WindowLibrary::openAskWindow()
{
    present(m_ask, &swabby::openAskWindow);
}

void WindowLibrary::openSettingsWindow()
{
    present(m_settings, &swabby::openSettingsWindow);
}

void WindowLibrary::togglePopover(const QRect &statusItem)
{
    if (m_popover == nullptr) {
        m_popover = std::make_unique<PopoverPresenter>(m_context, [this] { return sharedEngine(); });
        QObject::connect(m_popover.get(), &PopoverPresenter::dropped, &giveMemoryBack);
    }
    m_popover->toggle(statusItem);
}

std::optional<QString> WindowLibrary::renderScreenshots(const QString &folder)
{
    return swabby::renderScreenshots(m_context, folder);
}

} // namespace swabby
