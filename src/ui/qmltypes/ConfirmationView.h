#pragma once

#include "flows/startup/StartupFlow.h"
#include "ui/presentation/ConfirmationText.h"
#include "ui/qmltypes/RowModel.h"
#include "ui/qmltypes/WindowContext.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <set>
#include <vector>

namespace swabby {

/// The question a window is asking, if it is asking one.
class ConfirmationView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(swabby::ConfirmationText text READ text NOTIFY changed)
    Q_PROPERTY(swabby::RowModel *lines READ lines CONSTANT)

public:
    explicit ConfirmationView(const UserInterfaceContext &context, QObject *parent);

    bool isOpen() const { return m_info.has_value(); }
    const ConfirmationText &text() const { return m_text; }
    /// Everything that goes, and what stays of it on purpose.
    RowModel *lines() { return &m_lines; }

    /// Opens once it is known what it would do. About what is not quit from here nothing is asked:
    /// quitEnded() says why.
    void askToQuit(const ProcessSample &process, Quitting::Force force);
    /// onRemoved is called as soon as the removal has begun.
    void askToRemove(const std::vector<RemovableItem> &items, const std::function<void()> &onRemoved = {});

    /// Unfolds what is behind the item at that place, or folds it again.
    Q_INVOKABLE void fold(int item);
    Q_INVOKABLE void confirm();
    Q_INVOKABLE void cancel();
    Q_INVOKABLE void showInFolder(const QString &path) { m_context.startup.reveal(path); }

Q_SIGNALS:
    void changed();
    /// A quit that was agreed to here has been carried out, with no words, or could not be. What was said of
    /// the same one before is not so any more.
    void quitEnded(const QString &problem, const QString &before);

private:
    void open(const ConfirmationInfo &info, const ConfirmationText &text,
              const std::vector<RemovableItem> &items);
    void showLines();

    /// A program that was asked about, and how it is quit.
    struct Quit {
        ProcessSample process;
        Quitting::Means means;
        QString said; ///< of how it goes
    };

    UserInterfaceContext m_context;
    std::optional<ConfirmationInfo> m_info;
    ConfirmationText m_text;
    std::vector<RemovableItem> m_items; ///< to be removed
    std::set<int> m_unfolded;           ///< the places of those that are
    RowModel m_lines{this};
    int m_question = 0; ///< the latest one, which may still be looked into
    std::optional<Quit> m_asked;
    std::vector<Quit> m_quitting; ///< told, and perhaps not over yet
};

} // namespace swabby
