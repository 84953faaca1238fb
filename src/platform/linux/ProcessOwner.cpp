#include "platform/linux/ProcessOwner.h"

#include "platform/HarmlessText.h"
#include "platform/Utf8.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>

namespace swabby {
namespace {

// As accounts are given out; those that services make for themselves while they run lie above.
constexpr uid_t firstPerson = 1'000;
constexpr uid_t lastPerson = 60'000;
constexpr uid_t firstPersonOfADirectory = 65'536;

bool isPerson(uid_t user)
{
    return (user >= firstPerson && user <= lastPerson) || user >= firstPersonOfADirectory;
}

} // namespace

QString processOwner(const std::string &procRoot, std::int32_t pid)
{
    struct stat folder = {};
    if (::stat((procRoot + '/' + std::to_string(pid)).c_str(), &folder) != 0 || folder.st_uid == ::geteuid())
        return {};
    if (!isPerson(folder.st_uid))
        return ownerOfSystem();
    passwd entry = {};
    passwd *found = nullptr;
    std::array<char, 4096> buffer;
    ::getpwuid_r(folder.st_uid, &entry, buffer.data(), buffer.size(), &found);
    const QString name =
        found != nullptr && isUtf8(found->pw_name) ? oneLine(textOf(found->pw_name)) : QString();
    return name.isEmpty() ? QStringLiteral("another user") : name;
}

QString ownerOfSystem()
{
    return QStringLiteral("the system");
}

} // namespace swabby
