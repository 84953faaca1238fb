#pragma once

#include "platform/desktop/TrayItem.h"

#include <QtCore/QStringList>

#include <functional>
#include <memory>

namespace swabby {

/// What the desktop asks of the program by other ways than its windows and its item; all on the main thread.
struct DesktopRequests {
    /// Once, as soon as it is known: whether it was the login that started the program.
    std::function<void(bool isAtLogin)> started = {};
    /// Somebody opens the program that runs already, by its icon for one.
    std::function<void()> openedAgain = {};
    /// A line of the program's menus in the desktop's own menu bar.
    std::function<void(TrayCommand command)> chosen = {};
    std::function<void(int section)> sectionChosen = {};
    QStringList sections = {}; ///< their titles, in the order of their digits
};

/// Stands for the requests that are followed.
class DesktopFollower {
public:
    virtual ~DesktopFollower() = default;
};

/// Follows them for as long as what it gives lives. Null where a desktop asks nothing of the kind: there the
/// program has started before this returns, and not by the login as far as the desktop tells.
std::unique_ptr<DesktopFollower> followDesktop(const DesktopRequests &requests);

} // namespace swabby
