#include "app/ScreenshotRun.h"

#include "app/AppDelegate.h"
#include "app/ApplicationFlows.h"
#include "app/TitleImage.h"
#include "state/AppState.h"
#include "ui/UserInterface.h"

#include <QtCore/QDir>
#include <QtCore/QEventLoop>
#include <QtCore/QRegularExpression>
#include <QtGui/QPainter>

#include <cstdio>

namespace swabby {
namespace {

/// In which size the pictures are drawn. SWABBY_PICTURES in the environment says another one than the usual,
/// as in "820x560@1": the main window's, and how many pixels a point has.
struct PictureSize {
    QSize mainWindow = {}; ///< the window's own when empty
    double scale = 2;
};

PictureSize pictureSize()
{
    static const QRegularExpression form(QStringLiteral("^(\\d+)x(\\d+)@([1-4])$"));
    const auto found = form.match(qEnvironmentVariable("SWABBY_PICTURES"));
    if (!found.hasMatch())
        return {};
    return {QSize(found.captured(1).toInt(), found.captured(2).toInt()), found.captured(3).toDouble()};
}

int fail(const QString &words)
{
    std::fprintf(stderr, "swabby: %s\n", qPrintable(words));
    return 1;
}

void waitForRealFigures(AppState &state)
{
    while (state.refreshesApplied() < refreshesUntilFigures(state.machine())) {
        QEventLoop loop;
        QObject::connect(&state, &AppState::applied, &loop, &QEventLoop::quit);
        state.refresh();
        loop.exec();
    }
}

// The title is made for a dark menu bar, so it is shown on a piece of one.
QImage menuBarPicture(const AppState &state)
{
    const QImage title =
        renderTitleImage(menuBarTitle(state.stats().cpuUsagePercent, state.health()), pictureSize().scale);
    constexpr int margin = 24;
    QImage bar(title.width() + 2 * margin, title.height() + margin / 2, QImage::Format_RGB32);
    bar.fill(QColor(0x42, 0x45, 0x4b));
    QPainter painter(&bar);
    painter.drawImage(QRect(QPoint(margin, margin / 4), title.size()), title);
    return bar;
}

} // namespace

void prepareForScreenshots()
{
    // Without a screen a window whose limits follow its content is remarked on each time.
    static QtMessageHandler everythingElse = nullptr;
    everythingElse =
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &context, const QString &message) {
            if (message != QLatin1String("This plugin does not support propagateSizeHints()"))
                everythingElse(type, context, message);
        });
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", QByteArray::number(pictureSize().scale));
    for (const char *name : {"QT_SCREEN_SCALE_FACTORS", "QT_FONT_DPI", "QT_QPA_PLATFORMTHEME"})
        qunsetenv(name);
}

int runScreenshots(AppState &state, const CommandLine &commandLine)
{
    const QString folder = *commandLine.screenshotsFolder;
    if (!QDir().mkpath(folder))
        return fail(QStringLiteral("%1 cannot be made").arg(folder));
    waitForRealFigures(state);
    ApplicationFlows flows(state);
    AppDelegate delegate(state, flows, commandLine.theme);
    UserInterface *windows = delegate.userInterface();
    if (windows == nullptr)
        return fail(QStringLiteral("the windows cannot be loaded"));
    if (const auto problem = windows->renderScreenshots(folder, pictureSize().mainWindow))
        return fail(*problem);
    const QString file = QDir(folder).filePath(QStringLiteral("menu-bar.png"));
    return menuBarPicture(state).save(file) ? 0 : fail(QStringLiteral("%1 cannot be written").arg(file));
}

} // namespace swabby
