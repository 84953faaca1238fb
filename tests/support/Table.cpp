#include "support/Table.h"

#include <QtCore/QFile>
#include <QtTest/QTest>

namespace swabby {
namespace {

QByteArray unescaped(const QByteArray &cell)
{
    static const QByteArray signs = "ntr0spq\\";
    static const QByteArray meanings("\n\t\r\0 |\"\\", 8);
    QByteArray bytes;
    for (qsizetype at = 0; at < cell.size(); ++at) {
        const qsizetype sign = cell[at] == '\\' ? signs.indexOf(cell.mid(at + 1, 1)) : -1;
        if (cell.mid(at, 2) == "\\x") {
            bytes += QByteArray::fromHex(cell.mid(at + 2, 2));
            at += 3;
        } else if (sign >= 0) {
            bytes += meanings[sign];
            ++at;
        } else {
            bytes += cell[at];
        }
    }
    return bytes;
}

} // namespace

Cells::Cells(const QByteArray &line)
{
    QByteArray rest = line.trimmed();
    for (qsizetype end = 0; end >= 0; rest = rest.mid(end + 1)) {
        end = rest.indexOf('|');
        m_cells.append(unescaped((end < 0 ? rest : rest.first(end)).trimmed()));
        if (end < 0)
            break;
    }
}

void compareTable(const QByteArray &table, const std::function<QString(const Cells &row)> &reading)
{
    QStringList actual, expected;
    for (const QByteArray &line : table.split('\n')) {
        if (line.trimmed().isEmpty())
            continue;
        const Cells row(line);
        const QString start = QString::fromUtf8(line.first(line.lastIndexOf('|') + 1)).trimmed() + u' ';
        actual.append(start + reading(row));
        expected.append(start + row.text(row.size() - 1));
    }
    QVERIFY2(!expected.isEmpty(), "a table without rows");
    QCOMPARE(actual, expected);
}

QByteArray fixture(const QString &name)
{
    QFile file(QStringLiteral(SWABBY_FIXTURES "/") + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no fixture %s", qPrintable(name));
    return file.readAll();
}

} // namespace swabby
