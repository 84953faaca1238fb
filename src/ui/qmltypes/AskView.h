#pragma once

#include "flows/ai/AskFlow.h"
#include "platform/HarmlessText.h"
#include "ui/qmltypes/AssistantTrouble.h"
#include "ui/qmltypes/ConfirmationView.h"
#include "ui/qmltypes/WindowContext.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace swabby {

/// An answer as the card shows it.
struct ShownAnswer {
    QString explanation;
    QString appToQuit; ///< as it was written; empty for none
    QString note;
    AssistantTrouble trouble = {};
};

/// The card that answers questions about the machine.
class AskView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(QString question READ question WRITE setQuestion NOTIFY questionChanged)
    Q_PROPERTY(bool canAsk READ canAsk NOTIFY questionChanged)
    Q_PROPERTY(bool isAsking READ isAsking NOTIFY changed)
    Q_PROPERTY(QString waitingText READ waitingText CONSTANT)
    Q_PROPERTY(QStringList suggestions READ suggestions NOTIFY changed)
    Q_PROPERTY(bool hasAnswer READ hasAnswer NOTIFY changed)
    Q_PROPERTY(QString explanation READ explanation NOTIFY changed)
    Q_PROPERTY(QString note READ note NOTIFY changed)
    Q_PROPERTY(swabby::AssistantTrouble trouble READ trouble NOTIFY changed)
    Q_PROPERTY(QString quitLabel READ quitLabel NOTIFY changed)
    Q_PROPERTY(QString notice READ notice NOTIFY changed)
    Q_PROPERTY(swabby::ConfirmationView *confirmation READ confirmation CONSTANT)

public:
    explicit AskView(const UserInterfaceContext &context);

    QString question() const { return m_question; }
    void setQuestion(const QString &question);
    /// Whether there is anything but blanks to ask.
    bool canAsk() const { return !m_question.trimmed().isEmpty(); }
    bool isAsking() const { return m_flow.isAsking(); }
    QString waitingText() const { return AskFlow::waitingText(); }
    /// All but the one that was asked last.
    QStringList suggestions() const;
    bool hasAnswer() const { return m_answer.has_value(); }
    QString explanation() const { return m_answer ? harmlessLines(m_answer->explanation) : QString(); }
    QString note() const { return m_answer ? m_answer->note : QString(); }
    AssistantTrouble trouble() const { return m_answer ? m_answer->trouble : AssistantTrouble(); }
    /// "Quit Render Studio"; empty when the answer names no program, or one that the session stands on.
    QString quitLabel() const;
    /// A quiet word about an offer that came to nothing; mostly empty.
    QString notice() const { return m_notice; }
    ConfirmationView *confirmation() { return &m_confirmation; }

    /// Asks what stands in the field. Nothing happens for blanks or while a question is being answered.
    Q_INVOKABLE void ask();
    /// Ends the question under way.
    Q_INVOKABLE void cancel() { m_flow.cancel(); }
    /// Asks the last question again.
    Q_INVOKABLE void askAgain();
    Q_INVOKABLE void openAssistantSettings() { m_context.openAssistantSettings(); }
    /// Asks back before quitting the program that the answer names.
    Q_INVOKABLE void quitApp();

    /// Puts an answer on the card without asking anybody: for pictures and tests.
    void showAnswer(const QString &question, const ShownAnswer &answer);

Q_SIGNALS:
    void questionChanged();
    void changed();

private:
    void followFlow();
    std::optional<ProcessSample> namedProcess() const;
    void setNotice(const QString &notice);

    UserInterfaceContext m_context;
    ConfirmationView m_confirmation;
    AskFlow m_flow;
    QString m_question;
    QString m_asked;
    std::optional<ShownAnswer> m_answer;
    QString m_notice;
};

} // namespace swabby
