#pragma once

#include <QtCore/QString>

namespace swabby {

// Names of programs and files are written by anybody, and answers of a model by a model.

/// The text as one harmless line: in place of each control character, line break and character that turns the
/// reading direction around stands another one.
QString oneLine(QString text, QChar standIn = QLatin1Char(' '));
/// The same for a text of several lines, which stay lines.
QString harmlessLines(const QString &text, QChar standIn = QLatin1Char(' '));
/// At most so much of the text, in UTF-16 units, and no half character.
QString cutTo(QString text, qsizetype most);

} // namespace swabby
