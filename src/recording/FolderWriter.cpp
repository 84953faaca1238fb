#include "recording/FolderWriter.h"

#include "platform/FolderListing.h"
#include "platform/MachineFolder.h"
#include "platform/Utf8.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace swabby {

namespace fs = std::filesystem;

std::string placeIn(const std::string &below)
{
    std::string place = folderMark;
    place += '/';
    return place += below;
}

FolderWriter::FolderWriter(const QString &folder)
    : m_folder(QFile::encodeName(QDir(folder).absolutePath()).toStdString())
{
    std::error_code problem;
    fs::create_directories(m_folder, problem);
    const bool isEmpty = !problem && fs::is_empty(m_folder, problem);
    // What somebody has on their computer is nobody else's to read, also where the folder was there before.
    if (isEmpty)
        fs::permissions(m_folder, fs::perms::owner_all, problem);
    if (problem)
        note(m_folder, QString::fromStdString(problem.message()));
    else if (!isEmpty)
        note(m_folder, QStringLiteral("it is not empty"));
}

bool FolderWriter::has(const std::string &path)
{
    std::error_code problem;
    return mayWrite(path) && fs::exists(placeOf(path), problem);
}

void FolderWriter::addFolder(const std::string &path)
{
    if (!mayWrite(path))
        return;
    std::error_code problem;
    fs::create_directories(placeOf(path), problem);
    if (problem)
        note(path, QString::fromStdString(problem.message()));
}

void FolderWriter::addFile(const std::string &path, const QByteArray &content)
{
    addFolder(path.substr(0, path.rfind('/')));
    if (!mayWrite(path))
        return;
    const std::string place = placeOf(path);
    // What somebody else put there meanwhile stays. By its bytes, which need not be text.
    std::FILE *const file = std::fopen(place.c_str(), m_files.insert(place).second ? "wbx" : "wb");
    const auto size = static_cast<std::size_t>(content.size());
    bool isWritten = file != nullptr && std::fwrite(content.constData(), 1, size, file) == size;
    isWritten = file != nullptr && std::fclose(file) == 0 && isWritten;
    if (!isWritten)
        note(path, QString::fromStdString(std::generic_category().message(errno)));
}

void FolderWriter::addHollowFile(const std::string &path, std::int64_t size, const QByteArray &mark)
{
    addFile(path, mark.left(size));
    std::error_code problem;
    if (m_problem.isEmpty())
        fs::resize_file(placeOf(path), static_cast<std::uintmax_t>(size), problem);
    if (problem)
        note(path, QString::fromStdString(problem.message()));
}

void FolderWriter::finish()
{
    for (const auto &[path, time] : m_times) {
        const auto since1970 = std::chrono::duration<double>(time);
        std::error_code problem;
        const auto when = std::chrono::file_clock::from_sys(std::chrono::sys_time<std::chrono::nanoseconds>(
            std::chrono::duration_cast<std::chrono::nanoseconds>(since1970)));
        if (mayWrite(path))
            fs::last_write_time(placeOf(path), when, problem);
        if (problem)
            note(path, QString::fromStdString(problem.message()));
    }
}

std::string FolderWriter::placeOf(const std::string &path) const
{
    return path.starts_with(folderMark) ? m_folder + path.substr(std::strlen(folderMark)) : m_folder;
}

bool FolderWriter::mayWrite(const std::string &path)
{
    // A part of a path may be a name that holds anything.
    if (!isAtOrUnder(fs::path(placeOf(path)).lexically_normal(), fs::path(m_folder).lexically_normal()))
        note(path, QStringLiteral("it leads out of the folder"));
    return m_problem.isEmpty();
}

void FolderWriter::note(const std::string &path, const QString &why)
{
    if (m_problem.isEmpty())
        m_problem = QStringLiteral("%1: %2").arg(textOf(placeOf(path)), why);
}

} // namespace swabby
