#pragma once

#include "platform/ScanControl.h"
#include "platform/WhenDone.h"

#include <QtCore/QObject>

#include <memory>
#include <optional>

namespace swabby {

/// Something that is waited for and may be stopped, left or begun anew meanwhile. Only the latest run is
/// heard, and only while this stands; its owner needs no guard of its own. Belongs to the thread that made
/// it.
class LatestRun {
public:
    LatestRun() = default;
    /// Ends the run and waits for nothing. Declared after the BackgroundWork that works for it, so that the
    /// work is told to stop before it is waited for.
    ~LatestRun() { end(); }
    LatestRun(const LatestRun &) = delete;
    LatestRun &operator=(const LatestRun &) = delete;

    /// Ends the run before and begins another one. What it gives goes along with the work: whoever goes on
    /// after a wait asks its stop first, which tells for good once the run is over; its progress reaches
    /// `hear` here, the latest of it about ten times a second.
    ScanControl begin(std::function<void(const ScanProgress &)> hear = {});
    /// For work that goes on side by side and ends together: the stop of the run at hand, or of a new one.
    StopToken join();
    /// Ends the run. Nothing that still comes of it is heard.
    void end();
    bool isUnderWay() const { return m_stop.has_value(); }

    /// Hands the answer to `then` here, later, unless the run at hand is over by then.
    template <typename Answer, typename Then>
    void whenDone(const QFuture<Answer> &answer, Then then)
    {
        swabby::whenDone(listener(), answer, std::move(then));
    }

private:
    struct Relay;

    QObject *listener();

    std::optional<StopSource> m_stop;
    std::unique_ptr<QObject> m_listener; ///< of the run at hand
    std::shared_ptr<Relay> m_relay;
};

} // namespace swabby
