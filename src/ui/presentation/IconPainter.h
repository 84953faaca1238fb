#pragma once

#include "platform/posix/HelperProgram.h"
#include "ui/drawing/IconDrawing.h"

#include <QtCore/QByteArray>
#include <QtGui/QImage>

#include <chrono>
#include <optional>

namespace swabby {

/// Draws pictures that anybody may have made, by a helper. Any thread may use it, several at once.
class IconPainter {
public:
    /// The content of a PNG or SVG file, its longer edge of that many pixels. Null when it is no sound
    /// picture or larger than any icon; no value when it took more than that processor time or ended the
    /// process that drew it. Blocks for as long as it takes.
    std::optional<QImage> draw(const QByteArray &file, int pixels, std::chrono::milliseconds processorTime);

    /// Gets the helper ready, with the priority of this thread. Does not block.
    void begin() { m_helper.begin(); }
    /// Gives the helper's memory back and ends what it draws. The next picture starts it again. Blocks until
    /// it has ended.
    void rest() { m_helper.end(); }

private:
    HelperProgram m_helper{iconDrawingProgram};
};

} // namespace swabby
