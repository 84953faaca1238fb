#pragma once

#include "cleanup/RemovableItem.h"
#include "recording/FolderWriter.h"
#include "recording/ToolTexts.h"

namespace swabby {

/// What was found to clean as files that a Mac would find it by: as large and as old, without what is in
/// them. What this kind of machine keeps elsewhere lies where a Mac has the like of it.
class Findings {
public:
    Findings(const Machine &machine, Rewriting &rewriting, FolderWriter &folder, ToolTexts &texts)
        : m_machine(machine), m_rewriting(rewriting), m_folder(folder), m_texts(texts)
    {
    }

    void add(const RemovableItem &item);

private:
    void add(const CacheEntry &cache);
    void add(const DuplicateGroup &group);
    void add(const DeepScanItem &item);
    void add(const AppUninstall &uninstall);
    /// A tool tells of these by itself.
    void add(const SimulatorRuntimeInfo & /*runtime*/) {}
    void add(const DerivedData & /*buildCache*/) {}
    void add(const DockerPrune & /*docker*/) {}

    std::string placeOf(const std::filesystem::path &path);
    double timeOf(const std::filesystem::path &path, std::int64_t days) const;
    void addOccupied(const std::string &place, FileKind kind, std::int64_t size);

    const Machine &m_machine;
    Rewriting &m_rewriting;
    FolderWriter &m_folder;
    ToolTexts &m_texts;
};

} // namespace swabby
