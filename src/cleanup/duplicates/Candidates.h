#pragma once

#include "cleanup/ExcludeList.h"
#include "platform/StopToken.h"
#include "platform/posix/OpenFolder.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace swabby {

/// A file that may be a copy of another, by its place in the order found.
using CandidateIndex = std::uint32_t;
/// Some of them, in the order found.
using CandidateSet = std::vector<CandidateIndex>;

/// The files of some folders that are large enough to be worth comparing.
class Candidates {
public:
    static constexpr std::int64_t smallestSize = 4'097;

    /// Lists the folders one level deep; one that is not absolute or cannot be listed is skipped.
    Candidates(const std::vector<std::filesystem::path> &folders, const StopToken &stop);

    /// Those that share their exact size with another one, without those that have to stay. Of several ways
    /// to one file only the first counts.
    std::vector<CandidateSet> ofSameSize(const ExcludeList &excludes, const StopToken &stop) const;

    std::int64_t size(CandidateIndex index) const { return m_files[index].identity.size; }
    const FileIdentity &identity(CandidateIndex index) const { return m_files[index].identity; }
    const std::string &name(CandidateIndex index) const { return m_files[index].name; }
    std::filesystem::path path(CandidateIndex index) const;
    /// The number of the folder it lies in, in the order they were given.
    std::uint32_t folder(CandidateIndex index) const { return m_files[index].folder; }
    /// No value when it cannot be read or is no longer what was listed.
    std::optional<RegularFile> open(CandidateIndex index) const;

private:
    struct Folder {
        std::filesystem::path path;
        OpenFolder opened;
    };
    struct File {
        std::string name; // without its folder, of which there may be tens of thousands of copies
        FileIdentity identity;
        std::uint32_t folder;
    };

    void identify(const StopToken &stop);
    CandidateSet partners(const CandidateIndex *begin, const CandidateIndex *end, const ExcludeList &excludes,
                          const StopToken &stop) const;

    std::vector<Folder> m_folders;
    std::vector<File> m_files;
};

} // namespace swabby
