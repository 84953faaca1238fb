#pragma once

#include "ui/qmltypes/RowModel.h"
#include "ui/qmltypes/WindowContext.h"

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtQml/qqmlregistration.h>

namespace swabby {

/// A folder among others, as its row shows it.
struct FolderRow {
    Q_GADGET
    QML_VALUE_TYPE(folderRow)
    Q_PROPERTY(QString name MEMBER name)

public:
    QString name;

    bool operator==(const FolderRow &) const = default;
};

/// Where a person looks for a folder of the machine's, from the home folder on, one folder at a time.
class FolderView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(QString path READ path NOTIFY changed)
    Q_PROPERTY(bool isTop READ isTop NOTIFY changed)
    Q_PROPERTY(bool canBeChosen READ canBeChosen NOTIFY changed)
    Q_PROPERTY(QString remark READ remark NOTIFY changed)
    Q_PROPERTY(swabby::RowModel *folders READ folders CONSTANT)

public:
    FolderView(const UserInterfaceContext &context, QObject *parent) : QObject(parent), m_context(context) {}

    bool isOpen() const { return !m_path.isEmpty(); }
    /// The folder that is looked into, which is the one that would be chosen.
    const QString &path() const { return m_path; }
    /// Nothing of the machine is above.
    bool isTop() const { return m_path == top(); }
    /// It was looked into, and is not the one above all others: too much to keep.
    bool canBeChosen() const { return m_isListed && !isTop(); }
    /// In place of folders; empty while some are listed.
    const QString &remark() const { return m_remark; }
    RowModel *folders() { return &m_folders; }

    Q_INVOKABLE void open();
    /// Nothing while the folder is still looked into.
    Q_INVOKABLE void enter(const QString &name);
    Q_INVOKABLE void leave();
    Q_INVOKABLE void choose();
    Q_INVOKABLE void close() { look({}); }

Q_SIGNALS:
    void changed();
    void chosen(const QString &path);

private:
    QString top() const;
    /// Lists what is in there, later; an empty path closes.
    void look(const QString &path);

    UserInterfaceContext m_context;
    QString m_path;
    QString m_remark;
    bool m_isListed = false;
    RowModel m_folders{this};
};

} // namespace swabby
