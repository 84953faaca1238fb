#pragma once

#include "platform/LoginService.h"

namespace swabby {

/// The application's own entry among the login items.
class MacLoginService final : public LoginService {
public:
    bool isEnabled() override;
    QString registerAtLogin() override;
    QString unregister() override;
};

} // namespace swabby
