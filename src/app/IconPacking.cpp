#include "app/IconPacking.h"

#include <QtCore/QtEndian>

namespace swabby {
namespace {

/// Where a picture of that edge belongs: as itself, and as the one with twice the pixels of a smaller one.
struct IconEntry {
    const char *type;
    int side;
};

constexpr IconEntry entries[] = {{"icp4", 16},  {"icp5", 32},  {"ic11", 32},  {"icp6", 64},
                                 {"ic12", 64},  {"ic07", 128}, {"ic08", 256}, {"ic13", 256},
                                 {"ic09", 512}, {"ic14", 512}, {"ic10", 1024}};

/// A type of four letters, the length of the whole and the content.
QByteArray block(const char *type, const QByteArray &content)
{
    const auto size = qToBigEndian(static_cast<quint32>(8 + content.size()));
    return QByteArray(type) + QByteArray(reinterpret_cast<const char *>(&size), sizeof size) + content;
}

} // namespace

QByteArray packIcon(const std::map<int, QByteArray> &pictures)
{
    QByteArray packed;
    for (const IconEntry &entry : entries)
        if (const auto picture = pictures.find(entry.side); picture != pictures.end())
            packed += block(entry.type, picture->second);
    return block("icns", packed);
}

} // namespace swabby
