#pragma once

#include <QtCore/QString>

namespace swabby {

/// The system's register of programs that open at login, as far as it concerns Swabby itself. Reads and
/// writes a small file at most.
class LoginService {
public:
    virtual ~LoginService() = default;

    virtual bool isEnabled() = 0;
    /// Empty when it was done, else why it was not.
    virtual QString registerAtLogin() = 0;
    virtual QString unregister() = 0;
};

} // namespace swabby
