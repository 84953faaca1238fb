#pragma once

#include <QtCore/QFutureWatcher>

#include <utility>

namespace swabby {

/// Hands the answer to `then`, later and on this thread, which is the owner's, unless the owner has gone
/// meanwhile; a future's own continuation would insist on an owner that still stands.
template <typename Answer, typename Then>
void whenDone(QObject *owner, const QFuture<Answer> &answer, Then then)
{
    auto *watcher = new QFutureWatcher<Answer>(owner);
    const auto hear = [watcher, then = std::move(then)]() mutable {
        watcher->setParent(nullptr); // the owner may go in here
        watcher->deleteLater();
        then(watcher->future().takeResult());
    };
    QObject::connect(watcher, &QFutureWatcherBase::finished, watcher, hear);
    watcher->setFuture(answer);
}

/// The same, but at once for an answer that is there already.
template <typename Answer, typename Then>
void whenKnown(QObject *owner, const QFuture<Answer> &answer, Then then)
{
    if (answer.isFinished())
        then(answer.result());
    else
        whenDone(owner, answer, std::move(then));
}

} // namespace swabby
