#include "app/ToolkitStart.h"

#include <QtCore/QStringList>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace swabby {
namespace {

QtMessageHandler everythingElse = nullptr;
QStringList heldBack;

// The toolkit's last words name the plugins that there are.
bool lacksWayland(const QString &lastWords)
{
    const bool isWanted =
        qEnvironmentVariableIsSet("WAYLAND_DISPLAY") || qgetenv("QT_QPA_PLATFORM").contains("wayland");
    return isWanted &&
           !lastWords.section(QStringLiteral("plugins are:"), 1).contains(QStringLiteral("wayland"));
}

void hold(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type != QtFatalMsg) {
        heldBack.append(qFormatLogMessage(type, context, message));
        return;
    }
    const QString words = lacksWayland(message)
                              ? QStringLiteral("Qt has no way to open windows in a Wayland session here; "
                                               "install the package qt6-wayland")
                              : noDisplayText();
    std::fprintf(stderr, "swabby: %s\n", qPrintable(words));
    std::_Exit(EXIT_FAILURE);
}

} // namespace

QString noDisplayText()
{
    return QStringLiteral("there is no display to open a window on; use swabbyctl in a terminal, "
                          "or --screenshots OUT for pictures");
}

ToolkitStart::ToolkitStart()
{
    everythingElse = qInstallMessageHandler(hold);
}

ToolkitStart::~ToolkitStart()
{
    qInstallMessageHandler(everythingElse);
    for (const QString &words : std::exchange(heldBack, {}))
        std::fprintf(stderr, "%s\n", qPrintable(words));
}

} // namespace swabby
