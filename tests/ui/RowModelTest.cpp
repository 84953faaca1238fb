#include "ui/qmltypes/RowModel.h"
#include "support/Table.h"
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
        const auto key = [](const LeakText &text) { return QString::number(text.pid); };
        compareTable(fixture(u"ui/row_model.txt"_qs), [&](const Cells &row) {
            RowModel model;
            QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
            model.show(rows(row.text(0)), key);
            const QSignalSpy inserted(&model, &RowModel::rowsInserted);
            const QSignalSpy removed(&model, &RowModel::rowsRemoved);
            const QSignalSpy changed(&model, &RowModel::dataChanged);
            model.show(rows(row.text(1)), key);
            qsizetype gone = 0;
            for (const QList<QVariant> &signal : removed)
                gone += signal.at(2).toInt() - signal.at(1).toInt() + 1;
            return u"%1 +%2 -%3 ~%4"_qs.arg(shown(model))
                .arg(inserted.count())
                .arg(gone)
                .arg(changed.count())
                .trimmed();
        });
    }
};

QTEST_APPLESS_MAIN(RowModelTest)
#include "RowModelTest.moc"
