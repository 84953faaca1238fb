#pragma once

#include <QtCore/QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace swabby {

/// Where something that starts by itself was found.
enum class LoginItemScope { userAgent, globalAgent, globalDaemon, classicLoginItem };

/// The raw facts about one thing that starts by itself.
struct StartupEntry {
    QString label;
    QString definitionPath; ///< the file that makes it start; empty when there is none
    QString programPath;    ///< empty when unknown
    LoginItemScope scope = LoginItemScope::userAgent;
    bool isLoaded = false;
    bool programIsMissing = false;
    bool isVendorSigned = false; ///< came with the system
    /// Whether a definition of the person's own can turn it off, though it is everybody's.
    bool canBeOverridden = false;
    bool isOwn = false; ///< Swabby's own
    QString icon{};     ///< a file's absolute path or a name in the icon theme; empty when it names none
    std::optional<std::int32_t> pid;

    bool operator==(const StartupEntry &) const = default;
};

/// Lists what starts by itself, in the order found. Blocks (tools, files): background work only.
class StartupSource {
public:
    virtual ~StartupSource() = default;
    virtual std::vector<StartupEntry> entries() = 0;
};

} // namespace swabby
