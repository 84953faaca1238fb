#pragma once

#include "platform/Disposal.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>

namespace swabby {

/// What a tree looks like from outside: for every path in it, relative to its top, one line with kind,
/// rights, owner, time and content or link target. Other mounts are looked into, links are not followed.
using TreePicture = std::map<std::string, std::string>;
TreePicture pictureOf(const std::filesystem::path &top);

/// The first difference in words that fit on a line; empty when there is none.
std::string difference(const TreePicture &before, const TreePicture &after);

/// Fills a folder, which is made, the same way for every seed with what files can be: names with line ends,
/// no UTF-8 or 255 bytes, links within, out, dangling and in circles, hard links to what is outside, folders
/// 70 deep, pipes, and folders without rights.
void growRandomTree(const std::filesystem::path &folder, const std::filesystem::path &outside,
                    std::uint32_t seed);

/// A folder with some files, a link and a folder, whose content tests expect to stay.
void growOutside(const std::filesystem::path &folder);

void writeBytes(const std::filesystem::path &path, const std::string &content);
std::string bytesOf(const std::filesystem::path &path);

/// A folder in a temporary place that ends with its object, whatever is in it.
class Ground {
public:
    explicit Ground(const std::filesystem::path &place = std::filesystem::temp_directory_path());
    ~Ground();
    Ground(const Ground &) = delete;
    Ground &operator=(const Ground &) = delete;

    const std::filesystem::path &path() const { return m_path; }
    std::filesystem::path operator/(const std::filesystem::path &name) const { return m_path / name; }

private:
    std::filesystem::path m_path;
};

/// What somebody who looked at the path now would agree on.
RemovalTarget targetAt(const std::filesystem::path &path, const std::filesystem::path &allowedFolder);

/// Lists the Trash and empties it at once.
bool emptyNow(Disposal &disposal, const RemovalTarget &trash, const MustStay &mustStay = {});

/// Does the work in a child process, which gives the problem it found or an empty text. For what would
/// change the whole process.
std::string inChild(const std::function<std::string()> &work);
/// The same in several children at once; the first problem.
std::string inChildren(int count, const std::function<std::string(int number)> &work);

/// Becomes a user without any special rights when this process is root. For use in a child.
void becomeNobody();

} // namespace swabby
