#pragma once

#include <QCoroFuture>
#include <QCoroTask>

#include <QtCore/QObject>
#include <QtCore/QPointer>

namespace swabby {

/// Hands the result on, on this thread, unless the owner has gone meanwhile; a future's own continuation
/// would insist on an owner that still stands.
template <typename Result, typename Then>
QCoro::Task<> whenDone(QObject *owner, QFuture<Result> future, Then then)
{
    const QPointer guard(owner);
    const Result result = co_await future;
    if (guard)
        then(result);
}

} // namespace swabby
