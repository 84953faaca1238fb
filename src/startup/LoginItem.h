#pragma once

#include "platform/StartupSource.h"

#include <QtCore/QList>
#include <QtCore/QString>

#include <optional>

namespace swabby {

/// Something that starts by itself and is not part of the operating system.
struct LoginItem {
    QString label;
    QString plistPath;   ///< the file that defines it; empty when there is none
    QString programPath; ///< empty when unknown
    LoginItemScope scope = LoginItemScope::userAgent;
    bool isLoaded = false;
    bool isOrphaned = false; ///< its program is gone
    bool isAppleSigned = false;
    bool canDisableInPlace = false;
    std::optional<int> bootDelaySeconds;
    bool isOwn = false; ///< Swabby's own
    QString icon{};     ///< as its definition names it; empty when it names none

    /// The scope's words, a colon and the label.
    QString id() const;
    /// Whether it comes from the system's vendor or is Swabby's own.
    bool isVouchedFor() const { return isAppleSigned || isOwn; }
    /// Whether it has lost its program or nobody vouches for it.
    bool deservesALook() const { return isOrphaned || !isVouchedFor(); }

    bool operator==(const LoginItem &) const = default;
};

/// What a person reads about the scope, e.g. "Runs in the background".
QString scopeText(LoginItemScope scope);

} // namespace swabby
