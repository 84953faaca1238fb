#pragma once

#include "ai/Answers.h"
#include "ai/ExplainService.h"
#include "ai/ModelAddresses.h"
#include "ai/ModelConnection.h"
#include "ai/ModelText.h"
#include "platform/BackgroundWork.h"
#include "platform/Machine.h"

#include <QCoroTask>

#include <QtCore/QJsonDocument>

#include <chrono>
#include <memory>
#include <optional>

namespace swabby {

/// What goes with a question beside its words. It stands on a line of its own before the wait: made among the
/// arguments of what is awaited, GCC 12 destroys it twice.
struct Asking {
    StopToken stop;
    /// Whether the person who waits for the answer may be asked for the password of the store that keeps the
    /// key.
    Unlocking unlocking = Unlocking::never;
};

/// An answer and how it came about.
template <typename Value>
struct Answered {
    Value value;
    /// Whether a question left this computer for it; a person is told so.
    bool wasSent = false;
    /// Why the model did not answer; none when it did.
    std::optional<ModelFailure> failure = std::nullopt;
    /// Where it was sent, when the person chose that address; else empty.
    QString host = {};

    /// The same with what was made of the value.
    template <typename Other>
    Answered<Other> with(Other other) const
    {
        return {std::move(other), wasSent, failure, host};
    }
};

/// The one gateway to the language model. The way is chosen afresh for every request: straight to the maker
/// with the person's own key, otherwise through the vendor's proxy, or to the address of the person's choice,
/// and not at all when the person has switched the assistant off. Nothing ever fails towards a caller: what
/// goes wrong becomes no answer, and each question has a fixed sentence for that, with the reason beside it.
/// Any number of requests may be under way; each takes a minute at most, all that it waits for included.
/// Nothing is remembered between them. When this goes away, what is under way ends without an answer; a look
/// for the key is waited for, unless the machine's work was stopped before.
///
/// Every call returns at once with a coroutine to await on the calling thread:
///     const auto answer = co_await ai.ask(question, state.systemContextSummary());
class CloudAI {
public:
    /// @param patience of a request, from the look for the key to the end of the answer
    CloudAI(std::shared_ptr<Machine> machine, ModelAddresses addresses,
            std::chrono::milliseconds patience = std::chrono::minutes(1));

    QCoro::Task<Answered<std::optional<QString>>> respond(QString system, QString prompt, int maxTokens,
                                                          Asking asking = {});

    /// The answer read as one JSON object of that record.
    template <typename Record>
    QCoro::Task<Answered<std::optional<Record>>> respondJSON(QString system, QString prompt, int maxTokens,
                                                             Asking asking = {})
    {
        const auto answer =
            co_await respond(std::move(system), std::move(prompt), maxTokens, std::move(asking));
        std::optional<Record> record;
        const QByteArray text = answer.value ? stripCodeFences(*answer.value).toUtf8() : QByteArray();
        if (const QJsonDocument document = QJsonDocument::fromJson(text); document.isObject())
            record = Record::fromJson(document.object());
        auto read = answer.with(std::move(record));
        if (!read.value && !read.failure)
            read.failure = ModelFailure::unreadable;
        co_return read;
    }

    // What they say is as long as a person reads at most, and stands as the model wrote it: whoever shows it
    // makes it harmless.

    QCoro::Task<Answered<QString>> explain(ExplainRequest request, Asking asking = {});
    /// freedText is a size for people, or empty when nothing was freed.
    QCoro::Task<Answered<QString>> weeklySummary(QString freedText, qint64 attentionCount);
    QCoro::Task<Answered<AskAnswer>> ask(QString question, QString systemContext, Asking asking = {});
    QCoro::Task<Answered<SwabbyCheckSummary>> swabbyCheckSummary(qint64 itemCount, QString totalBytesText,
                                                                 std::optional<QString> topProcessName,
                                                                 qint64 loginItemCount, Asking asking = {});
    /// Safe only when the model says so in so many words. Only the name and the size leave this computer.
    QCoro::Task<Answered<CacheAssessment>> assessCacheFolder(QString name, QString sizeText,
                                                             Asking asking = {});
    /// What stands for an answer when there is none.
    static AskAnswer noAnswer();
    static QString noExplanation();

    /// Whether the way to the model works, by the shortest question there is. No failure: it does.
    QCoro::Task<std::optional<ModelFailure>> tryOut();

private:
    const std::shared_ptr<Machine> m_machine;
    const ModelAddresses m_addresses;
    const std::chrono::milliseconds m_patience;
    std::shared_ptr<ModelConnection> m_connection;
    BackgroundWork m_lookups; ///< for the key, one thread for each request that waits for it
};

} // namespace swabby
