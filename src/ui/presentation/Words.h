#pragma once

#include "ui/presentation/ConfirmationText.h"
#include "ui/presentation/HealthText.h"
#include "ui/presentation/MenuText.h"
#include "ui/presentation/WelcomeText.h"

#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

class QJSEngine;
class QQmlEngine;

namespace swabby {

/// What the windows say whatever the figures are, where it names the computer or a part of its desktop, and
/// where several controls say the same.
class Words : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString aboutAsking MEMBER aboutAsking CONSTANT)
    Q_PROPERTY(QString allIsWell MEMBER allIsWell CONSTANT)
    Q_PROPERTY(QString ask MEMBER ask CONSTANT)
    Q_PROPERTY(QString askHint MEMBER askHint CONSTANT)
    Q_PROPERTY(QString askPlaceholder MEMBER askPlaceholder CONSTANT)
    Q_PROPERTY(QString check MEMBER check CONSTANT)
    Q_PROPERTY(QString checkHint MEMBER checkHint CONSTANT)
    Q_PROPERTY(QString dockerClutter MEMBER dockerClutter CONSTANT)
    Q_PROPERTY(QString explain MEMBER explain CONSTANT)
    Q_PROPERTY(QString firstLook MEMBER firstLook CONSTANT)
    Q_PROPERTY(QString healthHint MEMBER healthHint CONSTANT)
    Q_PROPERTY(QString issuesHint MEMBER issuesHint CONSTANT)
    Q_PROPERTY(QString lastWindow MEMBER lastWindow CONSTANT)
    Q_PROPERTY(QString loginItemSettings MEMBER loginItemSettings CONSTANT)
    Q_PROPERTY(QString newHere MEMBER newHere CONSTANT)
    Q_PROPERTY(QString noLongerListed MEMBER noLongerListed CONSTANT)
    Q_PROPERTY(QString nothingToDo MEMBER nothingToDo CONSTANT)
    Q_PROPERTY(QString quit MEMBER quit CONSTANT)
    Q_PROPERTY(QString stillInTrash MEMBER stillInTrash CONSTANT)
    Q_PROPERTY(QString untilConfirmed MEMBER untilConfirmed CONSTANT)
    Q_PROPERTY(QString welcome MEMBER welcome CONSTANT)
    Q_PROPERTY(QString xcodeCache MEMBER xcodeCache CONSTANT)

    const MachineWords m_words; // before those that are made of it

public:
    explicit Words(MachineWords words, QObject *parent = nullptr);
    /// As a field's menu has them.
    Q_INVOKABLE static QList<swabby::MenuEntry> textMenu(bool hasText, bool hasSelection, bool canPaste)
    {
        return swabby::textMenu(hasText, hasSelection, canPaste);
    }
    /// The words that were made a child of the engine, else a Mac's.
    static Words *create(QQmlEngine *engine, QJSEngine *);

    const QString aboutAsking = QStringLiteral("About this %1, in your own words").arg(m_words.computer);
    const QString allIsWell =
        QStringLiteral("Nothing needs your attention — your %1 is running smoothly.").arg(m_words.computer);
    const QString ask = QStringLiteral("Ask AI");
    const QString askHint = QStringLiteral("Ask Swabby a question");
    const QString askPlaceholder = QStringLiteral("Ask anything about this %1").arg(m_words.computer);
    const QString check = QStringLiteral("Swabby Check");
    const QString checkHint =
        QStringLiteral("One-%1 check of your %2's health").arg(m_words.press, m_words.computer);
    const QString dockerClutter = dockerClutterText();
    const QString explain = explainLabel();
    const QString firstLook = firstLookText(m_words);
    const QString healthHint = QStringLiteral("What's going on with your %1").arg(m_words.computer);
    const QString issuesHint = QStringLiteral("%1 for what's wrong and how to help").arg(m_words.pressFirst);
    const QString lastWindow =
        QStringLiteral("Closing this window also ends Swabby — there is no %1 here to keep it in.")
            .arg(m_words.panel);
    const QString loginItemSettings = m_words.loginItemSettings;
    const QString newHere =
        QStringLiteral("New here? %1 “Open Swabby” below to get started.").arg(m_words.pressFirst);
    const QString noLongerListed = QStringLiteral("No longer in this list");
    const QString nothingToDo = nothingToDoText();
    const QString quit = QStringLiteral("Quit Swabby");
    const QString stillInTrash = QStringLiteral("What was removed last is still in the Trash.");
    const QString untilConfirmed = untilConfirmedText();
    const QString welcome =
        QStringLiteral("It keeps an eye on your %1, so you don't have to.").arg(m_words.computer);
    const QString xcodeCache = m_words.buildCache;
};

} // namespace swabby
