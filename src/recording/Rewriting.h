#pragma once

#include "platform/Machine.h"

#include <filesystem>
#include <map>
#include <string>

namespace swabby {

enum class PeoplesNames { replaced, kept };

/// Puts what a machine said into the words of a folder that may lie anywhere: its places are said from the
/// folder's mark on, and names that a person or a maker chose become "name-1", "name-2" and so on, the same
/// one each time. What lies in the system's folders, browsers, and the words that Swabby's rules look for
/// keep theirs.
class Rewriting {
public:
    Rewriting(const Machine &machine, PeoplesNames names);

    bool keepsNames() const { return m_names == PeoplesNames::kept; }
    /// A name by itself; an ending that says what kind of thing it is stays.
    QString name(const QString &name);
    /// The same of a file, whose name is bytes.
    std::string fileName(const std::filesystem::path &file);
    /// A program as a list of processes shows it.
    QString command(const QString &command);
    /// A file or folder as the folder's own: below its home, else below its root.
    std::string path(const std::filesystem::path &path);
    /// A text with the machine's home and root as the folder's, and everything else as it stands.
    std::string text(std::string text) const;

private:
    std::string parts(const std::filesystem::path &path);

    const PeoplesNames m_names;
    const std::filesystem::path m_home;
    const std::filesystem::path m_root;
    std::map<QString, int> m_numbers;
};

} // namespace swabby
