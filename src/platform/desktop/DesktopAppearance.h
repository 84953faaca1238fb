#pragma once

#include <QtCore/QObject>
#include <QtGui/QColor>

#include <memory>
#include <optional>

namespace swabby {

/// What the desktop says about its look; what it leaves open is for the windows to choose.
struct Appearance {
    std::optional<bool> prefersDark = {};
    std::optional<QColor> accent = {};
    bool reducesMotion = false;

    bool operator==(const Appearance &) const = default;
};

/// Tells what the desktop says, and when it says something else. Asks in the background: nothing is known at
/// first, and nothing ever where no desktop answers. Main thread.
class DesktopAppearance : public QObject {
    Q_OBJECT

public:
    const Appearance &now() const { return m_now; }

Q_SIGNALS:
    void changed();

protected:
    void say(const Appearance &appearance)
    {
        if (std::exchange(m_now, appearance) != appearance)
            Q_EMIT changed();
    }

private:
    Appearance m_now;
};

/// This system's way; never null.
std::unique_ptr<DesktopAppearance> makeDesktopAppearance();

} // namespace swabby
