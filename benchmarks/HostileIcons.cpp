// Shows hostile icons and tells what came of it: swabby_hostile_icons [DRAWINGS [FOLDER]]. First as many
// random drawings as that (1,200), then a page of fifty sound icons behind the files of the folder
// (tests/fixtures/ui/hostile_icons).

#include "platform/BackgroundWork.h"
#include "ui/qmltypes/IconStore.h"

#include <QtCore/QBuffer>
#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QRandomGenerator>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlEngine>

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <vector>

using namespace swabby;

namespace {

/// Drawings of everything that takes a number, with numbers that nobody expects; the same for the same seed.
class Drawings {
public:
    explicit Drawings(quint32 seed) : m_random(seed) {}

    QByteArray next()
    {
        static constexpr std::array contents = {
            "<filter id='f' filterUnits='U' primitiveUnits='U' x='N' y='N' width='N' height='N'>FFF</filter>"
            "<rect id='r' width='N' height='16' filter='url(#f)'/>",
            "<image x='N' width='N' height='N' xlink:href='data:image/svg+xml;base64,I'/>",
            "<pattern id='p' patternUnits='U' width='N' height='N' viewBox='0 0 N N'><rect width='N' "
            "height='9'/></pattern><rect width='16' height='16' fill='url(#p)' transform='scale(N)'/>",
            "<text x='N' y='9' font-size='N' letter-spacing='N' stroke='red' stroke-width='N'>ab</text>",
            "<path d='M0 0LN NA N N N 0 1 N N' stroke='red' stroke-width='N' stroke-dasharray='N N'/>",
            "<g opacity='.5' transform='scale(N) rotate(N)'><use xlink:href='#a'/><circle id='a' r='N'/></g>",
            "<mask id='m' x='N' width='N'><rect width='N' height='9' mask='url(#m)'/></mask><rect width='16' "
            "height='16' mask='url(#m)'/>",
        };
        return filled("<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
                      "width='16' height='16'>" +
                      QByteArray(oneOf(contents)) + "</svg>");
    }

private:
    template <std::size_t Count>
    const char *oneOf(const std::array<const char *, Count> &choices)
    {
        return choices[m_random.bounded(static_cast<quint32>(Count))];
    }

    /// Each capital letter that stands for something is replaced by one of what it may be.
    QByteArray filled(const QByteArray &pattern)
    {
        static constexpr std::array numbers = {"0",    "1",    "16", "-1",   "1e-5", "1e-30", "1e9",
                                               "1e30", "0.5",  "3",  "100",  "nan",  "50%",   "30000",
                                               "1e5",  ".003", "20", "9999", "65535"};
        static constexpr std::array units = {"userSpaceOnUse", "objectBoundingBox"};
        static constexpr std::array filters = {
            "<feBlend in2='SourceGraphic' PLACE/>",
            "<feColorMatrix PLACE/>",
            "<feComposite in2='SourceGraphic' operator='arithmetic' k1='N' PLACE/>",
            "<feFlood PLACE/>",
            "<feGaussianBlur stdDeviation='N' PLACE/>",
            "<feMerge PLACE/>",
            "<feOffset dx='N' PLACE/>",
            "<feTile PLACE/>",
            "<feTurbulence baseFrequency='N' numOctaves='N' PLACE/>",
            "<feMorphology operator='dilate' radius='N' PLACE/>",
            "<feConvolveMatrix order='N' kernelMatrix='1 1 1 1 1 1 1 1 1' PLACE/>",
            "<feDisplacementMap in2='SourceGraphic' scale='N' PLACE/>",
            "<feImage xlink:href='#r' PLACE/>",
            "<feSpecularLighting kernelUnitLength='N' PLACE><fePointLight z='N'/></feSpecularLighting>",
        };
        QByteArray drawing = pattern;
        const auto replaceEach = [&](const char *mark, const auto &made) {
            for (qsizetype at = 0; (at = drawing.indexOf(mark, at)) >= 0;) {
                const QByteArray text = made();
                drawing.replace(at, static_cast<qsizetype>(qstrlen(mark)), text);
                at += text.size();
            }
        };
        replaceEach("F", [&] { return QByteArray(oneOf(filters)); });
        replaceEach("PLACE", [] { return QByteArray("x='N' y='N' width='N' height='N'"); });
        replaceEach("I'", [&] { return next().toBase64() + '\''; });
        replaceEach("'N", [&] { return '\'' + QByteArray(oneOf(numbers)); });
        replaceEach("U'", [&] { return QByteArray(oneOf(units)) + '\''; });
        return drawing;
    }

