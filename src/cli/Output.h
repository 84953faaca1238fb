#pragma once

#include "engine/HealthLevel.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <filesystem>
#include <vector>

namespace swabby {

/// Writes to standard output and flushes, so that a reader of a pipe has each line at once.
void print(const QString &text);
void print(const QByteArray &text);
/// One line to standard error.
void printProblem(const QString &line);

/// The text in the level's colour when standard output is a terminal, else as it is.
QString inColor(const QString &text, HealthLevel level);
QString inBold(const QString &text);

/// Rows in columns as wide as their widest cell; columns named rightAligned by index hold figures.
QString table(const std::vector<QStringList> &rows, const std::vector<int> &rightAligned = {});

/// A text of the machine's on a terminal: what could act on it becomes visible.
QString harmless(const QString &text);
/// The same for a text of several lines, which stay lines.
QString harmlessText(const QString &text);
/// The whole path, harmless; bytes that are no text show as such.
QString pathText(const std::filesystem::path &path);

} // namespace swabby
