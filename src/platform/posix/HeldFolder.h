#pragma once

#include "platform/Disposal.h"
#include "platform/posix/Descriptor.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace swabby {

// A folder that is held open stays the same folder whatever happens to the paths that lead to it. All that
// removes or moves a user's files acts on names in held folders, never on paths. All of this blocks for as
// long as the disk does.

enum class Links { follow, refuse };
enum class Missing { refuse, make };

/// Holds the folder of that name, for acting in it; the right to list it is not needed. The name may be a
/// path where links are followed. Not open when there is no folder, or a link that is to be refused.
Descriptor holdFolder(int folder, const std::string &name, Links links);
Descriptor holdFolder(const std::filesystem::path &path);

/// Holds a folder that is no link and belongs to this user, made with rights for nobody else when it is
/// missing and that is wished. Not open otherwise.
Descriptor holdOwnFolder(int folder, const std::string &name, Missing missing);

/// Holds the folder at a path under a held one and makes what is missing of it, links followed, as long as
/// every folder on the way pleases. Not open otherwise, and then what was made is gone again.
class MadeFolders {
public:
    using Pleases = std::function<bool(int folder)>;
    MadeFolders(int start, const std::filesystem::path &relativePath, mode_t mode, const Pleases &pleases);

    const Descriptor &last() const { return m_last; }
    /// Removes what was made, as long as nothing is in it.
    void undo();

private:
    struct Made {
        Descriptor folder;
        std::string name;
    };
    std::vector<Made> m_made;
    Descriptor m_last;
};

/// What lies in the folder under that name, links not followed; no value when there is nothing.
std::optional<FileIdentity> identityIn(int folder, const std::string &name);
std::optional<FileIdentity> identityOf(int descriptor);

/// Tells mounted file systems apart, also two views of the same disk: the one that a held folder is on, or
/// what lies in it under that name.
std::uint64_t mountOf(int folder, const std::string &name = {});

/// Whether the folder is that one or lies in it, at any depth. False when that cannot be found out.
bool liesAtOrUnder(int folder, const FileIdentity &above);

bool canBeListed(int folder);
/// Whether there is such a folder, no link, and the system does not let this program list it.
bool isKeptClosed(const std::filesystem::path &folder);

/// The names in it, in no order; empty when it cannot be listed.
std::vector<std::string> namesIn(int folder);
std::vector<ListedEntry> entriesIn(int folder);

/// Where a held folder lies now, without links; empty when the system does not tell.
std::filesystem::path pathOf(int folder);
/// The same as the system has it: of a folder that is gone, some other text.
std::string toldPathOf(int folder);

/// Gives this user every right on their own held folder; the rights it had before when that was needed and
/// done.
std::optional<mode_t> unlockOwnFolder(int folder);
bool setRights(int folder, mode_t mode);

} // namespace swabby
