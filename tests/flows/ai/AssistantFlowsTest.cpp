#include "flows/ai/AskFlow.h"
#include "flows/ai/AssistantNotes.h"
#include "flows/ai/ExplainFlow.h"
#include "platform/posix/EnvironmentKey.h"
#include "support/LoopbackServer.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QJsonDocument>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace swabby;

namespace {

/// Answers the first question with a culprit, the next with none, then not at all.
LoopbackServer::Respond inTurn()
{
    return [count = 0](QTcpSocket &socket, const HttpRequest &) mutable {
        const QJsonObject object = {{u"appToQuit"_qs, ++count == 1 ? u"Mill"_qs : u""_qs},
                                    {u"explanation"_qs, u"Answer %1"_qs.arg(count)}};
        const QString text = QString::fromUtf8(QJsonDocument(object).toJson());
        always(httpAnswer(count <= 2 ? 200 : 500, modelReply(text)))(socket, {});
    };
}

const QString sent = u"Sent to Claude to generate this answer."_qs;

} // namespace

class AssistantFlowsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qunsetenv("ANTHROPIC_API_KEY");
        takeKeyFromEnvironment();
    }

    void oneQuestionAtATime()
    {
        LoopbackServer server(inTurn());
        TemporaryMachine folder;
        const auto machine = folder.open();
        AppState state(machine, Record::nothing);
        CloudAI ai(machine, {.direct = {}, .proxy = server.url()});
        AskFlow flow(state, ai);
        const auto answered = [&] { return !flow.isAsking(); };
        for (const QString &blank : {u""_qs, u"  \n\t "_qs})
            flow.ask(blank);
        QVERIFY(!flow.isAsking());

        flow.ask(u"  Why is it slow?\n"_qs);
        flow.ask(u"Again?"_qs); // return pressed twice
        QVERIFY(flow.isAsking() && !flow.explanation());
        QVERIFY(waitUntil(answered));
        QCOMPARE(flow.explanation(), u"Answer 1"_qs);
        QCOMPARE(flow.appToQuit(), u"Mill"_qs);
        QCOMPARE(flow.note(), sent);
        QCOMPARE(server.requests().size(), 1);
        QVERIFY(server.requests().first().prompt().contains(u"asked: \"Why is it slow?\"\n"_qs));
        QVERIFY(server.requests().first().prompt().contains(state.systemContextSummary()));

        flow.ask(u"And now?"_qs);
        QVERIFY(waitUntil(answered));
        QCOMPARE(flow.explanation(), u"Answer 2"_qs);
        QCOMPARE(flow.appToQuit(), std::nullopt);
        QVERIFY(!server.requests().last().prompt().contains(u"Why is it slow?"_qs)); // no conversation

        flow.ask(u"And now?"_qs);
        QVERIFY(waitUntil(answered));
        QCOMPARE(flow.explanation(), u"Couldn't come up with an answer right now."_qs);
        QCOMPARE(flow.note(), sent); // it was, all the same
        QCOMPARE(flow.failure(), ModelFailure::busy);
        QCOMPARE(server.requests().size(), 3);
    }

    void aClosedCardDropsItsAnswer()
    {
        LoopbackServer server([](QTcpSocket &, const HttpRequest &) {});
        TemporaryMachine folder;
        const auto machine = folder.open();
        auto state = std::make_unique<AppState>(machine, Record::nothing);
        auto ai = std::make_unique<CloudAI>(machine, ModelAddresses{.direct = {}, .proxy = server.url()});
        auto ask = std::make_unique<AskFlow>(*state, *ai);
        auto explain = std::make_unique<ExplainFlow>(ExplainRequest{ProcessSample()}, *ai);
        QSignalSpy asked(ask.get(), &AskFlow::changed);
        QSignalSpy explained(explain.get(), &ExplainFlow::changed);
        ask->ask(u"Why?"_qs);
        explain->load();
        explain->load();
        QVERIFY(explain->isLoading() && !explain->text());
        QVERIFY(waitUntil([&] { return server.requests().size() == 2; }));
        ask.reset();
        explain.reset();
        ai.reset();
        state.reset();
        for (int turn = 0; turn < 20; ++turn)
            QCoreApplication::processEvents();
        QCOMPARE(asked.count() + explained.count(), 2); // that they began
        QCOMPARE(server.requests().size(), 2);
    }

    void anExplanationSaysWhatHappened()
    {
        TemporaryMachine folder;
        CloudAI ai(folder.open(), {});
        for (const bool isCancelled : {false, true, false}) {
            ExplainFlow flow(ExplainRequest{LoginItem()}, ai);
            flow.load();
            const bool isStopped = isCancelled && flow.isLoading(); // it may be done at once
            if (isStopped)
                flow.cancel();
            QVERIFY(waitUntil([&] { return !flow.isLoading(); }));
            QCOMPARE(flow.text(), u"Couldn't get an explanation right now."_qs);
            QCOMPARE(flow.failure(), isStopped ? ModelFailure::cancelled : ModelFailure::noAssistant);
        }
        // Each reason is a sentence of its own.
        QSet<QString> reasons;
        for (int failure = 0; failure <= static_cast<int>(ModelFailure::cancelled); ++failure)
            reasons.insert(AssistantNotes::reason(static_cast<ModelFailure>(failure)));
        QCOMPARE(reasons.size(), static_cast<int>(ModelFailure::cancelled) + 1);
        QVERIFY(!reasons.contains(QString()));
        QCOMPARE(AssistantNotes::sentForAnswer(u"model.example"_qs),
                 u"Sent to model.example to generate this answer."_qs);
    }
};

QTEST_GUILESS_MAIN(AssistantFlowsTest)
#include "AssistantFlowsTest.moc"
