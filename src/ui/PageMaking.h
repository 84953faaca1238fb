#pragma once

#include <QtCore/QTimer>
#include <QtQml/QQmlIncubator>

namespace swabby {

/// Makes what an engine is asked to make asynchronously, in portions, each for one frame of the windows: so
/// none of their frames waits for a whole page.
class PageMaking : public QQmlIncubationController {
public:
    PageMaking();
    /// Makes all that is begun, at once: the toolkit does not survive that something half made is let go.
    void finish();

protected:
    void incubatingObjectCountChanged(int count) override;

private:
    void makePortion();

    QTimer m_timer;
};

} // namespace swabby
