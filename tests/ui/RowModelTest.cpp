#include "ui/qmltypes/RowModel.h"
#include "ui/presentation/LeakText.h"

#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace swabby;

namespace {

QList<LeakText> rows(const QString &letters)
{
    QList<LeakText> result;
    for (const QChar letter : letters)
        result.append({letter.toLower().unicode(), letter, {}});
    return result;
}

QString shown(const RowModel &model)
{
    QString letters;
    for (int row = 0; row < model.count(); ++row)
        letters += model.data(model.index(row), Qt::UserRole).value<LeakText>().headline;
    return letters;
}

} // namespace

class RowModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // A letter in another case is the same row with a new value.
    void newRowsReplaceOldOnes_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::addColumn<int>("inserted");
        QTest::addColumn<int>("removed");
        QTest::addColumn<int>("changed");
        const auto row = [](const char *before, const char *after, int inserted, int removed, int changed) {
            QTest::addRow("%s to %s", before, after)
                << QString::fromLatin1(before) << QString::fromLatin1(after) << inserted << removed
                << changed;
        };
        row("", "abc", 3, 0, 0);
        row("abc", "abc", 0, 0, 0);
        row("abc", "aBc", 0, 0, 1);
        row("abcd", "dacb", 0, 0, 0);
        row("abcd", "cxa", 1, 2, 0);
        row("abc", "", 0, 3, 0);
        row("aab", "ab", 0, 1, 0);
        row("ab", "aab", 1, 0, 0);
    }
    void newRowsReplaceOldOnes()
    {
        QFETCH(QString, before);
        QFETCH(QString, after);
        const auto key = [](const LeakText &text) { return QString::number(text.pid); };
        RowModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.show(rows(before), key);
        QSignalSpy inserted(&model, &RowModel::rowsInserted);
        QSignalSpy removed(&model, &RowModel::rowsRemoved);
        QSignalSpy changed(&model, &RowModel::dataChanged);
        model.show(rows(after), key);
        QCOMPARE(shown(model), after);
        QTEST(static_cast<int>(inserted.count()), "inserted");
        QTEST(static_cast<int>(changed.count()), "changed");
        int gone = 0;
        for (const QList<QVariant> &signal : removed)
            gone += signal.at(2).toInt() - signal.at(1).toInt() + 1;
        QTEST(gone, "removed");
    }
};

QTEST_APPLESS_MAIN(RowModelTest)
#include "RowModelTest.moc"
