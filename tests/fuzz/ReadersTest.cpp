#include "fuzz/Readers.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QTest>

using namespace swabby;

class ReadersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyReaderHoldsOnItsFixtures()
    {
        const QDir fixtures(QStringLiteral(SWABBY_FIXTURES));
        QStringList known;
        for (const Reader &reader : allReaders()) {
            const QString name = QString::fromLatin1(reader.name);
            known.append(name);
            int files = 0;
            for (const QString &folder : {u"fuzz/"_qs + name, name})
                for (const QFileInfo &each : QDir(fixtures.filePath(folder)).entryInfoList(QDir::Files)) {
                    QFile file(each.filePath());
                    QVERIFY(file.open(QIODevice::ReadOnly));
                    QVERIFY2(reader.holds(file.readAll().toStdString()), qPrintable(each.filePath()));
                    ++files;
                }
            QVERIFY2(files > 1, reader.name);
        }
        for (const QString &folder :
             QDir(fixtures.filePath(u"fuzz"_qs)).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            QVERIFY2(known.contains(folder), qPrintable(folder));
    }
};

QTEST_GUILESS_MAIN(ReadersTest)
#include "ReadersTest.moc"
