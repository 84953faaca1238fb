#pragma once

#include "flows/ai/ExplainFlow.h"
#include "ui/presentation/ProgramTile.h"
#include "ui/presentation/Tint.h"
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
    Q_PROPERTY(QString name READ name NOTIFY changed)
    Q_PROPERTY(swabby::ProgramTile tile READ tile NOTIFY changed)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY changed)
    Q_PROPERTY(QString waitingText READ waitingText CONSTANT)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(QString note READ note NOTIFY changed)
    Q_PROPERTY(QString recommendation READ recommendation NOTIFY changed)
    Q_PROPERTY(int recommendationTint READ recommendationTint NOTIFY changed)
    Q_PROPERTY(QString trust READ trust NOTIFY changed)
    Q_PROPERTY(QString figures READ figures NOTIFY changed)
    Q_PROPERTY(QString actionLabel READ actionLabel NOTIFY changed)
    Q_PROPERTY(QString actionHint READ actionHint NOTIFY changed)

public:
    ExplainView(const UserInterfaceContext &context, ConfirmationView &confirmation,
                QObject *parent = nullptr);

    void open(const ExplainRequest &request);

    /// Shows an explanation without asking anybody: for pictures and tests.
    void showExplanation(const ExplainRequest &request, const QString &text, const QString &note);

    bool isOpen() const { return m_flow != nullptr; }
    QString name() const;
    ProgramTile tile() const;
    bool isLoading() const { return m_flow && m_flow->isLoading(); }
    QString waitingText() const { return ExplainFlow::waitingText(); }
    QString text() const;
    QString note() const { return m_flow && m_note.isEmpty() ? m_flow->note() : m_note; }
    QString recommendation() const;
    int recommendationTint() const;
    /// "Trust 85"; empty for a startup item.
    QString trust() const;
    /// What it takes, in small; empty for a startup item.
    QString figures() const;
    /// "Force Quit", "Disable", or the way to the system's settings.
    QString actionLabel() const;
    QString actionHint() const;

    Q_INVOKABLE void act();
    Q_INVOKABLE void close();

Q_SIGNALS:
    void changed();

private:
    const ProcessSample *process() const;
    const LoginItem *loginItem() const;

    UserInterfaceContext m_context;
    ConfirmationView &m_confirmation;
    std::unique_ptr<ExplainFlow> m_flow;
    QString m_text; // what was shown without asking
    QString m_note;
};

} // namespace swabby
