#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace swabby {

/// A place of the folder, from its mark on.
std::string placeIn(const std::string &below);

/// Writes into a folder that is empty, by paths that begin with the folder's mark. Whatever fails leaves its
/// reason, and nothing is written after it; a path that leads out of the folder fails. Blocks for the disk.
class FolderWriter {
public:
    /// Makes the folder where it is missing and closes it to everybody but its owner. One that is not empty
    /// is refused.
    explicit FolderWriter(const QString &folder);

    /// Why not all was written; empty when it was.
    const QString &problem() const { return m_problem; }

    bool has(const std::string &path);
    void addFolder(const std::string &path);
    void addFile(const std::string &path, const QByteArray &content = {});
    /// A file of that length that takes no room, with a few bytes of its own at the beginning.
    void addHollowFile(const std::string &path, std::int64_t size, const QByteArray &mark);
    /// When it was last modified, seconds since 1970; once all is written, since a folder's time changes with
    /// what is put in.
    void setTime(const std::string &path, double time) { m_times[path] = time; }
    void finish();

private:
    std::string placeOf(const std::string &path) const;
    bool mayWrite(const std::string &path);
    void note(const std::string &path, const QString &why);

    const std::string m_folder;
    QString m_problem;
    std::set<std::string> m_files; ///< what it wrote itself, which it may write anew
    std::map<std::string, double> m_times;
};

} // namespace swabby
