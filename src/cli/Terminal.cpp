#include "cli/Background.h"
#include "cli/Output.h"
#include "cli/Verbs.h"

#include <QtCore/QEventLoop>
#include <QtCore/QSocketNotifier>

#include <array>
#include <cerrno>
#include <cstdio>
#include <unistd.h>

namespace swabby {
namespace {

bool hasErrorTerminal()
{
    static const bool result = ::isatty(STDERR_FILENO) == 1;
    return result;
}

/// The line a person types. Empty when the input ends, and when the program is asked to end meanwhile: the
/// event loop hears that.
QString typedLine()
{
    QByteArray line;
    QEventLoop loop;
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    bool isWhole = false;
    QObject::connect(&input, &QSocketNotifier::activated, &loop, [&] {
        std::array<char, 256> typed = {};
        const ssize_t count = ::read(STDIN_FILENO, typed.data(), typed.size());
        if (count < 0 && errno == EINTR)
            return;
        line.append(typed.data(), std::max<ssize_t>(count, 0));
        isWhole = line.contains('\n');
        if (isWhole || count <= 0)
            loop.quit();
    });
    loop.exec();
    if (isWhole)
        return QString::fromUtf8(line).trimmed();
    std::fputs("\n", stderr);
    return {};
}

} // namespace

ScanControl terminalControl(const Machine &machine)
{
    ScanControl control;
    control.stop = machine.stop.token();
    if (!hasErrorTerminal())
        return control;
    control.progress = [](const ScanProgress &progress) {
        constexpr qsizetype widest = 60;
        constexpr std::int64_t whole = 100;
        const QByteArray what = harmless(progress.what).left(widest).toUtf8();
        if (progress.total > 0)
            std::fprintf(stderr, "\r\x1b[K%3d%%  %s",
                         static_cast<int>(progress.done * whole / progress.total), what.constData());
        else
            std::fprintf(stderr, "\r\x1b[K%s", what.constData());
    };
    return control;
}

void clearProgress()
{
    if (hasErrorTerminal())
        std::fprintf(stderr, "\r\x1b[K");
}

bool isAgreed(const Arguments &arguments, const ConfirmationInfo &info, const QString &details)
{
    if (arguments.yes)
        return true;
    if (::isatty(STDIN_FILENO) != 1)
        return false;
    const QString warning = info.warning.isEmpty() ? QString() : QLatin1Char('\n') + info.warning;
    const QByteArray question = (harmless(info.title) + QLatin1Char('\n') + harmless(info.message) + warning +
                                 QLatin1Char('\n') + details + info.confirmLabel + QStringLiteral("? [y/N] "))
                                    .toUtf8();
    std::fputs(question.constData(), stderr);
    const QString answer = typedLine().toLower();
    return answer == QLatin1String("y") || answer == QLatin1String("yes");
}

} // namespace swabby
