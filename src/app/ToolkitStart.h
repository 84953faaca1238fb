#pragma once

#include <QtCore/QString>

namespace swabby {

/// Said where no window can be opened at all.
QString noDisplayText();

/// The toolkit aborts where it cannot begin. While this lives that is one line and an end with status 1, and
/// its other remarks wait until it has begun. One at a time.
class ToolkitStart {
public:
    ToolkitStart();
    ~ToolkitStart();
    ToolkitStart(const ToolkitStart &) = delete;
    ToolkitStart &operator=(const ToolkitStart &) = delete;
};

} // namespace swabby
