#include "ui/qmltypes/FolderView.h"

#include "platform/WhenDone.h"
#include "state/AppState.h"

#include <QtCore/QDir>

#include <algorithm>
#include <optional>

namespace swabby {
namespace {

/// Those in plain sight first. None when it cannot be looked into. Blocks for the disk.
std::optional<QList<FolderRow>> foldersIn(const QString &path)
{
    const QDir folder(path);
    if (!folder.exists() || !folder.isReadable())
        return std::nullopt;
    QList<FolderRow> rows;
    for (const QString &name : folder.entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot,
                                                QDir::Name | QDir::IgnoreCase | QDir::LocaleAware))
        if (!name.contains(QChar::ReplacementCharacter)) // a setting is text, which names no such folder
            rows.append({name});
    std::stable_partition(rows.begin(), rows.end(),
                          [](const FolderRow &row) { return !row.name.startsWith(QLatin1Char('.')); });
    return rows;
}

} // namespace

QString FolderView::top() const
{
    const QString &root = m_context.state.machine().places.root;
    return root.isEmpty() ? QStringLiteral("/") : root.section(QLatin1Char('/'), 0, -2);
}

void FolderView::open()
{
    look(m_context.state.machine().places.home);
}

void FolderView::enter(const QString &name)
{
    if (m_isListed)
        look(QDir(m_path).filePath(name));
}

void FolderView::leave()
{
    if (!isTop())
        look(QDir::cleanPath(m_path + QStringLiteral("/..")));
}

void FolderView::choose()
{
    if (!canBeChosen())
        return;
    const QString path = m_path;
    close();
    Q_EMIT chosen(path);
}

void FolderView::look(const QString &path)
{
    m_path = path;
    m_isListed = false;
    m_remark = QStringLiteral("Looking…");
    m_folders.show(QList<FolderRow>(), [](const FolderRow &row) { return row.name; });
    Q_EMIT changed();
    if (path.isEmpty())
        return;
    whenDone(this, m_context.systemCalls.ask([path] { return foldersIn(path); }),
             [this, path](const std::optional<QList<FolderRow>> &rows) {
                 if (path != m_path)
                     return;
                 m_folders.show(rows.value_or(QList<FolderRow>()),
                                [](const FolderRow &row) { return row.name; });
                 m_isListed = rows.has_value();
                 m_remark = !rows           ? QStringLiteral("This folder cannot be looked into.")
                            : rows->empty() ? QStringLiteral("There are no folders in here.")
                                            : QString();
                 Q_EMIT changed();
             });
}

} // namespace swabby
