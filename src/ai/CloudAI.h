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

#include <memory>
#include <optional>

namespace swabby {

/// An answer and how it came about.
template <typename Value>
struct Answered {
    Value value;
    /// Whether a question left this computer for it; a person is told so.
    bool wasSent = false;
    /// The way to the model needs a key of the person's own. Said once in the program's life.
    bool wantsKey = false;
    bool isSwitchedOff = false; ///< by the person

    /// The same with what was made of the value.
    template <typename Other>
    Answered<Other> with(Other other) const
    {
        return {std::move(other), wasSent, wantsKey, isSwitchedOff};
    }
};

/// The one gateway to the language model. The way is chosen afresh for every request: straight to the maker
/// with the person's own key, otherwise through the vendor's proxy, and not at all when the person has
/// switched the assistant off. Nothing ever fails towards a caller: what goes wrong becomes no answer, and
/// each question has a fixed sentence for that. Any number of requests may be under way; each takes a minute
/// at most. Nothing is remembered between them. When this goes away, what is under way ends without an
/// answer; a look for the key is waited for, unless the machine's work was stopped before.
///
/// Every call returns at once with a coroutine to await on the calling thread:
///     const auto answer = co_await ai.ask(question, state.systemContextSummary());
class CloudAI {
public:
    CloudAI(std::shared_ptr<Machine> machine, ModelAddresses addresses,
            ModelConnection::Limits limits = ModelConnection::Limits());

    QCoro::Task<Answered<std::optional<QString>>> respond(QString system, QString prompt, int maxTokens);

    /// The answer read as one JSON object of that record.
    template <typename Record>
    QCoro::Task<Answered<std::optional<Record>>> respondJSON(QString system, QString prompt, int maxTokens)
    {
        const auto answer = co_await respond(std::move(system), std::move(prompt), maxTokens);
        std::optional<Record> record;
        const QByteArray text = answer.value ? stripCodeFences(*answer.value).toUtf8() : QByteArray();
        if (const QJsonDocument document = QJsonDocument::fromJson(text); document.isObject())
            record = Record::fromJson(document.object());
        co_return answer.with(std::move(record));
    }

    QCoro::Task<Answered<QString>> explain(ExplainRequest request);
    /// freedText is a size for people, or empty when nothing was freed.
    QCoro::Task<Answered<QString>> weeklySummary(QString freedText, qint64 attentionCount);
    QCoro::Task<Answered<AskAnswer>> ask(QString question, QString systemContext);
    QCoro::Task<Answered<SwabbyCheckSummary>> swabbyCheckSummary(qint64 itemCount, QString totalBytesText,
                                                                 std::optional<QString> topProcessName,
                                                                 qint64 loginItemCount);
    /// Safe only when the model says so in so many words. Only the name and the size leave this computer.
    QCoro::Task<Answered<CacheAssessment>> assessCacheFolder(QString name, QString sizeText);

private:
    struct Route;

    static Route chooseRoute(Machine &machine, const ModelAddresses &addresses);

    const std::shared_ptr<Machine> m_machine;
    const ModelAddresses m_addresses;
    std::shared_ptr<ModelConnection> m_connection;
    bool m_hasAskedForKey = false;
    BackgroundWork m_lookups; ///< for the key, one thread for each request that waits for it
};

} // namespace swabby
