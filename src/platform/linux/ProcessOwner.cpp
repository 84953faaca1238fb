#include "platform/linux/ProcessOwner.h"

#include "platform/HarmlessText.h"
#include "platform/Utf8.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <optional>

namespace swabby {
namespace {

// As accounts are given out; those that services make for themselves while they run lie above.
constexpr uid_t firstPerson = 1'000;
constexpr uid_t lastPerson = 60'000;
constexpr uid_t firstPersonOfADirectory = 65'536;

/// Empty for an account without a name, or with one that is no text.
QString nameOf(uid_t user)
{
    passwd entry = {};
    passwd *found = nullptr;
    std::array<char, 4096> buffer;
    ::getpwuid_r(user, &entry, buffer.data(), buffer.size(), &found);
    return found != nullptr && isUtf8(found->pw_name) ? oneLine(textOf(found->pw_name)) : QString();
}

std::optional<uid_t> userOf(const std::string &procRoot, std::int32_t pid)
{
    struct stat folder = {};
    if (::stat((procRoot + '/' + std::to_string(pid)).c_str(), &folder) != 0)
        return std::nullopt;
    return folder.st_uid;
}

bool isPerson(uid_t user)
{
    return (user >= firstPerson && user <= lastPerson) || user >= firstPersonOfADirectory;
}

} // namespace

QString processOwner(const std::string &procRoot, std::int32_t pid)
{
    const auto user = userOf(procRoot, pid);
    if (!user || *user == ::geteuid())
        return {};
    if (!isPerson(*user))
        return ownerOfSystem();
    const QString name = nameOf(*user);
    return name.isEmpty() ? QStringLiteral("another user") : name;
}

QString accountOf(const std::string &procRoot, std::int32_t pid)
{
    const auto user = userOf(procRoot, pid);
    if (!user)
        return {};
    const QString name = nameOf(*user);
    return name.isEmpty() ? QString::number(*user) : name;
}

QString ownerOfSystem()
{
    return QStringLiteral("the system");
}

} // namespace swabby
