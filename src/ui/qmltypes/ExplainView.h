#pragma once

#include "flows/ai/ExplainFlow.h"
#include "platform/HarmlessText.h"
#include "state/AppState.h"
#include "ui/presentation/ExplainText.h"
#include "ui/qmltypes/AssistantTrouble.h"
#include "ui/qmltypes/WindowContext.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace swabby {

class ConfirmationView;

/// "What is this?" for one thing at a time.
class ExplainView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(swabby::ExplainText subject READ subject NOTIFY changed)
    Q_PROPERTY(QList<swabby::ExplainFact> facts READ facts NOTIFY changed)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY changed)
    Q_PROPERTY(QString waitingText READ waitingText CONSTANT)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(QString note READ note NOTIFY changed)
    Q_PROPERTY(swabby::AssistantTrouble trouble READ trouble NOTIFY changed)

public:
    ExplainView(const UserInterfaceContext &context, ConfirmationView &confirmation, QObject *parent);

    void open(const ExplainRequest &request);

    /// Shows an explanation without asking anybody: for pictures and tests.
    void showExplanation(const ExplainRequest &request, const QString &text, const QString &note);

    bool isOpen() const { return m_flow != nullptr; }
    /// What is explained; nothing while none is open.
    ExplainText subject() const
    {
        return m_flow ? explainText(m_flow->request(), m_context.state.machine().words) : ExplainText();
    }
    /// What is known of it without the assistant.
    QList<ExplainFact> facts() const;
    bool knowsOrigin() const { return m_origin.has_value(); }
    bool isLoading() const { return m_flow && m_flow->isLoading(); }
    QString waitingText() const { return ExplainFlow::waitingText(); }
    QString text() const { return m_flow ? harmlessLines(m_flow->text().value_or(m_text)) : QString(); }
    QString note() const { return m_flow && m_note.isEmpty() ? m_flow->note() : m_note; }

    AssistantTrouble trouble() const
    {
        return m_flow ? AssistantTrouble(m_flow->failure()) : AssistantTrouble();
    }

    /// Ends the question under way.
    Q_INVOKABLE void cancel();
    Q_INVOKABLE void loadAgain();
    Q_INVOKABLE void openAssistantSettings() { m_context.openAssistantSettings(); }
    Q_INVOKABLE void act();
    Q_INVOKABLE void close();

Q_SIGNALS:
    void changed();

private:
    void begin(const ExplainRequest &request);

    UserInterfaceContext m_context;
    ConfirmationView &m_confirmation;
    std::unique_ptr<ExplainFlow> m_flow;
    std::optional<ProgramOrigin> m_origin; // none while it is looked for
    QString m_text;                        // what was shown without asking
    QString m_note;
};

} // namespace swabby
