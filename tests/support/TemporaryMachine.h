#pragma once

#include "platform/Machine.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QTemporaryDir>

#include <functional>
#include <memory>

namespace swabby {

/// A machine folder that lasts as long as its test.
class TemporaryMachine {
public:
    /// A machine with that machine.json and no tools.
    explicit TemporaryMachine(const QJsonObject &facts = {});

    QString folder() const { return m_folder.path(); }
    QString home() const { return folder() + QStringLiteral("/home"); }
    QString historyFile() const;

    /// Makes a tool that runs the lines of a shell script.
    void addTool(const QString &path, const QByteArray &script) const;
    /// Makes `ps` list these rows (pid ppid pcpu pmem rss comm) to every question, sorted or not.
    void setProcesses(const QList<QByteArray> &rows) const;
    /// Writes a file, with the folders above it.
    void writeFile(const QString &relativePath, const QByteArray &content) const;

    /// Reads the folder as the product does.
    std::shared_ptr<Machine> open() const;
    /// The events of one kind, oldest first.
    QJsonArray events(const QString &kind) const;
    /// The tools that ran with their arguments, one a line.
    QString runs() const;

private:
    QTemporaryDir m_folder;
};

/// How long a test waits for what must come, in milliseconds: sanitizers on a busy computer take their time.
inline constexpr int patience = 120'000;

/// Runs the event loop until the condition holds; false when it does not in that time.
bool waitUntil(const std::function<bool()> &condition);

} // namespace swabby
