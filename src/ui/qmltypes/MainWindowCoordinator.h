#pragma once

#include "health/HealthIssue.h"
#include "ui/presentation/Tint.h"
#include "ui/qmltypes/ConfirmationView.h"
#include "ui/qmltypes/ExplainView.h"
#include "ui/qmltypes/WindowContext.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace swabby {

/// Through it the panels of a main window raise confirmations and explanations, and say a word when something
/// did not work.
class MainWindowCoordinator : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(swabby::ConfirmationView *confirmation READ confirmation CONSTANT)
    Q_PROPERTY(swabby::ExplainView *explanation READ explanation CONSTANT)
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)
    Q_PROPERTY(int noticeTint READ noticeTint NOTIFY noticeChanged)

public:
    explicit MainWindowCoordinator(const UserInterfaceContext &context, QObject *parent);

    ConfirmationView *confirmation() { return &m_confirmation; }
    ExplainView *explanation() { return &m_explanation; }
    /// A quiet word about what was done here: mostly that it did not work. Empty when there is none.
    const QString &notice() const { return m_notice; }
    int noticeTint() const { return static_cast<int>(m_noticeTint); }
    void setNotice(const QString &notice, Tint tint = Tint::orange);
    Q_INVOKABLE void dismissNotice() { setNotice({}); }
    Q_INVOKABLE void openPermissionSettings(int what);

    void explain(const ExplainRequest &request);
    /// The question before a program is quit.
    void quit(const ProcessSample &process, Quitting::Force force);
    /// Does what the issue's action says; it may switch the section shown.
    void perform(const HealthIssue &issue, MainSection &selection);

Q_SIGNALS:
    void noticeChanged();

private:
    UserInterfaceContext m_context;
    ConfirmationView m_confirmation;
    ExplainView m_explanation;
    QString m_notice;
    Tint m_noticeTint = Tint::orange;
};

} // namespace swabby
