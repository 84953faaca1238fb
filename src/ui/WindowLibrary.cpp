#include "ui/WindowLibrary.h"

#include "ui/Screenshots.h"
#include "ui/qmltypes/MainWindowView.h"
#include "ui/qmltypes/Theme.h"

#include <QtCore/QTimer>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickWindow>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace swabby {
namespace {

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

std::unique_ptr<OpenWindow> openWindow(const UserInterfaceContext &context)
{
    drawInSoftware();
    auto open = std::make_unique<OpenWindow>();
    open->engine = std::make_unique<QQmlEngine>();
    open->engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
    open->theme = new Theme(context.theme, open->engine.get());
    open->view = std::make_unique<MainWindowView>(context);
    QQmlEngine::setObjectOwnership(open->view.get(), QQmlEngine::CppOwnership);

    QQmlComponent component(open->engine.get(), QUrl(QStringLiteral("qrc:/qt/qml/Swabby/Ui/MainWindow.qml")));
    QObject *root = component.createWithInitialProperties(
        {{QStringLiteral("view"), QVariant::fromValue(open->view.get())}});
    open->window.reset(qobject_cast<QQuickWindow *>(root));
    if (open->window == nullptr) {
        delete root;
        qWarning("%s", qPrintable(component.errorString()));
        return nullptr;
    }
    return open;
}

WindowLibrary::WindowLibrary(UserInterfaceContext context) : m_context(std::move(context)) {}

WindowLibrary::~WindowLibrary() = default;

void WindowLibrary::openMainWindow()
{
    if (m_open == nullptr) {
        m_open = openWindow(m_context);
        if (m_open == nullptr)
            return;
        // A closed window is let go whole: the next one begins at the overview again.
        QObject::connect(m_open->window.get(), &QWindow::visibleChanged, &m_closing, [this](bool isVisible) {
            if (!isVisible)
                QMetaObject::invokeMethod(
                    &m_closing, [this] { dropClosedWindow(); }, Qt::QueuedConnection);
        });
    }
    QQuickWindow *window = m_open->window.get();
    window->show();
    window->raise();
    window->requestActivate();
    constexpr int settledMilliseconds = 3'000;
    QTimer::singleShot(settledMilliseconds, &m_closing, &giveMemoryBack);
}

std::optional<QString> WindowLibrary::renderScreenshots(const QString &folder)
{
    return swabby::renderScreenshots(m_context, folder);
}

void WindowLibrary::dropClosedWindow()
{
    if (m_open == nullptr || m_open->window->isVisible())
        return;
    m_open.reset();
    giveMemoryBack();
}

} // namespace swabby