    QRandomGenerator m_random;
};

/// Icons by the name of their program.
struct NamedIcons final : ProgramIcons {
    std::map<std::string, QByteArray> files;

    QByteArray picture(const IconOwner &owner, const IconRequest &) override
    {
        return files.at(owner.program.native());
    }
};

QByteArray soundIcon(int number)
{
    if (number % 2 == 0)
        return "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 64 64'><linearGradient id='g'><stop "
               "stop-color='teal'/><stop offset='1'/></linearGradient><filter id='f'><feGaussianBlur "
               "stdDeviation='2'/></filter><circle cx='32' cy='32' r='30' fill='url(#g)' "
               "filter='url(#f)'/></svg>";
    QImage image(128, 128, QImage::Format_ARGB32);
    image.fill(Qt::darkCyan);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "png");
    return buffer.data();
}

/// What this program holds, in kB.
long memory()
{
    QFile file(QStringLiteral("/proc/self/smaps_rollup"));
    file.open(QIODevice::ReadOnly);
    for (const QByteArray &line : file.readAll().split('\n'))
        if (line.startsWith("Pss:"))
            return line.simplified().split(' ').value(1).toLong();
    return 0;
}

/// Milliseconds until each icon was known, by its name; -1 for one that has its letter.
std::map<std::string, double> showAll(const std::shared_ptr<Machine> &machine, const NamedIcons &icons,
                                      const std::vector<std::string> &order)
{
    BackgroundWork work(4);
    QQmlEngine engine;
    auto *store = new IconStore(&engine, machine, work);
    std::map<std::string, double> times;
    QElapsedTimer clock;
    QEventLoop loop;
    QObject::connect(store, &IconStore::found, &loop, [&](const IconKey &key) {
        const bool isDrawn = !store->icon(key, &loop)->isNull();
        times[key.owner.program.native()] = isDrawn ? static_cast<double>(clock.nsecsElapsed()) / 1e6 : -1;
        if (times.size() == icons.files.size())
            loop.quit();
    });
    clock.start();
    for (const std::string &name : order)
        store->icon({{name, {}}, 48}, &loop);
    loop.exec();
    return times;
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    const int count = arguments.value(1, QStringLiteral("1200")).toInt();
    const auto machine = std::make_shared<Machine>();
    machine->icons = std::make_unique<NamedIcons>();
    auto &icons = static_cast<NamedIcons &>(*machine->icons);
    std::vector<std::string> order;
    const auto add = [&](const std::string &name, const QByteArray &file) {
        icons.files[name] = file;
        order.push_back(name);
    };

    add("first", soundIcon(0));
    showAll(machine, icons, order);
    const long before = memory();
    Drawings drawings(2026);
    for (int number = 0; number < count; ++number)
        add("random " + std::to_string(number), drawings.next());
    QElapsedTimer clock;
    clock.start();
    const auto random = showAll(machine, icons, order);
    const auto drawn =
        std::count_if(random.begin(), random.end(), [](const auto &one) { return one.second >= 0; });
    std::printf("%d random drawings in %lld ms: %td drawn, the others have their letter\n", count,
                static_cast<long long>(clock.elapsed()), drawn - 1);

    icons.files.clear();
    order.clear();
    const QDir folder(arguments.value(2, QStringLiteral("tests/fixtures/ui/hostile_icons")));
    for (const QString &name : folder.entryList({QStringLiteral("*.svg")})) {
        QFile file(folder.filePath(name));
        file.open(QIODevice::ReadOnly);
        add(name.toStdString(), file.readAll());
    }
    for (int number = 0; number < 50; ++number)
        add("sound " + std::to_string(number), soundIcon(number));
    std::vector<double> sound;
    for (const auto &[name, time] : showAll(machine, icons, order)) {
        if (name.starts_with("sound"))
            sound.push_back(time);
        else
            std::printf("%-34s %s\n", name.c_str(), time < 0 ? "its letter" : "drawn");
    }
    std::sort(sound.begin(), sound.end());
    std::printf("50 sound icons behind them: %.0f ms to the median, %.0f ms to the last\n", sound[25],
                sound.back());
    std::printf("memory (PSS) of this program: %ld kB before, %ld kB after\n", before, memory());
}
