#include "platform/linux/RemovalScene.h"

#include <QtTest/QTest>

#include <atomic>
#include <fcntl.h>
#include <thread>

using namespace swabby;

namespace {

void exchange(const fs::path &one, const fs::path &other)
{
    ::renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE);
}

/// Somebody swaps a folder for a link to the outside and back again for as long as this lasts.
class Swapper {
public:
    Swapper(fs::path folder, fs::path link, std::atomic<int> &swaps)
        : m_thread([this, &swaps, folder = std::move(folder), link = std::move(link)] {
              for (; !m_stop; ++swaps)
                  exchange(folder, link);
          })
    {
    }
    ~Swapper()
    {
        m_stop = true;
        m_thread.join();
    }

private:
    std::atomic<bool> m_stop = false;
    std::thread m_thread;
};

} // namespace

class LinuxRemovalRacesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFolderSwappedForALinkLeadsNowhere()
    {
        for (const Way way : everyWay) {
            // In memory there are far more swaps in the time that a removal takes.
            Scene scene(false, fs::is_directory("/dev/shm") ? "/dev/shm" : fs::temp_directory_path());
            // What lies outside has the same names, so that every step would find something there.
            const auto names = [](const std::string &prefix) {
                std::vector<std::string> result = {prefix + "two/three"};
                for (int number = 0; number < 20; ++number)
                    result.push_back(prefix + "one" + std::to_string(number));
                return result;
            };
            const fs::path outside = scene.ground / "outside/mirror";
            for (const char *prefix : {"", "swapped/", "doomed/swapped/"})
                for (const std::string &name : names(prefix))
                    writeBytes(outside / name, name);
            const TreePicture before = pictureOf(scene.ground / "outside");

            int refused = 0;
            for (int race = 0; race < 2000; ++race) {
                const fs::path folder = scene.home() / std::to_string(race);
                for (const std::string &name : names("doomed/swapped/"))
                    writeBytes(folder / name, name);
                const RemovalTarget target = targetAt(folder / "doomed", scene.home());
                // In the doomed tree, the doomed folder itself, and on the way to it.
                const fs::path swapped[] = {folder / "doomed/swapped", folder / "doomed", folder};
                const fs::path link = scene.home() / ("link" + std::to_string(race));
                fs::create_symlink(outside, link);
                std::atomic<int> swaps = 0;
                const Swapper swapper(swapped[race % 3], link, swaps);
                while (swaps < 2)
                    std::this_thread::yield();
                refused += scene.remove(way, target) ? 0 : 1;
            }
            QCOMPARE(QByteArray::fromStdString(difference(before, pictureOf(scene.ground / "outside"))),
                     QByteArray());
            qInfo("%d of 2000 refused or left something", refused);
            QVERIFY(refused > 0);
        }
    }
};

QTEST_GUILESS_MAIN(LinuxRemovalRacesTest)
#include "LinuxRemovalRacesTest.moc"
