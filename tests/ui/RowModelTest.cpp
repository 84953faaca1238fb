#include "ui/qmltypes/RowModel.h"
#include "support/Table.h"
#include "ui/presentation/LeakText.h"

#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <numeric>

using namespace swabby;

namespace {

QList<LeakText> rows(const QString &letters)
{
    QList<LeakText> result;
    for (const QChar letter : letters)
        result.append({letter.toLower().unicode(), letter, {}});
    return result;
}

// One that is leaving stands behind a sign.
QString shown(const RowModel &model)
{
    QString letters;
    for (int row = 0; row < model.count(); ++row) {
        if (model.data(model.index(row), RowModel::leavingRole).toBool())
            letters += u'-';
        letters += model.data(model.index(row), RowModel::entryRole).value<LeakText>().headline;
    }
    return letters;
}

QString keyOf(const LeakText &text)
{
    return QString::number(text.pid);
}

} // namespace

class RowModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // A letter in another case is the same row with a new value.
    void newRowsReplaceOldOnes()
    {
        compareTable(fixture(u"ui/row_model.txt"_qs), [&](const Cells &row) {
            RowModel model;
            QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
            model.show(rows(row.text(0)), keyOf);
            const QSignalSpy inserted(&model, &RowModel::rowsInserted);
            const QSignalSpy removed(&model, &RowModel::rowsRemoved);
            const QSignalSpy changed(&model, &RowModel::dataChanged);
            model.show(rows(row.text(1)), keyOf);
            const auto told = [](const QSignalSpy &spy) {
                return std::accumulate(spy.begin(), spy.end(), 0, [](int sum, const QList<QVariant> &signal) {
                    return sum + signal.at(2).toInt() - signal.at(1).toInt() + 1;
                });
            };
            return u"%1 +%2 -%3 ~%4"_qs.arg(shown(model))
                .arg(told(inserted))
                .arg(told(removed))
                .arg(changed.count())
                .trimmed();
        });
    }

    // What is shown first, what is shown twice while the rows are held, and what stands then and afterwards.
    void whatIsHeldKeepsItsPlace()
    {
        compareTable(fixture(u"ui/row_model_held.txt"_qs), [&](const Cells &row) {
            RowModel model;
            QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
            model.show(rows(row.text(0)), keyOf);
            model.setHeld(true);
            model.show(rows(row.text(1)), keyOf);
            model.show(rows(row.text(2)), keyOf);
            const QString held = shown(model);
            model.setHeld(false);
            return held + u' ' + shown(model);
        });
    }
};

QTEST_APPLESS_MAIN(RowModelTest)
#include "RowModelTest.moc"
