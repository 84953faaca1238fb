#include "support/RandomTree.h"

#include "platform/posix/Channels.h"
#include "platform/posix/HeldFolder.h"
#include "platform/posix/TreeRemoval.h"

#include <QtCore/QByteArray>

#include <array>
#include <fcntl.h>
#include <fstream>
#include <grp.h>
#include <random>
#include <sstream>
#include <sys/stat.h>
#include <sys/wait.h>

namespace swabby {
namespace {

namespace fs = std::filesystem;

constexpr uid_t nobody = 65534;

std::string contentAt(int folder, const std::string &name, mode_t mode)
{
    std::array<char, 4096> buffer;
    ssize_t length = 0;
    if (S_ISLNK(mode)) {
        length = ::readlinkat(folder, name.c_str(), buffer.data(), buffer.size());
    } else if (S_ISREG(mode)) {
        const Descriptor file(::openat(folder, name.c_str(), O_RDONLY | O_CLOEXEC));
        length = ::read(file.number(), buffer.data(), buffer.size());
    }
    return std::string(buffer.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
}

/// By held folders, since deep trees have paths that are too long for the system.
void picture(int folder, const std::string &above, TreePicture &result)
{
    for (const std::string &name : namesIn(folder)) {
        struct stat facts = {};
        ::fstatat(folder, name.c_str(), &facts, AT_SYMLINK_NOFOLLOW);
        std::ostringstream line;
        const FileIdentity identity = identityIn(folder, name).value_or(FileIdentity());
        line << std::oct << facts.st_mode << ' ' << facts.st_uid << ' ' << std::dec
             << identity.modifiedNanoseconds << ' ' << contentAt(folder, name, facts.st_mode);
        result[above + name] = line.str();
        if (!S_ISDIR(facts.st_mode))
            continue;
        const Descriptor child(::openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
        picture(child.number(), above + name + '/', result);
    }
}

class Grower {
public:
    Grower(fs::path outside, std::uint32_t seed) : m_outside(std::move(outside)), m_random(seed) {}

    void fill(int folder, int depth)
    {
        const int count = pick(depth > 3 ? 3 : 7) + (depth == 0 ? 4 : 0);
        for (int number = 0; number < count; ++number) {
            const std::string name = nameOf(number);
            switch (pick(depth < 4 ? 10 : 6)) {
            case 0:
            case 1:
            case 2:
                write(folder, name);
                break;
            case 3:
                ::symlinkat(linkTarget().c_str(), folder, name.c_str());
                break;
            case 4:
                ::linkat(AT_FDCWD, (m_outside / "hard").c_str(), folder, name.c_str(), 0);
                break;
            case 5:
                ::mkfifo((pathOf(folder) / name).c_str(), 0600);
                break;
            default:
                makeFolder(folder, name, depth);
            }
        }
    }

    void makeDeep(int folder)
    {
        Descriptor here = holdFolder(folder, ".", Links::refuse);
        for (int depth = 0; depth < 70; ++depth) {
            const std::string name = depth % 2 ? std::string(255, 'd') : "deep";
            ::mkdirat(here.number(), name.c_str(), 0755);
            here = holdFolder(here.number(), name, Links::refuse);
        }
        write(here.number(), "bottom");
    }

private:
    int pick(int below) { return static_cast<int>(m_random() % static_cast<std::uint32_t>(below)); }

    std::string nameOf(int number)
    {
        const std::array<std::string, 8> names = {
            "plain", "two\nlines", "caf\xE9", "with space.txt",
            "-rf",   "100%_done",  ".hidden", "\xC3\xA9" + std::string(251, 'n')};
        return names[static_cast<std::size_t>(pick(8))].substr(0, 253) + std::to_string(number);
    }

    std::string linkTarget()
    {
        const std::array<std::string, 7> targets = {
            m_outside / "folder", m_outside / "hard", ".", "..", "nowhere", "plain0", "../plain1"};
        return targets[static_cast<std::size_t>(pick(7))];
    }

    void write(int folder, const std::string &name)
    {
        const Descriptor file(::openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0640));
        const std::string content(static_cast<std::size_t>(pick(200)), 'x');
        [[maybe_unused]] const auto written = ::write(file.number(), content.data(), content.size());
    }

    void makeFolder(int folder, const std::string &name, int depth)
    {
        if (::mkdirat(folder, name.c_str(), 0755) != 0)
            return;
        const Descriptor child = holdFolder(folder, name, Links::refuse);
        fill(child.number(), depth + 1);
        const std::array<mode_t, 8> modes = {0755, 0755, 0755, 0700, 0555, 0500, 0500, 0770};
        setRights(child.number(), modes[static_cast<std::size_t>(pick(8))]);
    }

    fs::path m_outside;
    std::mt19937 m_random;
};

} // namespace

TreePicture pictureOf(const fs::path &top)
{
    TreePicture result;
    const Descriptor folder(::open(top.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    picture(folder.number(), {}, result);
    return result;
}

std::string difference(const TreePicture &before, const TreePicture &after)
{
    const auto shown = [](const std::string &text) {
        return QByteArray::fromStdString(text.substr(0, 200)).toPercentEncoding(" /").toStdString();
    };
    for (const auto &[path, line] : before)
        if (const auto found = after.find(path); found == after.end() || found->second != line)
            return shown(path) + ": " + shown(line) + " became " +
                   (found == after.end() ? "nothing" : shown(found->second));
    for (const auto &[path, line] : after)
        if (before.count(path) == 0)
            return shown(path) + " appeared";
    return {};
}

void growRandomTree(const fs::path &folder, const fs::path &outside, std::uint32_t seed)
{
    ::mkdir(folder.c_str(), 0755);
    const Descriptor held = holdFolder(folder);
    Grower grower(outside, seed);
    grower.fill(held.number(), 0);
    if (seed % 4 == 0)
        grower.makeDeep(held.number());
}

void growOutside(const fs::path &folder)
{
    fs::create_directories(folder / "folder/inner");
    for (const char *name : {"hard", "folder/one", "folder/inner/two"})
        writeBytes(folder / name, name);
    fs::create_symlink("hard", folder / "link");
}

void writeBytes(const fs::path &path, const std::string &content)
{
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
}

std::string bytesOf(const fs::path &path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

Ground::Ground(const fs::path &place)
{
    std::string name = place / "swabby-test-XXXXXX";
    if (!::mkdtemp(name.data()))
        qFatal("no temporary folder");
    m_path = name;
}

Ground::~Ground()
{
    const Descriptor above = holdFolder(m_path.parent_path());
    removeEntry(above.number(), m_path.filename());
}

RemovalTarget targetAt(const fs::path &path, const fs::path &allowedFolder)
{
    return {path, allowedFolder, FileIdentity::of(path).value_or(FileIdentity())};
}

bool emptyNow(Disposal &disposal, const RemovalTarget &trash, const MustStay &mustStay)
{
    return disposal.emptyTrash(trash, disposal.listTrash(trash.path, mustStay), mustStay);
}

std::string inChild(const std::function<std::string()> &work)
{
    return inChildren(1, [&](int) { return work(); });
}

std::string inChildren(int count, const std::function<std::string(int)> &work)
{
    auto [reading, writing] = makePipe();
    std::vector<pid_t> children;
    for (int number = 0; number < count; ++number) {
        children.push_back(::fork());
        if (children.back() != 0)
            continue;
        const std::string problem = work(number);
        const auto written = ::write(writing.number(), problem.data(), problem.size());
        ::_exit(written == static_cast<ssize_t>(problem.size()) ? 0 : 1);
    }
    writing.reset();
    std::string problems;
    std::array<char, 512> buffer;
    for (ssize_t got = 0; (got = ::read(reading.number(), buffer.data(), buffer.size())) > 0;)
        problems.append(buffer.data(), static_cast<std::size_t>(got));
    for (const pid_t child : children) {
        int status = 0;
        ::waitpid(child, &status, 0);
        if (status != 0)
            problems += "a child ended with status " + std::to_string(status);
    }
    return problems;
}

void becomeNobody()
{
    if (::geteuid() != 0)
        return;
    if (::setgroups(0, nullptr) != 0 || ::setgid(nobody) != 0 || ::setuid(nobody) != 0)
        qFatal("cannot become nobody");
}

} // namespace swabby
