#include "cleanup/Clutter.h"
#include "cleanup/DuplicateFolders.h"
#include "support/Table.h"

#include <QtTest/QTest>

using namespace swabby;

namespace {

constexpr std::size_t size = 300'000;

} // namespace

class DuplicateRemovalTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Of a kept copy and three others, which of them go depends on what happened after the search: to the
    /// files, or to the group.
    void whatGoes()
    {
        compareTable(fixture(u"cleanup/what_goes.txt"_qs), [](const Cells &row) {
            const DuplicateFolders folders;
            build(folders.top(), "Downloads/kept Desktop/a Desktop/b\nb Desktop/c", contentOf(size));
            RecordingDisposal trash;
            auto groups = folders.scan();
            if (row[1] == "a is refused")
                trash.refused = {folders.desktop() / "a"};
            else if (row[1] == "nobody said what was read")
                groups.front().identities.clear();
            else if (row[1] == "only one path is left")
                groups.front().paths.resize(1);
            else if (row[1] == "no path is left")
                groups = {DuplicateGroup()};
            else if (row[1] == "the kept one is replaced by its like")
                replaceByItsLike(folders.downloads() / "kept");
            else if (!row[1].isEmpty())
                build(folders.top(), row[1], contentOf(size));

            const auto removal = DuplicateFinder::removeDuplicates(groups, folders.both(), trash);
            QStringList trashed;
            for (const TrashedItem &item : removal.trashed)
                trashed.append(QString::fromStdString(item.from.filename()));
            trashed.sort();
            return u"%1, %2 stayed"_qs.arg(trashed.join(u' ')).arg(removal.stayed);
        });
    }

    void nothingGoesElsewhereOrAfterAStop()
    {
        const DuplicateFolders folders;
        build(folders.top(), "Downloads/kept Desktop/a", contentOf(size));
        RecordingDisposal trash;
        const auto groups = folders.scan();
        const auto removalIn = [&](const Paths &allowed, const StopToken &stop = {}) {
            return DuplicateFinder::removeDuplicates(groups, allowed, trash, stop);
        };
        StopSource stopped;
        stopped.requestStop();
        QCOMPARE(removalIn(folders.both(), stopped.token()).stayed, 1);
        QCOMPARE(removalIn({folders.downloads()}).stayed, 1);
        QVERIFY(trash.asked.isEmpty());
        QCOMPARE(removalIn({folders.desktop()}).trashed.size(), 1U);
        const QString desktop = QString::fromStdString(folders.desktop());
        QCOMPARE(trash.asked, QStringList(u"trash %1/a in %1"_qs.arg(desktop)));
    }

    void theKeptOneChangesDuringTheRemoval()
    {
        const DuplicateFolders folders;
        build(folders.top(), "Downloads/kept Desktop/a Desktop/b Desktop/c", contentOf(size));
        RecordingDisposal trash;
        trash.afterEach = [&] { rewriteSecretly(folders.downloads() / "kept"); };
        const auto removal = DuplicateFinder::removeDuplicates(folders.scan(), folders.both(), trash);
        QCOMPARE(removal.trashed.size(), 1U);
        QCOMPARE(removal.stayed, 2);
    }

private:
    static void replaceByItsLike(const Path &path)
    {
        const Path like = path.native() + ".new";
        std::filesystem::copy_file(path, like);
        std::filesystem::last_write_time(like, std::filesystem::last_write_time(path));
        std::filesystem::rename(like, path);
    }
};

QTEST_GUILESS_MAIN(DuplicateRemovalTest)
#include "DuplicateRemovalTest.moc"
