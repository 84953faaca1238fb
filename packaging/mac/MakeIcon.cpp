// Draws Swabby's icon and writes it as a Mac's icon file: MakeIcon FILE.
#include "app/IconPacking.h"
#include "app/TitleImage.h"
#include "platform/posix/WholeFile.h"

#include <QtCore/QBuffer>
#include <QtCore/QFile>

#include <cstdio>

int main(int argc, char *argv[])
{
    if (argc != 2) {
        std::fputs("usage: MakeIcon FILE\n", stderr);
        return 2;
    }
    std::map<int, QByteArray> pictures;
    for (const int side : swabby::iconSides) {
        QBuffer png(&pictures[side]);
        swabby::applicationPicture(side).save(&png, "PNG");
    }
    const QString problem = swabby::saveWholeFile(QFile::decodeName(argv[1]), swabby::packIcon(pictures));
    if (!problem.isEmpty())
        std::fprintf(stderr, "MakeIcon: %s\n", qPrintable(problem));
    return problem.isEmpty() ? 0 : 1;
}
