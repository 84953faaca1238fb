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
    void newRowsReplaceOldOnes()
    {
        struct Row {
            QString before, after;
            int inserted, removed, changed;
        };
        const auto key = [](const LeakText &text) { return QString::number(text.pid); };
        for (const Row &row : {Row{u""_qs, u"abc"_qs, 3, 0, 0}, Row{u"abc"_qs, u"abc"_qs, 0, 0, 0},
                               Row{u"abc"_qs, u"aBc"_qs, 0, 0, 1}, Row{u"abcd"_qs, u"dacb"_qs, 0, 0, 0},
                               Row{u"abcd"_qs, u"cxa"_qs, 1, 2, 0}, Row{u"abc"_qs, u""_qs, 0, 3, 0},
                               Row{u"aab"_qs, u"ab"_qs, 0, 1, 0}, Row{u"ab"_qs, u"aab"_qs, 1, 0, 0}}) {
            RowModel model;
            QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
            model.show(rows(row.before), key);
            const QSignalSpy inserted(&model, &RowModel::rowsInserted);
            const QSignalSpy removed(&model, &RowModel::rowsRemoved);
            const QSignalSpy changed(&model, &RowModel::dataChanged);
            model.show(rows(row.after), key);
            QCOMPARE(shown(model), row.after);
            QCOMPARE(inserted.count(), row.inserted);
            QCOMPARE(changed.count(), row.changed);
            int gone = 0;
            for (const QList<QVariant> &signal : removed)
                gone += signal.at(2).toInt() - signal.at(1).toInt() + 1;
            QCOMPARE(gone, row.removed);
        }
    }
};

QTEST_APPLESS_MAIN(RowModelTest)
#include "RowModelTest.moc"
