#include "cli/Background.h"
#include "cli/Output.h"
#include "cli/Verbs.h"

#include <QtCore/QEventLoop>
#include <QtCore/QSocketNotifier>

#include <array>
#include <cerrno>
#include <cstdio>
#include <termios.h>
#include <unistd.h>

namespace swabby {
namespace {

bool hasErrorTerminal()
{
    static const bool result = ::isatty(STDERR_FILENO) == 1;
    return result;
}

/// The terminal that is typed on, back as it was once this goes.
class Typing {
public:
    explicit Typing(Echo echo)
    {
        m_isChanged = echo == Echo::off && ::tcgetattr(STDIN_FILENO, &m_before) == 0;
        if (!m_isChanged)
            return;
        termios silent = m_before;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        silent.c_lflag |= ECHONL;
        ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }
    ~Typing()
    {
        if (m_isChanged)
            ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_before);
    }
    Typing(const Typing &) = delete;
    Typing &operator=(const Typing &) = delete;

private:
    termios m_before = {};
    bool m_isChanged = false;
};

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

QByteArray typedLine(Echo echo)
{
    const Typing typing(echo);
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
        return line;
    std::fputs("\n", stderr);
    return {};
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
    const QString answer = QString::fromUtf8(typedLine(Echo::on)).trimmed().toLower();
    return answer == QLatin1String("y") || answer == QLatin1String("yes");
}

} // namespace swabby
