#pragma once

#include <QtCore/QString>

#include <cstdint>
#include <optional>

namespace swabby {

/// Where a running program, or the file of one, comes from.
struct ProgramOrigin {
    QString account;                 ///< the name of whom it runs for
    QString startedBy;               ///< the program that started it, as a person calls it
    QString file;                    ///< absolute path of what runs: of an interpreter, the script
    QString package;                 ///< what brought the file, with its version; empty where none did
    std::optional<double> startedAt; ///< seconds since 1970

    bool operator==(const ProgramOrigin &) const = default;
};

/// What a system knows of programs beyond their figures. Asked only about a single one that somebody wants to
/// know about: may run a tool, background work only. This one is of a system that does not say.
class ProgramOrigins {
public:
    virtual ~ProgramOrigins() = default;

    /// Of a running program, all but its start; nothing that it does not know, or when it has ended.
    virtual ProgramOrigin ofProcess(std::int32_t /*pid*/) { return {}; }
    /// The package that brought a file, with its version; empty when none did.
    virtual QString packageOf(const QString & /*file*/) { return {}; }
};

} // namespace swabby
