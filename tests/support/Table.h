#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <string>

namespace swabby {

/// One row of a table that is written as text: a line, with " | " between its cells. In a cell stand \n, \t,
/// \r, \0, \xFF and \\ for what they stand for in C++, \s for a blank at its end, \p for the sign itself and
/// \q for a quotation mark without its other half, which moc does not take.
class Cells {
public:
    explicit Cells(const QByteArray &line);

    /// Empty for a cell that is not there, as the other two.
    QByteArray operator[](qsizetype index) const { return m_cells.value(index); }
    QString text(qsizetype index) const { return QString::fromUtf8(m_cells.value(index)); }
    std::string string(qsizetype index) const { return m_cells.value(index).toStdString(); }
    /// 0 for what is no number.
    double number(qsizetype index) const { return m_cells.value(index).toDouble(); }
    qsizetype size() const { return m_cells.size(); }

private:
    QList<QByteArray> m_cells;
};

/// Makes a check fail unless the reading makes of every row what stands in the row's last cell. Empty lines
/// are no rows.
void compareTable(const QByteArray &table, const std::function<QString(const Cells &row)> &reading);

/// The words of each of them, one a line.
QString lines(const auto &things, const auto &wordsOf)
{
    QStringList words;
    for (const auto &thing : things)
        words.append(wordsOf(thing));
    return words.join(QLatin1Char('\n'));
}

/// The text of that file of tests/fixtures.
QByteArray fixture(const QString &name);

} // namespace swabby
