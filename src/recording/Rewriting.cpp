#include "recording/Rewriting.h"

#include "engine/Samplers.h"
#include "platform/FolderListing.h"
#include "platform/MachineFolder.h"
#include "platform/Utf8.h"

#include <QtCore/QSet>

#include <array>
#include <cctype>
#include <optional>

namespace swabby {
namespace {

namespace fs = std::filesystem;

/// Where Swabby's own rules look, and what bundles are made of.
const QSet<QString> &knownWords()
{
    static const QSet<QString> words = [] {
        const QString all = QStringLiteral(
            "/ Applications Library Contents MacOS Frameworks Versions Helpers Resources PlugIns XPCServices "
            "A B Current Users System Volumes private var home root usr bin sbin lib libexec opt local "
            "Caches Preferences Containers WebKit Logs HTTPStorages LaunchAgents LaunchDaemons "
            "Desktop Documents Downloads Developer Projects GitHub dev code Sites node_modules .Trash Trash "
            "Xcode DerivedData com.apple.Safari Google Chrome Firefox Adobe CocoaPods Cypress Homebrew "
            "com.microsoft.VSCode.ShipIt ms-playwright dotslash node-gyp typescript composer pip Yarn "
            "puppeteer COMM .cache .config .local .var app share cache thumbnails mesa_shader_cache nvidia "
            "GLCache swabbyctl "
            "go-build registry src caches _cacache pnpm uv npm yarn mozilla firefox google-chrome");
        const QStringList pieces = all.split(QLatin1Char(' '));
        QSet<QString> set(pieces.begin(), pieces.end());
        set += {QStringLiteral("Application Support"), QStringLiteral("Saved Application State"),
                QStringLiteral("After Effects")};
        return set;
    }();
    return words;
}

constexpr std::array endings = {".app", ".plist",      ".dmg",      ".iso",       ".pkg",  ".zip",
                                ".xpc", ".appex",      ".disabled", ".framework", ".png",  ".jpg",
                                ".pdf", ".savedState", ".AppImage", ".desktop",   ".mp4",  ".mov",
                                ".gz",  ".xz",         ".txt",      ".service",   ".timer"};

bool isTheSystems(const QString &path)
{
    for (const char *folder :
         {"/System/", "/usr/", "/bin/", "/sbin/", "/lib/", "/lib32/", "/lib64/", "/Library/Apple/"})
        if (path.startsWith(QLatin1String(folder)))
            return !path.startsWith(QLatin1String("/usr/local/"));
    return false;
}

/// What the rules about programs look for in a piece of a path, in the rules' own words, since somebody may
/// have chosen the rest of it. Empty when they look for nothing there.
QString ruleWord(const QString &piece, bool isFirst, bool isLast)
{
    const QString product = QStringLiteral("swabby");
    const QString bundle = QStringLiteral("swabby.app");
    const bool isBundle = piece.endsWith(QLatin1String(".app"));
    if (piece == QLatin1String(folderMark))
        return piece;
    QString word;
    if (piece.contains(bundle, Qt::CaseInsensitive))
        word = bundle;
    else if (isFirst ? piece.compare(product, Qt::CaseInsensitive) == 0
                     : piece.startsWith(product, Qt::CaseInsensitive))
        word = product;
    else if (const auto browser = isLast || isBundle ? BrowserRollup::groupName(piece) : std::nullopt)
        word = isBundle ? *browser + QLatin1String(".app") : *browser;
    return piece.compare(word, Qt::CaseInsensitive) == 0 ? piece : word;
}

/// The text with one folder in the place of another, where that is named whole.
std::string moved(std::string text, const std::string &from, const std::string &to)
{
    const auto goesOn = [](unsigned char letter) {
        return std::isalnum(letter) != 0 || letter == '_' || letter == '-' || letter == '.' || letter >= 0x80;
    };
    if (from.size() < 2)
        return text;
    for (std::size_t at = text.find(from); at != std::string::npos;) {
        const std::size_t end = at + from.size();
        const bool isWhole = end == text.size() || !goesOn(static_cast<unsigned char>(text[end]));
        if (isWhole)
            text.replace(at, from.size(), to);
        at = text.find(from, isWhole ? at + to.size() : end);
    }
    return text;
}

} // namespace

Rewriting::Rewriting(const Machine &machine, PeoplesNames names)
    : m_names(names), m_home(machine.cleanup.home), m_root(machine.cleanup.root)
{
}

QString Rewriting::name(const QString &name)
{
    if (keepsNames() || name.isEmpty() || knownWords().contains(name))
        return name;
    QString stem = name;
    QString kind;
    for (bool isCut = true; isCut;) {
        isCut = false;
        for (const char *ending : endings)
            if (const QLatin1String text(ending); stem.size() > text.size() && stem.endsWith(text)) {
                kind.prepend(text);
                stem.chop(text.size());
                isCut = true;
            }
    }
    if (knownWords().contains(stem))
        return name;
    const int next = static_cast<int>(m_numbers.size()) + 1;
    const int number = m_numbers.try_emplace(stem, next).first->second;
    return QStringLiteral("name-%1").arg(number) + kind;
}

std::string Rewriting::fileName(const fs::path &file)
{
    return keepsNames() ? file.native() : name(textOf(file.native())).toStdString();
}

std::string Rewriting::parts(const fs::path &path)
{
    if (isTheSystems(textOf(path.native())))
        return path.native();
    fs::path result;
    for (const fs::path &part : path)
        result /= fileName(part);
    return result.native();
}

QString Rewriting::command(const QString &command)
{
    const QString said = textOf(text(command.toStdString()));
    // A program that has ended, or hides its path, has its name in brackets.
    const qsizetype before = said.startsWith(QLatin1Char('(')) ? 1 : 0;
    const qsizetype after = before > 0 && said.endsWith(QLatin1Char(')')) ? 1 : 0;
    const QString inside = said.mid(before, said.size() - before - after);
    if (keepsNames() || isTheSystems(inside))
        return said;
    QStringList pieces = inside.split(QLatin1Char('/'));
    for (qsizetype at = 0; at < pieces.size(); ++at) {
        const QString word = ruleWord(pieces[at], at == 0, at + 1 == pieces.size());
        pieces[at] = word.isEmpty() ? name(pieces[at]) : word;
    }
    return said.left(before) + pieces.join(QLatin1Char('/')) + said.right(after);
}

std::string Rewriting::path(const fs::path &path)
{
    const fs::path plain = path.lexically_normal();
    const std::string mark = folderMark;
    const auto below = [&](const fs::path &folder, const char *place) {
        const fs::path rest = plain.lexically_relative(folder);
        return mark + place + (rest == "." ? std::string() : '/' + parts(rest));
    };
    if (isAtOrUnder(plain, m_home))
        return below(m_home, "/home");
    if (!m_root.empty())
        return isAtOrUnder(plain, m_root) ? below(m_root, "/root") : parts(plain);
    return mark + "/root" + parts(plain);
}

std::string Rewriting::text(std::string text) const
{
    const std::string mark = folderMark;
    return moved(moved(std::move(text), m_home.native(), mark + "/home"), m_root.native(), mark + "/root");
}

} // namespace swabby
